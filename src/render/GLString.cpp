// Text to texture: typesetting with QPainter, the rectangle texture and the
// quad that shows it.
#include "render/GLString.h"

#include <GL/gl.h>

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <mutex>

#include "quillo/log.h"

namespace {

QColor qColour(const scene::Rgba& c) {
  return QColor::fromRgbF(c.r, c.g, c.b, c.a);
}

QFont fontFor(const TextAttributes& attributes, Antialias antialias) {
  QFont font(QString::fromStdString(attributes.family));
  // Sizes are points at 72 dpi, one point per pixel, as on the platform the
  // look was first designed for.
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(attributes.pointSize))));
  if (antialias == Antialias::Off) font.setStyleStrategy(QFont::NoAntialias);
  return font;
}

// Font lookups abort without a QGuiApplication: say so once and draw nothing.
bool haveGuiApplication() {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return true;
  static std::once_flag once;
  std::call_once(once, [] { quillo::logLine("text overlays need a QGuiApplication: not drawn"); });
  return false;
}

}  // namespace

GLString::GLString(std::string text, TextAttributes attributes, scene::Rgba textColor,
                   scene::Rgba boxColor, scene::Rgba borderColor)
    : text_(std::move(text)),
      attributes_(std::move(attributes)),
      textColor_(textColor),
      boxColor_(boxColor),
      borderColor_(borderColor) {}

void GLString::setString(std::string text) {
  text_ = std::move(text);
  if (!staticFrame_) frameSize_ = {0, 0};
  requiresUpdate_ = true;
}

void GLString::setString(std::string text, TextAttributes attributes) {
  attributes_ = std::move(attributes);
  setString(std::move(text));
}

void GLString::setTextColor(scene::Rgba colour) {
  textColor_ = colour;
  requiresUpdate_ = true;
}

void GLString::setBoxColor(scene::Rgba colour) {
  boxColor_ = colour;
  requiresUpdate_ = true;
}

void GLString::setBorderColor(scene::Rgba colour) {
  borderColor_ = colour;
  requiresUpdate_ = true;
}

void GLString::setMargins(double width, double height) {
  marginSize_ = {width, height};
  if (!staticFrame_) frameSize_ = {0, 0};
  requiresUpdate_ = true;
}

void GLString::setAntialias(Antialias antialias) {
  antialias_ = antialias;
  requiresUpdate_ = true;
}

void GLString::useStaticFrame(TextSize size) {
  frameSize_ = size;
  staticFrame_ = true;
  requiresUpdate_ = true;
}

void GLString::useDynamicFrame() {
  if (staticFrame_) {
    staticFrame_ = false;
    frameSize_ = {0, 0};
  }
  requiresUpdate_ = true;
}

QImage GLString::makeImage() {
  if (!haveGuiApplication()) return {};
  const QFont font = fontFor(attributes_, antialias_);
  const QString text = QString::fromStdString(text_);
  if (!staticFrame_ && frameSize_ == TextSize{0, 0}) {
    // Whole pixels, so the frame and the image agree; "\n" breaks lines.
    const QSizeF size = text.isEmpty() ? QSizeF(0, 0) : QFontMetricsF(font).size(0, text);
    frameSize_ = {std::ceil(size.width()) + 2 * marginSize_.width,
                  std::ceil(size.height()) + 2 * marginSize_.height};
  }
  const int width = std::max(1, static_cast<int>(std::ceil(frameSize_.width)));
  const int height = std::max(1, static_cast<int>(std::ceil(frameSize_.height)));
  QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
  image.fill(Qt::transparent);

  QPainter painter(&image);
  const bool smooth = antialias_ == Antialias::On;
  painter.setRenderHint(QPainter::Antialiasing, smooth);
  painter.setRenderHint(QPainter::TextAntialiasing, smooth);
  const QRectF box =
      QRectF(0, 0, frameSize_.width, frameSize_.height).adjusted(0.5, 0.5, -0.5, -0.5);
  QPainterPath outline;
  outline.addRoundedRect(box, cRadius_, cRadius_);
  if (boxColor_.a != 0) {
    // 45 degrees: from the lower left corner towards the upper right one
    // (y grows downwards in the image).
    const QPointF centre = box.center();
    const double reach = (box.width() + box.height()) / 4;
    QLinearGradient gradient(centre + QPointF(-reach, reach), centre + QPointF(reach, -reach));
    scene::Rgba faint = boxColor_;
    faint.a *= 0.5f;
    gradient.setColorAt(0.0, qColour(faint));
    gradient.setColorAt(1.0, qColour(boxColor_));
    painter.fillPath(outline, gradient);
  }
  if (borderColor_.a != 0) painter.strokePath(outline, QPen(qColour(borderColor_), 1.0));
  painter.setFont(font);
  painter.setPen(qColour(textColor_));
  painter.drawText(QRectF(marginSize_.width, marginSize_.height, width, height),
                   Qt::AlignLeft | Qt::AlignTop, text);
  painter.end();
  return image;
}

void GLString::genTexture() {
  const QImage image = makeImage();
  requiresUpdate_ = false;
  // Nothing to load without an image or without a current context.
  if (image.isNull() || !glGetString(GL_VERSION)) return;
  texSize_ = {static_cast<double>(image.width()), static_cast<double>(image.height())};

  glPushAttrib(GL_TEXTURE_BIT);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);  // QImage rows are 4-byte aligned
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
  if (texName_ == 0) glGenTextures(1, &texName_);
  glBindTexture(GL_TEXTURE_RECTANGLE, texName_);
  if (texSize_ == uploadedSize_) {
    glTexSubImage2D(GL_TEXTURE_RECTANGLE, 0, 0, 0, image.width(), image.height(), GL_RGBA,
                    GL_UNSIGNED_BYTE, image.constBits());
  } else {
    glTexImage2D(GL_TEXTURE_RECTANGLE, 0, GL_RGBA, image.width(), image.height(), 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, image.constBits());
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    uploadedSize_ = texSize_;
  }
  glPopClientAttrib();
  glPopAttrib();
}

void GLString::drawWithBounds(const TextBounds& bounds) {
  if (requiresUpdate_) genTexture();
  if (texName_ == 0) return;
  glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_COLOR_BUFFER_BIT);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glDisable(GL_CULL_FACE);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_BLEND);
  glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);  // the image is premultiplied
  glEnable(GL_TEXTURE_RECTANGLE);
  glBindTexture(GL_TEXTURE_RECTANGLE, texName_);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  const double tw = texSize_.width, th = texSize_.height;
  const double x = bounds.x, y = bounds.y, w = bounds.width, h = bounds.height;
  glBegin(GL_QUADS);
  glTexCoord2d(0, 0);
  glVertex2d(x, y);
  glTexCoord2d(0, th);
  glVertex2d(x, y + h);
  glTexCoord2d(tw, th);
  glVertex2d(x + w, y + h);
  glTexCoord2d(tw, 0);
  glVertex2d(x + w, y);
  glEnd();
  glPopAttrib();
}

void GLString::drawAtPoint(double x, double y) {
  if (requiresUpdate_) genTexture();
  drawWithBounds({x, y, frameSize_.width, frameSize_.height});
}

void GLString::deleteTexture() {
  if (texName_ != 0) glDeleteTextures(1, &texName_);
  texName_ = 0;
  uploadedSize_ = {0, 0};
}
