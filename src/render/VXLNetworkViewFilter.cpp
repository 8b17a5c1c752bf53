// The view's filter state: the filter cache and range, the edge-weight
// thresholds, the hidden-vertex mask and the alpha channel.
#include "filter/filtering.h"
#include "quillo/log.h"
#include "render/VXLNetworkView.h"

float VXLNetworkView::weightMaxThreshold() const {
  std::lock_guard lock(lock_);
  return weightMaxThreshold_;
}

void VXLNetworkView::setWeightMaxThreshold(float value) {
  noteChange();
  std::lock_guard lock(lock_);
  weightMaxThreshold_ = value;
  _updateWeightThresholdData();
}

float VXLNetworkView::weightMinThreshold() const {
  std::lock_guard lock(lock_);
  return weightMinThreshold_;
}

void VXLNetworkView::setWeightMinThreshold(float value) {
  noteChange();
  std::lock_guard lock(lock_);
  weightMinThreshold_ = value;
  _updateWeightThresholdData();
}

void VXLNetworkView::_updateWeightThresholdData() {
  std::lock_guard lock(lock_);
  if (!network_ || !network_->isEdgeWeighted()) return;
  // A new array each time: a running batch keeps reading the one it took.
  weightThresholdData_ = std::make_shared<const std::vector<float>>(
      filter::thresholdedWeights(*network_, weightMinThreshold_, weightMaxThreshold_));
}

std::pair<double, double> VXLNetworkView::maxMinWeight() const {
  std::lock_guard lock(lock_);
  return filter::maxMinWeight(network_.get());
}

VXLNetworkView::FloatsPtr VXLNetworkView::weightThresholdData() const {
  std::lock_guard lock(lock_);
  return weightThresholdData_;
}

std::uint64_t VXLNetworkView::weightThresholdCount() const {
  std::lock_guard lock(lock_);
  return weightThresholdData_ ? weightThresholdData_->size() : 0;
}

std::string VXLNetworkView::filterPropertyName() const {
  std::lock_guard lock(lock_);
  return filterPropertyName_;
}

void VXLNetworkView::setFilterPropertyName(const std::string& name) {
  noteChange();
  std::lock_guard lock(lock_);
  if (name == filterPropertyName_ && !shouldUpdateFilter_.load(kRelaxed)) return;
  filterPropertyName_ = name;
  lastFilterPropertyNetwork_.reset();  // refill at the next frame
  shouldUpdateFilter_.store(false, kRelaxed);
}

VXLNetworkView::FloatsPtr VXLNetworkView::filterProperty() const {
  std::lock_guard lock(lock_);
  return filterProperty_;
}

void VXLNetworkView::prepareFrame() {
  std::lock_guard lock(lock_);
  if (filterProperty_ && lastFilterPropertyNetwork_.lock() == network_) return;
  // Refill the cache and reset the range to the data, so every vertex passes.
  auto values = std::make_shared<std::vector<float>>(
      network_ ? filter::filterValues(*network_, filterPropertyName_) : std::vector<float>());
  auto [max, min] = filter::maxMinOfValues(*values);
  maxFilter_.store(max, kRelaxed);
  minFilter_.store(min, kRelaxed);
  filterProperty_ = std::move(values);
  lastFilterPropertyNetwork_ = network_;
}

std::shared_ptr<QLONumberArray> VXLNetworkView::hiddenVertices() const {
  std::lock_guard lock(lock_);
  return hiddenVertices_;
}

void VXLNetworkView::setHiddenVertices(std::shared_ptr<QLONumberArray> mask) {
  noteChange();
  std::lock_guard lock(lock_);
  if (mask == hiddenVertices_) return;
  if (mask && mask->numberArrayType() != NumberType::Bool) {
    mask = QLONumberArray::initWithNumberArray(*mask, {0, mask->count()}, NumberType::Bool);
  } else if (mask) {
    quillo::logLine("HiddenVertices Set");
  }
  hiddenVertices_ = std::move(mask);
}

std::shared_ptr<QLONumberArray> VXLNetworkView::alphaChannel() const {
  std::lock_guard lock(lock_);
  return alphaChannel_;
}

void VXLNetworkView::setAlphaChannel(std::shared_ptr<QLONumberArray> alpha) {
  noteChange();
  std::lock_guard lock(lock_);
  if (alpha == alphaChannel_) return;
  if (alpha && alpha->numberArrayType() != NumberType::Float) {
    alpha = QLONumberArray::initWithNumberArray(*alpha, {0, alpha->count()}, NumberType::Float);
  }
  alphaChannel_ = std::move(alpha);
}
