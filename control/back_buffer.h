#pragma once
// The off-screen bitmap a frame is drawn into before it is copied to its
// target in one piece. A window keeps one between paints and reuses it while
// it fits and the target's pixel format is the same; a frame uses only its
// top-left part of the size asked for, clipped to it, so what it draws is
// exactly what a fresh bitmap of that size would hold.
#include <windows.h>

#include <cstdint>
#include <optional>

namespace zel {

class BackBuffer {
 public:
  BackBuffer() = default;
  ~BackBuffer() { Release(); }
  BackBuffer(const BackBuffer&) = delete;
  BackBuffer& operator=(const BackBuffer&) = delete;

  // A memory context for `target` that shows `width` by `height` pixels at
  // its origin and clips everything else, or null when none can be made.
  // Its state is its own until End.
  HDC Begin(HDC target, int width, int height);
  // Puts the context's state back as Begin found it.
  void End();
  // Lets the bitmap go when it holds more than twice `pixels`.
  void ShrinkTo(int64_t pixels);
  void Release();

  // The largest bitmap kept: as wide as GDI allows and 2^26 pixels in all
  // (256 MB at 32 bits a pixel).
  static constexpr int kMaxSide = 32767;
  static constexpr int64_t kMaxPixels = int64_t(1) << 26;

 private:
  // What a compatible bitmap of the target is made like; bitmaps with a
  // colour table are never reused, as the next target's table may differ.
  struct Format {
    int bitsPerPixel = 0, planes = 0;
    DWORD compression = 0;
    DWORD masks[3] = {};
    bool operator==(const Format&) const = default;
  };
  static std::optional<Format> FormatOf(HDC target);
  bool Fits(int width, int height) const { return width <= width_ && height <= height_; }
  bool Make(HDC target, int width, int height);

  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ oldBitmap_ = nullptr;
  int width_ = 0, height_ = 0;
  std::optional<Format> format_;
  int savedState_ = 0;
};

}  // namespace zel
