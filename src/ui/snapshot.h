#pragma once
// One picture of the network view without a window, drawn off screen as a
// raster export draws it. Needs a QGuiApplication.
#include <QImage>
#include <QSize>
#include <string>

class VXLNetworkView;

namespace ui {

// The frame as an image of `size` pixels, or a null image with the reason
// in `error` when no GL context or framebuffer could be made.
QImage renderSnapshot(VXLNetworkView& view, QSize size, std::string& error);

}  // namespace ui
