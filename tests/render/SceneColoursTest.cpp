// The scene's colour rules: every cell of the edge colour table over a sweep
// of colours and intensities (computed in double and narrowed, as the rule
// says) and the selection highlight. The backgrounds, blend modes and frame
// weights are checked on pixels in the GL tests.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <vector>

#include "render/scenecolours.h"

namespace scene {
void PrintTo(const Rgba& c, std::ostream* os) {
  *os << "(" << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ")";
}
}  // namespace scene

namespace {

using scene::Background;
using scene::LineBlending;
using scene::Rgb;
using scene::Rgba;
using scene::Selection;

float narrow(double v) {
  return static_cast<float>(v);
}

struct EdgeCell {
  const char* name;
  Selection selection;
  LineBlending blending;
  bool hasColours;
  Background background;
  std::function<Rgba(Rgb, float)> expected;
};

std::vector<EdgeCell> edgeTable() {
  std::vector<EdgeCell> cells;
  // A selected endpoint ignores the blending mode: list it under both.
  for (LineBlending mode : {LineBlending::Off, LineBlending::On}) {
    cells.push_back(
        {"selected, colours, black", Selection::Selected, mode, true, Background::Black,
         [](Rgb c, float) {
           return Rgba{narrow(0.6 * c.r + 0.4), narrow(0.6 * c.g + 0.4), narrow(0.4 * c.b), 1.0f};
         }});
    cells.push_back({"selected, colours, white", Selection::Selected, mode, true, Background::White,
                     [](Rgb c, float) {
                       return Rgba{narrow(0.6 * c.r), narrow(0.2 * c.g), narrow(0.2 * c.b), 1.0f};
                     }});
    cells.push_back({"selected, no colours, black", Selection::Selected, mode, false,
                     Background::Black, [](Rgb, float) {
                       return Rgba{1.0f, 0.25f, 0.1f, 1.0f};
                     }});
    cells.push_back({"selected, no colours, white", Selection::Selected, mode, false,
                     Background::White, [](Rgb, float) {
                       return Rgba{0.8f, 0.25f, 0.0f, 1.0f};
                     }});
  }
  auto blendAlpha = [](float I) { return narrow(0.4 * I + 0.2); };
  cells.push_back({"blended, colours, black", Selection::NotSelected, LineBlending::On, true,
                   Background::Black, [=](Rgb c, float I) {
                     return Rgba{narrow(0.8 * c.r + 0.2), narrow(0.8 * c.g + 0.2),
                                 narrow(0.8 * c.b + 0.2), blendAlpha(I)};
                   }});
  cells.push_back(
      {"blended, colours, white", Selection::NotSelected, LineBlending::On, true, Background::White,
       [=](Rgb c, float I) {
         return Rgba{narrow(0.8 * c.r), narrow(0.8 * c.g), narrow(0.8 * c.b), blendAlpha(I)};
       }});
  cells.push_back({"blended, no colours, black", Selection::NotSelected, LineBlending::On, false,
                   Background::Black, [=](Rgb, float I) {
                     return Rgba{1.0f, 0.5f, 0.0f, blendAlpha(I)};
                   }});
  cells.push_back({"blended, no colours, white", Selection::NotSelected, LineBlending::On, false,
                   Background::White, [=](Rgb, float I) {
                     return Rgba{0.5f, 0.25f, 0.0f, blendAlpha(I)};
                   }});
  cells.push_back({"plain, colours, black", Selection::NotSelected, LineBlending::Off, true,
                   Background::Black, [](Rgb c, float I) {
                     return Rgba{c.r * I, c.g * I, c.b * I, I};
                   }});
  cells.push_back({"plain, colours, white", Selection::NotSelected, LineBlending::Off, true,
                   Background::White, [](Rgb c, float I) {
                     return Rgba{c.r, c.g, c.b, I};
                   }});
  cells.push_back({"plain, no colours, black", Selection::NotSelected, LineBlending::Off, false,
                   Background::Black, [](Rgb, float I) {
                     return Rgba{1.0f, 0.5f, 0.0f, I};
                   }});
  cells.push_back({"plain, no colours, white", Selection::NotSelected, LineBlending::Off, false,
                   Background::White, [](Rgb, float I) {
                     return Rgba{0.5f, 0.25f, 0.0f, I};
                   }});
  return cells;
}

// Colours with three distinct components and intensities strictly inside
// (0, 1), on a grid fine enough that float and double arithmetic disagree.
std::vector<Rgb> sampleColours() {
  std::vector<Rgb> colours;
  for (int i = 1; i < 400; ++i) {
    const float r = static_cast<float>(i) / 401.0f;
    colours.push_back({r, 1.0f - r * 0.7f, 0.13f + r * 0.5f});
  }
  return colours;
}
const std::vector<float> kIntensities = {0.05f, 0.3f, 0.61f, 0.77f, 0.93f};

TEST(SceneColours, EveryEdgeCellFollowsItsRule) {
  for (const EdgeCell& cell : edgeTable()) {
    for (const Rgb& c : sampleColours()) {
      for (float I : kIntensities) {
        const std::optional<Rgb> colour = cell.hasColours ? std::optional(c) : std::nullopt;
        const Rgba got =
            scene::edgeEndpointColour(colour, cell.selection, cell.blending, cell.background, I);
        ASSERT_EQ(got, cell.expected(c, I)) << cell.name << " colour " << c.r << " I " << I;
      }
    }
  }
}

TEST(SceneColours, SweepTellsDoubleFromFloatArithmetic) {
  // The sweep above only proves the double-precision rule if float
  // arithmetic would have given a different answer somewhere in it.
  int differing = 0;
  for (const Rgb& c : sampleColours()) {
    if (narrow(0.6 * c.r + 0.4) != 0.6f * c.r + 0.4f) ++differing;
    if (narrow(0.8 * c.g + 0.2) != 0.8f * c.g + 0.2f) ++differing;
  }
  EXPECT_GT(differing, 0);
}

TEST(SceneColours, SelectionHighlight) {
  using scene::Colouring;
  struct Case {
    Colouring colouring;
    Background background;
    Rgb expected;
  };
  const Case cases[] = {
      {Colouring::PerVertex, Background::Black, {1.0f, 1.0f, 0.1f}},
      {Colouring::PerVertex, Background::White, {0.4f, 0.1f, 0.0f}},
      {Colouring::Fixed, Background::Black, {1.0f, 0.3f, 0.1f}},
      {Colouring::Fixed, Background::White, {0.4f, 0.1f, 0.0f}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(scene::selectionHighlight(c.colouring, c.background), c.expected)
        << static_cast<int>(c.colouring) << " " << static_cast<int>(c.background);
  }
}

}  // namespace
