// What the shader renderer uploads: vertex flags, the edges drawn and the
// edge colour rule as affine maps of the endpoint colour.
#include "render/scenebuffers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace scene_buffers;

TEST(SceneBuffers, EdgeColourRuleMatchesTheEndpointColours) {
  const scene::Rgb colours[] = {{0, 0, 0}, {1, 1, 1}, {0.2f, 0.7f, 0.45f}};
  for (const auto background : {scene::Background::White, scene::Background::Black}) {
    for (const bool blend : {false, true}) {
      for (const bool perVertex : {false, true}) {
        SceneFrame frame;
        frame.background = background;
        frame.blendLines = blend;
        frame.edgesIntensity = 0.35f;
        const float r = 0.5f;
        if (perVertex) frame.r = frame.g = frame.b = &r;
        const EdgeColourRule rule = edgeColourRule(frame);
        for (const scene::Rgb& c : colours) {
          for (const bool selected : {false, true}) {
            const scene::Rgba want = scene::edgeEndpointColour(
                perVertex ? std::optional(c) : std::nullopt,
                selected ? scene::Selection::Selected : scene::Selection::NotSelected,
                frame.lineBlending(), background, frame.edgesIntensity);
            const auto& mul = selected ? rule.selectedMul : rule.mul;
            const auto& add = selected ? rule.selectedAdd : rule.add;
            const float got[] = {c.r * mul[0] + add[0], c.g * mul[1] + add[1],
                                 c.b * mul[2] + add[2], mul[3] + add[3]};
            const float wanted[] = {want.r, want.g, want.b, want.a};
            for (int k = 0; k < 4; ++k) {
              EXPECT_NEAR(got[k], wanted[k], 1e-6)
                  << "black " << (background == scene::Background::Black) << " blend " << blend
                  << " colours " << perVertex << " selected " << selected << " component " << k;
            }
          }
        }
      }
    }
  }
}

TEST(SceneBuffers, FlagsAndEdgeListFollowTheMasksFilterAndWeights) {
  // Vertex 1 hidden, vertex 3 outside the filter range, vertex 4 selected.
  const std::uint64_t from[] = {0, 0, 0, 1, 2, 3, 4};
  const std::uint64_t to[] = {2, 2, 2, 2, 4, 4, 0};
  const float weights[] = {1, 0, -1, 1, 2, 1, 3};
  const std::uint8_t hidden[] = {0, 1, 0, 0, 0};
  const std::uint8_t selected[] = {0, 0, 0, 0, 1};
  const float filter[] = {1, 1, 1, NAN, 1};
  SceneFrame frame;
  frame.verticesCount = 5;
  frame.edgesCount = 7;
  frame.from = from;
  frame.to = to;
  frame.weights = weights;
  frame.hidden = hidden;
  frame.selected = selected;
  frame.filter = filter;
  frame.minFilter = 0;
  frame.maxFilter = 2;
  for (const bool limit : {false, true}) {
    frame.limitNodes = frame.limitEdges = limit;
    std::vector<std::uint8_t> flags, ends;
    packFlags(frame, flags);
    const std::uint8_t three = limit ? 0 : kShown;
    EXPECT_EQ(flags, (std::vector<std::uint8_t>{kShown, 0, kShown, three, kShown | kSelected}));
    packEdgeEnds(frame, ends);
    EdgeList list;
    buildEdgeList(frame, ends, list);
    // Weights 0 and below, the hidden vertex and (limited) vertex 3 drop edges.
    const std::vector<std::uint64_t> drawn =
        limit ? std::vector<std::uint64_t>{0, 4, 6} : std::vector<std::uint64_t>{0, 4, 5, 6};
    EXPECT_EQ(list.edgeOf, drawn) << limit;
    EXPECT_EQ(list.indices[0], 2u);  // to, then from
    EXPECT_EQ(list.indices[1], 0u);
    // Edges [1, 5) hold the drawn edge 4 (and 5 unless limited).
    const auto [first, last] = list.pairsOf(1, 5);
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(last, 2u);
    EXPECT_EQ(list.pairsOf(5, 7)[1] - list.pairsOf(5, 7)[0], limit ? 1u : 2u);
  }
}

}  // namespace
