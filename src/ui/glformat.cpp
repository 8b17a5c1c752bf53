#include "ui/glformat.h"

namespace ui {

QSurfaceFormat viewSurfaceFormat() {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  // 2.1 asks for a legacy context; drivers answer with their highest
  // compatibility version (Mesa: 4.5 compatibility).
  format.setVersion(2, 1);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(4);
  return format;
}

}  // namespace ui
