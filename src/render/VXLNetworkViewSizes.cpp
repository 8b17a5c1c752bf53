// Vertex sizes by property: the settings, and the sizes a frame draws, made
// again only when a setting or the network changed.
#include <sstream>
#include <stdexcept>

#include "filter/filtering.h"
#include "render/VXLNetworkView.h"

std::string VXLNetworkView::sizeProperty() const {
  std::lock_guard lock(lock_);
  return sizing_.property;
}

void VXLNetworkView::setSizeProperty(const std::string& name) {
  noteChange();
  std::lock_guard lock(lock_);
  sizing_.property = name;
  sizing_.stale = true;
}

vertex_sizes::Transform VXLNetworkView::sizeTransform() const {
  std::lock_guard lock(lock_);
  return sizing_.transform;
}

void VXLNetworkView::setSizeTransform(vertex_sizes::Transform transform) {
  noteChange();
  std::lock_guard lock(lock_);
  if (transform == sizing_.transform) return;
  sizing_.transform = transform;
  sizing_.stale = true;
}

vertex_sizes::Range VXLNetworkView::sizeRange() const {
  std::lock_guard lock(lock_);
  return sizing_.range;
}

void VXLNetworkView::setSizeRange(const vertex_sizes::Range& range) {
  if (!vertex_sizes::validRange(range)) {
    std::ostringstream message;
    message << "vertex sizes need 0 < minimum <= maximum <= " << vertex_sizes::kLargestSize
            << " (got " << range.minimum << " and " << range.maximum << ")";
    throw std::invalid_argument(message.str());
  }
  noteChange();
  std::lock_guard lock(lock_);
  if (range == sizing_.range) return;
  sizing_.range = range;
  sizing_.stale = true;
}

VXLNetworkView::FloatsPtr VXLNetworkView::vertexSizes() {
  std::lock_guard lock(lock_);
  refreshSizes();
  return sizing_.sizes;
}

void VXLNetworkView::refreshSizes() {
  const std::uint64_t V = network_ ? network_->countVertices() : 0;
  const bool current = !sizing_.stale && sizing_.network.lock() == network_ &&
                       (!sizing_.sizes || sizing_.sizes->size() == V);
  if (current) return;
  sizing_.stale = false;
  sizing_.network = network_;
  FloatsPtr sizes;
  if (network_ && sizing_.property != vertex_sizes::kNoProperty) {
    if (auto values = filter::namedValues(*network_, sizing_.property)) {
      sizes = std::make_shared<const std::vector<float>>(
          vertex_sizes::sizesOf(*values, sizing_.transform, sizing_.range));
    }
  }
  // A new array each time: a frame being drawn keeps the one it took.
  if (sizes || sizing_.sizes) ++sizing_.version;
  sizing_.sizes = std::move(sizes);
}
