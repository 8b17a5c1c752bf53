// Colour maps: each map's ramp, its treatment of NaN and of values outside
// [0, 1], inversion, the cubehelix blend and the vector-array output.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "colour/colormaps.h"
#include "colour/cubehelix.h"
#include "colour/hexcolour.h"
#include "quillo/QLOVector3dArray.h"

using namespace colour;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float V = 0.71999997f;  // Jet's value
constexpr float P = 0.08000004f;  // Jet's floor

Rgba mapOne(std::string_view map, float t, const ColorMapSettings& settings = {}) {
  return colorsForNormalizedValues(&t, 1, colorMapNamed(map), settings)[0];
}

void expectRgb(const Rgba& got, float r, float g, float b, float tolerance = 0.0f) {
  if (tolerance == 0.0f) {
    EXPECT_EQ(got.r, r);
    EXPECT_EQ(got.g, g);
    EXPECT_EQ(got.b, b);
  } else {
    EXPECT_NEAR(got.r, r, tolerance);
    EXPECT_NEAR(got.g, g, tolerance);
    EXPECT_NEAR(got.b, b, tolerance);
  }
}

// Three distinct custom colours that are easy to recognise in results.
ColorMapSettings primaries() {
  ColorMapSettings s;
  s.colorCustom0 = {1.0f, 0.0f, 0.0f, 1.0f};
  s.colorCustom1 = {0.0f, 1.0f, 0.0f, 1.0f};
  s.colorCustom2 = {0.0f, 0.0f, 1.0f, 1.0f};
  return s;
}

}  // namespace

TEST(ColorMapNames, OrderAndLookup) {
  const std::vector<std::string> expected{"Jet",
                                          "Gray",
                                          "Hot",
                                          "Cubehelix",
                                          "Custom 2",
                                          "Custom 3",
                                          "Custom Cubehelix 2",
                                          "Custom Cubehelix 3"};
  EXPECT_EQ(colorMapNames(), expected);
  EXPECT_EQ(colorMapNames().front(), kDefaultColorMap);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(colorMapNamed(expected[i]), static_cast<ColorMap>(i));
  }
  EXPECT_FALSE(colorMapNamed("jet").has_value());
}

TEST(ColorMaps, DefaultCustomColoursAreTheThreeHexColours) {
  const ColorMapSettings s;
  EXPECT_EQ(hexadecimalValue(s.colorCustom0), "#1f77b4");
  EXPECT_EQ(hexadecimalValue(s.colorCustom1), "#ff7f0e");
  EXPECT_EQ(hexadecimalValue(s.colorCustom2), "#2ca02c");
  EXPECT_EQ(s.invertColorMap, Inversion::Off);
}

TEST(Jet, Breakpoints) {
  struct Case {
    float t;
    Rgba want;
  };
  const Case cases[] = {
      {0.0f, {P, P, V, 1}},           // blue
      {0.25f, {P, V, V, 1}},          // cyan
      {0.5f, {P, V, P, 1}},           // green
      {0.75f, {V, V, P, 1}},          // yellow
      {1.0f, {V, P, P, 1}},           // red
      {kNaN, {V, P, P, 1}},           // NaN reads as the top
      {-1.0f, {V, P, P, 1}},          // hue beyond the top is held at red
      {2.5f, {0.4f, 0.4f, 0.4f, 1}},  // far above 1: grey
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.t);
    expectRgb(mapOne("Jet", c.t), c.want.r, c.want.g, c.want.b);
  }
  // Between breakpoints the ramp moves one channel linearly (t = 0.9 is 40%
  // of the way from red towards yellow).
  expectRgb(mapOne("Jet", 0.9f), V, P + 0.4f * (V - P), P, 1e-6f);
  // Just above 1 the green channel dips below the floor; it is not clamped.
  EXPECT_LT(mapOne("Jet", 1.01f).g, P);
  EXPECT_GT(mapOne("Jet", 1.01f).g, 0.0f);
}

TEST(GrayAndHot, RampsAndOutOfRangeValues) {
  expectRgb(mapOne("Gray", 0.0f), 0.1f, 0.1f, 0.1f);
  expectRgb(mapOne("Gray", 1.0f), 1.0f, 1.0f, 1.0f);
  expectRgb(mapOne("Gray", 0.5f), 0.55f, 0.55f, 0.55f);
  expectRgb(mapOne("Gray", 2.0f), 1.9f, 1.9f, 1.9f);  // not clamped
  EXPECT_TRUE(std::isnan(mapOne("Gray", kNaN).r));

  expectRgb(mapOne("Hot", 0.0f), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Hot", 0.25f), 0.75f, 0.0f, 0.0f);
  expectRgb(mapOne("Hot", 1.0f), 0.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Hot", kNaN), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Hot", -4.0f), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Hot", 7.0f), 0.0f, 0.0f, 0.0f);
}

TEST(ColorMaps, CubehelixAndUnknownNamesAreBlack) {
  for (const char* map : {"Cubehelix", "Rainbow", ""}) {
    SCOPED_TRACE(map);
    for (float t : {0.0f, 0.5f, 1.0f, kNaN}) expectRgb(mapOne(map, t), 0.0f, 0.0f, 0.0f);
  }
}

TEST(Custom2, BlendsAndClamps) {
  const ColorMapSettings s = primaries();
  expectRgb(mapOne("Custom 2", 0.0f, s), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Custom 2", 0.25f, s), 0.75f, 0.25f, 0.0f);
  expectRgb(mapOne("Custom 2", 1.0f, s), 0.0f, 1.0f, 0.0f);
  expectRgb(mapOne("Custom 2", 3.0f, s), 0.0f, 1.0f, 0.0f);
  expectRgb(mapOne("Custom 2", -1.0f, s), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Custom 2", kNaN, s), 1.0f, 0.0f, 0.0f);  // NaN is the start
}

TEST(Custom3, TwoHalves) {
  const ColorMapSettings s = primaries();
  expectRgb(mapOne("Custom 3", 0.25f, s), 0.5f, 0.5f, 0.0f);
  expectRgb(mapOne("Custom 3", 0.5f, s), 0.0f, 1.0f, 0.0f);
  expectRgb(mapOne("Custom 3", 0.75f, s), 0.0f, 0.5f, 0.5f);
  expectRgb(mapOne("Custom 3", 1.0f, s), 0.0f, 0.0f, 1.0f);
  expectRgb(mapOne("Custom 3", -3.0f, s), 1.0f, 0.0f, 0.0f);
  expectRgb(mapOne("Custom 3", 9.0f, s), 0.0f, 0.0f, 1.0f);
  expectRgb(mapOne("Custom 3", kNaN, s), 0.0f, 0.0f, 1.0f);  // NaN is the end
  // With the default colours the middle is exactly the second colour.
  const ColorMapSettings defaults;
  const Rgba middle = mapOne("Custom 3", 0.5f, defaults);
  expectRgb(middle, defaults.colorCustom1.r, defaults.colorCustom1.g, defaults.colorCustom1.b);
}

// Expected blends between the default colours #1F77B4 and #FF7F0E (and
// #2CA02C for the three-colour map), evaluated in double precision in Python
// from the blend's definition: lightness, saturation and hue (in turns) of
// each end; angle = radians(hue0 + 120), step = radians(hue1 + 120 - (hue0 + 120));
// l = ((2 L1 - 2 L0) * 0.5 * t + L0) ** 1.2; A = (1 - l) * (s0 + (s1 - s0) t) * l;
// rgb = l + A * (1.78277 sin h - 0.14861 cos h, -0.29227 cos h - 0.90649 sin h,
// 1.97294 cos h).
TEST(Cubehelix, DefaultColoursMatchAnIndependentEvaluation) {
  struct Case {
    const char* map;
    float t;
    Rgba want;
  };
  const Case cases[] = {
      {"Custom Cubehelix 2", 0.0f, {0.6044136f, 0.2457049f, 0.1862797f, 1}},
      {"Custom Cubehelix 2", 0.25f, {0.6703452f, 0.2597643f, 0.1927851f, 1}},
      {"Custom Cubehelix 2", 0.5f, {0.7364353f, 0.2742411f, 0.2000089f, 1}},
      {"Custom Cubehelix 2", 1.0f, {0.8663209f, 0.3054432f, 0.2181814f, 1}},
      {"Custom Cubehelix 2", -0.5f, {0.4756257f, 0.2179367f, 0.1739366f, 1}},  // not clamped
      {"Custom Cubehelix 2", 1.5f, {0.9882663f, 0.3414457f, 0.2440466f, 1}},
      {"Custom Cubehelix 3", 0.2f, {0.7100235f, 0.2683849f, 0.1970086f, 1}},
      {"Custom Cubehelix 3", 0.5f, {0.8663209f, 0.3054432f, 0.2181814f, 1}},
      {"Custom Cubehelix 3", 0.8f, {0.6679108f, 0.2730055f, 0.2103266f, 1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.map) + " at " + std::to_string(c.t));
    expectRgb(mapOne(c.map, c.t), c.want.r, c.want.g, c.want.b, 2e-6f);
  }
}

TEST(Cubehelix, NaNAndEqualEnds) {
  // NaN takes the lower half of the three-colour map and stays NaN.
  EXPECT_TRUE(std::isnan(mapOne("Custom Cubehelix 3", kNaN).r));
  // Two equal grey ends: a grey of lightness L^1.2, not the colour itself.
  const Rgba grey = VXLCubehelixGradient(0.3f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f);
  const float l = std::pow(0.5f, 1.2f);
  expectRgb(grey, l, l, l, 1e-6f);
  // Two equal coloured ends (Python, as above, for (0.2, 0.6, 0.4) at t = 0.7).
  const Rgba same = VXLCubehelixGradient(0.7f, 0.2f, 0.6f, 0.4f, 0.2f, 0.6f, 0.4f);
  expectRgb(same, 0.5121196f, 0.2626371f, 0.2220878f, 2e-6f);
  // The map and the plain function agree.
  ColorMapSettings s;
  s.colorCustom0 = {0.2f, 0.6f, 0.4f, 1.0f};
  s.colorCustom1 = s.colorCustom0;
  const Rgba viaMap = mapOne("Custom Cubehelix 2", 0.7f, s);
  expectRgb(viaMap, same.r, same.g, same.b);
}

TEST(ColorMaps, InversionReadsOneMinusT) {
  ColorMapSettings inverted;
  inverted.invertColorMap = Inversion::On;
  const float samples[] = {0.0f, 0.2f, 0.5f, 0.9f, 1.0f, -0.5f, 1.7f};
  for (const std::string& map : colorMapNames()) {
    SCOPED_TRACE(map);
    for (float t : samples) {
      const Rgba plain = mapOne(map, 1.0f - t);
      expectRgb(mapOne(map, t, inverted), plain.r, plain.g, plain.b);
    }
  }
  expectRgb(mapOne("Gray", 0.0f, inverted), 1.0f, 1.0f, 1.0f);
}

TEST(ColorMaps, VectorArrayHoldsTheSameColours) {
  std::vector<float> values;
  for (int i = -3; i <= 13; ++i) values.push_back(static_cast<float>(i) / 10.0f);
  values.push_back(kNaN);
  for (const std::string& map : colorMapNames()) {
    SCOPED_TRACE(map);
    const auto array = colorsFromNormalizedVector(values.data(), values.size(), map, {});
    ASSERT_EQ(array->count(), values.size());
    ASSERT_EQ(array->precision(), Precision::Float);
    const std::vector<Rgba> colours =
        colorsForNormalizedValues(values.data(), values.size(), colorMapNamed(map), {});
    for (std::size_t i = 0; i < values.size(); ++i) {
      const auto rgb = array->vectorAtIndex(i);
      for (int k = 0; k < 3; ++k) {
        const float want = k == 0 ? colours[i].r : k == 1 ? colours[i].g : colours[i].b;
        if (std::isnan(want)) {
          EXPECT_TRUE(std::isnan(rgb[static_cast<std::size_t>(k)]));
        } else {
          EXPECT_EQ(static_cast<float>(rgb[static_cast<std::size_t>(k)]), want);
        }
      }
    }
  }
}
