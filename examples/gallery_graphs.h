#pragma once
// The graphs of the gallery, each built through the control's automation
// interface as a host program builds it. The gallery draws them into PNG
// files; the operator's session fills the settings pages from the time trend.
#include <windows.h>
#include <ocidl.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "host_support.h"
#include "zelgraph_idl.h"

namespace gallery {

using namespace host;

// A VARIANT holding an array of VARIANTs, as scripts and VB hosts pass them.
struct Array {
  VARIANT v;
  explicit Array(const std::vector<double>& values, VARTYPE type = VT_R8) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, ULONG(values.size()));
    VARIANT* elements = nullptr;
    SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
    for (size_t i = 0; i < values.size(); ++i) {
      VariantInit(&elements[i]);
      V_VT(&elements[i]) = type;
      if (type == VT_I4)
        V_I4(&elements[i]) = LONG(values[i]);
      else if (type == VT_R4)
        V_R4(&elements[i]) = float(values[i]);
      else
        V_R8(&elements[i]) = values[i];  // VT_R8 and VT_DATE share the field
    }
    SafeArrayUnaccessData(array);
    VariantInit(&v);
    V_VT(&v) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&v) = array;
  }
  ~Array() { VariantClear(&v); }
};

// A VARIANT holding a typed array of 32-bit integers: status values and
// colours are read from the array's memory as such.
struct Int32Array {
  VARIANT v;
  explicit Int32Array(const std::vector<LONG>& values) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, ULONG(values.size()));
    LONG* elements = nullptr;
    SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
    std::copy(values.begin(), values.end(), elements);
    SafeArrayUnaccessData(array);
    VariantInit(&v);
    V_VT(&v) = VT_ARRAY | VT_I4;
    V_ARRAY(&v) = array;
  }
  ~Int32Array() { VariantClear(&v); }
};

inline VARIANT Empty() {
  VARIANT v;
  VariantInit(&v);
  return v;
}

inline void SetValues(IVX_Graph* graph, LONG id, const std::vector<double>& xs, const std::vector<double>& ys,
               VARTYPE xType = VT_R8, std::vector<LONG> status = {}) {
  if (status.empty()) status.assign(xs.size(), 0);
  Array x(xs, xType), y(ys);
  Int32Array s(status);
  VARIANT append = Missing();
  graph->SetDatasetValues(id, x.v, y.v, s.v, append);
}

// Category texts as x values, as the categories of a DISCRETE axis.
inline void SetCategoryValues(IVX_Graph* graph, LONG id, const std::vector<const wchar_t*>& labels,
                       const std::vector<double>& ys) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, ULONG(labels.size()));
  VARIANT* elements = nullptr;
  SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
  for (size_t i = 0; i < labels.size(); ++i) {
    V_VT(&elements[i]) = VT_BSTR;
    V_BSTR(&elements[i]) = SysAllocString(labels[i]);
  }
  SafeArrayUnaccessData(array);
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&x) = array;
  Array y(ys);
  Int32Array status(std::vector<LONG>(ys.size(), 0));
  VARIANT append = Missing();
  graph->SetDatasetValues(id, x, y.v, status.v, append);
  VariantClear(&x);
}

// Sets an axis's range, title, colour and grid mode through an AxisProps
// record.
inline void SetRange(IVX_Graph* g, bool vertical, LONG id, double min, double max, const wchar_t* title,
              VARTYPE type = VT_R8, COLORREF colour = 0, const wchar_t* grid = L"ANNOTATION") {
  WithRecord<AxisProps>(
      kAxisProps,
      [&](AxisProps& record) {
        for (auto [variant, value] : {std::pair(&record.min, min), std::pair(&record.max, max)}) {
          V_VT(variant) = type;
          if (type == VT_I4)
            V_I4(variant) = LONG(value);
          else
            V_R8(variant) = value;  // VT_R8 and VT_DATE share the field
        }
        record.title = SysAllocString(title);
        record.axisColor = LONG(colour);
        record.gridMode = SysAllocString(grid);
        if (vertical) record.titlePosition = SysAllocString(L"CENTER");
      },
      [&](VARIANT& props) { vertical ? g->SetYAxisProperties(id, props) : g->SetXAxisProperties(id, props); });
}

// The look of a curve, as a DatasetProps record.
struct Look {
  const wchar_t* title;
  COLORREF line;
  const wchar_t* marker = L"NONE";
  COLORREF fill = 0;
  const wchar_t* fillTo = L"X_AXES";
  LONG fillCurveId = 0;
  short width = 1;
  const wchar_t* style = L"SOLID";
};

inline void AddCurve(IVX_Graph* g, LONG id, const wchar_t* type, LONG xAxis, LONG yAxis, const Look& look) {
  Bstr kind(type);
  WithRecord<DatasetProps>(
      kDatasetProps,
      [&](DatasetProps& record) {
        record.title = SysAllocString(look.title);
        record.lineStyle = SysAllocString(look.style);
        record.markerShape = SysAllocString(look.marker);
        record.titleFont = SysAllocString(L"Arial,9");
        record.textFont = SysAllocString(L"Arial,8");
        record.lineWidth = look.width;
        record.lineColor = LONG(look.line);
        record.fillColor = LONG(look.fill);
        record.markerColor = LONG(look.line);
        record.type = SysAllocString(type);
        record.fillTo = SysAllocString(look.fillTo);
        record.fillCurveId = look.fillCurveId;
        record.YaxisID = short(yAxis);
      },
      [&](VARIANT& props) { g->AddDataset(id, kind, xAxis, yAxis, props); });
}

inline void Grid(IVX_Graph* g, COLORREF colour, short style, short width, short which) {
  LONG c = LONG(colour);
  short words[3] = {style, width, which};
  g->SetGridProps(&c, words);
}

inline void AddAxis(IVX_Graph* g, bool vertical, LONG id, const wchar_t* type, const wchar_t* side = L"LEFT") {
  Bstr kind(type), place(side);
  VARIANT none = Empty(), missing = Missing(), position;
  VariantInit(&position);
  V_VT(&position) = VT_BSTR;
  V_BSTR(&position) = place;
  if (vertical)
    g->AddYAxis(id, kind, none, 0, position, missing);
  else
    g->AddXAxis(id, kind, none, 0, missing, missing);
}

inline VARIANT Colour(COLORREF c) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_I4;
  V_I4(&v) = LONG(c);
  return v;
}

inline VARIANT Short(short n) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_I2;
  V_I2(&v) = n;
  return v;
}

// A day of a process on four split Y axes, each with a unit name, under a
// grid, with limit lines, two hairlines labelled with their times and a
// legend on the right.
inline void TimeTrend(IVX_Graph* g) {
  AddAxis(g, false, 1, L"TIME");
  const wchar_t* titles[] = {L"Temperature", L"Pressure", L"Flow", L"Level"};
  const COLORREF colours[] = {RGB(192, 0, 0), RGB(0, 96, 192), RGB(0, 140, 0), RGB(160, 0, 160)};
  for (LONG axis = 1; axis <= 4; ++axis) AddAxis(g, true, axis, L"REAL", axis % 2 ? L"LEFT" : L"RIGHT");
  SetRange(g, false, 1, 46347.0, 46348.0, L"Time", VT_DATE);
  for (LONG axis = 1; axis <= 4; ++axis)
    SetRange(g, true, axis, 20 + 5 * axis - 6, 20 + 5 * axis + 6, titles[axis - 1], VT_R8, colours[axis - 1]);
  LONG on = 1;
  g->enableSplitYAxis(&on, &on, &on);
  Bstr c(L"°C"), bar(L"bar"), flow(L"m³/h"), level(L"%");
  g->setUnitName(c, bar, flow, level);
  Grid(g, RGB(200, 200, 200), 2, 1, 3);
  std::vector<double> times;
  for (int i = 0; i <= 288; ++i) times.push_back(46347.0 + i / 288.0);
  for (LONG axis = 1; axis <= 4; ++axis) {
    AddCurve(g, axis * 10, L"PLOT", 1, axis, {titles[axis - 1], colours[axis - 1], L"NONE", 0, L"X_AXES", 0, 2});
    std::vector<double> values;
    for (size_t i = 0; i < times.size(); ++i)
      values.push_back(20 + 5 * axis + 4 * std::sin(double(i) / (12 + 4 * axis)) + 0.6 * std::sin(double(i) / 3.0 * axis));
    SetValues(g, axis * 10, times, values, VT_DATE);
  }
  VARIANT missing = Missing();
  LONG id = 0;
  VARIANT high = Colour(RGB(255, 0, 0)), low = Colour(RGB(0, 0, 255)), width = Short(2);
  Bstr dashed(L"DASHED");
  VARIANT style;
  VariantInit(&style);
  V_VT(&style) = VT_BSTR;
  V_BSTR(&style) = dashed;
  VARIANT limit;
  VariantInit(&limit);
  V_VT(&limit) = VT_R8, V_R8(&limit) = 29;
  g->AddLimitValue(1, limit, high, style, width, &id);
  V_R8(&limit) = 21;
  g->AddLimitValue(1, limit, low, style, width, &id);
  VARIANT hairline = Colour(RGB(255, 128, 0));
  g->AddHairline(30, hairline, missing, &id);
  g->AddHairline(72, hairline, missing, &id);
  g->SetHairlineShowXAxis(1);
  g->put_LegendEnabled(1);
  Bstr right(L"RIGHT");
  g->put_LegendPosition(right);
}

// Points whose marker colour tells their status: 1, 2 and 9 take the three
// status colours, 10 is left unmarked and 11 or more is left out.
inline void StatusMarkers(IVX_Graph* g) {
  AddAxis(g, false, 1, L"REAL");
  AddAxis(g, true, 1, L"REAL");
  SetRange(g, false, 1, 0, 20, L"Sample");
  SetRange(g, true, 1, 0, 10, L"Reading");
  AddCurve(g, 1, L"PLOT", 1, 1, {L"Readings", RGB(0, 0, 160), L"BOX", 0, L"X_AXES", 0, 2});
  std::vector<double> xs, ys;
  std::vector<LONG> status;
  const int states[] = {0, 0, 1, 0, 2, 0, 9, 0, 10, 0, 11, 0, 1, 1, 0, 2, 9, 0, 0, 0};
  for (int i = 0; i < 20; ++i) {
    xs.push_back(i + 0.5);
    ys.push_back(5 + 3 * std::sin(i / 3.0));
    status.push_back(states[i]);
  }
  Int32Array colours({LONG(RGB(255, 0, 0)), LONG(RGB(255, 160, 0)), LONG(RGB(0, 170, 0)), 0});
  g->setMarkerColorStatus(&colours.v);
  SetValues(g, 1, xs, ys, VT_R8, status);
  Grid(g, RGB(220, 220, 220), 0, 1, 3);
}

// Areas filled down to the X axis and between two curves.
inline void AreaFills(IVX_Graph* g) {
  AddAxis(g, false, 1, L"REAL");
  AddAxis(g, true, 1, L"REAL");
  SetRange(g, false, 1, 0, 100, L"Position");
  SetRange(g, true, 1, 0, 50, L"Height");
  AddCurve(g, 1, L"AREA", 1, 1, {L"Ground", RGB(120, 80, 0), L"NONE", RGB(200, 170, 120), L"X_AXES"});
  AddCurve(g, 2, L"PLOT", 1, 1, {L"Surface", RGB(0, 90, 200)});
  AddCurve(g, 3, L"AREA", 1, 1, {L"Water", RGB(0, 90, 200), L"NONE", RGB(150, 200, 255), L"CURVE", 1});
  std::vector<double> xs, ground, surface;
  for (int i = 0; i <= 50; ++i) {
    xs.push_back(i * 2);
    ground.push_back(15 + 8 * std::sin(i / 6.0));
    surface.push_back(std::max(ground.back(), 24 + 3 * std::sin(i / 2.5)));
  }
  SetValues(g, 1, xs, ground);
  SetValues(g, 2, xs, surface);
  SetValues(g, 3, xs, surface);
  g->put_LegendEnabled(1);
  Bstr top(L"TOP");
  g->put_LegendPosition(top);
}

// Counts per production line: the categories of a DISCRETE axis.
inline void Categories(IVX_Graph* g, double max) {
  AddAxis(g, false, 1, L"DISCRETE");
  AddAxis(g, true, 1, L"INTEGER");
  SetRange(g, false, 1, 0, 4, L"Line", VT_I4);
  SetRange(g, true, 1, 0, max, L"Count", VT_I4);
  Grid(g, RGB(210, 210, 210), 0, 1, 1);
  g->put_LegendEnabled(1);
}

inline const std::vector<const wchar_t*> kLines = {L"Press", L"Mill", L"Lathe", L"Paint"};

// Bars side by side in each category.
inline void Bars(IVX_Graph* g) {
  Categories(g, 20);
  AddCurve(g, 1, L"BAR", 1, 1, {L"Good", RGB(0, 150, 0)});
  AddCurve(g, 2, L"BAR", 1, 1, {L"Rejected", RGB(200, 0, 0)});
  AddCurve(g, 3, L"BAR", 1, 1, {L"Reworked", RGB(230, 160, 0)});
  SetCategoryValues(g, 1, kLines, {12, 15, 9, 14});
  SetCategoryValues(g, 2, kLines, {2, 1, 4, 3});
  SetCategoryValues(g, 3, kLines, {5, 3, 6, 2});
}

// Bars stacked on each other in each category.
inline void StackedBars(IVX_Graph* g) {
  Categories(g, 25);
  AddCurve(g, 1, L"STACKED BAR", 1, 1, {L"Early shift", RGB(60, 60, 170)});
  AddCurve(g, 2, L"STACKED BAR", 1, 1, {L"Late shift", RGB(110, 110, 220)});
  AddCurve(g, 3, L"STACKED BAR", 1, 1, {L"Night shift", RGB(170, 170, 245)});
  SetCategoryValues(g, 1, kLines, {8, 10, 7, 9});
  SetCategoryValues(g, 2, kLines, {6, 7, 5, 8});
  SetCategoryValues(g, 3, kLines, {3, 4, 2, 6});
}

// A pie of six slices, labelled with texts.
inline void Pie(IVX_Graph* g) {
  AddCurve(g, 1, L"PIE", 0, 0, {L"Energy by source", 0});
  SetCategoryValues(g, 1, {L"Gas", L"Coal", L"Wind", L"Solar", L"Hydro", L"Nuclear"}, {30, 20, 25, 15, 10, 12});
}

// The same kind of trend, zoomed into its middle third.
inline void Zoomed(IVX_Graph* g) {
  AddAxis(g, false, 1, L"REAL");
  AddAxis(g, true, 1, L"REAL");
  SetRange(g, false, 1, 0, 1000, L"Sample");
  SetRange(g, true, 1, -2, 2, L"Signal");
  AddCurve(g, 1, L"PLOT", 1, 1, {L"Signal", RGB(0, 100, 0), L"DOT"});
  std::vector<double> xs, ys;
  for (int i = 0; i <= 1000; i += 5) {
    xs.push_back(i);
    ys.push_back(std::sin(i / 40.0) + 0.3 * std::sin(i / 7.0));
  }
  SetValues(g, 1, xs, ys);
  Grid(g, RGB(220, 220, 220), 1, 1, 3);
  Array zoom({0.33, 0.66, 0.2, 0.8}, VT_R4);
  g->put_ZoomRect(zoom.v);
}

}  // namespace gallery
