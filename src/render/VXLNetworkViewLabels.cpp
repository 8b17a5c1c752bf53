// Vertex labels: the settings, projecting the vertices through the camera
// for placeLabels, and drawing the placed labels over the scene (a QPainter
// picture in a texture) or into a vector document (gl2ps text).
#include <GL/gl.h>

#include <cmath>
#include <mutex>

#include "render/VXLNetworkView.h"
#include "render/imagetiles.h"
#include "render/labelimage.h"
#include "render/overlaypainting.h"
#include "render/overlaytexture.h"
#include "render/vectorexport.h"

namespace {

// Nearer than any scene primitive, so that gl2ps's depth sort puts the
// texts last (as the legend's).
constexpr double kTextDepth = 0.99;

// A vertex's text: its entry of the property, else of "Name" (a network
// without the chosen property), else its number.
std::function<std::string(std::uint64_t)> textsOf(const QLONetwork& network,
                                                  const std::string& property) {
  const auto complete = [&](const std::string& name) {
    PropertyValue value = network.propertyForKey(name);
    if (propertyCount(value) != network.countVertices()) value = std::monostate{};
    return value;
  };
  PropertyValue value = property.empty() ? PropertyValue{} : complete(property);
  if (std::holds_alternative<std::monostate>(value)) value = complete("Name");
  return [value = std::move(value)](std::uint64_t v) {
    if (std::holds_alternative<std::monostate>(value)) return std::to_string(v);
    return propertyEntryText(propertyEntry(value, v));
  };
}

scene::Background backgroundOf(bool black) {
  return black ? scene::Background::Black : scene::Background::White;
}

}  // namespace

std::string VXLNetworkView::labelProperty() const {
  std::lock_guard lock(lock_);
  return labelProperty_;
}

void VXLNetworkView::setLabelProperty(const std::string& name) {
  {
    std::lock_guard lock(lock_);
    labelProperty_ = name;
  }
  noteChange();
}

VXLNetworkView::Labels VXLNetworkView::placedLabels(double width, double height) {
  const LabelMode mode = showLabels();
  if (mode == LabelMode::None || !(width > 0 && height > 0)) return {};
  if (!overlay::haveGuiApplication()) return {};
  const std::vector<std::uint64_t> shownList = shownVertices();
  std::shared_ptr<QLONetwork> net;
  std::vector<float> xyz;  // the x, y and z planes
  std::vector<std::uint8_t> selected;
  std::string property;
  FloatsPtr sizes;
  {
    std::lock_guard lock(lock_);
    if (!network_ || !positions_ || positions_->count() != network_->countVertices()) return {};
    net = network_;
    const std::uint64_t V = net->countVertices();
    xyz.resize(3 * V);
    if (V > 0) positions_->copyPlanesTo(xyz.data(), xyz.data() + V, xyz.data() + 2 * V);
    if (selectedVertices_ && selectedVertices_->count() == V) {
      const std::uint8_t* mask = selectedVertices_->data<std::uint8_t>();
      selected.assign(mask, mask + V);
    }
    property = labelProperty_;
    refreshSizes();
    if (sizing_.sizes && sizing_.sizes->size() == V) sizes = sizing_.sizes;
  }
  const std::size_t V = xyz.size() / 3;
  std::vector<std::uint8_t> shown(V, 0);
  for (const std::uint64_t v : shownList) {
    if (v < shown.size()) shown[v] = 1;
  }

  // The camera as a picture of this size sees the scene now.
  VXLCamera view = camera();
  view.viewWidth = static_cast<int>(std::lround(width));
  view.viewHeight = static_cast<int>(std::lround(height));
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(view, nearClipDistance(), farClipDistance()));
  const Matrix4 m = camera::multiply(
      projection, camera::modelView(view, dragRotation(), worldRotation(), objectRotation()));
  // A standard ball's radius in pixels at unit distance.
  const double pixelsPerUnit = scene_shapes::kShellSize * projection[5] * height / 2;
  const double s = scale();
  std::vector<ScreenPoint> screen(V);
  for (std::size_t i = 0; i < V; ++i) {
    const double x = xyz[i] * s, y = xyz[V + i] * s, z = xyz[2 * V + i] * s;
    const double cx = m[0] * x + m[4] * y + m[8] * z + m[12];
    const double cy = m[1] * x + m[5] * y + m[9] * z + m[13];
    const double cz = m[2] * x + m[6] * y + m[10] * z + m[14];
    const double cw = m[3] * x + m[7] * y + m[11] * z + m[15];
    // Outside the depth range (or behind the eye) the vertex is not drawn.
    if (!(cw > 0) || !(std::abs(cz) <= cw)) continue;
    const double size = sizes ? static_cast<double>((*sizes)[i]) : 1.0;
    screen[i] = {(cx / cw + 1) / 2 * width, (1 - cy / cw) / 2 * height, cw,
                 pixelsPerUnit * size / cw};
  }

  LabelRequest request;
  request.points = screen;
  request.shown = shown;
  request.selected = selected;
  request.mode = mode;
  request.width = width;
  request.height = height;
  Labels labels;
  labels.pixelSize = labels::pixelSizeFor(height);
  const QFont font = labels::font(labels.pixelSize);
  request.labelHeight = labels::boxHeight(font);
  request.gap *= labels.pixelSize / labels::kPixelSize;
  const auto text = textsOf(*net, property);
  labels.placed = placeLabels(request, text, labels::measurer(font));
  labels.texts.reserve(labels.placed.size());
  for (const PlacedLabel& p : labels.placed) labels.texts.push_back(text(p.vertex));
  return labels;
}

void VXLNetworkView::drawLabels(double width, double height, const Matrix4& window) {
  const Labels labels = placedLabels(width, height);
  if (labels.placed.empty()) return;
  // Only the part the window shows is painted: a tile of a large picture
  // needs no picture-sized image.
  const auto [x, y, w, h] = windowRegion(window, width, height);
  const QImage image =
      labels::paint(labels.placed, labels.texts, QRectF(x, y, w, h), labels::font(labels.pixelSize),
                    backgroundOf(blackBackground()));
  // A texture of its own for this one draw: the exports draw in contexts
  // other than the window's.
  unsigned int name = 0;
  TextSize size;
  overlay::uploadRectangleTexture(name, size, image);
  glColor4f(1, 1, 1, 1);
  overlay::drawRectangleTexture(name, size, {x, y, size.width, size.height});
  overlay::deleteRectangleTexture(name);
}

void VXLNetworkView::recordLabels(double width, double height) {
  if (!vector_export::recording()) return;
  const Labels labels = placedLabels(width, height);
  if (labels.placed.empty()) return;
  const labels::Look look = labels::lookOn(backgroundOf(blackBackground()));
  const float colour[4] = {look.text.r, look.text.g, look.text.b, look.text.a};
  // Pixels with y upwards; a text is anchored at the middle of its box's
  // left edge.
  const vector_export::PixelCoordinates pixels(width, height);
  for (std::size_t i = 0; i < labels.placed.size(); ++i) {
    const PlacedLabel& box = labels.placed[i];
    glRasterPos3d(box.x, height - (box.y + box.height / 2), kTextDepth);
    vector_export::text(labels.texts[i], labels.pixelSize, colour);
  }
}
