// Text to texture: typesetting with QPainter, the rectangle texture and the
// quad that shows it.
#include "render/GLString.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "render/overlaypainting.h"

namespace {

using overlay::qColour;

QFont fontFor(const TextAttributes& attributes, Antialias antialias) {
  QFont font(QString::fromStdString(attributes.family));
  // Sizes are points at 72 dpi, one point per pixel, as on the platform the
  // look was first designed for.
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(attributes.pointSize))));
  if (antialias == Antialias::Off) font.setStyleStrategy(QFont::NoAntialias);
  return font;
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
  if (!overlay::haveGuiApplication()) return {};
  const QFont font = fontFor(attributes_, antialias_);
  const QString text = QString::fromStdString(text_);
  if (!staticFrame_ && frameSize_ == TextSize{0, 0}) {
    // Whole pixels, so the frame and the image agree; "\n" breaks lines.
    const QSizeF size = text.isEmpty() ? QSizeF(0, 0) : QFontMetricsF(font).size(0, text);
    frameSize_ = {std::ceil(size.width()) + 2 * marginSize_.width,
                  std::ceil(size.height()) + 2 * marginSize_.height};
  }
  QImage image = overlay::blankImage(frameSize_.width, frameSize_.height);

  QPainter painter(&image);
  const bool smooth = antialias_ == Antialias::On;
  painter.setRenderHint(QPainter::Antialiasing, smooth);
  painter.setRenderHint(QPainter::TextAntialiasing, smooth);
  const QRectF box =
      QRectF(0, 0, frameSize_.width, frameSize_.height).adjusted(0.5, 0.5, -0.5, -0.5);
  QPainterPath outline;
  outline.addRoundedRect(box, cRadius_, cRadius_);
  if (boxColor_.a != 0) {
    QLinearGradient gradient = overlay::diagonalGradient(box);
    scene::Rgba faint = boxColor_;
    faint.a *= 0.5f;
    gradient.setColorAt(0.0, qColour(faint));
    gradient.setColorAt(1.0, qColour(boxColor_));
    painter.fillPath(outline, gradient);
  }
  if (borderColor_.a != 0) painter.strokePath(outline, QPen(qColour(borderColor_), 1.0));
  painter.setFont(font);
  painter.setPen(qColour(textColor_));
  painter.drawText(QRectF(marginSize_.width, marginSize_.height, image.width(), image.height()),
                   Qt::AlignLeft | Qt::AlignTop, text);
  painter.end();
  return image;
}

void GLString::genTexture() {
  const QImage image = makeImage();
  requiresUpdate_ = false;
  // Nothing to load without an image or without a current context.
  if (image.isNull() || !overlay::glContextCurrent()) return;
  texSize_ = {static_cast<double>(image.width()), static_cast<double>(image.height())};
  overlay::uploadRectangleTexture(texName_, uploadedSize_, image);
}

void GLString::drawWithBounds(const TextBounds& bounds) {
  if (requiresUpdate_) genTexture();
  if (texName_ == 0) return;
  overlay::drawRectangleTexture(texName_, texSize_, bounds);
}

void GLString::drawAtPoint(double x, double y) {
  if (requiresUpdate_) genTexture();
  drawWithBounds({x, y, frameSize_.width, frameSize_.height});
}

void GLString::deleteTexture() {
  overlay::deleteRectangleTexture(texName_);
  uploadedSize_ = {0, 0};
}
