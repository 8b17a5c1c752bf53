// The view's legend: installing it, keeping its height in step with the
// legends height and the view's height, and its style (the window's, or the
// exports' while one is drawn).
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
  useLegendStyle(legendStyle());
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

LegendStyle VXLNetworkView::legendStyle() const {
  return options_.legendStyle.load(kRelaxed);
}

void VXLNetworkView::setLegendStyle(LegendStyle style) {
  noteChange();
  options_.legendStyle.store(style, kRelaxed);
  std::lock_guard lock(lock_);
  useLegendStyle(style);
}

LegendStyle VXLNetworkView::exportLegendStyle() const {
  return options_.exportLegendStyle.load(kRelaxed);
}

void VXLNetworkView::setExportLegendStyle(LegendStyle style) {
  options_.exportLegendStyle.store(style, kRelaxed);
}

void VXLNetworkView::useLegendStyle(LegendStyle style) {
  if (overlays_.legends) overlays_.legends->setStyle(style);
}
