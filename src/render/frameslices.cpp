#include "render/frameslices.h"

#include <algorithm>
#include <cmath>

namespace frame_slices {

std::uint64_t ItemCost::itemsWithin(double seconds, std::uint64_t left) const {
  std::uint64_t items = kFirstPiece;
  if (secondsPerItem_ > 0) {
    const double fit = std::max(seconds, 0.0) / secondsPerItem_;
    // Far more than any frame holds: the cast below stays defined.
    items = fit >= 1e18 ? left : static_cast<std::uint64_t>(fit);
  }
  return std::min(left, std::max(items, kMinimumPiece));
}

void ItemCost::record(std::uint64_t items, double seconds) {
  if (items == 0 || !(seconds >= 0) || !std::isfinite(seconds)) return;
  // A piece too quick for the clock still counts as measured.
  const double measured = std::max(seconds / static_cast<double>(items), 1e-12);
  // Half the old estimate and half the new: pieces differ (long edges fill
  // more pixels than short ones) and the machine's load changes.
  secondsPerItem_ = secondsPerItem_ > 0 ? 0.5 * (secondsPerItem_ + measured) : measured;
}

}  // namespace frame_slices
