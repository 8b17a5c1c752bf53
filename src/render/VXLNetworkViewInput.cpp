// Mouse and keyboard handling of the view: the drag state machine (trackball,
// pan, dolly), clicks that select, the wheel, hover, keys, preset views,
// sliders and the automatic spin. The maths lives in VXLCamera; this file
// keeps the state between events. No GL: changes to the projection are
// loaded by the next frame.
//
// The drag state belongs to the view: the host delivers a press, its drags
// and its release to the view that got the press, so only the dragged view
// adds the drag's rotation to its model-view.
#include <cstdio>

#include "render/VXLNetworkView.h"

namespace {

std::string sliderText(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.1fx", value);
  return text;
}

std::array<int, 2> truncated(double x, double y) {
  return {static_cast<int>(x), static_cast<int>(y)};
}

}  // namespace

void VXLNetworkView::mouseDown(double x, double y, Modifiers modifiers) {
  {
    std::lock_guard lock(lock_);
    navigation_.shiftModifier = modifiers.has(Modifier::Shift);
    navigation_.otherButton = false;
  }
  if (modifiers.has(Modifier::Control)) {
    rightMouseDown(x, y);
    return;
  }
  if (modifiers.has(Modifier::Option)) {
    otherMouseDown(x, y);
    return;
  }
  std::lock_guard lock(lock_);
  navigation_.drag = Drag::Trackball;
  navigation_.trackball = camera::trackballStart(camera_.viewWidth, camera_.viewHeight, x, y);
}

void VXLNetworkView::rightMouseDown(double x, double y) {
  startPanOrDolly(Drag::Pan, x, y);
}

void VXLNetworkView::otherMouseDown(double x, double y) {
  startPanOrDolly(Drag::Dolly, x, y);
}

void VXLNetworkView::startPanOrDolly(Drag drag, double x, double y) {
  std::lock_guard lock(lock_);
  navigation_.otherButton = true;
  // A trackball drag still in progress ends here, keeping its rotation.
  if (navigation_.drag == Drag::Trackball) foldTrackballRotation();
  navigation_.drag = drag;
  navigation_.dollyPanStart = truncated(x, y);
}

void VXLNetworkView::foldTrackballRotation() {
  if (navigation_.trackBallRotation.angle != 0) {
    camera::addToRotationTrackball(navigation_.trackBallRotation, worldRotation_);
  }
  navigation_.trackBallRotation = {};
}

void VXLNetworkView::mouseDragged(double x, double y) {
  std::lock_guard lock(lock_);
  const std::array<int, 2> point = truncated(x, y);
  std::array<int, 2>& start = navigation_.dollyPanStart;
  switch (navigation_.drag) {
    case Drag::None:
      return;
    case Drag::Trackball:
      // Measured from the press each time, not from the previous event.
      if (auto rotation = camera::trackballRotation(navigation_.trackball, x, y)) {
        navigation_.trackBallRotation = *rotation;
      }
      return;
    case Drag::Dolly:
      camera::dolly(camera_, start[1], point[1]);
      start = point;
      projectionStale_.store(true);
      return;
    case Drag::Pan:
      camera::pan(camera_, start[0], start[1], point[0], point[1]);
      start = point;
      return;
  }
}

void VXLNetworkView::mouseUp(double x, double y) {
  Picker picker;
  {
    std::lock_guard lock(lock_);
    bool moved = navigation_.drag == Drag::Pan || navigation_.drag == Drag::Dolly;
    if (navigation_.drag == Drag::Trackball) {
      moved = navigation_.trackBallRotation.angle != 0;
      foldTrackballRotation();
    }
    navigation_.drag = Drag::None;
    if (moved || navigation_.otherButton) return;
    picker = navigation_.picker;
  }
  clickedVertex(picker ? picker(x, y) : pickAt(x, y, 3, 3));
}

void VXLNetworkView::clickedVertex(std::uint64_t picked) {
  std::lock_guard lock(lock_);
  const std::uint64_t count = network_ ? network_->countVertices() : 0;
  if (picked >= count) {
    resetSelection();
  } else if (navigation_.shiftModifier) {
    toggleSelectionOfVertexWithIndex(picked);
    updateVertexInfoWithVertex(picked);
  } else {
    selectVertexWithIndex(picked);  // shows the details too
  }
}

void VXLNetworkView::scrollWheel(double dx, double dy, double dz, Modifiers modifiers) {
  const auto target = modifiers.has(Modifier::Shift) ? camera::ScrollTarget::Aperture
                                                     : camera::ScrollTarget::Distance;
  std::lock_guard lock(lock_);
  if (camera::scroll(camera_, dx + dy + dz, target)) projectionStale_.store(true);
}

void VXLNetworkView::mouseMoved(double x, double y) {
  std::lock_guard lock(lock_);
  if (navigation_.drag != Drag::None) {
    navigation_.overVertex = false;
    return;
  }
  navigation_.overPosition = {x, y};
  navigation_.overVertex = true;
}

void VXLNetworkView::mouseExited() {
  std::lock_guard lock(lock_);
  navigation_.overVertex = false;
}

void VXLNetworkView::keyDown(char32_t firstCharacter) {
  if (firstCharacter == U' ') toggleStartPause();
}

void VXLNetworkView::viewFromTop() {
  std::lock_guard lock(lock_);
  camera::presetView(camera::PresetView::Top, camera_, worldRotation_, origin_);
  projectionStale_.store(true);
}

void VXLNetworkView::viewFromLeft() {
  std::lock_guard lock(lock_);
  camera::presetView(camera::PresetView::Left, camera_, worldRotation_, origin_);
  projectionStale_.store(true);
}

void VXLNetworkView::viewFromFront() {
  std::lock_guard lock(lock_);
  camera::presetView(camera::PresetView::Front, camera_, worldRotation_, origin_);
  projectionStale_.store(true);
}

std::string VXLNetworkView::updateScale(double sliderValue) {
  setScale(camera::scaleForSlider(sliderValue));
  return sliderText(scale());
}

std::string VXLNetworkView::updateNear(double sliderValue) {
  setNearClipDistance(camera::nearForSlider(sliderValue));
  projectionStale_.store(true);
  return sliderText(nearClipDistance());
}

std::string VXLNetworkView::updateFar(double sliderValue) {
  setFarClipDistance(camera::farForSlider(sliderValue));
  projectionStale_.store(true);
  return sliderText(farClipDistance() * 0.0005);
}

void VXLNetworkView::updateObjectRotationForTimeDelta(double t) {
  std::lock_guard lock(lock_);
  camera::updateObjectRotationForTimeDelta(navigation_.spin, t, objectRotation_);
}

std::optional<Rotation> VXLNetworkView::navigationForFrame() {
  if (projectionStale_.exchange(false)) updateProjection();
  std::lock_guard lock(lock_);
  navigation_.spin.rotation = {0, 0, 0};
  return dragRotation();
}

std::optional<Rotation> VXLNetworkView::dragRotation() const {
  std::lock_guard lock(lock_);
  if (navigation_.drag != Drag::Trackball || navigation_.trackBallRotation.angle == 0) {
    return std::nullopt;
  }
  return navigation_.trackBallRotation;
}

void VXLNetworkView::setPicker(Picker picker) {
  std::lock_guard lock(lock_);
  navigation_.picker = std::move(picker);
}

VXLNetworkView::Drag VXLNetworkView::drag() const {
  std::lock_guard lock(lock_);
  return navigation_.drag;
}

Rotation VXLNetworkView::trackBallRotation() const {
  std::lock_guard lock(lock_);
  return navigation_.trackBallRotation;
}

std::array<double, 2> VXLNetworkView::overPosition() const {
  std::lock_guard lock(lock_);
  return navigation_.overPosition;
}

bool VXLNetworkView::overVertex() const {
  std::lock_guard lock(lock_);
  return navigation_.overVertex;
}
