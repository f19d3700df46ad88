#pragma once
// The drawing objects of a window that are the same from one frame to the
// next: pens by look, solid brushes by colour, fonts by specification, and
// the extents of the texts measured in each font. Surfaces on the display
// borrow them instead of making and deleting their own every frame.
//
// An object may be selected into a context only while a surface holds the
// cache (Hold/Let go); the cache deletes objects only when no surface holds
// it, which is after every borrowing context has its own objects back. It
// keeps a bounded number of each: past the bound it still hands out new
// objects, and lets all of them go once the last holder is done.
#include <windows.h>

#include <optional>
#include <unordered_map>
#include <vector>

#include "engine/surface.h"

namespace zel {

// A pen of that look (cosmetic, or geometric with a solid brush), made for
// the caller to delete.
HPEN CreatePenFor(const Pen& pen);

class GdiObjectCache {
 public:
  GdiObjectCache() = default;
  ~GdiObjectCache() { DeleteAll(); }
  GdiObjectCache(const GdiObjectCache&) = delete;
  GdiObjectCache& operator=(const GdiObjectCache&) = delete;

  // A surface starts and stops borrowing.
  void Hold() { ++holders_; }
  void LetGo();

  // Null when the platform cannot make the object.
  HPEN PenFor(const Pen& pen);
  HBRUSH BrushFor(Color color);
  HFONT FontFor(const LogFont& font);
  // The extent of `text` in `font` as `measure` finds it, measured once
  // while the font stays cached.
  template <typename Measure>
  Size Extent(const LogFont& font, TextView text, Measure&& measure);

  // Deletes every object now, or when the last holder lets go.
  void Release();

  // How many of each kind are kept before the cache lets all go.
  static constexpr size_t kMaxObjects = 32;
  static constexpr size_t kMaxExtentsPerFont = 512;

 private:
  struct FontEntry {
    LogFont spec;
    HFONT handle;
    std::unordered_map<Text, Size> extents;
  };

  FontEntry* FindFont(const LogFont& font);
  bool OverBound() const;
  void DeleteAll();

  std::vector<std::pair<Pen, HPEN>> pens_;
  std::vector<std::pair<Color, HBRUSH>> brushes_;
  std::vector<FontEntry> fonts_;
  int holders_ = 0;
  bool releasePending_ = false;
};

template <typename Measure>
Size GdiObjectCache::Extent(const LogFont& font, TextView text, Measure&& measure) {
  FontEntry* entry = FindFont(font);
  if (!entry) return measure();
  if (auto found = entry->extents.find(Text(text)); found != entry->extents.end()) return found->second;
  Size size = measure();
  if (entry->extents.size() >= kMaxExtentsPerFont) entry->extents.clear();
  entry->extents.emplace(Text(text), size);
  return size;
}

}  // namespace zel
