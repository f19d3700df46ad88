#include "oracles.h"

#include <cstdio>
#include <vector>

namespace zel::fuzz {
namespace {

RunIdentity* crashRun = nullptr;
HMODULE watchedModule = nullptr;
uintptr_t moduleFrom = 0, moduleTo = 0, guardFrom = 0, guardTo = 0;

void PrintFrames(CONTEXT context);

void ReportAndEnd(const char* what, DWORD code, const void* address, UINT status, const CONTEXT* context) {
  uintptr_t at = uintptr_t(address);
  fprintf(stdout, "FAIL %s: exception 0x%08lX at %p%s%llx, step %llu, seed %llu\n", what, code, address,
          at >= moduleFrom && at < moduleTo ? " (ZELGraph.dll+0x" : " (+0x",
          static_cast<unsigned long long>(at >= moduleFrom && at < moduleTo ? at - moduleFrom : 0),
          static_cast<unsigned long long>(crashRun->step.load()), static_cast<unsigned long long>(crashRun->seed));
  fprintf(stdout, "the last steps:\n");
  if (crashRun->log) crashRun->log->Print(stdout);
  if (context) {
    printf("where it happened:\n");
    PrintFrames(*context);
  }
  fflush(stdout);
  TerminateProcess(GetCurrentProcess(), status);
}

bool IsFault(DWORD code) {
  switch (code) {
    case EXCEPTION_ACCESS_VIOLATION: case EXCEPTION_STACK_OVERFLOW: case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_INT_DIVIDE_BY_ZERO: case EXCEPTION_PRIV_INSTRUCTION: case EXCEPTION_ARRAY_BOUNDS_EXCEEDED:
    case STATUS_HEAP_CORRUPTION: case STATUS_STACK_BUFFER_OVERRUN:
      return true;
    default:
      return false;
  }
}

// First chance: a fault in the control's code, or on the fuzzer's guard
// pages wherever the code is, counts even if someone would handle it.
LONG CALLBACK FirstChance(EXCEPTION_POINTERS* info) {
  const EXCEPTION_RECORD* record = info->ExceptionRecord;
  if (!IsFault(record->ExceptionCode)) return EXCEPTION_CONTINUE_SEARCH;
  uintptr_t at = uintptr_t(record->ExceptionAddress);
  uintptr_t touched = record->ExceptionCode == EXCEPTION_ACCESS_VIOLATION ? record->ExceptionInformation[1] : 0;
  bool inControl = at >= moduleFrom && at < moduleTo;
  bool onGuard = touched >= guardFrom && touched < guardTo;
  if (inControl || onGuard) ReportAndEnd(onGuard ? "crash (guard page touched)" : "crash", record->ExceptionCode,
                                         record->ExceptionAddress, 3, info->ContextRecord);
  return EXCEPTION_CONTINUE_SEARCH;
}

LONG WINAPI LastChance(EXCEPTION_POINTERS* info) {
  ReportAndEnd("crash (unhandled)", info->ExceptionRecord->ExceptionCode, info->ExceptionRecord->ExceptionAddress, 3,
               info->ContextRecord);
  return EXCEPTION_EXECUTE_HANDLER;
}

// Module and offset of a code address, for reports.
void PrintAddress(DWORD64 address) {
  HMODULE module = nullptr;
  wchar_t name[MAX_PATH] = L"?";
  if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(address), &module)) {
    GetModuleFileNameW(module, name, MAX_PATH);
  }
  const wchar_t* file = wcsrchr(name, L'\\');
  printf("    %ls+0x%llx\n", file ? file + 1 : name, static_cast<unsigned long long>(address - DWORD64(module)));
}

// The frames from `context` on, as far as the unwind data leads; on x86,
// which has no unwind tables, the faulting address alone.
void PrintFrames(CONTEXT context) {
#ifndef _WIN64
  PrintAddress(context.Eip);
#else
  for (int frame = 0; frame < 24 && context.Rip; ++frame) {
    PrintAddress(context.Rip);
    DWORD64 base = 0;
    RUNTIME_FUNCTION* function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    if (!function) {  // a leaf, or no code at all: the return address is on top of the stack
      context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
      context.Rsp += 8;
      continue;
    }
    void* handlerData = nullptr;
    DWORD64 establisher = 0;
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &establisher, nullptr);
  }
#endif
}

// The frames of a stopped thread.
void PrintStack(HANDLE thread) {
  CONTEXT context{};
  context.ContextFlags = CONTEXT_FULL;
  if (SuspendThread(thread) == DWORD(-1)) return;
  if (GetThreadContext(thread, &context)) {
    printf("where the stuck step is:\n");
    PrintFrames(context);
  }
}

// The GDI objects in the process's handle table (the table the process
// environment block points to), for platforms whose GetGuiResources answers
// nothing, as Wine's does. Zero where there is no table.
long GdiTableObjects() {
#ifdef _WIN64
  struct HandleEntry {
    UINT64 object;
    USHORT owner, count, unique;
    UCHAR type, flags;
    UINT64 user;
  };
  static_assert(sizeof(HandleEntry) == 24);
  constexpr size_t kPebInTeb = 0x60, kTableInPeb = 0xF8, kEntries = 16384;
  auto* peb = *reinterpret_cast<BYTE**>(reinterpret_cast<BYTE*>(NtCurrentTeb()) + kPebInTeb);
  auto* table = peb ? *reinterpret_cast<const HandleEntry**>(peb + kTableInPeb) : nullptr;
  long count = 0;
  for (size_t i = 0; table && i < kEntries; ++i) count += table[i].type != 0;
  return count;
#else
  return 0;
#endif
}

BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
  ++*reinterpret_cast<long*>(count);
  EnumChildWindows(window, CountWindow, count);
  return TRUE;
}

}  // namespace

void WatchForCrashes(RunIdentity& run, HMODULE module, const void* guardedFrom, const void* guardedTo) {
  crashRun = &run;
  watchedModule = module;
  if (module) {
    auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(reinterpret_cast<const BYTE*>(module) + dos->e_lfanew);
    moduleFrom = uintptr_t(module);
    moduleTo = moduleFrom + nt->OptionalHeader.SizeOfImage;
  }
  guardFrom = uintptr_t(guardedFrom), guardTo = uintptr_t(guardedTo);
  AddVectoredExceptionHandler(1, FirstChance);
  SetUnhandledExceptionFilter(LastChance);
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
}

Watchdog::Watchdog(RunIdentity& run, unsigned limitMs) : run_(run), limitMs_(limitMs) {
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &watched_, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  thread_ = CreateThread(nullptr, 0, Watch, this, 0, nullptr);
}

Watchdog::~Watchdog() {
  stop_ = true;
  WaitForSingleObject(thread_, INFINITE);
  CloseHandle(thread_);
  CloseHandle(watched_);
}

DWORD WINAPI Watchdog::Watch(void* self) {
  auto& dog = *static_cast<Watchdog*>(self);
  while (!dog.stop_) {
    Sleep(100);
    uint64_t since = dog.since_.load();
    if (!since) continue;
    uint64_t busy = BusyMs(dog.watched_) - dog.busyAtEnter_.load();
    uint64_t now = GetTickCount64(), waited = now > since ? now - since : 0;
    if (since == dog.since_.load() && (busy > dog.limitMs_ || waited > 10ull * dog.limitMs_)) {
      fprintf(stdout, "FAIL hang: step %llu ran %llu ms (%llu ms busy) over a limit of %u ms, seed %llu\n"
              "the last steps:\n", static_cast<unsigned long long>(dog.run_.step.load()),
              static_cast<unsigned long long>(waited), static_cast<unsigned long long>(busy), dog.limitMs_,
              static_cast<unsigned long long>(dog.run_.seed));
      if (dog.run_.log) dog.run_.log->Print(stdout);
      PrintStack(dog.watched_);
      fflush(stdout);
      TerminateProcess(GetCurrentProcess(), 4);
    }
  }
  return 0;
}

uint64_t Watchdog::BusyMs(HANDLE thread) {
  FILETIME created, exited, kernel, user;
  if (!GetThreadTimes(thread, &created, &exited, &kernel, &user)) return 0;
  auto ms = [](const FILETIME& t) { return ((uint64_t(t.dwHighDateTime) << 32) | t.dwLowDateTime) / 10000; };
  return ms(kernel) + ms(user);
}

std::string Resources::Text() const {
  char text[160];
  snprintf(text, sizeof text, "%lld heap bytes, %ld GDI objects, %ld USER objects, %ld windows", heapBytes,
           gdiObjects, userObjects, windows);
  return text;
}

Resources Measure() {
  Resources r;
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 16);
  heaps.resize(GetProcessHeaps(DWORD(heaps.size()), heaps.data()));
  for (HANDLE heap : heaps) {
    if (!HeapLock(heap)) continue;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry))
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) r.heapBytes += entry.cbData;
    HeapUnlock(heap);
  }
  r.gdiObjects = long(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
  if (r.gdiObjects == 0) r.gdiObjects = GdiTableObjects();
  r.userObjects = long(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
  EnumThreadWindows(GetCurrentThreadId(), CountWindow, LPARAM(&r.windows));
  return r;
}

}  // namespace zel::fuzz
