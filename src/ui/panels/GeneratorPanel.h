#pragma once
// The network generator panel: the type selector (Random, Barabasi), the two
// parameter fields with their labels, two further labels and check boxes the
// types keep hidden, and the button that generates and installs a network.
#include <QWidget>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class VXLController;

namespace ui {

class GeneratorPanel : public QWidget {
  Q_OBJECT

 public:
  explicit GeneratorPanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  // Shows the controller's generator: type, labels, visibility, fields.
  void refresh();

 private:
  std::shared_ptr<VXLController> controller_;
  QComboBox* type_;
  QLabel *verticesLabel_, *degreeLabel_, *weightedLabel_, *directedLabel_;
  QLineEdit *vertices_, *degree_;
  QCheckBox *weighted_, *directed_;
};

}  // namespace ui
