// The graph drawn for targets other than its live window: a control with no
// window, bounds at an offset, an enhanced metafile, and the data object
// that hands the picture to a report. Each must show what the window shows.
#include <ocidl.h>

#include "hosted_control.h"
#include "memory_canvas.h"

namespace zel::testing {
namespace {

template <typename I>
I* As(IUnknown* object, REFIID iid) {
  I* found = nullptr;
  object->QueryInterface(iid, reinterpret_cast<void**>(&found));
  return found;
}

// Axes, a curve with markers, a legend and a hairline: most of what the
// drawing pass draws.
void BuildTrend(IVX_Graph* g) {
  Var real(L"REAL"), plot(L"PLOT"), right(L"RIGHT");
  g->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v);
  g->AddYAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v);
  g->AddDataset(1, V_BSTR(&plot.v), 1, 1, Var().v);
  std::vector<Var> xs, ys;
  for (int i = 0; i <= 40; ++i) xs.emplace_back(double(i)), ys.emplace_back(double((i * 37) % 23));
  Var status = Var::Typed(VT_I4, std::vector<int32_t>(xs.size(), 0));
  g->SetDatasetValues(1, Var::Array(xs).v, Var::Array(ys).v, status.v, Var::Missing().v);
  g->put_LegendEnabled(1);
  g->put_LegendPosition(V_BSTR(&right.v));
  LONG id = 0;
  g->AddHairline(40, Var::Missing().v, Var::Missing().v, &id);
}

// How many pixels of the `width` by `height` picture at (x, y) of `canvas`
// differ from `reference` at (0, 0).
int Differences(const MemoryCanvas& canvas, int x, int y, const MemoryCanvas& reference) {
  int differ = 0;
  for (int row = 0; row < reference.height(); ++row)
    for (int column = 0; column < reference.width(); ++column)
      differ += canvas.Pixel(x + column, y + row) != reference.Pixel(column, row);
  return differ;
}

// Each record's kind into the vector `found`; a block transfer that carries
// pixels counts as a bitmap (fills are recorded as transfers without one).
int CALLBACK RecordKind(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM found) {
  bool pixels = (record->iType == EMR_BITBLT && reinterpret_cast<const EMRBITBLT*>(record)->cbBmiSrc > 0) ||
                record->iType == EMR_STRETCHDIBITS || record->iType == EMR_STRETCHBLT;
  reinterpret_cast<std::vector<DWORD>*>(found)->push_back(pixels ? EMR_STRETCHDIBITS : record->iType);
  return 1;
}

class PictureTest : public HostedControlTest {
 protected:
  void SetUp() override {
    HostedControlTest::SetUp();
    BuildTrend(graph);
    RECT client;
    GetClientRect(window, &client);
    width = client.right, height = client.bottom;
    windowPicture = std::make_unique<MemoryCanvas>(width, height);
    Draw(graph, windowPicture->dc(), {0, 0, width, height});
    ASSERT_EQ(CoCreateInstance(CLSID_VX_Graph, nullptr, CLSCTX_INPROC_SERVER, IID_IVX_Graph,
                               reinterpret_cast<void**>(&detached)), S_OK);
    BuildTrend(detached);
  }
  void TearDown() override {
    if (detached) detached->Release();
    HostedControlTest::TearDown();
  }
  static HRESULT Draw(IVX_Graph* g, HDC dc, RECTL bounds) {
    IViewObject* view = As<IViewObject>(g, IID_IViewObject);
    HRESULT hr = view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
    view->Release();
    return hr;
  }

  int width = 0, height = 0;
  std::unique_ptr<MemoryCanvas> windowPicture;
  IVX_Graph* detached = nullptr;
};

TEST_F(PictureTest, AControlWithoutAWindowDrawsWhatTheWindowShowsWhereverItIsAsked) {
  MemoryCanvas sameSize(width, height);
  ASSERT_EQ(Draw(detached, sameSize.dc(), {0, 0, width, height}), S_OK);
  EXPECT_EQ(Differences(sameSize, 0, 0, *windowPicture), 0);

  MemoryCanvas larger(width + 70, height + 50, RGB(1, 2, 3));
  ASSERT_EQ(Draw(detached, larger.dc(), {50, 40, 50 + width, 40 + height}), S_OK);
  EXPECT_EQ(Differences(larger, 50, 40, *windowPicture), 0) << "laid out for the bounds, drawn at their place";
  EXPECT_EQ(larger.Pixel(49, 100), RGB(1, 2, 3)) << "nothing outside the bounds";

  // Another size is another layout, not a part of the window's picture.
  MemoryCanvas smaller(width / 2, height / 2);
  ASSERT_EQ(Draw(detached, smaller.dc(), {0, 0, width / 2, height / 2}), S_OK);
  MemoryCanvas windowPart(width / 2, height / 2);
  BitBlt(windowPart.dc(), 0, 0, width / 2, height / 2, windowPicture->dc(), 0, 0, SRCCOPY);
  EXPECT_GT(Differences(smaller, 0, 0, windowPart), 100);
}

// A metafile records the drawing calls, which play back as the window's
// pixels; the data object offers that metafile and a bitmap of the picture.
TEST_F(PictureTest, AMetafileAndTheDataObjectCarryTheWindowsPicture) {
  HDC recorder = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
  ASSERT_EQ(Draw(graph, recorder, {0, 0, width, height}), S_OK);
  HENHMETAFILE metafile = CloseEnhMetaFile(recorder);
  std::vector<DWORD> kinds;
  EnumEnhMetaFile(nullptr, metafile, RecordKind, &kinds, nullptr);
  auto count = [&](DWORD kind) { return std::count(kinds.begin(), kinds.end(), kind); };
  EXPECT_GT(count(EMR_LINETO) + count(EMR_POLYLINE) + count(EMR_POLYLINE16), 10);
  EXPECT_GT(count(EMR_EXTTEXTOUTW), 0);
  EXPECT_EQ(count(EMR_STRETCHDIBITS), 0) << "drawing calls, not a bitmap";
  MemoryCanvas replayed(width, height);
  RECT all{0, 0, width, height};
  PlayEnhMetaFile(replayed.dc(), metafile, &all);
  EXPECT_LT(Differences(replayed, 0, 0, *windowPicture), width * height / 100);
  DeleteEnhMetaFile(metafile);

  IDataObject* data = As<IDataObject>(graph, IID_IDataObject);
  ASSERT_NE(data, nullptr);
  FORMATETC dib{CF_DIB, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
  FORMATETC emf{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
  FORMATETC text{CF_TEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
  EXPECT_EQ(data->QueryGetData(&dib), S_OK);
  EXPECT_EQ(data->QueryGetData(&emf), S_OK);
  EXPECT_EQ(data->QueryGetData(&text), DV_E_FORMATETC);
  IEnumFORMATETC* formats = nullptr;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, &formats), S_OK);
  FORMATETC listed[3] = {};
  ULONG fetched = 0;
  EXPECT_EQ(formats->Next(3, listed, &fetched), S_FALSE);
  EXPECT_EQ(fetched, 2u);
  formats->Release();

  STGMEDIUM medium{};
  ASSERT_EQ(data->GetData(&dib, &medium), S_OK);
  auto* header = static_cast<BITMAPINFOHEADER*>(GlobalLock(medium.hGlobal));
  EXPECT_EQ(std::tuple(header->biWidth, header->biHeight, header->biBitCount), std::tuple(LONG(width), LONG(height), WORD(32)));
  const auto* bottomUp = reinterpret_cast<const uint32_t*>(header + 1);
  int differ = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      uint32_t pixel = bottomUp[size_t(height - 1 - y) * size_t(width) + size_t(x)] & 0xFFFFFF;
      differ += RGB(pixel >> 16, (pixel >> 8) & 0xFF, pixel & 0xFF) != windowPicture->Pixel(x, y);
    }
  EXPECT_EQ(differ, 0);
  GlobalUnlock(medium.hGlobal);
  ReleaseStgMedium(&medium);
  ASSERT_EQ(data->GetData(&emf, &medium), S_OK);
  EXPECT_EQ(medium.tymed, DWORD(TYMED_ENHMF));
  ReleaseStgMedium(&medium);
  data->Release();
}

}  // namespace
}  // namespace zel::testing
