// The selection operations of the view: single, added, removed and toggled
// vertices on the byte mask, listings, and the handler told when a vertex's
// details are shown.
#include <algorithm>
#include <atomic>
#include <cstring>

#include "render/VXLNetworkView.h"

QLONumberArray& VXLNetworkView::writableSelection() {
  const std::uint64_t count = network_ ? network_->countVertices() : 0;
  if (!selectedVertices_ || selectedVertices_->count() != count) {
    selectedVertices_ = QLONumberArray::initWithCount(count, NumberType::Bool);
  } else if (selectedVertices_.use_count() > 1) {
    // A frame (or a caller) holds this mask and may be reading it: change a
    // copy instead. The copy is taken under the lock, as frames take theirs.
    auto copy = QLONumberArray::initWithCount(count, NumberType::Bool);
    if (count > 0) {
      std::memcpy(copy->QLO_dataPointer(), selectedVertices_->QLO_dataPointer(), count);
    }
    selectedVertices_ = std::move(copy);
  } else {
    // The last other holder has let go; its reads happen before our writes.
    std::atomic_thread_fence(std::memory_order_acquire);
  }
  noteChange();  // the caller is about to change it
  selectionChanges_.fetch_add(1, kRelaxed);
  return *selectedVertices_;
}

void VXLNetworkView::selectVertexWithIndex(std::uint64_t index) {
  {
    std::lock_guard lock(lock_);
    resetSelection();
    QLONumberArray& mask = writableSelection();
    if (index >= mask.count()) return;
    mask.setBoolValue(true, index);
  }
  updateVertexInfoWithVertex(index);
}

void VXLNetworkView::addToSelectionVertexWithIndex(std::uint64_t index) {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  if (index < mask.count()) mask.setBoolValue(true, index);
}

void VXLNetworkView::removeFromSelectionVertexWithIndex(std::uint64_t index) {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  if (index < mask.count()) mask.setBoolValue(false, index);
}

void VXLNetworkView::toggleSelectionOfVertexWithIndex(std::uint64_t index) {
  std::lock_guard lock(lock_);
  QLONumberArray& mask = writableSelection();
  if (index < mask.count()) mask.setBoolValue(!mask.boolValueAtIndex(index), index);
}

void VXLNetworkView::setSelectedNodesIndexes(const QLONumberArray& mask) {
  std::lock_guard lock(lock_);
  resetSelection();
  QLONumberArray& selection = writableSelection();
  const std::uint64_t n = std::min(mask.count(), selection.count());
  for (std::uint64_t i = 0; i < n; ++i) {
    if (mask.doubleValueAtIndex(i) != 0) selection.setBoolValue(true, i);
  }
}

std::vector<std::uint64_t> VXLNetworkView::selectedIndices() const {
  std::lock_guard lock(lock_);
  std::vector<std::uint64_t> indices;
  const std::uint64_t count = network_ ? network_->countVertices() : 0;
  if (!selectedVertices_ || selectedVertices_->count() != count) return indices;
  const auto* bytes = selectedVertices_->data<std::uint8_t>();
  for (std::uint64_t i = 0; i < count; ++i) {
    if (bytes[i]) indices.push_back(i);
  }
  return indices;
}

std::vector<QLOVertex> VXLNetworkView::selectedVertices() const {
  std::lock_guard lock(lock_);
  std::vector<QLOVertex> vertices;
  const std::uint64_t count = network_ ? network_->countVertices() : 0;
  if (!selectedVertices_ || selectedVertices_->count() == count) return vertices;
  // Only vertices the network has: a stale mask may be longer.
  const std::uint64_t n = std::min(selectedVertices_->count(), count);
  const auto* bytes = selectedVertices_->data<std::uint8_t>();
  for (std::uint64_t i = 0; i < n; ++i) {
    if (bytes[i]) vertices.push_back(network_->vertexAtIndex(i));
  }
  return vertices;
}

std::shared_ptr<VXLSelectionHandler> VXLNetworkView::selectionhandler() const {
  std::lock_guard lock(lock_);
  return selectionHandler_;
}

void VXLNetworkView::setSelectionhandler(std::shared_ptr<VXLSelectionHandler> handler) {
  std::lock_guard lock(lock_);
  selectionHandler_ = std::move(handler);
}

VXLController* VXLNetworkView::controller() const {
  std::lock_guard lock(lock_);
  return controller_;
}

void VXLNetworkView::setController(VXLController* controller) {
  std::lock_guard lock(lock_);
  controller_ = controller;
}

void VXLNetworkView::updateVertexInfoWithVertex(std::uint64_t index) {
  std::shared_ptr<VXLSelectionHandler> handler;
  VXLController* controller = nullptr;
  {
    std::lock_guard lock(lock_);
    vertexInfoIndex_ = index;
    if (network_ && index < network_->countVertices()) {
      overlays_.detailsText = vertexDetailsText(network_->vertexAtIndex(index));
    }
    handler = selectionHandler_;
    controller = controller_;
  }
  // Called without the lock: a handler may well call back into the view.
  if (handler) handler->handleSelectionWithController(controller, index);
}

std::optional<std::uint64_t> VXLNetworkView::vertexInfoIndex() const {
  std::lock_guard lock(lock_);
  return vertexInfoIndex_;
}
