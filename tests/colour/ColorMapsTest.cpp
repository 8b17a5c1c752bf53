// Colour maps: each map's ramp, its treatment of NaN and of values outside
// [0, 1], inversion, the cubehelix blend and the vector-array output.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "colour/colormaps.h"
#include "colour/cubehelix.h"
#include "quillo/QLOVector3dArray.h"

using namespace colour;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float V = 0.71999997f;  // Jet's value
constexpr float P = 0.08000004f;  // Jet's floor

Rgba mapOne(std::string_view map, float t, const ColorMapSettings& settings = {}) {
  return colorsForNormalizedValues(&t, 1, colorMapNamed(map), settings)[0];
}

// Equal within `tolerance`, where a NaN expected value asks for NaN.
void expectChannel(float got, float want, float tolerance) {
  if (std::isnan(want)) {
    EXPECT_TRUE(std::isnan(got));
  } else if (tolerance == 0.0f) {
    EXPECT_EQ(got, want);
  } else {
    EXPECT_NEAR(got, want, tolerance);
  }
}

void expectRgb(const Rgba& got, const Rgba& want, float tolerance = 0.0f) {
  expectChannel(got.r, want.r, tolerance);
  expectChannel(got.g, want.g, tolerance);
  expectChannel(got.b, want.b, tolerance);
}

}  // namespace

TEST(ColorMaps, RampsNaNAndOutOfRangeValues) {
  struct Case {
    const char* map;
    float t, r, g, b;
  };
  // The custom maps run red, green (and blue) here.
  ColorMapSettings primaries;
  primaries.colorCustom0 = {1, 0, 0, 1};
  primaries.colorCustom1 = {0, 1, 0, 1};
  primaries.colorCustom2 = {0, 0, 1, 1};
  // NaN reads as Jet's top and Hot's start, is Gray's NaN, the start of
  // "Custom 2" and the end of "Custom 3". Jet holds red below 0 and turns
  // grey far above 1; Gray is not clamped; the others are.
  // clang-format off
  const Case cases[] = {
      {"Jet", 0.0f, P, P, V}, {"Jet", 0.75f, V, V, P}, {"Jet", kNaN, V, P, P},
      {"Jet", -1.0f, V, P, P}, {"Jet", 2.5f, 0.4f, 0.4f, 0.4f},
      {"Gray", 2.0f, 1.9f, 1.9f, 1.9f}, {"Gray", kNaN, kNaN, kNaN, kNaN},
      {"Hot", 0.25f, 0.75f, 0, 0}, {"Hot", kNaN, 1, 0, 0}, {"Hot", 7.0f, 0, 0, 0},
      {"Custom 2", 0.25f, 0.75f, 0.25f, 0}, {"Custom 2", kNaN, 1, 0, 0},
      {"Custom 3", 0.75f, 0, 0.5f, 0.5f}, {"Custom 3", kNaN, 0, 0, 1},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.map) + " at " + std::to_string(c.t));
    expectRgb(mapOne(c.map, c.t, primaries), {c.r, c.g, c.b});
  }
  // Between breakpoints Jet moves one channel linearly (t = 0.9 is 40% of
  // the way from red towards yellow); just above 1 green dips below the floor.
  expectRgb(mapOne("Jet", 0.9f), {V, P + 0.4f * (V - P), P}, 1e-6f);
  EXPECT_LT(mapOne("Jet", 1.01f).g, P);
  EXPECT_GT(mapOne("Jet", 1.01f).g, 0.0f);
  for (const char* map : {"Cubehelix", "Rainbow"}) expectRgb(mapOne(map, 0.5f), {0, 0, 0});
  EXPECT_FALSE(colorMapNamed("jet").has_value());
}

// Expected blends between the default colours #1F77B4 and #FF7F0E (and
// #2CA02C for the three-colour map), evaluated in double precision in Python
// from the blend's definition: lightness, saturation and hue (in turns) of
// each end; angle = radians(hue0 + 120), step = radians(hue1 + 120 - (hue0 + 120));
// l = ((2 L1 - 2 L0) * 0.5 * t + L0) ** 1.2; A = (1 - l) * (s0 + (s1 - s0) t) * l;
// rgb = l + A * (1.78277 sin h - 0.14861 cos h, -0.29227 cos h - 0.90649 sin h,
// 1.97294 cos h).
TEST(Cubehelix, MatchesAnIndependentEvaluation) {
  struct Case {
    const char* map;
    float t;
    Rgba want;
  };
  const Case cases[] = {
      {"Custom Cubehelix 2", 0.0f, {0.6044136f, 0.2457049f, 0.1862797f, 1}},
      {"Custom Cubehelix 2", -0.5f, {0.4756257f, 0.2179367f, 0.1739366f, 1}},  // not clamped
      {"Custom Cubehelix 3", 0.8f, {0.6679108f, 0.2730055f, 0.2103266f, 1}},
      // NaN takes the lower half of the three-colour map and stays NaN.
      {"Custom Cubehelix 3", kNaN, {kNaN, kNaN, kNaN, 1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.map) + " at " + std::to_string(c.t));
    expectRgb(mapOne(c.map, c.t), c.want, 2e-6f);
  }
  // Two equal grey ends: a grey of lightness L^1.2, not the colour itself.
  const float l = std::pow(0.5f, 1.2f);
  expectRgb(VXLCubehelixGradient(0.3f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f), {l, l, l}, 1e-6f);
  // Two equal coloured ends (Python, as above, for (0.2, 0.6, 0.4) at t = 0.7),
  // and the map agrees with the plain function.
  const Rgba same = VXLCubehelixGradient(0.7f, 0.2f, 0.6f, 0.4f, 0.2f, 0.6f, 0.4f);
  expectRgb(same, {0.5121196f, 0.2626371f, 0.2220878f}, 2e-6f);
  ColorMapSettings s;
  s.colorCustom0 = s.colorCustom1 = {0.2f, 0.6f, 0.4f, 1.0f};
  expectRgb(mapOne("Custom Cubehelix 2", 0.7f, s), same);
}

TEST(ColorMaps, InversionReadsOneMinusTAndTheArrayHoldsTheColours) {
  ColorMapSettings inverted;
  inverted.invertColorMap = Inversion::On;
  for (const std::string& map : colorMapNames()) {
    SCOPED_TRACE(map);
    for (float t : {0.2f, 1.0f, -0.5f, 1.7f}) {
      expectRgb(mapOne(map, t, inverted), mapOne(map, 1.0f - t));
    }
  }
  const float values[] = {0.0f, 0.25f, 1.0f};
  const auto array = colorsFromNormalizedVector(values, 3, "Hot", {});
  ASSERT_EQ(array->count(), 3u);
  EXPECT_EQ(array->precision(), Precision::Float);
  EXPECT_EQ(array->vectorAtIndex(1), (std::array<double, 3>{0.75, 0, 0}));
}
