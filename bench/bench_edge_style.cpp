// What styled edges cost: making the per-edge arrays (colours by weight,
// width classes) without GL, and whole frames off screen with each style,
// steady and with the style changed before every frame. Needs an X display:
//   xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_edge_style
// PLEXVIEW_GL=legacy measures the fixed-function renderer.
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <QGuiApplication>
#include <ctime>
#include <memory>
#include <random>

#include "offscreen_target.h"
#include "plexora/QLORandomGenerator.h"
#include "render/VXLNetworkView.h"
#include "render/edgestyle.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

std::vector<float> randomWeights(std::uint64_t count) {
  std::mt19937 engine(7);
  std::uniform_real_distribution<float> weight(0.1f, 10.0f);
  std::vector<float> weights(count);
  for (float& w : weights) w = weight(engine);
  return weights;
}

// The arrays a style change makes again: colours by weight and width classes.
void BM_EdgeArrays(benchmark::State& state) {
  const auto count = static_cast<std::uint64_t>(state.range(0));
  const std::vector<float> weights = randomWeights(count);
  edge_style::ColourSettings settings;
  settings.mode = edge_style::ColourMode::Weight;
  for (auto _ : state) {
    benchmark::DoNotOptimize(edge_style::edgeColours(settings, weights.data(), count));
    benchmark::DoNotOptimize(edge_style::widthClasses(weights.data(), count));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_EdgeArrays)->Arg(1000000)->Unit(benchmark::kMillisecond);

// A random network of 2,000 vertices and average degree 8, directed and
// weighted, after 5 layout steps.
std::unique_ptr<VXLNetworkView> makeView() {
  QLORandomGenerator::sharedRandomGenerator().setSeed(2024);
  const auto random = QLONetwork::initRandomNetworkWithNumberOfVertices(2000, 8.0);
  NetworkData data;
  data.verticesCount = random->countVertices();
  data.from.assign(random->edgeFromList, random->edgeFromList + random->countEdges());
  data.to.assign(random->edgeToList, random->edgeToList + random->countEdges());
  data.weights = randomWeights(random->countEdges());
  data.edgeWeighted = true;
  data.directed = true;
  auto view = std::make_unique<VXLNetworkView>();
  view->setNetwork(QLONetwork::make(std::move(data)));
  view->prepareFrame();
  view->iterateBy(5);
  view->initCommands();
  return view;
}

double processSeconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

// Styles: 0 none (no arrows), 1 arrows, 2 colours by weight, 3 widths by
// weight, 4 all three. Restyled (range 1): the single colour changes before
// every frame, so the colours are made and uploaded each time.
void BM_StyledFrame(benchmark::State& state) {
  auto view = makeView();
  const auto style = state.range(0);
  view->setShowArrows(style == 1 || style == 4);
  if (style == 2 || style == 4) view->setEdgeColorMode(edge_style::ColourMode::Weight);
  view->setEdgeWidthByWeight(style == 3 || style == 4);
  const bool restyle = state.range(1) == 1;
  if (restyle) view->setEdgeColorMode(edge_style::ColourMode::Single);
  view->drawRect(kWidth, kHeight);
  glFinish();
  float grey = 0;
  const double start = processSeconds();
  for (auto _ : state) {
    if (restyle) {
      grey = grey > 0.9f ? 0.0f : grey + 0.01f;
      view->setEdgeColor({grey, grey, grey});
    }
    view->drawRect(kWidth, kHeight);
    glFinish();
  }
  state.counters["allCPU"] =
      benchmark::Counter(processSeconds() - start, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_StyledFrame)
    ->ArgsProduct({{0, 1, 2, 3, 4}, {0}})
    ->Args({4, 1})
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  OffscreenTarget target;
  if (!target.make(kWidth, kHeight)) return 1;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
