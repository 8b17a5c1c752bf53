#pragma once
// Turning Qt's event values into the view's: positions in backing (device)
// pixels with the origin at the bottom left, as GL counts them; modifiers;
// wheel steps; the first character of a key.
#include <QPoint>
#include <QPointF>
#include <QSize>
#include <QString>

#include "render/VXLNetworkView.h"

namespace ui {

struct BackingPoint {
  double x = 0;
  double y = 0;
  bool operator==(const BackingPoint&) const = default;
};

// `logical` is a widget position in Qt's logical pixels (origin top left);
// `heightPx` the widget's height in device pixels.
inline BackingPoint toBackingPixels(QPointF logical, double devicePixelRatio, int heightPx) {
  return {logical.x() * devicePixelRatio, heightPx - logical.y() * devicePixelRatio};
}

// The device-pixel size of a widget of `logical` size, rounded as Qt sizes
// the widget's framebuffer.
inline QSize toDevicePixels(QSize logical, double devicePixelRatio) {
  return logical * devicePixelRatio;
}

// Shift, Control and Alt (the view's Option); other modifiers are dropped.
Modifiers toViewModifiers(Qt::KeyboardModifiers modifiers);

// Wheel steps: one notch (Qt's 120 eighths of a degree) is one step, the
// size of a line scroll; positive is away from the user.
struct WheelSteps {
  double dx = 0;
  double dy = 0;
  bool operator==(const WheelSteps&) const = default;
};
WheelSteps toWheelSteps(QPoint angleDelta);

// The first character a key typed, 0 for a key that types none.
char32_t firstCharacter(const QString& text);

}  // namespace ui
