#pragma once
// A minimal main window: the network view, File and View menus, and the
// vertex and edge counts in the status bar.
#include <QMainWindow>
#include <memory>

#include "plexora/QLONetwork.h"

class QLabel;

namespace ui {

class NetworkViewWidget;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Shows `network` under `title` (the file name, or what was generated).
  MainWindow(std::shared_ptr<QLONetwork> network, const QString& title, QWidget* parent = nullptr);

  NetworkViewWidget* networkView() const { return view_; }
  void setNetwork(std::shared_ptr<QLONetwork> network, const QString& title);
  // The status bar's counts, e.g. "2000 vertices, 3987 edges".
  QString countsText() const;

 public slots:
  // Replaces the network by a newly generated random one.
  void newGeneratedNetwork();

 private:
  void buildMenus();

  NetworkViewWidget* view_ = nullptr;
  QLabel* counts_ = nullptr;
};

}  // namespace ui
