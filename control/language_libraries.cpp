#include "control/language_libraries.h"

#include "control/module.h"
#include "util/language_files.h"
#include "util/process_state.h"

namespace zel {
namespace {

constexpr TextView kDefaultLanguage = u"EN";
constexpr int kLookupBuffer = 256;

struct LanguageModules {
  HMODULE chosen = nullptr;
  HMODULE fallback = nullptr;  // the default language's, once loaded
};

LanguageModules& Libraries() {
  static LanguageModules libraries;
  return libraries;
}

// Loads the library of `language` by the first file name, else by the second.
// Loaded as a data file: only its string table is read, and none of its code
// runs, which also makes this safe while the module itself is being loaded.
HMODULE LoadLanguageLibrary(TextView language) {
  std::wstring module = ModulePath();
  TextView modulePath(reinterpret_cast<const char16_t*>(module.c_str()), module.size());
  for (const Text& name : LanguageLibraryNames(modulePath, language)) {
    HMODULE library = LoadLibraryExW(reinterpret_cast<LPCWSTR>(name.c_str()), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (library) return library;
  }
  return nullptr;
}

Text TextIn(HMODULE module, int id) {
  if (!module) return {};
  wchar_t buffer[kLookupBuffer];
  int length = LoadStringW(module, UINT(id), buffer, kLookupBuffer);
  return Text(reinterpret_cast<const char16_t*>(buffer), size_t(length > 0 ? length : 0));
}

}  // namespace

void ReloadLanguageLibraries() {
  LanguageModules& libraries = Libraries();
  if (libraries.chosen) FreeLibrary(libraries.chosen);
  libraries.chosen = nullptr;
  const Text& language = Process().language;
  if (language != kDefaultLanguage) libraries.chosen = LoadLanguageLibrary(language);
  if (!libraries.fallback) libraries.fallback = LoadLanguageLibrary(kDefaultLanguage);
}

void FreeLanguageLibraries() {
  LanguageModules& libraries = Libraries();
  for (HMODULE* library : {&libraries.chosen, &libraries.fallback}) {
    if (*library) FreeLibrary(*library);
    *library = nullptr;
  }
}

Text LanguageLibraryText(int id, HMODULE caller) {
  for (HMODULE module : {caller, Libraries().chosen, Libraries().fallback}) {
    Text text = TextIn(module, id);
    if (!text.empty()) return text;
  }
  return {};
}

}  // namespace zel
