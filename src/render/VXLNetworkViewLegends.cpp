// The view's legend: installing it and keeping its height in step with the
// legends height and the view's height.
#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"

namespace {

// A legend at legendsHeight 1 is scaled to a view 460 pixels tall.
constexpr double kLegendReferenceHeight = 460.0;

}  // namespace

std::shared_ptr<VXLLegends> VXLNetworkView::legends() const {
  std::lock_guard lock(lock_);
  return overlays_.legends;
}

void VXLNetworkView::setLegends(std::shared_ptr<VXLLegends> legends) {
  noteChange();
  std::lock_guard lock(lock_);
  if (legends == overlays_.legends) return;
  // Its texture lives in the context this view draws into.
  if (overlays_.legends && overlays_.legends->texName() != 0) {
    overlays_.retiredLegends.push_back(overlays_.legends);
  }
  overlays_.legends = std::move(legends);
  fitLegendsHeight();
}

void VXLNetworkView::setLegendsHeight(float value) {
  noteChange();
  overlays_.legendsHeight.store(value, kRelaxed);
  std::lock_guard lock(lock_);
  fitLegendsHeight();
}

void VXLNetworkView::fitLegendsHeight() {
  if (!overlays_.legends) return;
  overlays_.legends->setHeight(static_cast<double>(legendsHeight()) / kLegendReferenceHeight *
                               static_cast<double>(camera_.viewHeight));
}
