#include "interaction/highlight.h"

namespace zel {

void CurveHighlight::Show(int32_t index, int32_t logId, int32_t seconds) {
  Stop(index >= 0);
  if (index < 0 || seconds == kNoDuration) return;
  curvelogId_ = logId;
  Start(index, seconds);
}

void CurveHighlight::Stop(bool aboutToShow) {
  if ((highlightActive_ || aboutToShow) && HasWindow()) {
    window_.KillTimer(kTimerId);
    window_.Invalidate(true);
  }
  highlightElapsed_ = 0;
  highlightIndex_ = -1;
  highlightActive_ = 0;
  highlightSeconds_ = kNoDuration;
  graph_.SetHighlightedCurve(std::nullopt);
}

void CurveHighlight::Tick() {
  bool lasts = highlightSeconds_ == kWithoutEnd ||
               (highlightSeconds_ != kNoDuration && highlightElapsed_ <= highlightSeconds_);
  if (!lasts) {
    Stop();
    return;
  }
  // A duration of 0 never counts, so it never ends.
  if (highlightSeconds_ >= 1) ++highlightElapsed_;
  MarkCurve();
  // Each repaint flips the highlighted curve's colours: a blink a second.
  if (HasWindow() && !graph_.suspendDraw()) window_.Invalidate(true);
}

void CurveHighlight::UpdateDuration(int32_t seconds) {
  highlightSeconds_ = seconds;
  if (highlightIndex_ < 0) return;
  int32_t index = highlightIndex_;
  Stop();
  Start(index, seconds);
  curvelogId_ = highlightActive_;
}

void CurveHighlight::Start(int32_t index, int32_t seconds) {
  highlightSeconds_ = seconds;
  highlightElapsed_ = 0;
  highlightActive_ = 1;
  highlightIndex_ = index;
  MarkCurve();
  if (HasWindow()) window_.SetTimer(kTimerId, kTimerPeriodMs);
}

void CurveHighlight::MarkCurve() {
  const auto& entries = graph_.datasets().entries();
  if (highlightIndex_ >= 0 && size_t(highlightIndex_) < entries.size())
    graph_.SetHighlightedCurve(entries[size_t(highlightIndex_)].id);
  else
    graph_.SetHighlightedCurve(std::nullopt);
}

}  // namespace zel
