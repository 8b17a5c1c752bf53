#pragma once
// The view panel: the drawing switches, the overlays and the capability
// report, the edge colours (mode and single colour), the intensities, scale,
// clipping distances, line width and legend size, which vertices show
// labels, and vertex sizes by property. Each control goes through the
// controller's setter where there is one.
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QPushButton;
class VXLController;

namespace ui {

class ViewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ViewPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  void refresh();

 private:
  template <class Control, class Value>
  struct Bound {
    Control* control;
    std::function<Value()> get;
  };
  void addSwitches();
  void addEdgeColours();
  void addNumbers();
  void addLabels();
  void addSizes();
  void refreshSizes();
  void showEdgeColour();  // the single colour on its button

  std::shared_ptr<VXLController> controller_;
  std::vector<Bound<QCheckBox, bool>> switches_;
  std::vector<Bound<QDoubleSpinBox, double>> numbers_;
  QComboBox* labels_ = nullptr;
  QComboBox* sizeProperty_ = nullptr;
  QComboBox* sizeTransform_ = nullptr;
  QComboBox* edgeColourMode_ = nullptr;
  QPushButton* edgeColour_ = nullptr;
};

}  // namespace ui
