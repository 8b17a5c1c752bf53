#pragma once
// The layout panel: the five layout constants (each a slider and a field),
// steps per batch, weight as distance, the Start/Pause button and the box
// layout and recentring with their X, Y, Z sizes, the repulsion method
// (automatic, exact or approximate with its theta) with the one in use, and
// the multilevel start. Every change reaches the view at once.
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QDoubleSpinBox;
class QPushButton;
class QSpinBox;
class VXLController;

namespace ui {

class SliderField;

class LayoutPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LayoutPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  void refresh();
  // Shows whether the layout runs (the view can also start and pause it).
  void showRunning();

 private:
  void addConstants();
  void addRunControls();
  void addBoxControls();
  void addRepulsionControls();
  void showRepulsion();

  std::shared_ptr<VXLController> controller_;
  std::array<SliderField*, 5> constants_{};
  QSpinBox* iterations_ = nullptr;
  QCheckBox* weightAsDistance_ = nullptr;
  QPushButton* startPause_ = nullptr;
  std::array<QDoubleSpinBox*, 3> boxSize_{};
  QComboBox* repulsionMethod_ = nullptr;
  QDoubleSpinBox* theta_ = nullptr;
  QLabel* repulsionStatus_ = nullptr;
};

}  // namespace ui
