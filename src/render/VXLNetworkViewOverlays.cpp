// The view's text overlays: building the camera, information, vertex
// details and message texts, and placing them over the scene in drawInfo.
#include <GL/gl.h>

#include <cstdio>
#include <mutex>

#include "render/GLString.h"
#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"
#include "render/capabilities.h"

namespace {

const TextAttributes kStandardAttributes{"Helvetica", 10.0};
const TextAttributes kErrorAttributes{"Monaco", 9.0};

constexpr scene::Rgba kGreyBox{0.5f, 0.5f, 0.5f, 0.5f};
constexpr scene::Rgba kGreyBorder{0.8f, 0.8f, 0.8f, 0.8f};
constexpr scene::Rgba kDetailsText{1, 1, 1, 0.75f};
constexpr scene::Rgba kDetailsBox{0.3f, 0.3f, 0.0f, 0.7f};
constexpr scene::Rgba kDetailsBorder{0.8f, 0.8f, 0.8f, 0.6f};
constexpr scene::Rgba kErrorBox{1, 0, 0, 0.3f};
constexpr scene::Rgba kErrorBorder{1, 0, 0, 0.8f};
constexpr double kInset = 10.0;  // distance of the texts from the viewport's edges

struct Look {
  TextAttributes attributes;
  scene::Rgba text, box, border;
};

// Makes the texture on first use; afterwards only a changed text is set, so
// an unchanged one keeps its texture.
GLString& textTexture(std::shared_ptr<GLString>& texture, const std::string& text,
                      const Look& look) {
  if (!texture) {
    texture = std::make_shared<GLString>(text, look.attributes, look.text, look.box, look.border);
  } else if (texture->string() != text) {
    texture->setString(text, look.attributes);
  }
  if (texture->requiresUpdate()) texture->genTexture();  // settles the frame for placing
  return *texture;
}

std::size_t codePoints(const std::string& text) {
  std::size_t count = 0;
  for (const char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

// The first n code points of a UTF-8 text.
std::string firstCodePoints(const std::string& text, std::size_t n) {
  std::size_t end = 0;
  for (std::size_t seen = 0; end < text.size(); ++end) {
    if ((static_cast<unsigned char>(text[end]) & 0xC0) != 0x80 && seen++ == n) break;
  }
  return text.substr(0, end);
}

std::string format(const char* pattern, auto... values) {
  char buffer[256];
  std::snprintf(buffer, sizeof buffer, pattern, values...);
  return buffer;
}

}  // namespace

double VXLNetworkView::secondsSinceStart() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - startTime_).count();
}

std::optional<float> VXLNetworkView::fadeIntensity(double now, double setAt) {
  const double age = now - setAt;
  if (!(age < gMsgPresistance)) return std::nullopt;
  return static_cast<float>((gMsgPresistance - age) * 0.1);
}

bool VXLNetworkView::cameraTextCurrent(const std::optional<VXLCamera>& saved,
                                       const VXLCamera& camera, const Rotation& worldRotation) {
  if (!saved) return false;
  const bool same = saved->position == camera.position && saved->direction == camera.direction &&
                    saved->up == camera.up && saved->rotationCenter == camera.rotationCenter &&
                    saved->aperture == camera.aperture && saved->viewWidth == camera.viewWidth &&
                    saved->viewHeight == camera.viewHeight;
  return same && worldRotation == Rotation{0, 0, 0, 0};
}

std::string VXLNetworkView::cameraText(const VXLCamera& camera, const Rotation& worldRotation) {
  return format("Camera distance %0.1f rotated to (%0.1f, %0.1f, %0.1f, %0.1f) with %0.1f aperture",
                camera.position[2], static_cast<double>(worldRotation.angle),
                static_cast<double>(worldRotation.x), static_cast<double>(worldRotation.y),
                static_cast<double>(worldRotation.z), camera.aperture);
}

std::string VXLNetworkView::vertexDetailsText(const QLOVertex& vertex) {
  std::string text = "Name: ";
  text += vertex.name();
  text += format(" (%lu)", static_cast<unsigned long>(vertex.identification()));
  text += format("\nDegree: %.2f", static_cast<double>(vertex.countEdges()));
  // std::map: keys in ascending order.
  for (const auto& [key, entry] : vertex.properties()) {
    if (key == "Name" || key == "Position" || key == "Color") continue;
    std::string line = "\n";
    line += key;
    if (const auto* number = std::get_if<double>(&entry)) {
      line += format(": %.2g", *number);
      text += line;
      continue;
    }
    std::string value = propertyEntryText(entry);
    for (char& c : value) {
      if (c == '\n') c = '|';
    }
    line += ": ";
    line += value;
    // Long lines are cut so the box stays narrow.
    if (codePoints(line) > 34) line = firstCodePoints(line, 30) + "...";
    text += line;
  }
  return text;
}

std::string VXLNetworkView::networkName() const {
  std::lock_guard lock(lock_);
  return overlays_.networkName;
}

void VXLNetworkView::setNetworkName(const std::string& name) {
  noteChange();
  {
    std::lock_guard lock(lock_);
    overlays_.networkName = name;
  }
  updateInfoString();
}

void VXLNetworkView::updateCameraString() {
  std::lock_guard lock(lock_);
  if (cameraTextCurrent(overlays_.savedCamera, camera_, worldRotation_)) return;
  overlays_.savedCamera = camera_;
  overlays_.cameraText = cameraText(camera_, worldRotation_);
}

void VXLNetworkView::updateInfoString() {
  std::lock_guard lock(lock_);
  std::string text = format("(%0.0f x %0.0f) \n", static_cast<double>(camera_.viewWidth),
                            static_cast<double>(camera_.viewHeight));
  text += overlays_.networkName;
  overlays_.infoText = std::move(text);
}

void VXLNetworkView::update() {
  noteChange();
  {
    std::lock_guard lock(lock_);
    overlays_.msgTime = secondsSinceStart();
    overlays_.messageText = format("update at %0.1f secs", overlays_.msgTime);
  }
  updateInfoString();
  capabilitiesText();
}

std::string VXLNetworkView::cameraString() const {
  std::lock_guard lock(lock_);
  return overlays_.cameraText;
}

std::string VXLNetworkView::infoString() const {
  std::lock_guard lock(lock_);
  return overlays_.infoText;
}

std::string VXLNetworkView::vertexInfoString() const {
  std::lock_guard lock(lock_);
  return overlays_.detailsText;
}

std::string VXLNetworkView::messageString() const {
  std::lock_guard lock(lock_);
  return overlays_.messageText;
}

std::string VXLNetworkView::errorString() const {
  std::lock_guard lock(lock_);
  return overlays_.errorText;
}

std::string VXLNetworkView::capabilitiesText() {
  capabilities::GlCapabilities caps = capabilities::currentCapabilities();
  caps.sceneRenderer = renderPathName(renderPath());
  std::lock_guard lock(lock_);
  if (!caps.version.empty()) overlays_.capabilities = capabilities::capabilitiesText(caps);
  return overlays_.capabilities;
}

void VXLNetworkView::drawInfo() {
  GLint viewport[4] = {0, 0, 0, 0};
  glGetIntegerv(GL_VIEWPORT, viewport);
  constexpr Matrix4 kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  drawInfo(viewport[2], viewport[3], kIdentity);
}

void VXLNetworkView::drawInfo(const double w, const double h, const Matrix4& window,
                              OverlaySet set) {
  std::lock_guard context(contextLock_);
  struct Texts {
    std::string camera, info, vertexInfo, message, error, capabilities;
    double msgTime = 0;
    std::optional<double> errorTime;
  } texts;
  {
    std::lock_guard lock(lock_);
    texts = {overlays_.cameraText,  overlays_.infoText,  overlays_.detailsText,
             overlays_.messageText, overlays_.errorText, overlays_.capabilities,
             overlays_.msgTime,     overlays_.errorTime};
  }
  const bool all = set == OverlaySet::All;
  if (!all) texts = {};
  if (all && fDrawCaps() && texts.capabilities.empty()) texts.capabilities = capabilitiesText();
  std::vector<std::shared_ptr<VXLLegends>> retired;
  {
    std::lock_guard lock(lock_);
    retired.swap(overlays_.retiredLegends);
  }
  for (const auto& legend : retired) legend->deleteTexture();

  // Pixel coordinates over the picture, origin top left, y downwards; the
  // window then picks the part of it the viewport shows.
  const GLboolean depthTest = glIsEnabled(GL_DEPTH_TEST);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadMatrixd(window.data());
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glScaled(2.0 / w, -2.0 / h, 1.0);
  glTranslated(-w / 2, -h / 2, 0.0);
  glColor4f(1, 1, 1, 1);

  // Under the other overlays: the labels belong to the scene.
  drawLabels(w, h, window);
  const Look grey{kStandardAttributes, GLString::kWhite, kGreyBox, kGreyBorder};
  if (cameraInfo() && !texts.camera.empty()) {
    GLString& text = textTexture(overlays_.camTex, texts.camera, grey);
    text.drawAtPoint(w - kInset - text.frameSize().width, kInset);
  }
  if (generalInfo() && !texts.info.empty()) {
    GLString& text = textTexture(overlays_.infoTex, texts.info, grey);
    text.drawAtPoint(w / 2 - text.frameSize().width / 2, h / 2 - text.frameSize().height / 2);
  }
  if (const std::shared_ptr<VXLLegends> legend = legends(); legend && showLegends()) {
    if (legend->requiresUpdate()) legend->genTexture();  // settles the size for placing
    legend->drawAtPoint(kInset, h - kInset - legend->texSize().height);
  }
  if (vertexInfo() && !texts.vertexInfo.empty()) {
    const Look details{kStandardAttributes, kDetailsText, kDetailsBox, kDetailsBorder};
    GLString& text = textTexture(overlays_.vertexTex, texts.vertexInfo, details);
    text.drawAtPoint(w - kInset - text.frameSize().width, h - kInset - text.frameSize().height);
  }
  if (all && fDrawCaps() && !texts.capabilities.empty()) {
    const Look caps{kErrorAttributes, GLString::kWhite, kGreyBox, kGreyBorder};
    GLString& text = textTexture(overlays_.capsTex, texts.capabilities, caps);
    text.drawAtPoint(w - kInset - text.frameSize().width, kInset);
  }

  // The message and the error fade out; the error goes below the message.
  const double now = secondsSinceStart();
  double y = kInset;
  if (const auto c = all ? fadeIntensity(now, texts.msgTime) : std::nullopt) {
    glColor4f(*c, *c, *c, *c);
    GLString& text = textTexture(overlays_.msgTex, texts.message, grey);
    text.drawAtPoint(kInset, kInset);
    y = text.frameSize().height + 13.0;
  }
  if (texts.errorTime && !texts.error.empty()) {
    if (const auto c = fadeIntensity(now, *texts.errorTime)) {
      glColor4f(*c, *c, *c, *c);
      const Look error{kErrorAttributes, GLString::kWhite, kErrorBox, kErrorBorder};
      textTexture(overlays_.errTex, texts.error, error).drawAtPoint(kInset, y);
    }
  }

  glColor4f(1, 1, 1, 1);
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
  if (depthTest) {
    glEnable(GL_DEPTH_TEST);
  } else {
    glDisable(GL_DEPTH_TEST);
  }
}
