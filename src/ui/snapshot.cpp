#include "ui/snapshot.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include "render/VXLNetworkView.h"
#include "ui/glformat.h"

namespace ui {

QImage renderSnapshot(VXLNetworkView& view, QSize size, std::string& error) {
  QOpenGLContext context;
  context.setFormat(viewSurfaceFormat());
  if (!context.create()) {
    error = "no OpenGL context could be created";
    return {};
  }
  QOffscreenSurface surface;
  surface.setFormat(context.format());
  surface.create();
  if (!surface.isValid() || !context.makeCurrent(&surface)) {
    error = "the OpenGL context could not be made current off screen";
    return {};
  }
  QOpenGLFramebufferObjectFormat fboFormat;
  fboFormat.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
  fboFormat.setSamples(context.format().samples() > 0 ? context.format().samples() : 4);
  QImage image;
  {
    QOpenGLFramebufferObject fbo(size, fboFormat);
    if (!fbo.isValid() || !fbo.bind()) {
      error = "no off-screen framebuffer of that size could be made";
    } else {
      view.initCommands();
      view.drawRect(size.width(), size.height());
      // Resolves the samples and turns GL's bottom-up rows into an image.
      image = fbo.toImage();
      fbo.release();
    }
  }
  context.doneCurrent();
  return image;
}

}  // namespace ui
