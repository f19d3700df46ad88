#include "control/gdi_object_cache.h"

#include <algorithm>

#include "control/platform_win.h"

namespace zel {

HPEN CreatePenFor(const Pen& pen) {
  if (!pen.geometric) return CreatePen(pen.style, pen.width, pen.color);
  LOGBRUSH brush{BS_SOLID, pen.color, 0};
  return ExtCreatePen(PS_GEOMETRIC | DWORD(pen.style), DWORD(pen.width), &brush, 0, nullptr);
}

namespace {

// The handle kept for `key`, made by `make` the first time it is asked for.
template <typename Key, typename Handle, typename Make>
Handle Lookup(std::vector<std::pair<Key, Handle>>& kept, const Key& key, Make&& make) {
  auto found = std::find_if(kept.begin(), kept.end(), [&](const auto& entry) { return entry.first == key; });
  if (found != kept.end()) return found->second;
  Handle handle = make();
  if (handle) kept.emplace_back(key, handle);
  return handle;
}

}  // namespace

void GdiObjectCache::LetGo() {
  if (--holders_ > 0) return;
  holders_ = 0;
  if (releasePending_ || OverBound()) DeleteAll();
}

HPEN GdiObjectCache::PenFor(const Pen& pen) {
  return Lookup(pens_, pen, [&] { return CreatePenFor(pen); });
}

HBRUSH GdiObjectCache::BrushFor(Color color) {
  return Lookup(brushes_, color, [&] { return CreateSolidBrush(color); });
}

HFONT GdiObjectCache::FontFor(const LogFont& font) {
  if (FontEntry* entry = FindFont(font)) return entry->handle;
  LOGFONTW logFont = ToLogFontW(font);
  HFONT handle = CreateFontIndirectW(&logFont);
  if (handle) fonts_.push_back({font, handle, {}});
  return handle;
}

GdiObjectCache::FontEntry* GdiObjectCache::FindFont(const LogFont& font) {
  auto found = std::find_if(fonts_.begin(), fonts_.end(), [&](const FontEntry& entry) { return entry.spec == font; });
  return found != fonts_.end() ? &*found : nullptr;
}

void GdiObjectCache::Release() {
  if (holders_ > 0) releasePending_ = true;
  else DeleteAll();
}

bool GdiObjectCache::OverBound() const {
  return pens_.size() > kMaxObjects || brushes_.size() > kMaxObjects || fonts_.size() > kMaxObjects;
}

void GdiObjectCache::DeleteAll() {
  for (auto& [pen, handle] : pens_) DeleteObject(handle);
  for (auto& [color, handle] : brushes_) DeleteObject(handle);
  for (FontEntry& font : fonts_) DeleteObject(font.handle);
  pens_.clear();
  brushes_.clear();
  fonts_.clear();
  releasePending_ = false;
}

}  // namespace zel
