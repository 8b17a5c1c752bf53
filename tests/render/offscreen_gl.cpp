#include "offscreen_gl.h"

#include <GL/gl.h>

namespace gltest {
namespace {

void ensureApplication() {
  static int argc = 1;
  static char name[] = "render_gl_tests";
  static char* argv[] = {name, nullptr};
  static QGuiApplication* application = new QGuiApplication(argc, argv);
  (void)application;
}

}  // namespace

void OffscreenGL::SetUp() {
  ensureApplication();
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setVersion(2, 1);
  format.setDepthBufferSize(24);
  context_ = std::make_unique<QOpenGLContext>();
  context_->setFormat(format);
  ASSERT_TRUE(context_->create());
  surface_ = std::make_unique<QOffscreenSurface>();
  surface_->setFormat(context_->format());
  surface_->create();
  ASSERT_TRUE(context_->makeCurrent(surface_.get()));
  ASSERT_TRUE(context_->format().profile() == QSurfaceFormat::CompatibilityProfile ||
              context_->format().majorVersion() < 3);
  fbo_ = std::make_unique<QOpenGLFramebufferObject>(kSize, kSize, QOpenGLFramebufferObject::Depth,
                                                    GLenum(GL_TEXTURE_2D), GLenum(GL_RGBA8));
  ASSERT_TRUE(fbo_->isValid());
  ASSERT_TRUE(fbo_->bind());
}

void OffscreenGL::TearDown() {
  fbo_.reset();  // the context (destroyed with the fixture) is still current
  if (context_) context_->doneCurrent();
}

Image OffscreenGL::read() {
  Image image;
  image.width = kSize;
  image.height = kSize;
  image.rgba.resize(4 * static_cast<std::size_t>(kSize) * kSize);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, kSize, kSize, GL_RGBA, GL_UNSIGNED_BYTE, image.rgba.data());
  return image;
}

}  // namespace gltest
