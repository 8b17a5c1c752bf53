// The view's edge style: colour mode, single colour, colour map and widths
// by weight, and the per-edge arrays a frame draws with, made again only
// when one of them or the network changes.
#include <string>

#include "quillo/log.h"
#include "render/VXLNetworkView.h"
#include "render/viewframe.h"

namespace {

bool sameMaps(const colour::ColorMapSettings& a, const colour::ColorMapSettings& b) {
  return a.colorCustom0 == b.colorCustom0 && a.colorCustom1 == b.colorCustom1 &&
         a.colorCustom2 == b.colorCustom2 && a.invertColorMap == b.invertColorMap;
}

}  // namespace

VXLNetworkView::EdgeColourMode VXLNetworkView::edgeColorMode() const {
  std::lock_guard lock(lock_);
  return edgeColouring_.mode;
}

void VXLNetworkView::setEdgeColorMode(EdgeColourMode mode) {
  std::lock_guard lock(lock_);
  if (edgeColouring_.mode == mode) return;
  edgeColouring_.mode = mode;
  edgeArrays_.reset();
  noteChange();
}

scene::Rgb VXLNetworkView::edgeColor() const {
  std::lock_guard lock(lock_);
  return edgeColouring_.single;
}

void VXLNetworkView::setEdgeColor(scene::Rgb colour) {
  std::lock_guard lock(lock_);
  if (edgeColouring_.single == colour) return;
  edgeColouring_.single = colour;
  if (edgeColouring_.mode == EdgeColourMode::Single) edgeArrays_.reset();
  noteChange();
}

std::optional<colour::ColorMap> VXLNetworkView::edgeColorMap() const {
  std::lock_guard lock(lock_);
  return edgeColouring_.map;
}

void VXLNetworkView::setEdgeColorMap(std::optional<colour::ColorMap> map,
                                     const colour::ColorMapSettings& settings) {
  std::lock_guard lock(lock_);
  if (edgeColouring_.map == map && sameMaps(edgeColouring_.mapSettings, settings)) return;
  edgeColouring_.map = map;
  edgeColouring_.mapSettings = settings;
  if (edgeColouring_.mode == EdgeColourMode::Weight) edgeArrays_.reset();
  noteChange();
}

bool VXLNetworkView::edgeWidthByWeight() const {
  std::lock_guard lock(lock_);
  return edgeWidthByWeight_;
}

void VXLNetworkView::setEdgeWidthByWeight(bool on) {
  std::lock_guard lock(lock_);
  if (edgeWidthByWeight_ == on) return;
  edgeWidthByWeight_ = on;
  edgeArrays_.reset();
  noteChange();
}

void VXLNetworkView::styleEdges(Frame& frame) {
  frame.arrows = showArrows() && network_->isDirected();
  if (!edgeArrays_) {
    const float* weights = network_->isEdgeWeighted() ? network_->edgesWeights : nullptr;
    const std::uint64_t E = network_->countEdges();
    auto arrays = std::make_shared<edge_style::EdgeArrays>();
    arrays->colours = edge_style::edgeColours(edgeColouring_, weights, E);
    if (edgeWidthByWeight_) arrays->widths = edge_style::widthClasses(weights, E);
    arrays->serial = ++edgeArraysSerial_;
    if (edge_style::effectiveMode(edgeColouring_.mode, weights) != edgeColouring_.mode) {
      quillo::logLine(
          "Edge colours by weight: the network has no edge weights, edges keep "
          "their endpoints' colours");
    }
    edgeArrays_ = std::move(arrays);
  }
  frame.edgeArraysOwner = edgeArrays_;
  frame.edgeStyleSerial = edgeArrays_->serial;
  if (!edgeArrays_->colours.empty()) frame.edgeColours = edgeArrays_->colours.data();
  if (!edgeArrays_->widths.empty()) frame.edgeWidths = edgeArrays_->widths.data();
}
