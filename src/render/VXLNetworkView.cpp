// The view's layout state: network, positions, speeds, forces, and the
// placement actions.
#include "render/VXLNetworkView.h"

#include "layout/placement.h"
#include "render/renderers.h"
#include "render/viewframe.h"

VXLNetworkView::VXLNetworkView() : renderers_(std::make_unique<Renderers>()) {}

VXLNetworkView::~VXLNetworkView() {
  stopBatchThread();
}

std::shared_ptr<QLONetwork> VXLNetworkView::network() const {
  std::lock_guard lock(lock_);
  return network_;
}

void VXLNetworkView::setNetwork(std::shared_ptr<QLONetwork> network) {
  std::lock_guard lock(lock_);
  if (network == network_) return;
  network_ = std::move(network);
  edgeArrays_.reset();
  options_.showArrows.store(network_ && network_->isDirected(), kRelaxed);
  resetPositions();
  resetSelection();
  stepsSinceInstall_.store(0, kRelaxed);
  autoFit_.store(AutoFit::AtNextTick);
  noteChange();
}

std::shared_ptr<QLOVector3dArray> VXLNetworkView::positions() const {
  std::lock_guard lock(lock_);
  return positions_;
}

void VXLNetworkView::setPositions(std::shared_ptr<QLOVector3dArray> positions) {
  noteChange();
  std::lock_guard lock(lock_);
  if (positions == positions_) return;
  if (positions && positions->precision() != Precision::Float) {
    positions = QLOVector3dArray::initWithVector3dArray(*positions, Precision::Float);
  }
  positions_ = std::move(positions);
  resetSpeeds();
  resetForces();
}

std::shared_ptr<QLOVector3dArray> VXLNetworkView::speeds() const {
  std::lock_guard lock(lock_);
  return speeds_;
}

void VXLNetworkView::setSpeeds(std::shared_ptr<QLOVector3dArray> speeds) {
  std::lock_guard lock(lock_);
  speeds_ = std::move(speeds);
}

std::shared_ptr<QLOVector3dArray> VXLNetworkView::forces() const {
  std::lock_guard lock(lock_);
  return forces_;
}

void VXLNetworkView::setForces(std::shared_ptr<QLOVector3dArray> forces) {
  std::lock_guard lock(lock_);
  forces_ = std::move(forces);
}

void VXLNetworkView::resetSpeeds() {
  std::lock_guard lock(lock_);
  speeds_ =
      QLOVector3dArray::initWithSize(network_ ? network_->countVertices() : 0, Precision::Float);
}

void VXLNetworkView::resetForces() {
  std::lock_guard lock(lock_);
  forces_ =
      QLOVector3dArray::initWithSize(network_ ? network_->countVertices() : 0, Precision::Float);
}

void VXLNetworkView::resetPositions() {
  noteChange();
  std::lock_guard lock(lock_);
  setPositions(layout::randomCubePositions(network_ ? network_->countVertices() : 0));
}

void VXLNetworkView::storePositionInNetwork(const std::shared_ptr<QLOVector3dArray>& positions) {
  std::lock_guard lock(lock_);
  if (network_) network_->setPropertiesOfVertices(positions, "Position");
}

void VXLNetworkView::randomizePositionsWithSizeX(float sizeX, float sizeY, float sizeZ) {
  noteChange();
  std::lock_guard lock(lock_);
  if (!network_) return;
  auto positions = layout::randomBoxPositions(network_->countVertices(), sizeX, sizeY, sizeZ);
  setPositions(positions);
  storePositionInNetwork(positions);
}

void VXLNetworkView::resetCenter(float sizeX, float sizeY, float sizeZ) {
  noteChange();
  std::lock_guard lock(lock_);
  if (!network_ || !positions_) return;
  auto positions = layout::recentredAndRescaled(*positions_, sizeX, sizeY, sizeZ);
  setPositions(positions);
  storePositionInNetwork(positions);
}
