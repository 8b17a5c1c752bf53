// The choice between the all-pairs repulsion and the octree approximation.
#include "layout/repulsion.h"
#include "render/VXLNetworkView.h"

void VXLNetworkView::setBarnesHutTheta(float theta) {
  noteChange();
  theta_.store(theta, kRelaxed);
  automaticRepulsion_.store(false, kRelaxed);
}

float VXLNetworkView::repulsionThetaInUse() const {
  const auto choice = automaticRepulsion_.load(kRelaxed) ? layout::RepulsionChoice::Automatic
                                                         : layout::RepulsionChoice::Fixed;
  layout::PassInputs inputs;
  FloatsPtr filter;
  {
    std::lock_guard lock(lock_);
    inputs.verticesCount = network_ ? network_->countVertices() : 0;
    filter = filterProperty_;
  }
  inputs.filter = filter && filter->size() == inputs.verticesCount ? filter->data() : nullptr;
  inputs.minFilter = minFilter_.load(kRelaxed);
  inputs.maxFilter = maxFilter_.load(kRelaxed);
  return layout::repulsionTheta(choice, theta_.load(kRelaxed), layout::participantCount(inputs));
}

std::string VXLNetworkView::repulsionStatus() const {
  return layout::repulsionDescription(repulsionThetaInUse());
}
