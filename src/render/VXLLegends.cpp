// The legend's properties, default colours and its texture.
#include "render/VXLLegends.h"

#include <QOpenGLContext>

#include "quillo/log.h"

namespace {

constexpr colour::Rgba kWhite{1, 1, 1, 1}, kBlack{0, 0, 0, 1};

}  // namespace

std::shared_ptr<VXLLegends> VXLLegends::initWithTitle(std::string title,
                                                      std::vector<std::string> labels,
                                                      std::vector<colour::Rgba> withTextColor,
                                                      LegendKind kind,
                                                      scene::Background background) {
  return std::make_shared<VXLLegends>(std::move(title), std::move(labels), std::move(withTextColor),
                                      kind, background);
}

VXLLegends::VXLLegends(std::string title, std::vector<std::string> labels,
                       std::vector<colour::Rgba> colors, LegendKind kind,
                       scene::Background background) {
  look_.title = std::move(title);
  look_.labels = std::move(labels);
  look_.colors = std::move(colors);
  if (background == scene::Background::Black) {
    useDarkBackgroundDefaults();
  } else {
    useLightBackgroundDefaults();
  }
  look_.continuous = kind == LegendKind::Continuous;
  look_.height = 1.0;
}

std::vector<std::string> VXLLegends::labels() const {
  return read(look_.labels);
}

void VXLLegends::setLabels(std::vector<std::string> value) {
  write(look_.labels, std::move(value), FrameRule::Drop);
}

std::vector<colour::Rgba> VXLLegends::colors() const {
  return read(look_.colors);
}

void VXLLegends::setColors(std::vector<colour::Rgba> value) {
  write(look_.colors, std::move(value));
}

std::string VXLLegends::title() const {
  return read(look_.title);
}

void VXLLegends::setTitle(std::string value) {
  write(look_.title, std::move(value));
}

colour::Rgba VXLLegends::textColor() const {
  return read(look_.textColor);
}

void VXLLegends::setTextColor(colour::Rgba value) {
  write(look_.textColor, value);
}

colour::Rgba VXLLegends::backgroundColor() const {
  return read(look_.backgroundColor);
}

void VXLLegends::setBackgroundColor(colour::Rgba value) {
  write(look_.backgroundColor, value);
}

colour::Rgba VXLLegends::borderColor() const {
  return read(look_.borderColor);
}

void VXLLegends::setBorderColor(colour::Rgba value) {
  write(look_.borderColor, value);
}

bool VXLLegends::continuous() const {
  return read(look_.continuous);
}

void VXLLegends::setContinuous(bool value) {
  write(look_.continuous, value);
}

double VXLLegends::height() const {
  return read(look_.height);
}

void VXLLegends::setHeight(double value) {
  write(look_.height, value, FrameRule::Drop);
}

TextSize VXLLegends::marginSize() const {
  return read(look_.marginSize);
}

void VXLLegends::setMarginSize(TextSize value) {
  write(look_.marginSize, value, FrameRule::Drop);
}

float VXLLegends::boxRadius() const {
  return read(look_.boxRadius);
}

void VXLLegends::setBoxRadius(float value) {
  write(look_.boxRadius, value);
}

float VXLLegends::internalBoxRadius() const {
  return read(look_.internalBoxRadius);
}

void VXLLegends::setInternalBoxRadius(float value) {
  write(look_.internalBoxRadius, value);
}

void VXLLegends::setHasBackground(bool value) {
  hasBackground_ = value;
  requiresUpdate_ = true;
}

void VXLLegends::setRequiresUpdate(bool value) {
  std::lock_guard lock(lock_);
  requiresUpdate_ = value;
}

unsigned int VXLLegends::texName() const {
  std::lock_guard lock(lock_);
  return texName_;
}

TextSize VXLLegends::texSize() const {
  std::lock_guard lock(lock_);
  return texSize_;
}

void VXLLegends::useDarkBackgroundDefaults() {
  std::lock_guard lock(lock_);
  look_.textColor = kWhite;
  look_.borderColor = {1, 1, 1, 0.9f};
  look_.backgroundColor = {0.3f, 0.3f, 0.3f, 0.5f};
  requiresUpdate_ = true;
}

void VXLLegends::useLightBackgroundDefaults() {
  std::lock_guard lock(lock_);
  look_.textColor = kBlack;
  look_.borderColor = {0, 0, 0, 0.9f};
  look_.backgroundColor = {1, 1, 1, 0.5f};
  requiresUpdate_ = true;
}

void VXLLegends::setReadable(std::string title, std::vector<colour::BarTick> ticks) {
  std::lock_guard lock(lock_);
  readableTitle_ = std::move(title);
  readableTicks_ = std::move(ticks);
  if (style_ == LegendStyle::Readable) frameSize_ = {0, 0};
  requiresUpdate_ = true;
}

std::string VXLLegends::readableTitle() const {
  return read(readableTitle_);
}

LegendStyle VXLLegends::style() const {
  return read(style_);
}

void VXLLegends::setStyle(LegendStyle style) {
  std::lock_guard lock(lock_);
  if (style == style_) return;  // no new image for nothing
  write(style_, style, FrameRule::Drop);
}

LegendLook VXLLegends::drawnLook() const {
  std::lock_guard lock(lock_);
  if (style_ == LegendStyle::Rows) return look_;
  return legend::readableLook(look_, readableTitle_, readableTicks_);
}

TextSize VXLLegends::frameSize() {
  std::lock_guard lock(lock_);
  if (frameSize_ == TextSize{0, 0}) frameSize_ = legend::frameSize(drawnLook());
  return frameSize_;
}

QImage VXLLegends::makeImage(std::vector<legend::PlacedText>* texts) {
  std::lock_guard lock(lock_);
  return legend::paint(drawnLook(), frameSize(), texts);
}

void VXLLegends::genTexture() {
  std::lock_guard lock(lock_);
  const QImage image = makeImage();
  if (!image.isNull()) {
    texSize_ = {static_cast<double>(image.width()), static_cast<double>(image.height())};
    if (!overlay::glContextCurrent()) {
      quillo::logLine("StringTexture -genTexture: Failure to get current OpenGL context");
    } else {
      cgl_ctx_ = QOpenGLContext::currentContext();
      overlay::uploadRectangleTexture(texName_, definedSize_, image);
    }
  }
  requiresUpdate_ = false;
}

void VXLLegends::drawWithBounds(const TextBounds& bounds) {
  std::lock_guard lock(lock_);
  if (requiresUpdate_) genTexture();
  if (texName_ == 0) return;
  overlay::drawRectangleTexture(texName_, texSize_, bounds);
}

void VXLLegends::drawAtPoint(double x, double y) {
  std::lock_guard lock(lock_);
  if (requiresUpdate_) genTexture();
  if (texName_ != 0) drawWithBounds({x, y, texSize_.width, texSize_.height});
}

void VXLLegends::deleteTexture() {
  std::lock_guard lock(lock_);
  overlay::deleteRectangleTexture(texName_);
  definedSize_ = {0, 0};
  cgl_ctx_ = nullptr;
  requiresUpdate_ = true;
}
