#include "control/connection_points.h"

#include <algorithm>
#include <new>

#include "control/com_support.h"

namespace zel {
namespace {

class PointEnumerator final : public IEnumConnectionPoints {
 public:
  PointEnumerator(std::vector<ComPtr<IConnectionPoint>> points, size_t position)
      : points_(std::move(points)), position_(position) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IEnumConnectionPoints, this}});
  }
  STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&refs_); }
  STDMETHODIMP_(ULONG) Release() override {
    LONG refs = InterlockedDecrement(&refs_);
    if (refs == 0) delete this;
    return ULONG(refs);
  }
  STDMETHODIMP Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override {
    if (!points) return E_POINTER;
    ULONG given = 0;
    for (; given < count && position_ < points_.size(); ++given, ++position_) {
      points[given] = points_[position_].get();
      points[given]->AddRef();
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    size_t left = points_.size() - position_;
    position_ += std::min<size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumConnectionPoints** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) PointEnumerator(points_, position_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  LONG refs_ = 1;
  std::vector<ComPtr<IConnectionPoint>> points_;
  size_t position_;
};

}  // namespace

HRESULT EnumerateConnectionPoints(const std::vector<IConnectionPoint*>& points, IEnumConnectionPoints** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  try {
    std::vector<ComPtr<IConnectionPoint>> held(points.begin(), points.end());
    *out = new (std::nothrow) PointEnumerator(std::move(held), 0);
  } catch (const std::bad_alloc&) {
  }
  return *out ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zel
