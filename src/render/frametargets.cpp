#include "render/frametargets.h"

#include <GL/gl.h>

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>

FrameTargets::FrameTargets() = default;
FrameTargets::~FrameTargets() = default;

bool FrameTargets::prepare(int width, int height, int samples) {
  if (width <= 0 || height <= 0) return false;
  if (drawing_ && drawing_->size() == QSize(width, height) && samples_ == samples) return true;
  QOpenGLFramebufferObjectFormat format;
  format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
  format.setSamples(samples);
  format.setInternalTextureFormat(GL_RGBA8);
  auto drawing = std::make_unique<QOpenGLFramebufferObject>(width, height, format);
  if (!drawing->isValid()) return false;
  drawing_ = std::move(drawing);
  samples_ = samples;
  return true;
}

void FrameTargets::bindDrawing() {
  drawing_->bind();
}

void FrameTargets::resolve() {
  const QSize size = drawing_->size();
  if (!shown_ || shown_->size() != size) {
    QOpenGLFramebufferObjectFormat format;
    format.setInternalTextureFormat(GL_RGBA8);
    shown_ = std::make_unique<QOpenGLFramebufferObject>(size, format);
  }
  const QRect area(QPoint(0, 0), size);
  QOpenGLFramebufferObject::blitFramebuffer(shown_.get(), area, drawing_.get(), area,
                                            GL_COLOR_BUFFER_BIT, GL_NEAREST);
  shown_->bind();
}

bool FrameTargets::shownIs(int width, int height) const {
  return shown_ && shown_->size() == QSize(width, height);
}

void FrameTargets::drawShown() {
  const QSize size = shown_->size();
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glViewport(0, 0, size.width(), size.height());
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_BLEND);
  glDisable(GL_LIGHTING);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();

  // Nearest texels over a viewport of the texture's own size: every pixel,
  // alpha included, lands unchanged.
  glEnable(GL_TEXTURE_2D);
  glBindTexture(GL_TEXTURE_2D, shown_->texture());
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
  glBegin(GL_QUADS);
  glTexCoord2f(0, 0);
  glVertex2f(-1, -1);
  glTexCoord2f(1, 0);
  glVertex2f(1, -1);
  glTexCoord2f(1, 1);
  glVertex2f(1, 1);
  glTexCoord2f(0, 1);
  glVertex2f(-1, 1);
  glEnd();
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glBindTexture(GL_TEXTURE_2D, 0);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_DEPTH_TEST);  // the scene's standing state
  glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
}

void FrameTargets::clear() {
  drawing_.reset();
  shown_.reset();
  samples_ = 0;
}
