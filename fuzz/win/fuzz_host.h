#pragma once
// The control hosted as a form hosts it: ATL's container window (Wine's
// atl.dll) inside a top window, the sinks connected, and the window-side
// steps of a run: paints, resizes, drawing into a memory context and the
// window messages an operator's mouse and keyboard produce. Nothing here
// opens the context menu or a property frame; message boxes the control
// shows (it tells the operator to add a hairline first) are answered at once.
#include <windows.h>
#include <ocidl.h>

#include <string>

#include "random_source.h"
#include "reentrant_sink.h"
#include "zelgraph_idl.h"

namespace zel::fuzz {

class FuzzHost {
 public:
  explicit FuzzHost(ReentrantSink& sink) : sink_(sink) {}
  ~FuzzHost() { Destroy(); }

  // False, with `problem` set, when the control cannot be hosted.
  bool Create(std::wstring& problem);
  void Destroy();
  bool exists() const { return graph_ != nullptr; }
  IVX_Graph* graph() const { return graph_; }
  HWND window() const { return window_; }

  // One window-side step, written into `log`.
  void Act(RandomSource& random, std::wstring& log);
  // Dispatches what is queued for the thread's windows except timers, which
  // the run sends itself so that a seed replays.
  static void Pump();
  // Message boxes and dialogs closed since the start of the process.
  static unsigned DialogsClosed();

 private:
  void Mouse(RandomSource& random, std::wstring& log);
  void Key(RandomSource& random, std::wstring& log);
  void Resize(RandomSource& random, std::wstring& log);
  void DrawIntoMemory(RandomSource& random, std::wstring& log);

  ReentrantSink& sink_;
  HWND frame_ = nullptr, host_ = nullptr, window_ = nullptr;
  IVX_Graph* graph_ = nullptr;
  IConnectionPoint* events_ = nullptr;
  IConnectionPoint* changes_ = nullptr;
  DWORD eventsCookie_ = 0, changesCookie_ = 0;
};

}  // namespace zel::fuzz
