// Frame time of the scene renderer off screen, picking, a raster export, and
// layout steps per second with and without frames being drawn at the same
// time. Needs an X display:
//   xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_frame
// PLEXVIEW_GL=legacy measures the fixed-function renderer instead of the
// shader one; BENCH_FRAME_PICTURES=DIR keeps the last frame of each frame
// benchmark and the exported picture there as PNGs.
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <QGuiApplication>
#include <QImage>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <thread>

#include "offscreen_target.h"
#include "plexora/QLORandomGenerator.h"
#include "render/VXLNetworkView.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;
QOpenGLFramebufferObject* gTarget = nullptr;

// A random network of the given average degree, laid out for a few steps
// so the picture is not the start cube. Each size is laid out once per run
// (all-pairs repulsion at 200,000 vertices takes minutes) and shared by the
// benchmarks that use it.
std::unique_ptr<VXLNetworkView> makeView(std::uint64_t vertices, double degree = 8.0) {
  struct Layout {
    std::shared_ptr<QLONetwork> network;
    std::shared_ptr<QLOVector3dArray> positions;
  };
  static std::map<std::pair<std::uint64_t, double>, Layout> layouts;
  auto view = std::make_unique<VXLNetworkView>();
  Layout& layout = layouts[{vertices, degree}];
  if (!layout.network) {
    QLORandomGenerator::sharedRandomGenerator().setSeed(2024);
    view->setNetwork(QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree));
    view->prepareFrame();
    view->iterateBy(5);
    layout = {view->network(), view->positions()};
  } else {
    view->setNetwork(layout.network);
    view->setPositions(layout.positions);
    view->prepareFrame();
  }
  view->initCommands();
  return view;
}

// CPU seconds of the whole process, llvmpipe's rasteriser threads included:
// the work a frame takes, which a loaded machine stretches less than the
// wall time.
double processSeconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

// Draws frames back to back, with the process CPU time per frame ("allCPU").
void drawFrames(benchmark::State& state, VXLNetworkView& view) {
  const double start = processSeconds();
  for (auto _ : state) {
    view.drawRect(kWidth, kHeight);
    glFinish();  // the frame is done only when the renderer has finished it
  }
  state.counters["allCPU"] =
      benchmark::Counter(processSeconds() - start, benchmark::Counter::kAvgIterations);
  if (const char* dir = std::getenv("BENCH_FRAME_PICTURES")) {
    const std::string name =
        std::string(view.showEdges() ? "frame_" : "vertices_") + std::to_string(state.range(0));
    gTarget->toImage().save(QString::fromStdString(std::string(dir) + "/" + name + ".png"));
    gTarget->bind();
  }
}

// Frames with lit spheres: {vertices, average degree}.
void BM_Frame(benchmark::State& state) {
  auto view =
      makeView(static_cast<std::uint64_t>(state.range(0)), static_cast<double>(state.range(1)));
  drawFrames(state, *view);
  const double V = static_cast<double>(view->network()->countVertices());
  const double E = static_cast<double>(view->network()->countEdges());
  state.counters["edges"] = E;
  const auto [vertexBytes, edgeBytes] = view->rendererBufferBytes();
  state.counters["gpuB/vertex"] = static_cast<double>(vertexBytes) / V;
  state.counters["gpuB/edge"] = E > 0 ? static_cast<double>(edgeBytes) / E : 0.0;
}
BENCHMARK(BM_Frame)
    ->Args({1000, 8})
    ->Args({10000, 8})
    ->Args({100000, 8})
    ->Args({200000, 10})
    ->Unit(benchmark::kMillisecond);

// The vertex pass alone (edges hidden): what the renderer itself changes.
void BM_Vertices(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  view->setShowEdges(false);
  drawFrames(state, *view);
}
BENCHMARK(BM_Vertices)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The same with vertices sized by their degree: the sizes are made and
// uploaded once. With every size 1 (second argument 0) the pixels are those
// of BM_Vertices, which isolates the per-vertex size itself; with the
// default range (1) the larger vertices also cover more pixels.
void BM_VerticesSized(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  view->setShowEdges(false);
  if (state.range(1) == 0) view->setSizeRange({1, 1});
  view->setSizeProperty("Node Degree");
  drawFrames(state, *view);
}
BENCHMARK(BM_VerticesSized)
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond);

// One click's pick around the centre of the picture.
void BM_Pick(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  view->drawRect(kWidth, kHeight);
  for (auto _ : state) {
    benchmark::DoNotOptimize(view->pickAt(kWidth / 2.0, kHeight / 2.0, 3, 3));
  }
}
BENCHMARK(BM_Pick)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A PNG of 800 x 600 through exportImageToFile. The view was last sized
// otherwise, so the picture is drawn again off screen rather than read back.
void BM_Export(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  view->drawRect(kWidth / 2, kHeight / 2);
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "plexview_bench_export.png";
  const double start = processSeconds();
  for (auto _ : state) {
    const ExportReport report = view->exportImageToFile(path, kWidth, kHeight, 1.5f);
    if (!report.written) state.SkipWithError(report.error.c_str());
  }
  state.counters["allCPU"] =
      benchmark::Counter(processSeconds() - start, benchmark::Counter::kAvgIterations);
  if (const char* dir = std::getenv("BENCH_FRAME_PICTURES")) {
    std::filesystem::copy_file(path, std::filesystem::path(dir) / "export.png",
                               std::filesystem::copy_options::overwrite_existing);
  }
  std::filesystem::remove(path);
}
BENCHMARK(BM_Export)->Arg(100000)->Unit(benchmark::kMillisecond);

// Layout steps per second on the stepping thread while the main thread draws
// frames back to back (drawing = 1) or does nothing (drawing = 0).
void BM_StepsWhileDrawing(benchmark::State& state) {
  const bool drawing = state.range(1) != 0;
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) {
    std::atomic<bool> stop{false};
    std::atomic<std::uint64_t> steps{0};
    std::thread stepper([&] {
      while (!stop.load()) {
        view->iterateBy(1);
        steps.fetch_add(1);
      }
    });
    const auto start = std::chrono::steady_clock::now();
    std::uint64_t frames = 0;
    while (std::chrono::steady_clock::now() - start < std::chrono::seconds(3)) {
      if (drawing) {
        view->drawRect(kWidth, kHeight);
        glFinish();
        ++frames;
      } else {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
      }
    }
    stop.store(true);
    stepper.join();
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    state.counters["steps/s"] = static_cast<double>(steps.load()) / seconds;
    state.counters["frames/s"] = static_cast<double>(frames) / seconds;
  }
}
BENCHMARK(BM_StepsWhileDrawing)
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  OffscreenTarget target;
  if (!target.make(kWidth, kHeight)) {
    std::fprintf(stderr, "bench_frame: no off-screen OpenGL context (is there an X display?)\n");
    return 1;
  }
  gTarget = target.fbo.get();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
