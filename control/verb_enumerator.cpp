#include "control/verb_enumerator.h"

#include "control/table_enumerator.h"
#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

struct Verb {
  LONG id;
  int textId;
  DWORD attributes;
};

constexpr Verb kVerbs[] = {{OLEIVERB_PROPERTIES, kMenuGraphSettings, OLEVERBATTRIB_ONCONTAINERMENU}};
constexpr ULONG kVerbCount = ULONG(std::size(kVerbs));

// A verb's name, allocated for the caller to free.
LPOLESTR VerbName(int textId) {
  Text text = LookupText(textId);
  auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  if (copy) std::copy(text.c_str(), text.c_str() + text.size() + 1, reinterpret_cast<char16_t*>(copy));
  return copy;
}

}  // namespace

HRESULT EnumerateVerbs(IEnumOLEVERB** verbs) {
  if (!verbs) return E_POINTER;
  *verbs = TableEnumerator<IEnumOLEVERB, OLEVERB>::Create(IID_IEnumOLEVERB, kVerbCount, [](ULONG i) {
    const Verb& verb = kVerbs[i];
    return OLEVERB{verb.id, VerbName(verb.textId), MF_STRING, verb.attributes};
  });
  return *verbs ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zel
