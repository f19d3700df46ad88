#pragma once
// The module: its handle, path and the count of objects and locks that keep
// it loaded.
#include <windows.h>

#include <string>

namespace zel {

HINSTANCE ModuleInstance();
std::wstring ModulePath();

void LockModule();
void UnlockModule();

}  // namespace zel
