#pragma once
// The network information panel: the network's name, its vertex and edge
// counts, its three flags and its vertex properties with their kinds.
#include <QWidget>
#include <memory>

class QLabel;
class VXLController;

namespace ui {

class NetworkInfoPanel : public QWidget {
  Q_OBJECT

 public:
  explicit NetworkInfoPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  void refresh();

 private:
  QLabel* addRow(const QString& title, const QString& name);

  std::shared_ptr<VXLController> controller_;
  QLabel *name_, *vertices_, *edges_, *directed_, *vertexWeighted_, *edgeWeighted_, *properties_;
};

}  // namespace ui
