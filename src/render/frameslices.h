#pragma once
// How much of a frame to draw before handing the window back: a running
// estimate of what one item (a vertex or an edge) costs to draw, turned into
// the number of items that fit in the time left. Pure logic.
#include <cstdint>

namespace frame_slices {

class ItemCost {
 public:
  // Items to draw next: as many as fit in `seconds` at the estimated cost,
  // at least kMinimumPiece (so every piece makes progress and is long enough
  // to measure), at most `left`. Before anything was measured: kFirstPiece.
  std::uint64_t itemsWithin(double seconds, std::uint64_t left) const;
  // A piece of `items` took `seconds`, drawing and the GL finishing it.
  void record(std::uint64_t items, double seconds);
  // Seconds per item; 0 until something was measured.
  double secondsPerItem() const { return secondsPerItem_; }

  static constexpr std::uint64_t kFirstPiece = 4096;
  static constexpr std::uint64_t kMinimumPiece = 256;

 private:
  double secondsPerItem_ = 0;
};

}  // namespace frame_slices
