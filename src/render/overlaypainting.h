#pragma once
// QPainter helpers shared by the overlay images (texts and the legend).
#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QRectF>

#include "colour/rgba.h"

namespace overlay {

inline QColor qColour(const colour::Rgba& c) {
  return QColor::fromRgbF(c.r, c.g, c.b, c.a);
}

// Font lookups abort without a QGuiApplication: false then (said once in the
// log), and the caller draws nothing.
bool haveGuiApplication();

// A transparent premultiplied RGBA image covering width x height (rounded
// up, at least one pixel each way).
QImage blankImage(double width, double height);

// A gradient across `box` at 45 degrees as seen on screen: from the lower left
// corner (position 0) to the upper right one (position 1), in image
// coordinates where y grows downwards. The lines of equal colour pass through
// the other two corners.
QLinearGradient diagonalGradient(const QRectF& box);

}  // namespace overlay
