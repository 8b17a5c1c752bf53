#include "ui/wheelguard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QWidget>

namespace ui {
namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    auto* input = qobject_cast<QWidget*>(watched);
    if (!input || input->hasFocus()) return false;
    // Ignored and swallowed here: the application hands the wheel on to the
    // parents, up to the scroll area.
    event->ignore();
    return true;
  }
};

}  // namespace

void guardWheelOnInputs(QWidget* root) {
  const QString name = QStringLiteral("wheelGuard");
  QObject* guard = root->findChild<QObject*>(name, Qt::FindDirectChildrenOnly);
  if (!guard) {
    guard = new WheelGuard(root);
    guard->setObjectName(name);
  }
  const auto guardIt = [guard](QWidget* input) {
    input->setFocusPolicy(Qt::StrongFocus);
    input->removeEventFilter(guard);
    input->installEventFilter(guard);
  };
  for (auto* w : root->findChildren<QAbstractSpinBox*>()) guardIt(w);
  for (auto* w : root->findChildren<QAbstractSlider*>()) guardIt(w);
  for (auto* w : root->findChildren<QComboBox*>()) guardIt(w);
}

}  // namespace ui
