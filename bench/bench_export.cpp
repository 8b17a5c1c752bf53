// Time to export the view of a 10,000-vertex, 40,000-edge network: a
// 4,000 x 4,000 PNG (drawn whole, and drawn in 1,024-pixel tiles) and a PDF
// recorded through gl2ps; and placing vertex labels. No context is current, so the exports run the
// way a script's do. Needs an X display:
//   xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_export
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "plexora/QLORandomGenerator.h"
#include "render/VXLNetworkView.h"
#include "render/exportcontext.h"

namespace {

constexpr std::uint64_t kVertices = 10000;

std::unique_ptr<VXLNetworkView> makeView() {
  QLORandomGenerator::sharedRandomGenerator().setSeed(2024);
  auto view = std::make_unique<VXLNetworkView>();
  view->setNetwork(QLONetwork::initRandomNetworkWithNumberOfVertices(kVertices, 8.0));
  view->prepareFrame();
  view->iterateBy(5);
  return view;
}

std::filesystem::path scratch(const char* name) {
  return std::filesystem::temp_directory_path() / name;
}

void exportOnce(benchmark::State& state, const char* name, int width, int height) {
  auto view = makeView();
  const std::filesystem::path path = scratch(name);
  ExportReport report;
  for (auto _ : state) {
    report = view->exportImageToFile(path, width, height, 1.5f);
    if (!report.written) {
      state.SkipWithError(report.error.c_str());
      return;
    }
  }
  state.counters["edges"] = static_cast<double>(view->network()->countEdges());
  state.counters["tiles"] = report.tiles;
  state.counters["rounds"] = report.rounds;
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
  std::filesystem::remove(path);
}

void BM_Png4000(benchmark::State& state) {
  export_gl::setMaxTileSide(static_cast<int>(state.range(0)));
  exportOnce(state, "plexview-bench.png", 4000, 4000);
  export_gl::setMaxTileSide(0);
}
// 0: GL's own limit (one tile on most drivers).
BENCHMARK(BM_Png4000)->Arg(0)->Arg(1024)->Iterations(2)->Unit(benchmark::kSecond);

void BM_Pdf(benchmark::State& state) {
  exportOnce(state, "plexview-bench.pdf", 1000, 1000);
}
BENCHMARK(BM_Pdf)->Iterations(1)->Unit(benchmark::kSecond);

// Placing the labels of every vertex over a 1920 x 1080 picture (what the
// window does each frame with View > Labels > All): projection, the
// nearest-first order and the overlap tests, fonts measured with Qt. No GL.
void BM_PlaceLabels(benchmark::State& state) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(7);
  VXLNetworkView view;
  view.setNetwork(QLONetwork::initRandomNetworkWithNumberOfVertices(
      static_cast<std::uint64_t>(state.range(0)), 4.0));
  view.prepareFrame();
  VXLCamera camera = view.camera();
  camera.viewWidth = 1920;
  camera.viewHeight = 1080;
  view.setCamera(camera);
  view.zoomToFit();
  view.setShowLabels(LabelMode::All);
  std::size_t placed = 0;
  for (auto _ : state) placed = view.placedLabels(1920, 1080).placed.size();
  state.counters["labels"] = static_cast<double>(placed);
}
BENCHMARK(BM_PlaceLabels)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
