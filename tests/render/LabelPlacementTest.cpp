// Label placement: which labels survive overlap, depth, the picture's edges,
// the mode and the cap.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/labelplacement.h"

namespace {

// Every text is 40 pixels wide (and 10 high).
double fixedWidth(const std::string&) {
  return 40;
}
std::string numbered(std::uint64_t v) {
  std::string text = "v";
  text += std::to_string(v);
  return text;
}

std::vector<std::uint64_t> placedVertices(const LabelRequest& request) {
  std::vector<std::uint64_t> vertices;
  for (const PlacedLabel& p : placeLabels(request, numbered, fixedWidth)) {
    vertices.push_back(p.vertex);
  }
  return vertices;
}

LabelRequest request(const std::vector<ScreenPoint>& points, LabelMode mode) {
  LabelRequest r;
  r.points = points;
  r.mode = mode;
  r.width = 400;
  r.height = 300;
  r.gap = 2;
  r.labelHeight = 10;
  return r;
}

TEST(LabelPlacement, OverlapKeepsTheNearestAndDropsHiddenOnes) {
  // 0 and 1 share a spot (1 is nearer); 2 stands apart; 3 is behind the eye,
  // 4 off the picture, 5 not shown.
  const std::vector<ScreenPoint> points = {
      {100, 100, 20, 4}, {105, 102, 10, 4}, {100, 200, 30, 4},
      {300, 50, -5, 4},  {450, 50, 10, 4},  {300, 250, 10, 4},
  };
  const std::vector<std::uint8_t> shown = {1, 1, 1, 1, 1, 0};
  LabelRequest all = request(points, LabelMode::All);
  all.shown = shown;
  EXPECT_EQ(placedVertices(all), (std::vector<std::uint64_t>{1, 2}));

  // A box sits beside its vertex, clear of the ball, centred on it.
  const std::vector<PlacedLabel> placed = placeLabels(all, numbered, fixedWidth);
  ASSERT_FALSE(placed.empty());
  EXPECT_EQ(placed[0], (PlacedLabel{1, 105 + 4 + 2, 102 - 5, 40, 10}));

  // In All mode a selected vertex goes first whatever its depth.
  const std::vector<std::uint8_t> selectZero = {1, 0, 0, 0, 0, 0};
  all.selected = selectZero;
  EXPECT_EQ(placedVertices(all), (std::vector<std::uint64_t>{0, 2}));
}

TEST(LabelPlacement, ModesAndCap) {
  std::vector<ScreenPoint> points;
  for (int i = 0; i < 10; ++i) points.push_back({10, 10.0 + 25 * i, 10.0 + i, 2});
  const std::vector<std::uint8_t> selected = {0, 1, 0, 0, 1, 0, 0, 0, 0, 1};
  LabelRequest r = request(points, LabelMode::Selected);
  r.selected = selected;
  EXPECT_EQ(placedVertices(r), (std::vector<std::uint64_t>{1, 4, 9}));
  r.mode = LabelMode::None;
  EXPECT_TRUE(placedVertices(r).empty());
  r.mode = LabelMode::All;
  r.selected = {};
  r.maxLabels = 3;
  EXPECT_EQ(placedVertices(r), (std::vector<std::uint64_t>{0, 1, 2}));
  // 300 labels at one spot fill more than the first sorted chunk: the
  // nearest of them is kept, and the rest follow from the next chunks.
  std::vector<ScreenPoint> many(300, ScreenPoint{385, 150, 0, 0});
  for (int i = 0; i < 300; ++i) many[static_cast<std::size_t>(i)].depth = 1.0 + i;
  for (int i = 0; i < 300; ++i) {
    many.push_back({5.0 + (i % 8) * 48, 5.0 + (i / 8) * 12.0, 1000.0 + i, 0});
  }
  LabelRequest dense = request(many, LabelMode::All);
  dense.width = 420;
  dense.height = 500;
  dense.maxLabels = 40;
  dense.gap = 0;
  const std::vector<std::uint64_t> kept = placedVertices(dense);
  ASSERT_EQ(kept.size(), 40u);
  EXPECT_EQ(kept.front(), 0u);
  EXPECT_EQ(kept[1], 300u);
  EXPECT_EQ(kept.back(), 338u);
}

}  // namespace
