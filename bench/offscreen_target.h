#pragma once
// One GL context and one multisampled framebuffer (4 samples, as the
// window asks for) that a frame benchmark draws into for its whole run.
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <memory>

#include "ui/glformat.h"

struct OffscreenTarget {
  QOpenGLContext context;
  QOffscreenSurface surface;
  std::unique_ptr<QOpenGLFramebufferObject> fbo;

  bool make(int width, int height) {
    context.setFormat(ui::viewSurfaceFormat());
    if (!context.create()) return false;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface)) return false;
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    format.setSamples(4);
    fbo = std::make_unique<QOpenGLFramebufferObject>(QSize(width, height), format);
    return fbo->isValid() && fbo->bind();
  }
};
