#include "ui/glformat.h"

#include "render/exportcontext.h"

namespace ui {

QSurfaceFormat viewSurfaceFormat() {
  return export_gl::compatibilitySurfaceFormat(4);
}

}  // namespace ui
