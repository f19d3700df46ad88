#pragma once
// Timed curve highlighting: one curve, chosen by its place among the
// datasets, is drawn highlighted (blinking) while a one-second window timer
// counts the seconds the host asked for.
#include <cstdint>

#include "engine/host_window.h"
#include "engine/v_graph.h"

namespace zel {

class CurveHighlight {
 public:
  static constexpr int kTimerId = 10101;
  static constexpr int kTimerPeriodMs = 1000;
  // Durations with a meaning of their own.
  static constexpr int32_t kNoDuration = -2;
  static constexpr int32_t kWithoutEnd = -1;

  CurveHighlight(VGraph& graph, HostWindow& window) : graph_(graph), window_(window) {}

  // Stops any highlight, then highlights the curve at `index` for `seconds`
  // unless the index is negative or the duration is kNoDuration.
  void Show(int32_t index, int32_t logId, int32_t seconds);
  // A highlight that is on, or one about to be shown, has its timer killed
  // and the window repainted with erase; the state is reset in every case.
  void Stop(bool aboutToShow = false);
  // One tick of the timer: keeps the curve highlighted while the duration
  // lasts, or stops the highlight. A duration N >= 1 ends at tick N + 2.
  void Tick();
  // Stores a new duration; an active highlight starts counting again and
  // its log id becomes the active flag (1), as hosts have always seen it.
  void UpdateDuration(int32_t seconds);

  int32_t highlightIndex() const { return highlightIndex_; }
  int32_t highlightActive() const { return highlightActive_; }
  int32_t highlightSeconds() const { return highlightSeconds_; }
  int32_t highlightElapsed() const { return highlightElapsed_; }
  int32_t curvelogId() const { return curvelogId_; }

 private:
  void Start(int32_t index, int32_t seconds);
  // Points the drawing at the dataset in place `highlightIndex_`, if any.
  void MarkCurve();
  bool HasWindow() const { return window_.Exists(); }

  VGraph& graph_;
  HostWindow& window_;
  int32_t highlightIndex_ = -1;
  int32_t highlightActive_ = 0;
  int32_t highlightSeconds_ = kNoDuration;
  int32_t highlightElapsed_ = 0;
  int32_t curvelogId_ = 0;
};

}  // namespace zel
