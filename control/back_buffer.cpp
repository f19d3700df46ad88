#include "control/back_buffer.h"

#include <algorithm>

namespace zel {

HDC BackBuffer::Begin(HDC target, int width, int height) {
  if (width < 1 || height < 1) return nullptr;
  std::optional<Format> format = FormatOf(target);
  bool sameKind = dc_ && format && format == format_;
  if (!sameKind || !Fits(width, height)) {
    // Grown to hold both the old and the new size, so that frames of
    // alternating shapes do not make a bitmap each.
    int across = sameKind ? std::max(width, width_) : width;
    int down = sameKind ? std::max(height, height_) : height;
    if (int64_t(across) * down > kMaxPixels) across = width, down = height;
    Release();
    if (!Make(target, across, down)) return nullptr;
    format_ = format;
  }
  savedState_ = SaveDC(dc_);
  IntersectClipRect(dc_, 0, 0, width, height);
  // The frame's own clip regions are intersected with this one.
  SetMetaRgn(dc_);
  return dc_;
}

void BackBuffer::End() {
  if (!dc_) return;
  RestoreDC(dc_, savedState_);
  if (!format_) Release();
}

void BackBuffer::ShrinkTo(int64_t pixels) {
  if (dc_ && int64_t(width_) * height_ > 2 * pixels) Release();
}

void BackBuffer::Release() {
  if (dc_) {
    SelectObject(dc_, oldBitmap_);
    DeleteDC(dc_);
  }
  if (bitmap_) DeleteObject(bitmap_);
  dc_ = nullptr;
  bitmap_ = nullptr;
  oldBitmap_ = nullptr;
  width_ = height_ = 0;
  format_.reset();
}

bool BackBuffer::Make(HDC target, int width, int height) {
  dc_ = CreateCompatibleDC(target);
  bitmap_ = dc_ ? CreateCompatibleBitmap(target, width, height) : nullptr;
  if (!bitmap_) {
    Release();
    return false;
  }
  oldBitmap_ = SelectObject(dc_, bitmap_);
  width_ = width;
  height_ = height;
  return true;
}

// A memory context makes bitmaps like the one selected into it; any other
// display context like the display.
std::optional<BackBuffer::Format> BackBuffer::FormatOf(HDC target) {
  if (GetDeviceCaps(target, TECHNOLOGY) != DT_RASDISPLAY) return std::nullopt;
  Format format;
  if (GetObjectType(target) == OBJ_MEMDC) {
    DIBSECTION dib{};
    int size = GetObjectW(GetCurrentObject(target, OBJ_BITMAP), sizeof dib, &dib);
    if (size == int(sizeof dib)) {
      format = {dib.dsBmih.biBitCount, dib.dsBmih.biPlanes, dib.dsBmih.biCompression,
                {dib.dsBitfields[0], dib.dsBitfields[1], dib.dsBitfields[2]}};
    } else if (size >= int(sizeof(BITMAP))) {
      format = {dib.dsBm.bmBitsPixel, dib.dsBm.bmPlanes};
    } else {
      return std::nullopt;
    }
  } else {
    format = {GetDeviceCaps(target, BITSPIXEL), GetDeviceCaps(target, PLANES)};
  }
  if (format.bitsPerPixel * format.planes <= 8) return std::nullopt;
  return format;
}

}  // namespace zel
