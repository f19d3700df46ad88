#pragma once
// The oracles that need no knowledge of the control: a crash (a fault in the
// control, or any exception nobody handles), a hang (a step running longer
// than its limit) and leaks (heap bytes in use, GDI and USER objects).
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "call_log.h"

namespace zel::fuzz {

// What a crash or a hang report names besides the log.
struct RunIdentity {
  uint64_t seed = 0;
  std::atomic<uint64_t> step{0};
  const CallLog* log = nullptr;
};

// Reports and ends the process (exit status 3) on an access violation, a
// stack overflow or another fault raised in `module` or touching the guarded
// range, and on any exception that reaches the top unhandled.
void WatchForCrashes(RunIdentity& run, HMODULE module, const void* guardedFrom, const void* guardedTo);

// A thread that reports and ends the process (exit status 4) when a step
// of the thread that made it runs longer than `limitMs`, with that thread's
// stack. The step's time is the thread's processor time, so that a machine
// busy with other work does not make a slow step look hung; a step that
// waits (a deadlock) is judged by the clock, at ten times the limit.
class Watchdog {
 public:
  Watchdog(RunIdentity& run, unsigned limitMs);
  ~Watchdog();
  void Enter() {
    busyAtEnter_.store(BusyMs(GetCurrentThread()));
    since_.store(GetTickCount64() | 1);
  }
  void Leave() { since_.store(0); }

 private:
  static DWORD WINAPI Watch(void* self);
  static uint64_t BusyMs(HANDLE thread);
  RunIdentity& run_;
  unsigned limitMs_;
  std::atomic<uint64_t> since_{0}, busyAtEnter_{0};
  std::atomic<bool> stop_{false};
  HANDLE thread_ = nullptr;
  HANDLE watched_ = nullptr;  // the thread that runs the steps
};

struct Resources {
  long long heapBytes = 0;
  long gdiObjects = 0, userObjects = 0, windows = 0;
  std::string Text() const;
};

// Bytes in use on every heap of the process (HeapWalk), the process's GDI
// and USER objects (GetGuiResources) and the windows of this thread.
Resources Measure();

}  // namespace zel::fuzz
