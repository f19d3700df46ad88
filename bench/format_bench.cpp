// Label formatting runs for every annotation of every axis on every paint.
// Each benchmark has a baseline beside it: the C library doing the nearest
// equivalent work, so results read as ratios on any machine.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

#include "util/axis_value_text.h"
#include "util/font_spec.h"

namespace zel {
namespace {

std::vector<double> Values(double low, double high) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> values(low, high);
  std::vector<double> out(1024);
  for (double& v : out) v = double(float(values(random)));
  return out;
}

void BM_RealLabel(benchmark::State& state) {
  std::vector<double> values = Values(-1000, 1000);
  AxisLabelFormat axis{kAxisReal, u"3.1f", nullptr};
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(FormatAxisValue(axis, values[i++ & 1023]));
}
BENCHMARK(BM_RealLabel);

void BM_RealLabelBaselineSnprintf(benchmark::State& state) {
  std::vector<double> values = Values(-1000, 1000);
  char buffer[64];
  size_t i = 0;
  for (auto _ : state) {
    std::snprintf(buffer, sizeof buffer, "%3.1f", values[i++ & 1023]);
    benchmark::DoNotOptimize(buffer);
  }
}
BENCHMARK(BM_RealLabelBaselineSnprintf);

void BM_TimeLabel(benchmark::State& state) {
  std::vector<double> values = Values(40000, 50000);
  AxisLabelFormat axis{kAxisTime, u"%d.%m.%y\n%H:%M", nullptr};
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(FormatAxisValue(axis, values[i++ & 1023]));
}
BENCHMARK(BM_TimeLabel);

void BM_TimeLabelBaselineStrftime(benchmark::State& state) {
  std::vector<double> values = Values(40000, 50000);
  char buffer[64];
  size_t i = 0;
  for (auto _ : state) {
    std::time_t t = std::time_t((values[i++ & 1023] - 25569.0) * 86400.0);
    std::tm fields;
    gmtime_r(&t, &fields);
    std::strftime(buffer, sizeof buffer, "%d.%m.%y\n%H:%M", &fields);
    benchmark::DoNotOptimize(buffer);
  }
}
BENCHMARK(BM_TimeLabelBaselineStrftime);

void BM_ParseFontSpec(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ParseFontSpec(u"Arial,9,Bold, Charset_Default"));
}
BENCHMARK(BM_ParseFontSpec);

}  // namespace
}  // namespace zel

