#pragma once
// The colour panel: the property the vertices are coloured by, the transform
// function with its power coefficient, the colour map with its inversion and
// three custom colours, the order, limit and hiding of categories, and the
// button that opens a colour file. Every change recolours at once; a refresh
// shows the controller's state without firing the controls back.
#include <QWidget>
#include <array>
#include <memory>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QToolButton;
class VXLController;

namespace ui {

class SliderField;

class ColourPanel : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kLimitSliderMaximum = 64;

  explicit ColourPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  ~ColourPanel() override;
  void refresh();

 private:
  void addScalarControls();
  void addCategoryControls();
  // The three wells' colour dialogs and the colour file dialog, window-modal.
  void chooseCustomColour(int well);
  void openColourFile();
  // The limit controls' action: field and slider agree, then the controller
  // takes the check boxes and the field's value.
  enum class LimitSender { Field, Other };
  void changeColorProperties(LimitSender sender);

  std::shared_ptr<VXLController> controller_;
  QComboBox* property_ = nullptr;
  QComboBox* function_ = nullptr;
  SliderField* power_ = nullptr;
  QComboBox* map_ = nullptr;
  QCheckBox* invert_ = nullptr;
  std::array<QToolButton*, 3> wells_{};
  QComboBox* sortProperty_ = nullptr;
  QButtonGroup* sortOrder_ = nullptr;
  QButtonGroup* sortMode_ = nullptr;
  QCheckBox* limit_ = nullptr;
  QLineEdit* limitField_ = nullptr;
  QSlider* limitSlider_ = nullptr;
  QCheckBox* hide_ = nullptr;
  QPushButton* open_ = nullptr;
};

}  // namespace ui
