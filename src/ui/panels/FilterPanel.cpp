#include "ui/panels/FilterPanel.h"

#include <QComboBox>
#include <QFormLayout>
#include <QSignalBlocker>
#include <cmath>
#include <cstdio>

#include "app/VXLController.h"
#include "app/constantsliders.h"
#include "ui/panels/SliderField.h"

namespace ui {
namespace {

std::string numberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

SliderField::Mapping linearMapping(VXLController::Bounds bounds) {
  return {
      [bounds](double v) {
        return app::linearSliderStep(v, bounds.lower, bounds.upper, FilterPanel::kSteps);
      },
      [bounds](int step) {
        return app::linearSliderValue(step, bounds.lower, bounds.upper, FilterPanel::kSteps);
      },
      &numberText,
  };
}

bool usable(VXLController::Bounds bounds) {
  return std::isfinite(bounds.lower) && std::isfinite(bounds.upper) && bounds.upper > bounds.lower;
}

}  // namespace

FilterPanel::FilterPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), controller_(std::move(controller)), property_(new QComboBox(this)) {
  property_->setObjectName("filterProperty");
  auto* form = new QFormLayout(this);
  form->addRow("Property:", property_);
  minimum_ = addSliderField("Minimum:", "minFilterProperty", &VXLController::setMinFilterProperty);
  maximum_ = addSliderField("Maximum:", "maxFilterProperty", &VXLController::setMaxFilterProperty);
  minimumWeight_ =
      addSliderField("Min weight:", "weightMinThreshold", &VXLController::setWeightMinThreshold);
  maximumWeight_ =
      addSliderField("Max weight:", "weightMaxThreshold", &VXLController::setWeightMaxThreshold);
  connect(property_, &QComboBox::activated, this, [this](int index) {
    controller_->selectFilterProperty(property_->itemText(index).toStdString());
  });
}

SliderField* FilterPanel::addSliderField(const char* label, const char* name,
                                         void (VXLController::*set)(float)) {
  auto* control = new SliderField(name, 0, kSteps, linearMapping({}), this);
  connect(control, &SliderField::valueChosen, this,
          [this, set](float value) { ((*controller_).*set)(value); });
  static_cast<QFormLayout*>(layout())->addRow(label, control);
  return control;
}

void FilterPanel::refresh() {
  {
    const QSignalBlocker block(property_);
    QStringList titles;
    for (const std::string& title : controller_->filterPropertyTitles()) {
      titles << QString::fromStdString(title);
    }
    QStringList shown;
    for (int i = 0; i < property_->count(); ++i) shown << property_->itemText(i);
    if (shown != titles) {
      property_->clear();
      property_->addItems(titles);
    }
    property_->setCurrentText(QString::fromStdString(controller_->filterPropertyName()));
  }
  const VXLController::Bounds range = controller_->filterRangeBounds();
  const VXLController::Bounds weights = controller_->weightThresholdBounds();
  for (SliderField* control : {minimum_, maximum_}) {
    control->setMapping(linearMapping(range));
    control->setSliderEnabled(usable(range));
  }
  for (SliderField* control : {minimumWeight_, maximumWeight_}) {
    control->setMapping(linearMapping(weights));
    control->setSliderEnabled(usable(weights));
  }
  showValues();
}

void FilterPanel::showValues() {
  minimum_->display(controller_->minFilterProperty());
  maximum_->display(controller_->maxFilterProperty());
  minimumWeight_->display(controller_->weightMinThreshold());
  maximumWeight_->display(controller_->weightMaxThreshold());
}

}  // namespace ui
