#pragma once
// What the Windows timing programs share: a clock, the best of several
// runs, and the frame a host draws into (a 1280 by 720 32-bit DIB).
#include <windows.h>

#include <algorithm>
#include <functional>

namespace zel::bench {

constexpr int kWidth = 1280, kHeight = 720;

inline double Now() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return double(count.QuadPart) / double(frequency.QuadPart);
}

// The best of `runs` timings of `work`, in milliseconds.
inline double BestOf(int runs, const std::function<void()>& work) {
  double best = 1e300;
  for (int k = 0; k < runs; ++k) {
    double start = Now();
    work();
    best = std::min(best, (Now() - start) * 1000);
  }
  return best;
}

// A 32-bit DIB in a memory device context, the host's frame buffer.
class Dib {
 public:
  Dib() {
    HDC screen = GetDC(nullptr);
    dc_ = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, BI_RGB};
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    ReleaseDC(nullptr, screen);
    old_ = SelectObject(dc_, bitmap_);
  }
  ~Dib() {
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  Dib(const Dib&) = delete;
  Dib& operator=(const Dib&) = delete;
  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ old_;
};

}  // namespace zel::bench
