// Feeding points to a dataset: 10 million points, appended in chunks of 1000
// or handed over in one call, from plain typed arrays. The baseline appends
// the same bytes to plain vectors, so the ratio shows the cost of conversion
// and bookkeeping.
#include <benchmark/benchmark.h>

#include <numeric>
#include <vector>

#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

constexpr size_t kPoints = 10'000'000;

template <typename X, typename Y>
struct Input {
  std::vector<X> xs;
  std::vector<Y> ys;
  std::vector<int32_t> status;
  explicit Input(size_t n) : xs(n), ys(n), status(n, 0) {
    for (size_t i = 0; i < n; ++i) {
      xs[i] = X(45000 + double(i) / 86400);
      ys[i] = Y(double(i % 1000) * 0.25);
    }
  }
};

// The bytes a column holds values in, or has allocated for them.
size_t ColumnBytes(const PointColumn& column, bool allocated) {
  return std::visit(
      [allocated](const auto& v) { return (allocated ? v.capacity() : v.size()) * sizeof(v[0]); },
      column.storage());
}

template <typename X, typename Y>
void Ingest(benchmark::State& state, AxisType xType, AxisType yType, size_t chunk) {
  Input<X, Y> input(chunk);
  double stored = 0, allocated = 0;
  for (auto _ : state) {
    VAxis xAxis(false, xType, nullptr), yAxis(true, yType, nullptr);
    VDataset dataset(kPlot, &xAxis, &yAxis, nullptr);
    ValueColumn xs(std::span<const X>(input.xs)), ys(std::span<const Y>(input.ys));
    for (size_t done = 0; done < kPoints; done += chunk)
      dataset.SetValues(chunk, xs, ys, input.status, done > 0);
    benchmark::DoNotOptimize(dataset.count());
    double count = double(dataset.count());
    stored = double(ColumnBytes(dataset.xValues(), false) + ColumnBytes(dataset.yValues(), false) +
                    dataset.count() * sizeof(int32_t)) / count;
    allocated = double(ColumnBytes(dataset.xValues(), true) + ColumnBytes(dataset.yValues(), true) +
                       dataset.status().size() * sizeof(int32_t)) / count;
  }
  state.SetItemsProcessed(int64_t(state.iterations() * kPoints));
  state.counters["stored_bytes_per_point"] = stored;
  state.counters["allocated_bytes_per_point"] = allocated;
}

void BM_FloatsIntoRealAxes_Chunks(benchmark::State& s) { Ingest<float, float>(s, kAxisReal, kAxisReal, 1000); }
void BM_FloatsIntoRealAxes_OneCall(benchmark::State& s) { Ingest<float, float>(s, kAxisReal, kAxisReal, kPoints); }
void BM_DoublesIntoRealAxes_Chunks(benchmark::State& s) { Ingest<double, double>(s, kAxisReal, kAxisReal, 1000); }
void BM_DatesAndFloatsIntoTimeAxis_Chunks(benchmark::State& s) { Ingest<double, float>(s, kAxisTime, kAxisReal, 1000); }
void BM_DatesAndFloatsIntoTimeAxis_OneCall(benchmark::State& s) { Ingest<double, float>(s, kAxisTime, kAxisReal, kPoints); }
void BM_IntsIntoIntegerAxes_Chunks(benchmark::State& s) { Ingest<int32_t, int32_t>(s, kAxisInteger, kAxisInteger, 1000); }

// Baseline: the same bytes appended to plain vectors, 1000 at a time.
void BM_BaselineVectorAppend_Chunks(benchmark::State& state) {
  Input<double, float> input(1000);
  for (auto _ : state) {
    std::vector<double> xs;
    std::vector<float> ys;
    std::vector<int32_t> status;
    for (size_t done = 0; done < kPoints; done += 1000) {
      xs.insert(xs.end(), input.xs.begin(), input.xs.end());
      ys.insert(ys.end(), input.ys.begin(), input.ys.end());
      status.insert(status.end(), input.status.begin(), input.status.end());
    }
    benchmark::DoNotOptimize(xs.data());
  }
  state.SetItemsProcessed(int64_t(state.iterations() * kPoints));
}

BENCHMARK(BM_BaselineVectorAppend_Chunks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloatsIntoRealAxes_Chunks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloatsIntoRealAxes_OneCall)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DoublesIntoRealAxes_Chunks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DatesAndFloatsIntoTimeAxis_Chunks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DatesAndFloatsIntoTimeAxis_OneCall)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IntsIntoIntegerAxes_Chunks)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zel
