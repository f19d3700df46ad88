#include "control/verb_enumerator.h"

#include <new>

#include "control/com_support.h"
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

class VerbEnumerator final : public IEnumOLEVERB {
 public:
  explicit VerbEnumerator(ULONG position = 0) : position_(position) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IEnumOLEVERB, this}});
  }
  STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&refs_); }
  STDMETHODIMP_(ULONG) Release() override {
    LONG refs = InterlockedDecrement(&refs_);
    if (refs == 0) delete this;
    return ULONG(refs);
  }
  STDMETHODIMP Next(ULONG count, OLEVERB* verbs, ULONG* fetched) override {
    if (!verbs) return E_POINTER;
    ULONG given = 0;
    for (; given < count && position_ < kVerbCount; ++given, ++position_) {
      const Verb& verb = kVerbs[position_];
      verbs[given] = {verb.id, VerbName(verb.textId), MF_STRING, verb.attributes};
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    ULONG left = kVerbCount - position_;
    position_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumOLEVERB** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) VerbEnumerator(position_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  LONG refs_ = 1;
  ULONG position_;
};

}  // namespace

HRESULT EnumerateVerbs(IEnumOLEVERB** verbs) {
  if (!verbs) return E_POINTER;
  *verbs = new (std::nothrow) VerbEnumerator();
  return *verbs ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zel
