// Colouring benchmarks: a 1,000,000-vertex numeric property through the
// forward transform and a colour map into the view's colour array, and a
// 1,000,000-vertex text property with 1,000 categories through the whole
// categorical recolouring (index, sort, palette files, colours, legend).
//
//   build/bench/bench_colour [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "colour/categorycolours.h"
#include "colour/scalarcolours.h"
#include "quillo/QLOVector3dArray.h"
#include "quillo/resources.h"

using namespace colour;

namespace {

constexpr std::size_t kVertices = 1000000;

// Degree-like values: heavy-tailed whole numbers from 1 upwards.
const std::vector<float>& property() {
  static const std::vector<float> values = [] {
    std::mt19937 random(2024);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    std::vector<float> v(kVertices);
    for (float& x : v)
      x = std::floor(static_cast<float>(1.0 / std::pow(1.0 - uniform(random), 0.6)));
    return v;
  }();
  return values;
}

void BM_Transform(benchmark::State& state, ColorFunction function) {
  const std::vector<float>& values = property();
  for (auto _ : state) {
    auto normalised = newVectorFromVectorWithTransformFunction(values.data(), values.size(),
                                                               function, TransformSettings{});
    benchmark::DoNotOptimize(normalised.data());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

void BM_Map(benchmark::State& state, ColorMap map) {
  std::vector<float> normalised(kVertices);
  for (std::size_t i = 0; i < kVertices; ++i) {
    normalised[i] = static_cast<float>(i) / static_cast<float>(kVertices - 1);
  }
  for (auto _ : state) {
    auto colours = colorsFromNormalizedVector(normalised.data(), kVertices, map, {});
    benchmark::DoNotOptimize(colours->pointerForX());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

void BM_TransformAndMap(benchmark::State& state, ColorFunction function, ColorMap map) {
  const std::vector<float>& values = property();
  ScalarColourSettings settings;
  settings.function = function;
  settings.map = map;
  for (auto _ : state) {
    auto colours = colorsForScalarValues(values.data(), values.size(), settings);
    benchmark::DoNotOptimize(colours->pointerForX());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

// 1,000 community names over the vertices with heavy-tailed sizes, shuffled.
const std::vector<std::string>& communities() {
  static const std::vector<std::string> values = [] {
    std::mt19937 random(7);
    std::vector<std::string> v;
    v.reserve(kVertices);
    for (std::size_t c = 0; c < 1000 && v.size() < kVertices; ++c) {
      const std::size_t size = std::max<std::size_t>(1, 140000 / (c + 1));
      v.insert(v.end(), std::min(size, kVertices - v.size()), "community " + std::to_string(c));
    }
    while (v.size() < kVertices) v.push_back("community " + std::to_string(random() % 1000));
    std::shuffle(v.begin(), v.end(), random);
    return v;
  }();
  return values;
}

void BM_Categories(benchmark::State& state, const char* sortTitle, std::int64_t limit,
                   HideOthers hide) {
  const std::vector<std::string>& values = communities();
  const CategorySources sources{quillo::resourceFolder(), {}};
  for (auto _ : state) {
    auto result =
        categoricalColouring(values, values.size(), {sortTitle}, nullptr, {limit, hide}, sources);
    benchmark::DoNotOptimize(result.colors->pointerForX());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

void BM_IndexCategories(benchmark::State& state) {
  const std::vector<std::string>& values = communities();
  for (auto _ : state) {
    auto index = indexCategories(values);
    benchmark::DoNotOptimize(index.ids.data());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

}  // namespace

BENCHMARK_CAPTURE(BM_Transform, Linear, ColorFunction::Linear)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Transform, Exponential, ColorFunction::Exponential)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Transform, Logarithmic, ColorFunction::Logarithmic)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Transform, Power, ColorFunction::Power)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Map, Jet, ColorMap::Jet)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Map, Gray, ColorMap::Gray)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Map, Custom3, ColorMap::Custom3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Map, CustomCubehelix3, ColorMap::CustomCubehelix3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TransformAndMap, ExponentialJet, ColorFunction::Exponential, ColorMap::Jet)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_TransformAndMap, ExponentialCustomCubehelix3, ColorFunction::Exponential,
                  ColorMap::CustomCubehelix3)
    ->Unit(benchmark::kMillisecond);

BENCHMARK(BM_IndexCategories)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Categories, Frequency, "Frequency", 0, HideOthers::Off)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Categories, Alphabetical, "Alphabetical", 0, HideOthers::Off)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Categories, FrequencyLimit8Hide, "Frequency", 8, HideOthers::On)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
