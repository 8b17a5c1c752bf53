#pragma once
// The filter panel: the filter property selector, the filter range (minimum
// and maximum, each a slider and a field) and the edge-weight thresholds
// (likewise). The sliders span the bounds the controller found for the
// selected property and for the weights.
#include <QWidget>
#include <memory>

class QComboBox;
class VXLController;

namespace ui {

class SliderField;

class FilterPanel : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kSteps = 1000;

  explicit FilterPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  // The selector and the slider bounds from the controller, then the values.
  void refresh();
  // Only the view's current range and thresholds (a frame resets the range
  // after the network or the filter property changed).
  void showValues();

 private:
  SliderField* addSliderField(const char* label, const char* name,
                              void (VXLController::*set)(float));

  std::shared_ptr<VXLController> controller_;
  QComboBox* property_;
  SliderField *minimum_ = nullptr, *maximum_ = nullptr;
  SliderField *minimumWeight_ = nullptr, *maximumWeight_ = nullptr;
};

}  // namespace ui
