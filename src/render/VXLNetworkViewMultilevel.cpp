// The multilevel start of the view's network.
#include "layout/multilevel.h"
#include "render/VXLNetworkView.h"

bool VXLNetworkView::multilevelStart(const std::function<bool(double)>& progress) {
  std::shared_ptr<QLONetwork> network;
  {
    std::lock_guard lock(lock_);
    network = network_;
  }
  if (!network) return false;
  layout::MultilevelSettings settings;
  settings.attraction = attraction_.load(kRelaxed);
  settings.repulsive = repulsive_.load(kRelaxed);
  settings.gravitational = gravitational_.load(kRelaxed);
  settings.softening = softening_.load(kRelaxed);
  settings.preferredDistance = preferredDistance_.load(kRelaxed);
  settings.viscosity = viscosity_.load(kRelaxed);
  const auto placed =
      layout::multilevelLayout(network->countVertices(), network->countEdges(),
                               network->edgeFromList, network->edgeToList, settings, progress);
  if (!placed) return false;
  auto positions = QLOVector3dArray::initWithSize(network->countVertices(), Precision::Float);
  positions->copyPlanesFrom(placed->x.data(), placed->y.data(), placed->z.data());
  {
    // Only if the network is still the one laid out.
    std::lock_guard lock(lock_);
    if (network_ != network) return false;
    setPositions(positions);
  }
  return true;
}
