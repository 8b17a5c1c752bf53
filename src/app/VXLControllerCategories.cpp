// Categorical colouring of the controller: interim, every category black
// and no legend, until the category ordering and palette are wired in.
#include "app/VXLController.h"

void VXLController::colourByCategories(const TextList& values) {
  (void)values;
  showColours(QLOVector3dArray::initWithSize(view_->network()->countVertices(), Precision::Float));
  view_->setLegends(nullptr);
  view_->setHideSpecialVertices(false);
}

std::shared_ptr<QLOVector3dArray> VXLController::categoryColours(const TextList& values) const {
  (void)values;
  return QLOVector3dArray::initWithSize(view_->network()->countVertices(), Precision::Float);
}
