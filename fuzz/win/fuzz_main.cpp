// zelgraph_win_fuzzer: calls every entry of the hosted control's dispatch
// interface, as its type library describes it, with extreme arguments,
// late-bound and through the vtable, mixed with window messages, paints and
// resizes, while an event sink calls back into the control. It reports a
// crash, a hang, a leak, a failing call that changed the graph and a failing
// call that wrote an out parameter. A seed replays a run.
//
//   zelgraph_win_fuzzer [--seed=N] [--calls=M] [--warmup=K] [--step-limit-ms=T] [--stats] [--self-check]
//                       [--only=Name,Name] [--window-percent=P] [--skip-leaks]
//
// --calls counts steps (calls and window steps); --warmup the steps before
// the leak baseline (default a tenth, at most 2000); a step running longer
// than --step-limit-ms (default 2000) of processor time is a hang;
// --skip-leaks leaves out the leak oracle.
// The BSTR cache of oleaut32 would hold freed strings and look like a leak:
// the fuzzer runs itself again with the cache off (OANOCACHE) when it is on.
// Prints one PASS or FAIL line per oracle and "done" at its end.
#include <windows.h>
#include <ole2.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "argument_maker.h"
#include "call_log.h"
#include "call_runner.h"
#include "fuzz_host.h"
#include "guarded_arena.h"
#include "oracles.h"
#include "random_source.h"
#include "reentrant_sink.h"
#include "state_snapshot.h"
#include "type_catalog.h"

namespace zel::fuzz {
namespace {

struct Options {
  uint64_t seed = 1;
  uint64_t steps = 20000;
  uint64_t warmup = 0;  // 0: a tenth of the run, at most 2000 steps
  bool selfCheck = false;
  bool stats = false;
  bool skipLeaks = false;
  bool trace = false;  // each call step on stderr, after the platform's own warnings about it
  uint64_t stepLimitMs = 2000;
  uint64_t windowPercent = 22;
  std::wstring only;  // entry names, comma-separated; empty for all
};

// Heap bytes the run may end with beyond the level after the warm-up: what
// the platform's caches and the process-wide settings may still settle.
constexpr long long kHeapTolerance = 64 * 1024;
constexpr unsigned kMaxNestedCalls = 6;
constexpr int kMaxReports = 5;

class Fuzzer {
 public:
  explicit Fuzzer(const Options& options)
      : options_(options), random_(options.seed), host_(sink_), watchdog_(run_, unsigned(options.stepLimitMs)) {
    run_.seed = options.seed;
    run_.log = &log_;
  }
  int Run();

 private:
  bool Start();
  void Step(uint64_t step);
  void CallStep(std::wstring& line);
  void OnNotified(DISPID id);
  void Reenter(const wchar_t* why, unsigned calls);
  void Connect();
  void Finding(const char* oracle, const std::wstring& detail);
  void CheckLeaks(const Resources& before, const Resources& after, LONG borrowed);
  void SelfCheckMeter();
  void Summary(double seconds);

  Options options_;
  RandomSource random_;
  GuardedArena arena_;
  CallLog log_;
  RunIdentity run_;
  ReentrantSink sink_;
  FuzzHost host_;
  Watchdog watchdog_;
  std::unique_ptr<TypeCatalog> catalog_;
  std::unique_ptr<ArgumentMaker> maker_;
  std::unique_ptr<CallRunner> runner_;
  std::vector<size_t> chosen_;  // the entries the run calls

  std::wstring before_;
  bool snapshotStale_ = true;
  bool snapshotting_ = false;
  bool changedByReentry_ = false;
  unsigned nesting_ = 0, nestedThisStep_ = 0;
  uint64_t calls_ = 0, windowSteps_ = 0, notifications_ = 0, nestedCalls_ = 0, recreations_ = 0;
  uint64_t failedCalls_ = 0, strongChecks_ = 0;
  int strongFailures_ = 0, outFailures_ = 0, failures_ = 0;
  unsigned dialogsAtBaseline_ = 0;
};

void Fuzzer::Finding(const char* oracle, const std::wstring& detail) {
  ++failures_;
  printf("FAIL %s at step %llu, seed %llu:\n  %ls\nthe last steps:\n", oracle,
         static_cast<unsigned long long>(run_.step.load()), static_cast<unsigned long long>(options_.seed),
         detail.c_str());
  log_.Print(stdout);
}

void Fuzzer::Connect() {
  IVX_Graph* graph = host_.graph();
  maker_->SetControl(graph);
  runner_->SetControl(graph);
  snapshotStale_ = true;
}

bool Fuzzer::Start() {
  std::wstring problem;
  if (!host_.Create(problem)) {
    printf("FAIL the control could not be hosted: %ls\n", problem.c_str());
    return false;
  }
  catalog_ = std::make_unique<TypeCatalog>(host_.graph());
  if (!catalog_->problem().empty()) {
    printf("FAIL the type library could not be read: %ls\n", catalog_->problem().c_str());
    return false;
  }
  for (size_t i = 0; i < catalog_->entries().size(); ++i)
    if (options_.only.empty() || options_.only.find(L"," + catalog_->entries()[i].name + L",") != std::wstring::npos)
      chosen_.push_back(i);
  if (chosen_.empty()) {
    printf("FAIL --only names no entry\n");
    return false;
  }
  maker_ = std::make_unique<ArgumentMaker>(random_, arena_, *catalog_);
  runner_ = std::make_unique<CallRunner>(*catalog_, *maker_, arena_, random_);
  Connect();
  sink_.onNotified = [this](DISPID id) { OnNotified(id); };
  maker_->SetReentry([this] { Reenter(L"a probe asked for its value calls back", 1); });
  // The first paint and the first message box load fonts, which under Wine
  // may take seconds: that happens here, before the watchdog counts.
  auto primeStart = std::chrono::steady_clock::now();
  RedrawWindow(host_.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  SendMessageW(host_.window(), WM_KEYDOWN, VK_LEFT, 1);
  FuzzHost::Pump();
  double primed = std::chrono::duration<double>(std::chrono::steady_clock::now() - primeStart).count();
  if (options_.stats) printf("  first paint and message box: %.2f s\n", primed);
  auto [from, to] = arena_.Range();
  WatchForCrashes(run_, GetModuleHandleW(L"ZELGraph.dll"), from, to);
  if (options_.stats) {
    for (const Entry& entry : catalog_->entries()) printf("  %ls\n", entry.Signature().c_str());
  }
  return true;
}

// Events and property changes: the handler answers, sometimes with a
// failure, and sometimes calls back into the control first.
void Fuzzer::OnNotified(DISPID id) {
  ++notifications_;
  if (snapshotting_ || !host_.exists()) return;
  sink_.answer = random_.Percent(80) ? S_OK : random_.Percent(50) ? E_FAIL : DISP_E_EXCEPTION;
  std::wstring& line = log_.Begin(run_.step);
  line += id >= 0x10000 ? L"  property changed " + std::to_wstring(id - 0x10000) : L"  event " + std::to_wstring(id);
  if (random_.Percent(60)) Reenter(L"  the handler calls back", unsigned(random_.Between(1, 3)));
}

void Fuzzer::Reenter(const wchar_t* why, unsigned calls) {
  if (nesting_ >= 2 || !host_.exists() || snapshotting_) return;
  for (unsigned i = 0; i < calls && nestedThisStep_ < kMaxNestedCalls; ++i, ++nestedThisStep_) {
    ++nesting_, ++nestedCalls_;
    std::wstring& line = log_.Begin(run_.step);
    line += why;
    line += L": ";
    CallOutcome outcome = runner_->Call(random_.Below(catalog_->entries().size()), random_.Percent(50), line);
    changedByReentry_ |= SUCCEEDED(outcome.hr);
    --nesting_;
  }
}

// A call that fails must leave every getter answering as before and its
// out parameters as they were given. A call back from an event handler
// that succeeded may have changed the graph meanwhile: such calls are not
// judged.
void Fuzzer::CallStep(std::wstring& line) {
  ++calls_;
  size_t index = chosen_[random_.Below(chosen_.size())];
  bool vtable = random_.Percent(50);
  if (options_.selfCheck) {
    runner_->Call(index, vtable, line, true);
    return;
  }
  if (snapshotStale_) {
    snapshotting_ = true;
    before_ = Snapshot(host_.graph());
    snapshotting_ = false;
    snapshotStale_ = false;
  }
  changedByReentry_ = false;
  watchdog_.Enter();
  CallOutcome outcome = runner_->Call(index, vtable, line);
  watchdog_.Leave();
  if (SUCCEEDED(outcome.hr) || changedByReentry_) {
    snapshotStale_ = true;
    return;
  }
  ++failedCalls_;
  if (outcome.wroteOutOnFailure && ++outFailures_ <= kMaxReports)
    Finding("out parameter written by a failing call", line);
  snapshotting_ = true;
  std::wstring after = Snapshot(host_.graph());
  snapshotting_ = false;
  ++strongChecks_;
  if (after != before_) {
    if (++strongFailures_ <= kMaxReports) Finding("strong guarantee", line + L"\n  " + FirstDifference(before_, after));
    before_ = after;
  }
}

void Fuzzer::Step(uint64_t step) {
  run_.step = step;
  nestedThisStep_ = 0;
  std::wstring& line = log_.Begin(step);
  if (!options_.selfCheck && random_.Below(1000) == 0) {
    ++recreations_;
    line += L"destroy the control and host a new one";
    host_.Destroy();
    std::wstring problem;
    if (!host_.Create(problem)) Finding("hosting", problem);
    Connect();
    return;
  }
  if (random_.Percent(unsigned(options_.windowPercent))) {
    ++windowSteps_;
    if (options_.selfCheck) return;
    watchdog_.Enter();
    host_.Act(random_, line);
    watchdog_.Leave();
    snapshotStale_ = true;
    return;
  }
  CallStep(line);
  FuzzHost::Pump();
  if (options_.trace) fprintf(stderr, "step %llu: %ls\n", static_cast<unsigned long long>(step), line.c_str());
}

void Fuzzer::CheckLeaks(const Resources& before, const Resources& after, LONG borrowed) {
  long long heap = after.heapBytes - before.heapBytes;
  std::string text = "after the warm-up " + before.Text() + "; at the end " + after.Text() +
                     "; references still held on the fuzzer's objects: " + std::to_string(borrowed);
  // Wine's message box keeps up to one GDI object of its own per box shown
  // (20 boxes with an owner keep 8): the boxes answered since the baseline
  // are allowed for.
  long boxes = long(FuzzHost::DialogsClosed() - dialogsAtBaseline_);
  bool leaked = heap > kHeapTolerance || after.gdiObjects > before.gdiObjects + boxes ||
                after.userObjects > before.userObjects || after.windows > before.windows || borrowed != 0;
  printf("%s leak: heap %+lld bytes (tolerance %lld), GDI %+ld (tolerance %ld, the message boxes shown), USER %+ld,"
         " windows %+ld, references %ld\n  %s\n",
         leaked ? "FAIL" : "PASS", heap, kHeapTolerance, after.gdiObjects - before.gdiObjects, boxes,
         after.userObjects - before.userObjects, after.windows - before.windows, long(borrowed), text.c_str());
  failures_ += leaked;
}

// The meter must see what it is meant to see: a block and a pen made
// between two measurements show up in them.
void Fuzzer::SelfCheckMeter() {
  constexpr SIZE_T kBlock = 256 * 1024;
  Resources before = Measure();
  void* block = HeapAlloc(GetProcessHeap(), 0, kBlock);
  HPEN pen = CreatePen(PS_SOLID, 1, 0);
  Resources during = Measure();
  DeleteObject(pen);
  HeapFree(GetProcessHeap(), 0, block);
  bool heapSeen = during.heapBytes - before.heapBytes >= (long long)kBlock;
  bool gdiSeen = during.gdiObjects - before.gdiObjects == 1;
  printf("%s self-check: the meter sees a block of %llu bytes (%+lld measured)\n", heapSeen ? "PASS" : "FAIL",
         static_cast<unsigned long long>(kBlock), during.heapBytes - before.heapBytes);
  printf("%s self-check: the meter sees a pen (%+ld GDI objects measured)\n", gdiSeen ? "PASS" : "FAIL",
         during.gdiObjects - before.gdiObjects);
  failures_ += !heapSeen + !gdiSeen;
}

void Fuzzer::Summary(double seconds) {
  printf("%s no crash or hang: %llu steps (%llu calls, %llu window steps, %llu recreations), %llu notifications,"
         " %llu calls back from handlers, %u dialogs answered; seed %llu, %.1f s\n",
         "PASS", static_cast<unsigned long long>(options_.steps), static_cast<unsigned long long>(calls_),
         static_cast<unsigned long long>(windowSteps_), static_cast<unsigned long long>(recreations_),
         static_cast<unsigned long long>(notifications_), static_cast<unsigned long long>(nestedCalls_),
         FuzzHost::DialogsClosed(), static_cast<unsigned long long>(options_.seed), seconds);
  if (options_.selfCheck) return;
  printf("%s strong guarantee: %llu failing calls compared, %d changed the graph\n",
         strongFailures_ ? "FAIL" : "PASS", static_cast<unsigned long long>(strongChecks_), strongFailures_);
  printf("%s out parameters: %llu failing calls, %d wrote into an out parameter\n", outFailures_ ? "FAIL" : "PASS",
         static_cast<unsigned long long>(failedCalls_), outFailures_);
  if (!options_.stats) return;
  const auto& tallies = runner_->tallies();
  for (size_t i = 0; i < tallies.size(); ++i)
    printf("  %-28ls %6u calls %6u succeeded\n", catalog_->entries()[i].name.c_str(), tallies[i].calls,
           tallies[i].succeeded);
}

// The run: a warm-up that fills the platform's caches, then the measured
// part. Leaks are judged with no control alive: at the end of the warm-up
// and at the end of the run the control is destroyed before measuring. The
// self-check runs the same machinery with calls that are only made up and
// freed, and no window steps.
int Fuzzer::Run() {
  if (!Start()) return 2;
  uint64_t warmup = options_.warmup ? options_.warmup : std::min<uint64_t>(options_.steps / 10, 2000);
  Resources baseline;
  LONG borrowedBefore = 0;
  auto start = std::chrono::steady_clock::now();
  for (uint64_t step = 0; step < options_.steps; ++step) {
    if (step == warmup) {
      host_.Destroy();
      Connect();
      baseline = Measure();
      dialogsAtBaseline_ = FuzzHost::DialogsClosed();
      borrowedBefore = maker_->BorrowedReferences() + sink_.Borrowed();
      std::wstring problem;
      if (!options_.selfCheck && !host_.Create(problem)) Finding("hosting", problem);
      Connect();
    }
    Step(step);
  }
  host_.Destroy();
  Connect();
  Resources end = Measure();
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  Summary(seconds);
  LONG borrowed = maker_->BorrowedReferences() + sink_.Borrowed();
  if (!options_.skipLeaks) CheckLeaks(baseline, end, borrowed - (options_.selfCheck ? borrowedBefore : 0));
  if (options_.selfCheck) SelfCheckMeter();
  printf("done\n");
  fflush(stdout);
  return failures_ ? 1 : 0;
}

bool Parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    auto number = [&](const char* name, uint64_t& out) {
      size_t length = strlen(name);
      if (strncmp(arg, name, length) != 0) return false;
      out = strtoull(arg + length, nullptr, 10);
      return true;
    };
    if (number("--seed=", options.seed) || number("--calls=", options.steps) || number("--warmup=", options.warmup) ||
        number("--step-limit-ms=", options.stepLimitMs) || number("--window-percent=", options.windowPercent))
      continue;
    if (!strncmp(arg, "--only=", 7)) {
      options.only.assign(arg + 7, arg + strlen(arg));
      options.only = L"," + options.only + L",";
      continue;
    }
    if (!strcmp(arg, "--self-check")) options.selfCheck = true;
    else if (!strcmp(arg, "--skip-leaks")) options.skipLeaks = true;
    else if (!strcmp(arg, "--trace")) options.trace = true;
    else if (!strcmp(arg, "--stats")) options.stats = true;
    else return false;
  }
  return options.steps > 0;
}

}  // namespace
}  // namespace zel::fuzz

// Runs this program again with oleaut32's string cache off, which it reads
// when it loads; returns the run's exit status.
int RunWithoutStringCache() {
  SetEnvironmentVariableW(L"OANOCACHE", L"1");
  STARTUPINFOW startup{sizeof(startup)};
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, GetCommandLineW(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process))
    return 2;
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 2;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return int(status);
}

int main(int argc, char** argv) {
  if (!GetEnvironmentVariableW(L"OANOCACHE", nullptr, 0)) return RunWithoutStringCache();
  zel::fuzz::Options options;
  if (!zel::fuzz::Parse(argc, argv, options)) {
    fprintf(stderr, "usage: zelgraph_win_fuzzer [--seed=N] [--calls=M] [--warmup=K] [--step-limit-ms=T] [--stats]"
                    " [--self-check] [--only=Name,Name] [--window-percent=P] [--skip-leaks]\n");
    return 2;
  }
  setvbuf(stdout, nullptr, _IOFBF, 1 << 16);
  OleInitialize(nullptr);
  int status = zel::fuzz::Fuzzer(options).Run();
  fflush(stdout);
  // The process ends here: the control's module and the platform's caches
  // are not worth tearing down.
  TerminateProcess(GetCurrentProcess(), UINT(status));
  return status;
}
