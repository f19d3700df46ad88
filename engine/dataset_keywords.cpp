#include "engine/dataset_keywords.h"

#include <array>

#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

constexpr std::array<TextView, 5> kTypes = {u"PLOT", u"AREA", u"BAR", u"STACKED BAR", u"PIE"};
constexpr std::array<TextView, 4> kShapes = {u"DOT", u"BOX", u"TRIANGLE", u"DIAMOND"};
constexpr std::array<TextView, 3> kLineStyles = {u"SOLID", u"DASHED", u"DOTTED"};
constexpr std::array<TextView, 3> kFillTos = {u"X_AXES", u"Y_AXES", u"CURVE"};

template <size_t N>
int IndexOf(const std::array<TextView, N>& table, TextView keyword, int otherwise) {
  for (size_t i = 0; i < N; ++i)
    if (table[i] == keyword) return int(i);
  return otherwise;
}

template <size_t N>
bool InTable(const std::array<TextView, N>&, int code) {
  return code >= 0 && code < int(N);
}

}  // namespace

DatasetType DatasetTypeFromKeyword(TextView keyword) {
  return DatasetType(IndexOf(kTypes, keyword, CodeOf(kPlot)));
}

Text DatasetTypeKeyword(DatasetType type) {
  return Text(InTable(kTypes, CodeOf(type)) ? kTypes[size_t(type)] : u"???");
}

Text DatasetTypeDisplayText(DatasetType type) {
  return InTable(kTypes, CodeOf(type)) ? LookupText(kTextPlot + CodeOf(type)) : Text(u"???");
}

int DatasetLineStyleFromKeyword(TextView keyword) { return IndexOf(kLineStyles, keyword, -1); }

Text DatasetLineStyleKeyword(int style) {
  return Text(style == 1 || style == 2 ? kLineStyles[size_t(style)] : kLineStyles[0]);
}

Text LineStyleDisplayText(int style) {
  return LookupText(style == 1 || style == 2 ? kTextSolid + style : kTextSolid);
}

int MarkerShapeFromKeyword(TextView keyword) { return IndexOf(kShapes, keyword, kMarkerNone); }

Text MarkerShapeKeyword(int shape) {
  return Text(InTable(kShapes, shape) ? kShapes[size_t(shape)] : u"NONE");
}

Text MarkerShapeDisplayText(int shape) {
  // The display texts stand in another order than the codes: BOX before DOT.
  static constexpr int kIds[] = {kTextDot, kTextBox, kTextTriangle, kTextDiamond};
  return LookupText(InTable(kShapes, shape) ? kIds[shape] : kTextNone);
}

int FillToFromKeyword(TextView keyword) { return IndexOf(kFillTos, keyword, kFillToXAxis); }

Text FillToKeyword(int fillTo) {
  return Text(fillTo == 1 || fillTo == 2 ? kFillTos[size_t(fillTo)] : kFillTos[0]);
}

Text ListIndexText(int index) { return index >= 2 && index <= 5 ? DecimalText(index) : Text(u"1"); }

}  // namespace zel
