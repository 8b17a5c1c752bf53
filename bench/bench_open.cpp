// Opening a 1,000,000-edge Pajek file into the start-up window: the time from
// asking to open it to the first frame painted with it, and the longest the
// main thread was kept from its events meanwhile (a 10 ms timer records the
// gaps between its ticks), overall and until the network is installed (the
// rest is the first frame's drawing). Needs an X display:
//   xvfb-run -a -s "-screen 0 1024x768x24" build/bench/bench_open
// The file is generated into /tmp on the first run.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "app/QLODocumentController.h"
#include "plexora/QLORandomGenerator.h"
#include "ui/DocumentWindow.h"
#include "ui/NetworkViewWidget.h"
#include "ui/documentui.h"

namespace {

namespace fs = std::filesystem;

const fs::path kFile = fs::temp_directory_path() / "plexview-bench-open-1M.net";
constexpr std::uint64_t kVertices = 100000;
constexpr double kDegree = 20.0;  // 1,000,000 edges on average

std::uint64_t edgesInFile() {
  static const std::uint64_t edges = [] {
    ReadError error;
    if (!fs::exists(kFile)) {
      QLORandomGenerator::sharedRandomGenerator().setSeed(7);
      const auto network = QLONetwork::initRandomNetworkWithNumberOfVertices(kVertices, kDegree);
      std::string reason;
      if (!network->writeToPajekURL(kFile, WriteMode::Atomic, &reason)) return std::uint64_t{0};
    }
    const auto network = QLONetwork::initWithContentsOfPajekURL(kFile, &error);
    return network ? network->countEdges() : 0;
  }();
  return edges;
}

QLODocumentController& documents() {
  static QLODocumentController* controller = [] {
    auto* made = new QLODocumentController;
    ui::installDocumentUi(*made);
    return made;
  }();
  return *controller;
}

template <typename Done>
void processEventsUntil(Done done) {
  while (!done()) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

void BM_OpenToFirstFrame(benchmark::State& state) {
  const std::uint64_t edges = edgesInFile();
  if (edges == 0) {
    state.SkipWithError("could not write or read the test file");
    return;
  }
  double longestGap = 0, longestOpeningGap = 0, installed = 0;
  for (auto _ : state) {
    // A fresh untouched start-up window for the file to go into.
    const auto document = documents().newDocument();
    QPointer<ui::DocumentWindow> window = ui::DocumentWindow::windowFor(document.get());
    if (!window || !QTest::qWaitForWindowExposed(window)) {
      state.SkipWithError("no window");
      return;
    }
    ui::NetworkViewWidget& widget = *window->networkView();
    // Argument 1 draws vertices as points: the first frame then costs little
    // even on a software GL, and what is left is reading and installing.
    window->controller().setSimpleShapes(state.range(0) == 1);
    QTest::qWait(200);

    QElapsedTimer clock;
    bool painted = false;
    double paintedAt = 0, installedAt = 0, gap = 0, lastTick = 0;
    // The gaps up to the tick after the network is installed: reading and
    // installing, without the first frame's drawing.
    double openingGap = 0;
    bool openingOver = false;
    const auto connection = QObject::connect(&widget, &QOpenGLWidget::frameSwapped, [&] {
      const auto shown = widget.view().presentedNetwork();
      if (!painted && shown && shown->countEdges() == edges) {
        painted = true;
        paintedAt = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
      }
    });
    QTimer ticks;
    ticks.setTimerType(Qt::PreciseTimer);
    ticks.setInterval(10);
    QObject::connect(&ticks, &QTimer::timeout, [&] {
      const double now = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
      gap = std::max(gap, now - lastTick);
      if (!openingOver) openingGap = std::max(openingGap, now - lastTick);
      openingOver = installedAt > 0;
      lastTick = now;
    });

    clock.start();
    ticks.start();
    documents().openDocumentInBackground(
        kFile, QLODocumentController::Display::Show, [&](const QLOComplexNetwork::Ptr&) {
          installedAt = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
        });
    processEventsUntil([&] { return painted; });
    ticks.stop();
    // The tick after the frame closes the last gap.
    gap = std::max(gap, paintedAt - lastTick);
    QObject::disconnect(connection);
    state.SetIterationTime(paintedAt);
    longestGap = std::max(longestGap, gap);
    longestOpeningGap = std::max(longestOpeningGap, openingGap);
    installed = std::max(installed, installedAt);

    widget.pause();
    document->updateChangeCount(QLOComplexNetwork::Change::Cleared);
    window->close();
    processEventsUntil([&] { return window.isNull(); });
  }
  state.counters["edges"] = static_cast<double>(edges);
  state.counters["max_blocked_ms"] = longestGap * 1e3;
  state.counters["max_blocked_opening_ms"] = longestOpeningGap * 1e3;
  state.counters["read_and_installed_ms"] = installed * 1e3;
}

BENCHMARK(BM_OpenToFirstFrame)
    ->ArgName("simple_shapes")
    ->Arg(0)
    ->Arg(1)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("plexview-bench"));
  // Recent files and autosaves stay out of the user's own folders.
  QStandardPaths::setTestModeEnabled(true);
  QSettings::setPath(
      QSettings::NativeFormat, QSettings::UserScope,
      QString::fromStdString((fs::temp_directory_path() / "plexview-bench").string()));
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
