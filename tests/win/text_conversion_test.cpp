// Texts a host passes where numbers or dates are expected: the control
// converts them exactly as VariantChangeType does in the same process, and a
// text the platform refuses leaves the graph as it was.
#include <cstdio>
#include <string>

#include "com_client.h"
#include "control/platform_win.h"
#include "util/value_conversion.h"

namespace zel::testing {
namespace {

// A conversion's outcome as one line: the failure code, or the type and value.
std::string Shown(HRESULT hr, VARTYPE type, double value) {
  char line[64];
  if (FAILED(hr)) snprintf(line, sizeof line, "error 0x%08lX", static_cast<unsigned long>(hr));
  else snprintf(line, sizeof line, "type %d value %.17g", type, value);
  return line;
}

std::string Shown(const VARIANT& v) {
  switch (V_VT(&v)) {
    case VT_I4: return Shown(S_OK, VT_I4, V_I4(&v));
    case VT_R4: return Shown(S_OK, VT_R4, V_R4(&v));
    case VT_R8: return Shown(S_OK, VT_R8, V_R8(&v));
    case VT_DATE: return Shown(S_OK, VT_DATE, V_DATE(&v));
    default: return "type " + std::to_string(V_VT(&v));
  }
}

std::string Shown(int32_t status, const Value& v) {
  switch (KindOf(v)) {
    case ValueKind::I4: return Shown(status, VT_I4, std::get<int32_t>(v));
    case ValueKind::R4: return Shown(status, VT_R4, std::get<float>(v));
    case ValueKind::R8: return Shown(status, VT_R8, std::get<double>(v));
    case ValueKind::Date: return Shown(status, VT_DATE, std::get<DateValue>(v).days);
    default: return Shown(status, VT_EMPTY, 0);
  }
}

// What the platform makes of `text` as `type`: the converted value in `out`.
HRESULT PlatformConversion(const wchar_t* text, VARTYPE type, Var& out) {
  Var in(text);
  VariantClear(&out.v);
  return VariantChangeType(&out.v, &in.v, 0, type);
}

std::string PlatformShown(const wchar_t* text, VARTYPE type) {
  Var out;
  HRESULT hr = PlatformConversion(text, type, out);
  return FAILED(hr) ? Shown(hr, type, 0) : Shown(out.v);
}

TEST(TextConversionTest, EveryTextConvertsAsThePlatformConvertsIt) {
  InstallWindowsPlatformHooks();
  const wchar_t* texts[] = {
      // Dates and times.
      L"2024-01-15 06:00", L"2024-01-15", L"1/15/2024", L"15.01.2024", L"January 15, 2024",
      L"Jan 15 2024 6:00 PM", L"06:00", L"6:00:30 PM", L"12:00 AM", L"25:00", L"2/30/2024",
      L"9999-12-31", L"0100-01-01", L"99-12-31", L"12.5", L"1.2.3",
      // Separators, blanks and signs.
      L"1,000.5", L"1,000,000", L"1,00", L",5", L".5", L"5.", L"1 000", L" 42 ", L"\t42", L"42\t",
      L"+42", L"-42", L"- 42", L"42-", L"(42)", L"--1", L"$5", L"42\u00a0",
      // Exponents, range ends and rounding.
      L"1.5e3", L"1E-3", L"-3e2", L"1e", L"e3", L"1.5e400", L"3.4e38", L"3.5e38", L"2147483647",
      L"2147483648", L"-2147483648.5", L"2.5", L"3.5", L"-0.5", L"0.1",
      // Other notations, and nothing at all.
      L"&H1A", L"&O17", L"0x1A", L"true", L"#1/1/2000#", L"Infinity", L"NaN", L"", L" ", L"abc",
      L"7 apples", L"1..2"};
  for (const wchar_t* text : texts) {
    Text ours(reinterpret_cast<const char16_t*>(text));
    for (auto [kind, type] : {std::pair{ValueKind::I4, VT_I4}, {ValueKind::R4, VT_R4},
                              {ValueKind::R8, VT_R8}, {ValueKind::Date, VT_DATE}}) {
      Value out;
      int32_t status = ChangeType(ours, kind, out);
      EXPECT_EQ(Shown(status, out), PlatformShown(text, type)) << '"' << Utf8FromText(ours) << "\" as " << type;
    }
  }
}

// Element i of a returned array of I4 or R4 as a VARIANT of that type.
Var Element(const Var& array, LONG i) {
  Var element;
  VARTYPE type = VT_EMPTY;
  SafeArrayGetVartype(V_ARRAY(&array.v), &type);
  SafeArrayGetElement(V_ARRAY(&array.v), &i, &V_I4(&element.v));  // both are four bytes there
  V_VT(&element.v) = type;
  return element;
}

class TextArgumentTest : public ControlTest {
 protected:
  // Dataset 10 on axes of the given types, holding one point.
  void BuildGraph(const wchar_t* xType, const wchar_t* yType = L"REAL") {
    ASSERT_EQ(Call(L"EraseAll", {}).hr, S_OK);
    ASSERT_EQ(Call(L"AddXAxis", {1, xType, Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddYAxis", {1, yType, Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddDataset", {10, L"PLOT", 1, 1, Var()}).hr, S_OK);
    ASSERT_EQ(Call(L"SetDatasetValues", {10, Var::Array({1}), Var::Array({0.5}), Var::Array({0})}).hr, S_OK);
  }
  Var XValues() { return Call(L"GetDatasetValues", {10}).result[0]; }
  // The x axis's upper end as read back.
  Var AxisMax() {
    Outcome props = Call(L"GetXAxisProperties", {1});
    Var max;
    VariantCopy(&max.v, &static_cast<::AxisProps*>(V_RECORD(&props.result.v))->max);
    return max;
  }
  // Sets the x axis's properties with `max` as its upper end, all else default.
  Outcome SetAxisMax(const wchar_t* max) {
    Outcome props = Call(L"GetXAxisProperties", {1});
    IRecordInfo* info = V_RECORDINFO(&props.result.v);
    auto* record = static_cast<::AxisProps*>(info->RecordCreate());
    V_VT(&record->max) = VT_BSTR, V_BSTR(&record->max) = SysAllocString(max);
    Var byValue = Var::Null(VT_RECORD);
    V_RECORD(&byValue.v) = record;
    V_RECORDINFO(&byValue.v) = info;
    info->AddRef();
    return Call(L"SetXAxisProperties", {1, byValue});
  }
};

struct AxisType {
  const wchar_t* name;
  VARTYPE stored, readBack;  // REAL axis ends are floats read back as doubles
};
const AxisType kAxisTypes[] = {{L"INTEGER", VT_I4, VT_I4}, {L"REAL", VT_R4, VT_R8}, {L"TIME", VT_DATE, VT_DATE}};
const wchar_t* const kArguments[] = {L"2024-01-15 06:00", L"1,000.5", L" 42 ", L"12.5", L"-3e2", L"abc", L""};

TEST_F(TextArgumentTest, DatasetValuesTakeThePlatformsValueOrChangeNothing) {
  for (const AxisType& axis : kAxisTypes) {
    int accepted = 0, refused = 0;
    for (const wchar_t* text : kArguments) {
      ASSERT_NO_FATAL_FAILURE(BuildGraph(axis.name));
      std::string before = Shown(XValues()[0].v);
      Var expected;
      HRESULT platform = PlatformConversion(text, axis.stored, expected);
      Outcome set = Call(L"SetDatasetValues", {10, Var::Array({text}), Var::Array({0.5}), Var::Array({0})});
      Var xs = XValues();
      EXPECT_EQ(xs.UpperBound(), 0);
      if (SUCCEEDED(platform)) {
        ++accepted;
        EXPECT_EQ(set.hr, S_OK);
        EXPECT_EQ(Shown(xs[0].v), Shown(expected.v)) << axis.name << " \"" << text << '"';
      } else {
        ++refused;
        EXPECT_EQ(set.description, L"Wrong value type (index=0) in the Dataset") << axis.name << " \"" << text << '"';
        EXPECT_EQ(Shown(xs[0].v), before);
      }
    }
    EXPECT_GT(accepted, 0) << axis.name;
    EXPECT_GT(refused, 0) << axis.name;
  }

  // The reported fault: a date and time as text on a TIME axis.
  BuildGraph(L"TIME");
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Array({L"2024-01-15 06:00"}), Var::Array({0.5}),
                                       Var::Array({0})}).hr, S_OK);
  EXPECT_EQ(Shown(XValues()[0].v), Shown(S_OK, VT_DATE, 45306.25));

  // A DISCRETE axis keeps texts as labels and numbers its categories.
  BuildGraph(L"DISCRETE");
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Array({L"1,000.5", L"2024-01-15", L"abc"}),
                                       Var::Array({1, 2, 3}), Var::Array({0, 0, 0})}).hr, S_OK);
  Var categories = XValues();
  for (LONG i = 0; i < 3; ++i) EXPECT_EQ(Shown(categories[i].v), Shown(S_OK, VT_I4, i + 1));
}

TEST_F(TextArgumentTest, AxisEndsAndLimitValuesTakeThePlatformsValueOrChangeNothing) {
  for (const AxisType& axis : kAxisTypes) {
    ASSERT_NO_FATAL_FAILURE(BuildGraph(axis.name, axis.name));
    for (const wchar_t* text : kArguments) {
      std::string before = Shown(AxisMax().v);
      Var expected, readBack;
      HRESULT platform = PlatformConversion(text, axis.stored, expected);
      Outcome max = SetAxisMax(text);
      Outcome limit = Call(L"AddLimitValue", {1, text});  // on the y axis
      if (SUCCEEDED(platform)) {
        EXPECT_EQ(max.hr, S_OK) << axis.name << " \"" << text << '"';
        VariantChangeType(&readBack.v, &expected.v, 0, axis.readBack);
        EXPECT_EQ(Shown(AxisMax().v), Shown(readBack.v)) << axis.name << " \"" << text << '"';
        EXPECT_EQ(limit.hr, S_OK) << axis.name << " \"" << text << '"';
      } else {
        EXPECT_EQ(max.description, L"Wrong MAX value type") << axis.name << " \"" << text << '"';
        EXPECT_EQ(Shown(AxisMax().v), before);
        EXPECT_EQ(limit.description, L"The limit value type does not match the axis type");
      }
    }
  }
}

TEST_F(TextArgumentTest, MarginsAndZoomRectangleTakeThePlatformsValues) {
  const wchar_t* margins[] = {L"1,000", L" 20 ", L"+5", L"2.5"};
  ASSERT_EQ(Put(L"Margins", Var::Array({margins[0], margins[1], margins[2], margins[3]})).hr, S_OK);
  Var stored = Get(L"Margins").result;
  for (LONG i = 0; i < 4; ++i) EXPECT_EQ(Shown(Element(stored, i).v), PlatformShown(margins[i], VT_I4)) << i;
  EXPECT_EQ(Put(L"Margins", Var::Array({L"1", L"2", L"3", L"4 apples"})).description,
            L"Error occurred while accessing Array elements, error code=11000");
  EXPECT_EQ(Shown(Element(Get(L"Margins").result, 0).v), Shown(Element(stored, 0).v));

  const wchar_t* zoom[] = {L".25", L" 7.5e-1 ", L"0", L"1"};
  ASSERT_EQ(Put(L"ZoomRect", Var::Array({zoom[0], zoom[1], zoom[2], zoom[3]})).hr, S_OK);
  stored = Get(L"ZoomRect").result;
  for (LONG i = 0; i < 4; ++i) EXPECT_EQ(Shown(Element(stored, i).v), PlatformShown(zoom[i], VT_R4)) << i;
  EXPECT_EQ(Put(L"ZoomRect", Var::Array({L"0", L"1", L"0", L"one"})).description,
            L"Error occurred while accessing Array elements, error code=10000");
  EXPECT_EQ(Shown(Element(Get(L"ZoomRect").result, 0).v), Shown(Element(stored, 0).v));
}

}  // namespace
}  // namespace zel::testing
