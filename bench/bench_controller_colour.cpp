// Recolouring through the window controller, end to end, on a network of
// 1,000,000 vertices: a numeric property (read, transform, map, continuous
// legend, the view's colours and the network's "Color") and a text property
// with 1,000 categories (index, sort, palette files, colours, legend, the
// same installation).
//
//   build/bench/bench_controller_colour [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "app/VXLController.h"

namespace {

constexpr std::uint64_t kVertices = 1000000;

// A controller showing a network of kVertices vertices (a ring, so the
// degrees are all 2) with a heavy-tailed numeric property "size" and a text
// property "community" of 1,000 categories with heavy-tailed sizes.
VXLController& controller() {
  static const VXLController::Ptr made = [] {
    std::mt19937 random(2024);
    NetworkData data;
    data.verticesCount = kVertices;
    for (std::uint64_t k = 0; k < kVertices; ++k) {
      data.from.push_back(k);
      data.to.push_back((k + 1) % kVertices);
    }
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    std::vector<float> size(kVertices);
    for (float& x : size) {
      x = std::floor(static_cast<float>(1.0 / std::pow(1.0 - uniform(random), 0.6)));
    }
    auto communities = std::make_shared<TextList>();
    communities->reserve(kVertices);
    for (std::size_t c = 0; c < 1000 && communities->size() < kVertices; ++c) {
      const std::size_t members = std::max<std::size_t>(1, 140000 / (c + 1));
      communities->insert(communities->end(), std::min(members, kVertices - communities->size()),
                          "community " + std::to_string(c));
    }
    while (communities->size() < kVertices) {
      communities->push_back("community " + std::to_string(random() % 1000));
    }
    std::shuffle(communities->begin(), communities->end(), random);
    data.properties = {{"size", QLONumberArray::initWithFloats(size)}, {"community", communities}};
    auto c = VXLController::init();
    c->setNetwork(QLONetwork::make(std::move(data)));
    return c;
  }();
  return *made;
}

void BM_RecolourNumeric(benchmark::State& state, const char* function, const char* map) {
  VXLController& c = controller();
  c.selectColorFunction(function);
  c.selectColorMap(map);
  c.selectColorProperty("size");
  for (auto _ : state) {
    c.updateCurrentColor();
    benchmark::DoNotOptimize(c.networkView()->colors().get());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

void BM_RecolourCategories(benchmark::State& state, std::int64_t limit,
                           VXLController::HideSwitch hide) {
  VXLController& c = controller();
  c.changeColorProperties(
      limit > 0 ? VXLController::LimitSwitch::On : VXLController::LimitSwitch::Off, limit, hide);
  c.selectColorProperty("community");
  for (auto _ : state) {
    c.updateCurrentColor();
    benchmark::DoNotOptimize(c.networkView()->colors().get());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kVertices));
}

}  // namespace

BENCHMARK_CAPTURE(BM_RecolourNumeric, ExponentialJet, "Exponential", "Jet")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RecolourNumeric, PowerCustomCubehelix3, "Power", "Custom Cubehelix 3")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RecolourCategories, NoLimit, 0, VXLController::HideSwitch::Off)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_RecolourCategories, Limit8Hide, 8, VXLController::HideSwitch::On)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
