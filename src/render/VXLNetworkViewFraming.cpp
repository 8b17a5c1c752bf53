// Framing and the selection tools of the view: fit all, frame the
// selection, the automatic framing of a new network, finding vertices by
// text, select all, invert, neighbours and the rectangle selection.
#include <algorithm>

#include "render/VXLNetworkView.h"
#include "render/fit.h"
#include "render/vertexsearch.h"

std::vector<std::uint64_t> VXLNetworkView::shownVertices() const {
  std::lock_guard lock(lock_);
  std::vector<std::uint64_t> shown;
  if (!network_ || !positions_) return shown;
  const std::uint64_t V = network_->countVertices();
  if (positions_->count() != V) return shown;
  const bool limit = limitNodes() && filterProperty_ && filterProperty_->size() == V;
  const float low = minFilterProperty(), high = maxFilterProperty();
  const std::uint8_t* hidden = nullptr;
  if (hideSpecialVertices() && hiddenVertices_ && hiddenVertices_->count() >= V) {
    hidden = hiddenVertices_->data<std::uint8_t>();
  }
  for (std::uint64_t v = 0; v < V; ++v) {
    if (limit && !(low <= (*filterProperty_)[v] && (*filterProperty_)[v] <= high)) continue;
    if (hidden && hidden[v]) continue;
    shown.push_back(v);
  }
  return shown;
}

std::vector<Vec3d> VXLNetworkView::scaledPositions(
    const std::vector<std::uint64_t>& vertices) const {
  const std::uint64_t V = positions_ ? positions_->count() : 0;
  std::vector<float> xyz(3 * V);
  if (V > 0) positions_->copyPlanesTo(xyz.data(), xyz.data() + V, xyz.data() + 2 * V);
  const double s = scale();
  std::vector<Vec3d> points;
  points.reserve(vertices.size());
  for (const std::uint64_t v : vertices) {
    if (v >= V) continue;
    points.push_back({xyz[v] * s, xyz[V + v] * s, xyz[2 * V + v] * s});
  }
  return points;
}

bool VXLNetworkView::frameVertices(const std::vector<std::uint64_t>& vertices, int width,
                                   int height) {
  std::lock_guard lock(lock_);
  const std::vector<Vec3d> points = scaledPositions(vertices);
  const Matrix4 rotation = camera::multiply(camera::rotationMatrix(worldRotation_),
                                            camera::rotationMatrix(objectRotation_));
  // Vertices are drawn as balls of up to 0.8 (the selected shell) times
  // their size.
  float largest = 1;
  refreshSizes();
  if (const FloatsPtr sizes = sizing_.sizes; sizes && !vertices.empty()) {
    largest = 0;
    for (const std::uint64_t v : vertices) {
      if (v < sizes->size()) largest = std::max(largest, (*sizes)[v]);
    }
  }
  const camera::FitOptions options{0.06, 0.8 * static_cast<double>(largest), 4.0};
  VXLCamera fitted = camera_;
  if (width > 0 && height > 0) {
    fitted.viewWidth = width;
    fitted.viewHeight = height;
  }
  if (!camera::fitCamera(fitted, rotation, points, nearClipDistance(), options)) return false;
  fitted.viewWidth = camera_.viewWidth;
  fitted.viewHeight = camera_.viewHeight;
  camera_ = fitted;
  projectionStale_.store(true);
  noteChange();
  return true;
}

bool VXLNetworkView::zoomToFit() {
  return frameVertices(shownVertices());
}

bool VXLNetworkView::zoomToFit(int width, int height) {
  return frameVertices(shownVertices(), width, height);
}

bool VXLNetworkView::frameSelection() {
  const std::vector<std::uint64_t> shown = shownVertices();
  const std::vector<std::uint64_t> selected = selectedIndices();
  std::vector<std::uint64_t> both;
  std::set_intersection(shown.begin(), shown.end(), selected.begin(), selected.end(),
                        std::back_inserter(both));
  return frameVertices(both);
}

void VXLNetworkView::autoFitTick() {
  switch (autoFit_.load()) {
    case AutoFit::Done:
      return;
    case AutoFit::AtNextTick:
      // The filter cache is filled by the frame's preparation, which has run.
      zoomToFit();
      autoFit_.store(AutoFit::AfterSettling);
      return;
    case AutoFit::AfterSettling:
      if (stepsSinceInstall_.load(kRelaxed) < kSettleSteps || iterating_.load()) return;
      zoomToFit();
      autoFit_.store(AutoFit::Done);
      return;
  }
}

std::vector<std::uint64_t> VXLNetworkView::findVertices(const std::string& text) const {
  const std::shared_ptr<QLONetwork> net = network();
  if (!net) return {};
  return search::findVertices(net->propertiesOfVertices(), net->countVertices(), text);
}

void VXLNetworkView::selectAll() {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  for (std::uint64_t v = 0; v < mask.count(); ++v) mask.setBoolValue(true, v);
}

void VXLNetworkView::invertSelection() {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  for (std::uint64_t v = 0; v < mask.count(); ++v) {
    mask.setBoolValue(!mask.boolValueAtIndex(v), v);
  }
}

void VXLNetworkView::selectNeighbours() {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  if (!network_) return;
  const std::uint64_t V = mask.count();
  const std::vector<char> before = [&] {
    std::vector<char> b(V);
    for (std::uint64_t v = 0; v < V; ++v) b[v] = mask.boolValueAtIndex(v) ? 1 : 0;
    return b;
  }();
  const std::uint64_t E = network_->countEdges();
  for (std::uint64_t e = 0; e < E; ++e) {
    const std::uint64_t a = network_->edgeFromList[e], b = network_->edgeToList[e];
    if (a >= V || b >= V) continue;
    if (before[a]) mask.setBoolValue(true, b);
    if (before[b]) mask.setBoolValue(true, a);
  }
}

std::vector<std::uint64_t> VXLNetworkView::verticesInRectangle(double x0, double y0, double x1,
                                                               double y1) const {
  const std::vector<std::uint64_t> shown = shownVertices();
  std::lock_guard lock(lock_);
  const double w = std::max(camera_.viewWidth, 1), h = std::max(camera_.viewHeight, 1);
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(camera_, nearClipDistance(), farClipDistance()));
  const Matrix4 view = camera::modelView(camera_, std::nullopt, worldRotation_, objectRotation_);
  const auto ndc = [](double p, double size) { return 2.0 * p / size - 1.0; };
  const std::vector<std::uint64_t> inside = camera::pointsInRectangle(
      projection, view, scaledPositions(shown), ndc(x0, w), ndc(y0, h), ndc(x1, w), ndc(y1, h));
  std::vector<std::uint64_t> vertices;
  vertices.reserve(inside.size());
  for (const std::uint64_t i : inside) vertices.push_back(shown[i]);
  return vertices;
}

bool VXLNetworkView::overlaysFading() const {
  if (!fInfo()) return false;
  std::lock_guard lock(lock_);
  const double now = secondsSinceStart();
  if (fadeIntensity(now, overlays_.msgTime)) return true;
  return overlays_.errorTime && !overlays_.errorText.empty() &&
         fadeIntensity(now, *overlays_.errorTime);
}
