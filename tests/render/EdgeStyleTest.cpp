// Edge style rules without GL: mode names, weights placed in their range,
// colours per edge, width classes, arrow heads, and the shader renderer's
// edge list grouped by width class with its colours per pair.
#include "render/edgestyle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "render/scenebuffers.h"

namespace {

using namespace edge_style;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

TEST(EdgeStyle, WeightsArePlacedInTheFiniteRange) {
  const float weights[] = {kNaN, 2, -kInf, 6, 4, kInf};
  const WeightRange range = weightRange(weights, 6);
  EXPECT_EQ(range.min, 2);
  EXPECT_EQ(range.max, 6);
  struct Case {
    float w, t;
  };
  for (const Case& c : {Case{2, 0}, Case{4, 0.5f}, Case{6, 1}, Case{-1, 0}, Case{9, 1},
                        Case{kNaN, 0}, Case{kInf, 0}}) {
    EXPECT_FLOAT_EQ(normalisedWeight(c.w, range), c.t) << c.w;
  }
  // One value, or none, gives every weight 0.
  EXPECT_EQ(normalisedWeight(3, weightRange(weights + 1, 1)), 0);
  EXPECT_EQ(normalisedWeight(3, weightRange(weights, 1)), 0);
}

TEST(EdgeStyle, ColoursPerEdge) {
  const float weights[] = {1, 3, 2};
  ColourSettings s;
  s.map = colour::ColorMap::Custom2;  // custom colour 0 at the lightest, 1 at the heaviest
  s.mapSettings.colorCustom0 = {0, 0, 1, 1};
  s.mapSettings.colorCustom1 = {1, 0, 0, 1};
  s.single = {0.1f, 0.2f, 0.3f};

  s.mode = ColourMode::Endpoints;
  EXPECT_TRUE(edgeColours(s, weights, 3).empty());
  s.mode = ColourMode::Single;
  EXPECT_EQ(edgeColours(s, weights, 3),
            (std::vector<float>{0.1f, 0.2f, 0.3f, 0.1f, 0.2f, 0.3f, 0.1f, 0.2f, 0.3f}));
  EXPECT_EQ(edgeColours(s, nullptr, 1), (std::vector<float>{0.1f, 0.2f, 0.3f}));
  s.mode = ColourMode::Weight;
  EXPECT_EQ(edgeColours(s, weights, 3), (std::vector<float>{0, 0, 1, 1, 0, 0, 0.5f, 0, 0.5f}));
  s.mapSettings.invertColorMap = colour::Inversion::On;
  EXPECT_EQ(edgeColours(s, weights, 1), (std::vector<float>{1, 0, 0}));
  // Without weights, weight mode falls back to the endpoints' colours.
  EXPECT_EQ(effectiveMode(ColourMode::Weight, nullptr), ColourMode::Endpoints);
  EXPECT_TRUE(edgeColours(s, nullptr, 3).empty());
}

TEST(EdgeStyle, WidthClassesRunFromTheLineWidthToFourTimesIt) {
  // Classes are the nearest of four steps across the range.
  const float weights[] = {1, 2, 3, 4, kNaN, 2.4f, 3.6f};
  EXPECT_EQ(widthClasses(weights, 7), (std::vector<std::uint8_t>{0, 1, 2, 3, 0, 1, 3}));
  EXPECT_TRUE(widthClasses(nullptr, 6).empty());
  EXPECT_EQ(classWidth(1.5f, 0), 1.5f);
  EXPECT_EQ(classWidth(1.5f, kWidthClasses - 1), 6.0f);
}

TEST(EdgeStyle, ArrowHeadTouchesTheTargetAndFacesTheEye) {
  // Along x, 30 in front of the eye.
  const auto head = arrowHead({-10, 0, -30}, {10, 0, -30}, 0.7f);
  ASSERT_TRUE(head);
  EXPECT_FLOAT_EQ(head->tip[0], 9.3f);
  for (const Point& p : {head->left, head->right}) {
    EXPECT_FLOAT_EQ(p[0], 9.3f - kHeadLength);
    EXPECT_NEAR(std::abs(p[1]), kHeadHalfWidth, 1e-6);
    EXPECT_FLOAT_EQ(p[2], -30);  // across the line of sight
  }
  EXPECT_NEAR(head->left[1], -head->right[1], 1e-6);
  // A short edge gets a shorter head; no room, or pointing at the eye: none.
  const auto shortHead = arrowHead({0, 0, -30}, {2, 0, -30}, 0.7f);
  ASSERT_TRUE(shortHead);
  EXPECT_NEAR(shortHead->tip[0] - shortHead->left[0], 0.6f, 1e-6);
  EXPECT_FALSE(arrowHead({0, 0, -30}, {1.4f, 0, -30}, 0.7f));
  EXPECT_FALSE(arrowHead({0, 0, -40}, {0, 0, -30}, 0.7f));
}

TEST(EdgeStyle, EdgeListGroupsWidthClassesWithTheirColours) {
  const std::uint64_t from[] = {0, 1, 2, 3};
  const std::uint64_t to[] = {1, 2, 3, 0};
  const std::uint8_t widths[] = {2, 0, 2, 1};
  const float colours[] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3};
  const std::uint8_t selected[4] = {};
  SceneFrame frame;
  frame.verticesCount = 4;
  frame.edgesCount = 4;
  frame.from = from;
  frame.to = to;
  frame.selected = selected;
  frame.edgeWidths = widths;
  frame.edgeColours = colours;
  std::vector<std::uint8_t> ends;
  scene_buffers::packEdgeEnds(frame, ends);
  scene_buffers::EdgeList list;
  scene_buffers::buildEdgeList(frame, ends, list);
  EXPECT_EQ(list.edgeOf, (std::vector<std::uint64_t>{
                             1,
                             3,
                             0,
                             2,
                         }));
  EXPECT_EQ(list.classStart, (std::vector<std::uint64_t>{0, 1, 2, 4, 4}));
  // Edges [0, 2) of class 2 are the pair at 2; class 3 has none.
  EXPECT_EQ(list.pairsOf(0, 2, 2), (std::array<std::uint64_t, 2>{2, 3}));
  EXPECT_EQ(list.pairsOf(0, 4, 3)[0], list.pairsOf(0, 4, 3)[1]);
  std::vector<float> pairs;
  scene_buffers::packPairColours(frame, list, pairs);
  EXPECT_EQ(pairs, (std::vector<float>{1, 1, 1, 3, 3, 3, 0, 0, 0, 2, 2, 2}));
  // Edge colours take the place of vertex colours in the rule, which is then
  // affine in them although the vertices have none.
  const scene_buffers::EdgeColourRule rule = scene_buffers::edgeColourRule(frame);
  EXPECT_GT(rule.mul[0], 0);
}

}  // namespace
