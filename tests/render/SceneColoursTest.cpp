// The edge colour rule at hand-worked points, one per branch: selected (the
// blending mode ignored), blended, plain and dimmed, without colours.
#include <gtest/gtest.h>

#include "render/scenecolours.h"

namespace {

using enum scene::Selection;
using enum scene::LineBlending;
using enum scene::Background;

TEST(SceneColours, EdgeEndpointsAtHandWorkedPoints) {
  const scene::Rgb c{0.5f, 0.25f, 1.0f};
  struct Case {
    bool colours;
    scene::Selection selection;
    scene::LineBlending blending;
    scene::Background background;
    scene::Rgba want;
  };
  const Case cases[] = {
      {true, Selected, On, Black, {0.7f, 0.55f, 0.4f, 1}},
      {false, Selected, On, White, {0.8f, 0.25f, 0, 1}},
      {true, NotSelected, On, White, {0.4f, 0.2f, 0.8f, 0.4f}},
      {true, NotSelected, Off, Black, {0.25f, 0.125f, 0.5f, 0.5f}},
      {false, NotSelected, Off, White, {0.5f, 0.25f, 0, 0.5f}},
  };
  for (const Case& k : cases) {
    const scene::Rgba got = scene::edgeEndpointColour(k.colours ? std::optional(c) : std::nullopt,
                                                      k.selection, k.blending, k.background, 0.5f);
    const float g[] = {got.r, got.g, got.b, got.a}, w[] = {k.want.r, k.want.g, k.want.b, k.want.a};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(g[i], w[i], 1e-6) << (&k - cases) << " channel " << i;
  }
}

}  // namespace
