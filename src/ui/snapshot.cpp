#include "ui/snapshot.h"

#include "render/VXLNetworkView.h"

namespace ui {

QImage renderSnapshot(VXLNetworkView& view, QSize size, std::string& error) {
  // The raster export's picture: drawn off screen in the view's own line
  // width (in tiles when the size is beyond the GL limits).
  return view.renderImage(size.width(), size.height(), view.lineWidth(), error);
}

}  // namespace ui
