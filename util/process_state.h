#pragma once
// Settings kept once per process and shared by every control in it. The
// automation entries that write them belong to the controls, but the values
// do not: a second control in the same process sees what the first one set.
#include <array>
#include <cstdint>

#include "util/text.h"

namespace zel {

struct ProcessState {
  // Whether the second, third and fourth Y axis get a band of their own.
  std::array<int32_t, 3> splitYAxis{};
  // 0 normally; 1, 2 and 3 change time labels and hairline labels. Kept as
  // the host's number: any value above 0 rounds hairline labels, so values
  // outside 0..3 mean something too.
  int32_t reportType = 0;
  // The date-time format of SetDTFormat (at most 62 characters), and whether
  // the annotation format choice has ever seen it non-empty; once it has, it
  // keeps deriving time formats from it even after it is emptied again.
  Text dateTimeFormat;
  bool dateTimeFormatSeen = false;
  // setGraphColor's pair and SetXMLColor's pair.
  uint32_t backgroundColor = 0;
  uint32_t gridColor = 0;
  std::array<int32_t, 2> xmlColors{};
  // SetGraphType's value (its low 16 bits, sign-extended).
  int32_t graphType = 0;
  // The bar assignment default that setDefaultAsignType sets to -1, and the
  // one-byte flag it raises.
  int32_t assignType = 0;
  uint8_t assignTypeSet = 0;
  // The value mode of the drawing code (0 to 3). No entry of the interface
  // sets it, so it stays 0; the bar rules of the other modes are kept.
  int32_t valueMode = 0;
  // Identifier counters: ids are never reused within the process.
  int32_t nextHairlineId = 0;
  int32_t nextLimitValueId = 0;
  // Toggles that make highlighted curves and bars blink, and the running
  // slot of the bar being drawn.
  bool curveBlink = false;
  bool barBlink = false;
  int32_t runningBarIndex = 0;
  // Vertical pixels per logical inch of the display: 0 until the first
  // font size is read, then never refreshed.
  int32_t screenResolution = 0;
  // The language of the texts ("EN" unless the host chose another).
  Text language = u"EN";
};

// The one instance of the process.
ProcessState& Process();

// Puts every setting back to its start value (for tests).
void ResetProcessState();

}  // namespace zel
