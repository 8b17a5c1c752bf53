#include "render/exportcontext.h"

#include <GL/gl.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <algorithm>
#include <atomic>

namespace export_gl {
namespace {

constexpr int kSamples = 8;
std::atomic<int> gTileSideBound{0};
std::atomic<OffscreenContexts> gOffscreenContexts{OffscreenContexts::Allowed};

// The context exports use when no window lends its own; it lives as long as
// the process (a context cannot outlive the application object safely, so
// it is never destroyed at all).
struct HeadlessContext {
  QOpenGLContext* context = nullptr;
  QOffscreenSurface* surface = nullptr;
};

HeadlessContext makeHeadlessContext() {
  auto* context = new QOpenGLContext;
  QSurfaceFormat format = exportSurfaceFormat();
  format.setSamples(0);  // it never draws a picture of its own
  context->setFormat(format);
  if (!context->create()) {
    delete context;
    return {};
  }
  auto* surface = new QOffscreenSurface;
  surface->setFormat(context->format());
  surface->create();
  return {context, surface};
}

}  // namespace

QSurfaceFormat compatibilitySurfaceFormat(int samples) {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  // 2.1 asks for a legacy context; drivers answer with their highest
  // compatibility version (Mesa: 4.5 compatibility).
  format.setVersion(2, 1);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(samples);
  return format;
}

QSurfaceFormat exportSurfaceFormat() {
  QSurfaceFormat format = compatibilitySurfaceFormat(kSamples);
  format.setAlphaBufferSize(8);
  return format;
}

ViewContext::ViewContext(const Host& host) : host_(host) {
  if (QOpenGLContext* current = QOpenGLContext::currentContext()) {
    context_ = current;
    surface_ = current->surface();
    showsFrame_ = true;
    return;
  }
  if (host_.makeCurrent && host_.makeCurrent()) {
    origin_ = Origin::Host;
    if (QOpenGLContext* current = QOpenGLContext::currentContext()) {
      context_ = current;
      surface_ = current->surface();
      showsFrame_ = true;
      return;
    }
    if (host_.doneCurrent) host_.doneCurrent();
  }
  origin_ = Origin::Headless;
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
    error_ = "an export needs a QGuiApplication and a display for OpenGL";
    return;
  }
  static const HeadlessContext headless = makeHeadlessContext();
  if (!headless.context || !headless.surface->isValid() ||
      !headless.context->makeCurrent(headless.surface)) {
    error_ = "no OpenGL context could be made for the export (is there a display?)";
    return;
  }
  context_ = headless.context;
  surface_ = headless.surface;
}

ViewContext::~ViewContext() {
  if (!context_) return;
  switch (origin_) {
    case Origin::Current:
      makeCurrent();
      break;
    case Origin::Host:
      if (host_.doneCurrent) host_.doneCurrent();
      break;
    case Origin::Headless:
      context_->doneCurrent();
      break;
  }
}

void ViewContext::makeCurrent() {
  if (context_ && QOpenGLContext::currentContext() != context_) context_->makeCurrent(surface_);
}

OffscreenContext::OffscreenContext() = default;

OffscreenContext::~OffscreenContext() {
  if (context_ && QOpenGLContext::currentContext() == context_.get()) context_->doneCurrent();
  context_.reset();
  surface_.reset();
}

void setOffscreenContexts(OffscreenContexts contexts) {
  gOffscreenContexts.store(contexts, std::memory_order_relaxed);
}

bool OffscreenContext::create(QOpenGLContext* shareWith) {
  if (gOffscreenContexts.load(std::memory_order_relaxed) == OffscreenContexts::Refused) {
    return false;
  }
  context_ = std::make_unique<QOpenGLContext>();
  context_->setFormat(exportSurfaceFormat());
  context_->setShareContext(shareWith);
  if (!context_->create()) return false;
  // The view's display lists, program and textures must be visible here.
  if (shareWith && !QOpenGLContext::areSharing(context_.get(), shareWith)) return false;
  surface_ = std::make_unique<QOffscreenSurface>();
  surface_->setFormat(context_->format());
  surface_->create();
  return surface_->isValid() && context_->makeCurrent(surface_.get());
}

int maxTileSide() {
  GLint renderbuffer = 0, texture = 0;
  GLint viewport[2] = {0, 0};
  glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &renderbuffer);
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &texture);
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
  int side = std::min({renderbuffer, texture, viewport[0], viewport[1]});
  const int bound = gTileSideBound.load(std::memory_order_relaxed);
  if (bound > 0) side = std::min(side, bound);
  return side;
}

void setMaxTileSide(int side) {
  gTileSideBound.store(std::max(side, 0), std::memory_order_relaxed);
}

TileTarget::TileTarget(int width, int height) {
  QOpenGLFramebufferObjectFormat drawn;
  drawn.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
  drawn.setSamples(kSamples);  // Qt lowers it to what the driver offers
  drawn.setInternalTextureFormat(GL_RGBA8);
  drawn_ = std::make_unique<QOpenGLFramebufferObject>(width, height, drawn);
  QOpenGLFramebufferObjectFormat resolved;
  resolved.setInternalTextureFormat(GL_RGBA8);
  resolved_ = std::make_unique<QOpenGLFramebufferObject>(width, height, resolved);
}

TileTarget::~TileTarget() = default;

bool TileTarget::valid() const {
  return drawn_->isValid() && resolved_->isValid();
}

void TileTarget::bind() {
  drawn_->bind();
}

void TileTarget::read(int width, int height, uchar* rows, int rowLength) {
  const QRect area(0, 0, width, height);
  QOpenGLFramebufferObject::blitFramebuffer(resolved_.get(), area, drawn_.get(), area,
                                            GL_COLOR_BUFFER_BIT, GL_NEAREST);
  resolved_->bind();
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glPixelStorei(GL_PACK_ROW_LENGTH, rowLength);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rows);
  glPixelStorei(GL_PACK_ROW_LENGTH, 0);
}

void TileTarget::release() {
  drawn_->release();
}

QImage readBoundFrame(int width, int height) {
  QImage rows(width, height, QImage::Format_RGBA8888);
  if (rows.isNull()) return rows;
  QOpenGLExtraFunctions* gl = QOpenGLContext::currentContext()->extraFunctions();
  GLint readBinding = 0, drawBinding = 0, sampleBuffers = 0;
  gl->glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readBinding);
  gl->glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawBinding);
  gl->glGetIntegerv(GL_SAMPLE_BUFFERS, &sampleBuffers);
  std::unique_ptr<QOpenGLFramebufferObject> resolved;
  if (sampleBuffers > 0) {
    // A multisampled framebuffer cannot be read directly: resolve it first.
    QOpenGLFramebufferObjectFormat format;
    format.setInternalTextureFormat(GL_RGBA8);
    resolved = std::make_unique<QOpenGLFramebufferObject>(width, height, format);
    // Making it may have moved the bindings: name both ends of the copy.
    gl->glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(readBinding));
    gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved->handle());
    gl->glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT,
                          GL_NEAREST);
    gl->glBindFramebuffer(GL_READ_FRAMEBUFFER, resolved->handle());
  }
  gl->glPixelStorei(GL_PACK_ALIGNMENT, 4);
  gl->glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rows.bits());
  gl->glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(readBinding));
  gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(drawBinding));
  return rows;
}

}  // namespace export_gl
