// How many items the next piece of a frame draws, from what earlier pieces cost.
#include <gtest/gtest.h>

#include "render/frameslices.h"

namespace {

using frame_slices::ItemCost;

TEST(FrameSlices, PiecesFollowTheMeasuredCostWithinTheirBounds) {
  ItemCost cost;
  // Nothing measured yet: a first piece of fixed size, never more than is left.
  EXPECT_EQ(cost.itemsWithin(0.025, 1'000'000), ItemCost::kFirstPiece);
  EXPECT_EQ(cost.itemsWithin(0.025, 10), 10u);

  cost.record(4000, 0.004);  // 1 microsecond each
  EXPECT_EQ(cost.itemsWithin(0.025, 1'000'000), 25'000u);
  // No time left, or a tiny budget: still the smallest piece, so a frame
  // always moves on.
  EXPECT_EQ(cost.itemsWithin(0.0, 1'000'000), ItemCost::kMinimumPiece);
  EXPECT_EQ(cost.itemsWithin(-1.0, 1'000'000), ItemCost::kMinimumPiece);
  EXPECT_EQ(cost.itemsWithin(0.0, 3), 3u);

  // A slower piece moves the estimate halfway: (1 + 3) / 2 microseconds.
  cost.record(1000, 0.003);
  EXPECT_DOUBLE_EQ(cost.secondsPerItem(), 2e-6);
  // Nonsense measurements are ignored.
  cost.record(0, 1.0);
  cost.record(10, -1.0);
  EXPECT_DOUBLE_EQ(cost.secondsPerItem(), 2e-6);
}

TEST(FrameSlices, InstantPiecesLetTheWholeRestThrough) {
  // A GL too quick for the clock: the next piece is everything left, not
  // another first piece.
  ItemCost cost;
  cost.record(4096, 0.0);
  EXPECT_GT(cost.secondsPerItem(), 0.0);
  EXPECT_EQ(cost.itemsWithin(0.025, 5'000'000), 5'000'000u);
}

}  // namespace
