// The continuous legend's value scale: sample colours, label values and the
// two label formats.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "colour/legendscale.h"

using namespace colour;

TEST(LegendLabel, FormatDependsOnMagnitude) {
  const float kNaN = std::numeric_limits<float>::quiet_NaN();
  struct Case {
    float value;
    const char* text;
  };
  const Case cases[] = {
      {250.4f, "250"},   {12345.0f, "1.2e+04"}, {9998.6f, "9999"}, {9999.0f, "1e+04"},
      {3.14159f, "3.1"}, {-0.004f, "-0.004"},   {kNaN, "nan"},
  };
  for (const Case& c : cases) EXPECT_EQ(legendLabel(c.value), c.text) << c.value;
}

TEST(LegendScale, TwentyTwoEntriesLabelledEveryThird) {
  const LegendScale scale =
      legendScale({0.0f, 2100.0f}, ColorFunction::Linear, 2.0f, ColorMap::Gray, {});
  ASSERT_EQ(scale.labels.size(), 22u);
  ASSERT_EQ(scale.colors.size(), 22u);
  // Gray at the samples themselves (0.1 + 0.9 t), drawn at 0.9 opacity.
  EXPECT_NEAR(scale.colors[7].r, 0.4f, 1e-6f);
  EXPECT_EQ(scale.colors[7].a, 0.9f);
  EXPECT_EQ(scale.labels[0], "0");
  EXPECT_EQ(scale.labels[1], "");
  EXPECT_EQ(scale.labels[3], "300");
  EXPECT_EQ(scale.labels[20], "");
  EXPECT_EQ(scale.labels[21], "2100");
}

TEST(LegendScale, LabelsComeFromTheInverseFunction) {
  const ScalarLimits limits{5.0f, 105.0f};
  const LegendScale log = legendScale(limits, ColorFunction::Logarithmic, 2.0f, ColorMap::Jet, {});
  // e^0 = 1 and e^1 = e: the bottom reads min + range, the top min + e range.
  EXPECT_EQ(log.labels.front(), "105");
  EXPECT_EQ(log.labels.back(), "277");
  const LegendScale exponential =
      legendScale(limits, ColorFunction::Exponential, 2.0f, ColorMap::Jet, {});
  EXPECT_EQ(exponential.labels.front(), "5");   // "%.2g" drops the zeros
  EXPECT_EQ(exponential.labels.back(), "105");  // 5 + 0.99527 * 100
  const LegendScale power = legendScale(limits, ColorFunction::Power, 2.0f, ColorMap::Jet, {});
  EXPECT_EQ(power.labels[3], "43");  // 5 + sqrt(3/21) * 100 = 42.8
  // All values equal: every label is that value.
  const LegendScale flat =
      legendScale({42.0f, 42.0f}, ColorFunction::Exponential, 2.0f, ColorMap::Jet, {});
  for (std::size_t i = 0; i < 22; i += 3) EXPECT_EQ(flat.labels[i], "42");
}
