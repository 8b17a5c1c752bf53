#pragma once
// The GL surface every host of the network view asks for: a compatibility
// profile (the view draws with the fixed-function pipeline and display
// lists), a 24-bit depth buffer and 4 samples.
#include <QSurfaceFormat>

namespace ui {

QSurfaceFormat viewSurfaceFormat();

}  // namespace ui
