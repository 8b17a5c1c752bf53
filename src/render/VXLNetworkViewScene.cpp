// The view's scene state that needs no GL: colours, the selection mask, the
// camera record and rotations, and the background choice.
#include "quillo/log.h"
#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"

std::shared_ptr<QLOVector3dArray> VXLNetworkView::colors() const {
  std::lock_guard lock(lock_);
  return colors_;
}

void VXLNetworkView::setColors(std::shared_ptr<QLOVector3dArray> colors) {
  noteChange();
  std::lock_guard lock(lock_);
  if (colors == colors_) return;
  if (colors && colors->precision() != Precision::Float) {
    colors = QLOVector3dArray::initWithVector3dArray(*colors, Precision::Float);
  }
  colors_ = std::move(colors);
}

std::shared_ptr<QLONumberArray> VXLNetworkView::selectedNodesIndexes() const {
  std::lock_guard lock(lock_);
  return selectedVertices_;
}

void VXLNetworkView::setSelectedVertices(const std::vector<std::uint64_t>& indices) {
  std::lock_guard lock(lock_);
  const std::uint64_t count = network_ ? network_->countVertices() : 0;
  // A fresh mask each time: a frame keeps drawing with the one it took.
  auto mask = QLONumberArray::initWithCount(count, NumberType::Bool);
  for (std::uint64_t index : indices) {
    if (index < count) mask->setBoolValue(true, index);
  }
  selectedVertices_ = std::move(mask);
  noteChange();
  selectionChanges_.fetch_add(1, kRelaxed);
}

void VXLNetworkView::resetSelection() {
  setSelectedVertices({});
}

VXLCamera VXLNetworkView::camera() const {
  std::lock_guard lock(lock_);
  return camera_;
}

void VXLNetworkView::setCamera(const VXLCamera& camera) {
  noteChange();
  std::lock_guard lock(lock_);
  camera_ = camera;
}

Rotation VXLNetworkView::worldRotation() const {
  std::lock_guard lock(lock_);
  return worldRotation_;
}

void VXLNetworkView::setWorldRotation(const Rotation& rotation) {
  noteChange();
  std::lock_guard lock(lock_);
  worldRotation_ = rotation;
}

Rotation VXLNetworkView::objectRotation() const {
  std::lock_guard lock(lock_);
  return objectRotation_;
}

void VXLNetworkView::setObjectRotation(const Rotation& rotation) {
  noteChange();
  std::lock_guard lock(lock_);
  objectRotation_ = rotation;
}

void VXLNetworkView::setBlackBackground(bool value) {
  noteChange();
  options_.blackBackground.store(value, kRelaxed);
  std::lock_guard lock(lock_);
  if (overlays_.legends) {
    if (value) {
      overlays_.legends->useDarkBackgroundDefaults();
    } else {
      overlays_.legends->useLightBackgroundDefaults();
    }
  }
  std::string line = "blackBackground:";
  line += value ? "YES" : "NO";
  quillo::logLine(line);
}

void VXLNetworkView::setTransparentBackground(bool value) {
  noteChange();
  options_.transparentBackground.store(value, kRelaxed);
  // The line reports the black-background flag, not this one: a kept quirk.
  std::string line = "transparentBackground:";
  line += blackBackground() ? "YES" : "NO";
  quillo::logLine(line);
}
