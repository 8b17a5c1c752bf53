#include "ui/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

#include "app/networkfile.h"
#include "ui/NetworkViewWidget.h"

namespace ui {

namespace {

QString plural(std::uint64_t count, const char* one, const char* many) {
  return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

}  // namespace

MainWindow::MainWindow(std::shared_ptr<QLONetwork> network, const QString& title, QWidget* parent)
    : QMainWindow(parent) {
  view_ = new NetworkViewWidget(nullptr, this);
  setCentralWidget(view_);
  counts_ = new QLabel(this);
  counts_->setObjectName(QStringLiteral("networkCounts"));
  statusBar()->addWidget(counts_);
  buildMenus();
  setNetwork(std::move(network), title);
  resize(900, 700);
  view_->setFocus();
}

void MainWindow::buildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  QAction* generate = file->addAction(tr("&New Generated Network"));
  generate->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
  connect(generate, &QAction::triggered, this, &MainWindow::newGeneratedNetwork);
  file->addSeparator();
  QAction* quit = file->addAction(tr("&Quit"));
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  connect(quit, &QAction::triggered, qApp, &QApplication::closeAllWindows);

  QMenu* view = menuBar()->addMenu(tr("&View"));
  struct Preset {
    const char* text;
    Qt::Key key;
    void (VXLNetworkView::*apply)();
  };
  const Preset presets[] = {{"From &Top", Qt::Key_1, &VXLNetworkView::viewFromTop},
                            {"From &Left", Qt::Key_2, &VXLNetworkView::viewFromLeft},
                            {"From &Front", Qt::Key_3, &VXLNetworkView::viewFromFront}};
  for (const Preset& preset : presets) {
    QAction* action = view->addAction(tr(preset.text));
    action->setShortcut(QKeySequence(Qt::CTRL | preset.key));
    connect(action, &QAction::triggered, this, [this, apply = preset.apply] {
      (view_->view().*apply)();
      view_->update();
    });
  }
  view->addSeparator();
  view->addAction(view_->startPauseAction());
}

void MainWindow::setNetwork(std::shared_ptr<QLONetwork> network, const QString& title) {
  const std::uint64_t vertices = network ? network->countVertices() : 0;
  const std::uint64_t edges = network ? network->countEdges() : 0;
  view_->view().setNetwork(std::move(network));
  counts_->setText(plural(vertices, "vertex", "vertices") + QStringLiteral(", ") +
                   plural(edges, "edge", "edges"));
  setWindowTitle(title + QStringLiteral(" \u2014 Plexview"));
  view_->update();
}

QString MainWindow::countsText() const {
  return counts_->text();
}

void MainWindow::newGeneratedNetwork() {
  setNetwork(app::generatedNetwork(), tr("Random network"));
}

}  // namespace ui
