#include "ui/multilevelstart.h"

#include <QAction>
#include <QEventLoop>
#include <QMenu>
#include <QProgressDialog>
#include <QSettings>
#include <QTimer>
#include <atomic>
#include <thread>

#include "app/VXLController.h"

namespace ui {
namespace {

const char* const kOnOpenKey = "layout/multilevelStartOnOpen";
constexpr int kSteps = 1000;
constexpr int kPollMilliseconds = 50;

}  // namespace

bool multilevelStartOnOpen() {
  return QSettings().value(kOnOpenKey, true).toBool();
}

void setMultilevelStartOnOpen(bool on) {
  QSettings().setValue(kOnOpenKey, on);
}

bool runMultilevelStart(QWidget* parent, VXLController& controller) {
  VXLNetworkView& view = *controller.networkView();
  if (!view.network()) return false;
  const bool wasRunning = view.fAnimate();
  view.pause();

  QProgressDialog dialog(QObject::tr("Laying out the network on coarser levels\u2026"),
                         QObject::tr("Cancel"), 0, kSteps, parent);
  dialog.setWindowTitle(QObject::tr("Multilevel Start"));
  dialog.setWindowModality(Qt::WindowModal);
  dialog.setMinimumDuration(0);
  dialog.setAutoReset(false);
  dialog.setAutoClose(false);

  std::atomic<int> progress{0};
  std::atomic<bool> cancelled{false};
  std::atomic<bool> finished{false};
  bool placed = false;
  std::thread worker([&] {
    placed = view.multilevelStart([&](double fraction) {
      progress.store(static_cast<int>(fraction * kSteps), std::memory_order_relaxed);
      return !cancelled.load(std::memory_order_relaxed);
    });
    finished.store(true);
  });

  QEventLoop loop;
  QTimer poll;
  poll.setInterval(kPollMilliseconds);
  QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
    if (finished.load()) {
      loop.quit();
      return;
    }
    if (!dialog.wasCanceled()) dialog.setValue(progress.load(std::memory_order_relaxed));
  });
  QObject::connect(&dialog, &QProgressDialog::canceled, &loop,
                   [&] { cancelled.store(true, std::memory_order_relaxed); });
  poll.start();
  loop.exec();
  worker.join();
  dialog.close();

  if (wasRunning) view.start();
  return placed;
}

void addMultilevelActions(QMenu* menu, QWidget* parent, VXLController& controller) {
  menu->addAction(QObject::tr("&Multilevel Start"), parent,
                  [parent, &controller] { runMultilevelStart(parent, controller); });
  QAction* onOpen = menu->addAction(QObject::tr("Multilevel Start for &Large Networks"));
  onOpen->setCheckable(true);
  onOpen->setChecked(multilevelStartOnOpen());
  onOpen->setToolTip(
      QObject::tr("Run the multilevel start when a network of more than "
                  "50,000 vertices opens"));
  QObject::connect(onOpen, &QAction::toggled, parent,
                   [](bool on) { setMultilevelStartOnOpen(on); });
}

}  // namespace ui
