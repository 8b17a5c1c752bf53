#include "ui/viewinput.h"

namespace ui {

namespace {

// Qt's wheel units per notch.
constexpr double kEighthsPerNotch = 120.0;

}  // namespace

Modifiers toViewModifiers(Qt::KeyboardModifiers modifiers) {
  Modifiers view;
  if (modifiers & Qt::ShiftModifier) view = view | Modifier::Shift;
  if (modifiers & Qt::ControlModifier) view = view | Modifier::Control;
  if (modifiers & Qt::AltModifier) view = view | Modifier::Option;
  return view;
}

WheelSteps toWheelSteps(QPoint angleDelta) {
  return {angleDelta.x() / kEighthsPerNotch, angleDelta.y() / kEighthsPerNotch};
}

char32_t firstCharacter(const QString& text) {
  if (text.isEmpty()) return 0;
  const QChar first = text.front();
  if (first.isHighSurrogate() && text.size() > 1 && text.at(1).isLowSurrogate()) {
    return QChar::surrogateToUcs4(first, text.at(1));
  }
  return first.unicode();
}

}  // namespace ui
