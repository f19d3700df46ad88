// Axis labels: the format an axis chooses for its steps, the label of any
// value under any format, and the sample texts an axis measures.
#include "fuzz/fuzz_input.h"
#include "util/annotation_format.h"
#include "util/axis_value_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  fuzz::FreshProcess();
  auto type = AxisType(in.ConsumeIntegralInRange(-1, 4));
  Text chosen = ChooseAnnotationFormat(type, float(fuzz::ExtremeNumber(in)), float(fuzz::ExtremeNumber(in)));
  Text format = in.ConsumeBool() ? chosen : fuzz::TextOf(in, 40);
  CategoryLabels labels;
  for (int i = in.ConsumeIntegralInRange(0, 4); i > 0; --i)
    labels.push_back(in.ConsumeBool() ? std::optional<Text>(fuzz::TextOf(in, 8)) : std::nullopt);
  AxisLabelFormat axis{type, format, in.ConsumeBool() ? &labels : nullptr};
  FormatAxisValue(axis, fuzz::ExtremeNumber(in));
  LabelExtentTexts(axis, fuzz::ExtremeNumber(in), fuzz::ExtremeNumber(in));
  SplitDateTimeFormat(format, in.ConsumeBool());
  return 0;
}
