#pragma once
// The layout panel: the five layout constants (each a slider and a field),
// steps per batch, weight as distance, the Start/Pause button and the box
// layout and recentring with their X, Y, Z sizes. Every change reaches the
// view at once.
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
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

  std::shared_ptr<VXLController> controller_;
  std::array<SliderField*, 5> constants_{};
  QSpinBox* iterations_ = nullptr;
  QCheckBox* weightAsDistance_ = nullptr;
  QPushButton* startPause_ = nullptr;
  std::array<QDoubleSpinBox*, 3> boxSize_{};
};

}  // namespace ui
