// Frame time of the scene renderer off screen, and layout steps per second
// with and without frames being drawn at the same time. Needs an X display:
//   xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_frame
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "plexora/QLORandomGenerator.h"
#include "render/VXLNetworkView.h"
#include "ui/glformat.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

// One context and one multisampled framebuffer for the whole run.
struct OffscreenTarget {
  QOpenGLContext context;
  QOffscreenSurface surface;
  std::unique_ptr<QOpenGLFramebufferObject> fbo;

  bool make() {
    context.setFormat(ui::viewSurfaceFormat());
    if (!context.create()) return false;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface)) return false;
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    format.setSamples(4);
    fbo = std::make_unique<QOpenGLFramebufferObject>(QSize(kWidth, kHeight), format);
    return fbo->isValid() && fbo->bind();
  }
};

// A random network with 4 edges per vertex (average degree 8), laid out for
// a few steps so the picture is not the start cube.
std::unique_ptr<VXLNetworkView> makeView(std::uint64_t vertices) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(2024);
  auto view = std::make_unique<VXLNetworkView>();
  view->setNetwork(QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, 8.0));
  view->prepareFrame();
  view->iterateBy(5);
  view->initCommands();
  return view;
}

void BM_Frame(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) {
    view->drawRect(kWidth, kHeight);
    glFinish();  // the frame is done only when the renderer has finished it
  }
  state.counters["edges"] = static_cast<double>(view->network()->countEdges());
}
BENCHMARK(BM_Frame)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

// One click's pick: the vertices drawn in GL selection mode around a point.
void BM_Pick(benchmark::State& state) {
  auto view = makeView(static_cast<std::uint64_t>(state.range(0)));
  view->drawRect(kWidth, kHeight);
  for (auto _ : state) {
    benchmark::DoNotOptimize(view->pickAt(kWidth / 2.0, kHeight / 2.0, 3, 3));
  }
}
BENCHMARK(BM_Pick)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

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
  if (!target.make()) {
    std::fprintf(stderr, "bench_frame: no off-screen OpenGL context (is there an X display?)\n");
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
