#pragma once
// A slider and a text field showing one number. Moving the slider or
// finishing an edit of the field reports the value chosen; a field that does
// not hold a number goes back to the value shown. Showing a value never
// reports one.
#include <QWidget>
#include <functional>
#include <string>

class QLineEdit;
class QSlider;

namespace ui {

class SliderField : public QWidget {
  Q_OBJECT

 public:
  // How the slider shows a value and sets one, and the field's text.
  struct Mapping {
    std::function<int(double value)> stepFor;
    std::function<float(int step)> valueFor;
    std::function<std::string(double value)> text;
  };

  // The slider and field are named `name` + "Slider" and `name` + "Field".
  SliderField(const QString& name, int minimum, int maximum, Mapping mapping,
              QWidget* parent = nullptr);

  void setMapping(Mapping mapping) { mapping_ = std::move(mapping); }
  void setSliderEnabled(bool enabled);
  void display(double value);

  QSlider* slider() const { return slider_; }
  QLineEdit* field() const { return field_; }

 signals:
  void valueChosen(float value);

 private:
  void fieldEdited();

  QSlider* slider_;
  QLineEdit* field_;
  Mapping mapping_;
  double shown_ = 0;
};

}  // namespace ui
