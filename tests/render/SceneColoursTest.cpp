// The scene's colour rules: every cell of the edge colour table over a sweep
// of colours and intensities (computed in double and narrowed, as the rule
// says). The selection highlight, backgrounds, blend modes and frame weights
// are checked on pixels in the GL tests.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "render/scenecolours.h"

namespace {

using scene::Rgb;
using scene::Rgba;
using enum scene::Selection;
using enum scene::LineBlending;
using enum scene::Background;

float narrow(double v) {
  return static_cast<float>(v);
}

// A channel is narrow(k * colour * (dim ? I : 1) + add), worked in double
// (without colours k is 0); the alpha is narrow(ak * I + aa).
struct EdgeCell {
  scene::Selection selection;
  scene::LineBlending blending;
  bool hasColours;
  scene::Background background;
  std::array<double, 3> k, add;
  double ak, aa;
  bool dim = false;
};

const EdgeCell kEdgeTable[] = {
    {Selected, Off, true, Black, {0.6, 0.6, 0.4}, {0.4, 0.4, 0}, 0, 1},
    {Selected, Off, true, White, {0.6, 0.2, 0.2}, {0, 0, 0}, 0, 1},
    {Selected, Off, false, Black, {}, {1, 0.25, 0.1}, 0, 1},
    {Selected, Off, false, White, {}, {0.8, 0.25, 0}, 0, 1},
    {NotSelected, On, true, Black, {0.8, 0.8, 0.8}, {0.2, 0.2, 0.2}, 0.4, 0.2},
    {NotSelected, On, true, White, {0.8, 0.8, 0.8}, {0, 0, 0}, 0.4, 0.2},
    {NotSelected, On, false, Black, {}, {1, 0.5, 0}, 0.4, 0.2},
    {NotSelected, On, false, White, {}, {0.5, 0.25, 0}, 0.4, 0.2},
    {NotSelected, Off, true, Black, {1, 1, 1}, {0, 0, 0}, 1, 0, true},
    {NotSelected, Off, true, White, {1, 1, 1}, {0, 0, 0}, 1, 0},
    {NotSelected, Off, false, Black, {}, {1, 0.5, 0}, 1, 0},
    {NotSelected, Off, false, White, {}, {0.5, 0.25, 0}, 1, 0},
};

TEST(SceneColours, EveryEdgeCellFollowsItsRuleInDouble) {
  // Colours with distinct components on a grid fine enough that float and
  // double arithmetic disagree somewhere, and intensities inside (0, 1).
  int floatDiffers = 0;
  for (int i = 1; i < 400; ++i) {
    const float x = static_cast<float>(i) / 401.0f;
    const Rgb c{x, 1.0f - x * 0.7f, 0.13f + x * 0.5f};
    if (narrow(0.6 * c.r + 0.4) != 0.6f * c.r + 0.4f) ++floatDiffers;
    for (float I : {0.05f, 0.3f, 0.61f, 0.93f}) {
      for (std::size_t n = 0; n < std::size(kEdgeTable); ++n) {
        const EdgeCell& cell = kEdgeTable[n];
        const double scale = cell.dim ? I : 1.0;
        auto channel = [&](std::size_t j, float v) {
          return narrow(cell.k[j] * v * scale + cell.add[j]);
        };
        const Rgba want{channel(0, c.r), channel(1, c.g), channel(2, c.b),
                        narrow(cell.ak * I + cell.aa)};
        // A selected endpoint ignores the blending mode.
        for (scene::LineBlending mode :
             {cell.blending, cell.selection == Selected ? On : cell.blending}) {
          const Rgba got =
              scene::edgeEndpointColour(cell.hasColours ? std::optional(c) : std::nullopt,
                                        cell.selection, mode, cell.background, I);
          ASSERT_TRUE(got == want) << "cell " << n << " colour " << x << " I " << I << ": " << got.r
                                   << " " << got.g << " " << got.b << " " << got.a;
        }
      }
    }
  }
  EXPECT_GT(floatDiffers, 0) << "the sweep cannot tell double from float arithmetic";
}

}  // namespace
