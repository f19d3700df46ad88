#pragma once
// Small pieces a C++ host of the control needs: owned texts, the "argument
// left out" VARIANT, the type library's records in a VARIANT, and pictures
// written as PNG files with the platform's imaging codecs.
#include <windows.h>
#include <oleauto.h>
#include <wincodec.h>

#include <initializer_list>
#include <string>

#include "zelgraph_idl.h"

namespace host {

class Bstr {
 public:
  explicit Bstr(const wchar_t* text) : text_(SysAllocString(text)) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  operator BSTR() const { return text_; }

 private:
  BSTR text_;
};

// Registers ATL's container window class ("AtlAxWin"), which hosts the
// control in a window as a dialog or form does.
inline bool AtlContainerReady() {
  auto init = reinterpret_cast<BOOL(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl.dll"), "AtlAxWinInit")));
  return init && init();
}

// An optional argument the caller leaves out.
inline VARIANT Missing() {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_ERROR;
  V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
  return v;
}

constexpr GUID kAxisProps = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
constexpr GUID kDatasetProps = {0x88A7E2DB, 0x2F1D, 0x4F59, {0xA7, 0xD4, 0xFE, 0x8F, 0x6C, 0xBC, 0x2C, 0x78}};

// A record of the type library's (AxisProps or DatasetProps, named by its
// GUID), filled by `fill` and handed to `use` in a VARIANT, as compiled hosts
// pass them.
template <typename Record, typename Fill, typename Use>
void WithRecord(const GUID& type, Fill fill, Use use) {
  IRecordInfo* info = nullptr;
  if (FAILED(GetRecordInfoFromGuids(LIBID_ZELGRAPHLib, 1, 0, 0, type, &info))) return;
  auto* record = static_cast<Record*>(info->RecordCreate());
  fill(*record);
  VARIANT props;
  VariantInit(&props);
  V_VT(&props) = VT_RECORD;
  V_RECORD(&props) = record;
  V_RECORDINFO(&props) = info;
  use(props);
  VariantClear(&props);
}

// Writes 32-bit pixels (blue, green, red, unused; top row first) as a PNG file.
inline bool WritePng(int width, int height, const void* pixels, const std::wstring& path) {
  IWICImagingFactory* factory = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                              reinterpret_cast<void**>(&factory))))
    return false;
  IWICStream* stream = nullptr;
  IWICBitmapEncoder* encoder = nullptr;
  IWICBitmapFrameEncode* frame = nullptr;
  WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGR;
  UINT stride = UINT(width) * 4;
  bool ok = SUCCEEDED(factory->CreateStream(&stream)) &&
            SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
            SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
            SUCCEEDED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) &&
            SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
            SUCCEEDED(frame->SetSize(UINT(width), UINT(height))) && SUCCEEDED(frame->SetPixelFormat(&format)) &&
            SUCCEEDED(frame->WritePixels(UINT(height), stride, stride * UINT(height),
                                         static_cast<BYTE*>(const_cast<void*>(pixels)))) &&
            SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
  for (IUnknown* p : std::initializer_list<IUnknown*>{frame, encoder, stream, factory})
    if (p) p->Release();
  return ok;
}

}  // namespace host
