// The graph's picture as data, for hosts that copy it into a report or onto
// the clipboard: an enhanced metafile that records the drawing itself, or a
// device-independent bitmap. Both are drawn detached, laid out for the
// picture's size: the window's client area, or without a window the
// control's extent at the screen's resolution.
#include <windows.h>
#include <ole2.h>

#include <cstring>

#include "control/table_enumerator.h"
#include "control/vx_graph.h"

namespace zel {
namespace {

constexpr FORMATETC kFormats[] = {
    {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF},
    {CF_DIB, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL},
};

// The offered format that answers `asked`, or null.
const FORMATETC* Offered(const FORMATETC* asked) {
  if (!asked || asked->dwAspect != DVASPECT_CONTENT) return nullptr;
  for (const FORMATETC& format : kFormats)
    if (asked->cfFormat == format.cfFormat && (asked->tymed & format.tymed)) return &format;
  return nullptr;
}

SIZE ScreenResolution() {
  HDC screen = GetDC(nullptr);
  SIZE dpi{screen ? GetDeviceCaps(screen, LOGPIXELSX) : 96, screen ? GetDeviceCaps(screen, LOGPIXELSY) : 96};
  if (screen) ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace

SIZE CVX_Graph::PictureSize() const {
  RECT client{};
  if (window_.Exists() && GetClientRect(window_.handle(), &client)) return {client.right, client.bottom};
  SIZE dpi = ScreenResolution();
  return {MulDiv(extent_.cx, dpi.cx, 2540), MulDiv(extent_.cy, dpi.cy, 2540)};
}

// The frame of the metafile is the picture's size in 0.01 mm at the
// screen's resolution, so that it plays back at its own size.
HENHMETAFILE CVX_Graph::PictureAsMetafile() {
  SIZE size = PictureSize(), dpi = ScreenResolution();
  RECT frame{0, 0, MulDiv(size.cx, 2540, dpi.cx), MulDiv(size.cy, 2540, dpi.cy)};
  HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, L"ZELGraph\0Graph\0");
  if (!dc) return nullptr;
  DrawDetached(dc, RECT{0, 0, size.cx, size.cy});
  return CloseEnhMetaFile(dc);
}

// A packed bitmap: its header, then 32-bit pixels, bottom row first.
HGLOBAL CVX_Graph::PictureAsDib() {
  SIZE size = PictureSize();
  if (size.cx < 1 || size.cy < 1) return nullptr;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, size.cy, 1, 32, BI_RGB};
  void* bits = nullptr;
  HDC memory = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = memory ? CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0) : nullptr;
  HGLOBAL packed = nullptr;
  if (bitmap) {
    HGDIOBJ old = SelectObject(memory, bitmap);
    DrawDetached(memory, RECT{0, 0, size.cx, size.cy});
    GdiFlush();
    SIZE_T pixels = SIZE_T(size.cx) * SIZE_T(size.cy) * 4;
    packed = GlobalAlloc(GMEM_MOVEABLE, sizeof(BITMAPINFOHEADER) + pixels);
    if (auto* bytes = packed ? static_cast<BYTE*>(GlobalLock(packed)) : nullptr) {
      std::memcpy(bytes, &info.bmiHeader, sizeof(BITMAPINFOHEADER));
      std::memcpy(bytes + sizeof(BITMAPINFOHEADER), bits, pixels);
      GlobalUnlock(packed);
    }
    SelectObject(memory, old);
    DeleteObject(bitmap);
  }
  if (memory) DeleteDC(memory);
  return packed;
}

STDMETHODIMP CVX_Graph::GetData(FORMATETC* asked, STGMEDIUM* medium) {
  if (!asked || !medium) return E_POINTER;
  const FORMATETC* format = Offered(asked);
  if (!format) return DV_E_FORMATETC;
  *medium = {format->tymed, {nullptr}, nullptr};
  if (format->cfFormat == CF_ENHMETAFILE) medium->hEnhMetaFile = PictureAsMetafile();
  else medium->hGlobal = PictureAsDib();
  return medium->hGlobal || medium->hEnhMetaFile ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP CVX_Graph::QueryGetData(FORMATETC* asked) {
  if (!asked) return E_POINTER;
  return Offered(asked) ? S_OK : DV_E_FORMATETC;
}

STDMETHODIMP CVX_Graph::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* canonical) {
  if (canonical) canonical->ptd = nullptr;
  return DATA_S_SAMEFORMATETC;
}

STDMETHODIMP CVX_Graph::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
  if (!formats) return E_POINTER;
  *formats = nullptr;
  if (direction != DATADIR_GET) return E_NOTIMPL;
  *formats = TableEnumerator<IEnumFORMATETC, FORMATETC>::Create(IID_IEnumFORMATETC, ULONG(std::size(kFormats)),
                                                               [](ULONG i) { return kFormats[i]; });
  return *formats ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zel
