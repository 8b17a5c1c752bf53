#include "ui/panels/SliderField.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSlider>

#include "app/constantsliders.h"

namespace ui {

SliderField::SliderField(const QString& name, int minimum, int maximum, Mapping mapping,
                         QWidget* parent)
    : QWidget(parent),
      slider_(new QSlider(Qt::Horizontal, this)),
      field_(new QLineEdit(this)),
      mapping_(std::move(mapping)) {
  slider_->setObjectName(name + "Slider");
  slider_->setRange(minimum, maximum);
  field_->setObjectName(name + "Field");
  field_->setMaximumWidth(80);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(slider_, 1);
  row->addWidget(field_);

  connect(slider_, &QSlider::valueChanged, this,
          [this](int step) { emit valueChosen(mapping_.valueFor(step)); });
  connect(field_, &QLineEdit::editingFinished, this, &SliderField::fieldEdited);
}

void SliderField::setSliderEnabled(bool enabled) {
  slider_->setEnabled(enabled);
}

void SliderField::display(double value) {
  shown_ = value;
  const QSignalBlocker sliderBlocker(slider_);
  const QSignalBlocker fieldBlocker(field_);
  slider_->setValue(mapping_.stepFor(value));
  // A field the user is typing in keeps what was typed.
  if (field_->hasFocus() && field_->isModified()) return;
  field_->setText(QString::fromStdString(mapping_.text(value)));
}

void SliderField::fieldEdited() {
  // Leaving an untouched field must not replace the value by its rounded text.
  if (!field_->isModified()) return;
  field_->setModified(false);
  const auto value = app::parseNumberField(field_->text().toStdString());
  if (!value) {
    display(shown_);
    return;
  }
  emit valueChosen(*value);
}

}  // namespace ui
