// An idle window's cost: opens a document window (the start-up network,
// layout paused), lets the opening settle, then measures the process's CPU
// time (getrusage) and the frames drawn over the following seconds.
// Run under Xvfb: xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_idle [seconds]
#include <sys/resource.h>

#include <QApplication>
#include <QTest>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "app/QLODocumentController.h"
#include "ui/DocumentWindow.h"
#include "ui/NetworkViewWidget.h"
#include "ui/documentui.h"

namespace {

double cpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const int seconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
  QLODocumentController documents;
  ui::installDocumentUi(documents);
  ui::DocumentWindow* window = ui::DocumentWindow::windowFor(documents.newDocument().get());
  if (!window || !QTest::qWaitForWindowExposed(window)) {
    std::fprintf(stderr, "bench_idle: the window did not show\n");
    return 1;
  }
  ui::NetworkViewWidget* view = window->networkView();
  view->pause();
  QTest::qWait(4000);  // the first frames, and the start-up message fading out

  const std::uint64_t paints = view->paintCount();
  const double cpu = cpuSeconds();
  const auto start = std::chrono::steady_clock::now();
  QTest::qWait(seconds * 1000);
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const double used = cpuSeconds() - cpu;
  std::printf(
      "idle window, layout paused, %d vertices: %.3f s CPU over %.1f s (%.2f %%), %llu frames\n",
      static_cast<int>(window->controller().network()->countVertices()), used, wall,
      100.0 * used / wall, static_cast<unsigned long long>(view->paintCount() - paints));
  window->document()->updateChangeCount(QLOComplexNetwork::Change::Cleared);
  window->close();
  return 0;
}
