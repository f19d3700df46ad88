#pragma once
// Counting what a module asks of the platform: one of its imports pointed
// at a stand-in while a hook lives, through the module's import table.
#include <windows.h>

#include <cstring>

namespace zel::testing {

class ImportHook {
 public:
  // Points `module`'s import of `function` from `library` at `replacement`;
  // found() is false when the module does not import it by name.
  ImportHook(HMODULE module, const char* library, const char* function, void* replacement)
      : slot_(Slot(module, library, function)) {
    if (!slot_) return;
    original_ = *slot_;
    Write(replacement);
  }
  ~ImportHook() {
    if (slot_) Write(original_);
  }
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;

  bool found() const { return slot_ != nullptr; }
  void* original() const { return original_; }

 private:
  static void** Slot(HMODULE module, const char* library, const char* function) {
    auto* base = reinterpret_cast<BYTE*>(module);
    if (!base) return nullptr;
    auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* entry = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
    for (; imports.VirtualAddress && entry->Name; ++entry) {
      if (lstrcmpiA(reinterpret_cast<char*>(base + entry->Name), library) != 0) continue;
      DWORD names = entry->OriginalFirstThunk ? entry->OriginalFirstThunk : entry->FirstThunk;
      auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + names);
      auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + entry->FirstThunk);
      for (; name->u1.AddressOfData; ++name, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
        auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
        if (std::strcmp(reinterpret_cast<char*>(byName->Name), function) == 0)
          return reinterpret_cast<void**>(&slot->u1.Function);
      }
    }
    return nullptr;
  }
  void Write(void* value) {
    DWORD old = 0;
    VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &old);
    *slot_ = value;
    VirtualProtect(slot_, sizeof *slot_, old, &old);
  }

  void** slot_;
  void* original_ = nullptr;
};

}  // namespace zel::testing
