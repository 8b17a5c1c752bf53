#include "app/constantsliders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

using app::LayoutConstant;
using L = LayoutConstant;

const std::vector<LayoutConstant> kAll = {L::Attraction, L::Repulsive, L::Viscosity,
                                          L::Gravitational, L::PreferredDistance};

TEST(ConstantSliders, HandComputedPositions) {
  struct Case {
    LayoutConstant constant;
    double position;
    double value;
  };
  const std::vector<Case> cases = {
      {L::Attraction, 100, 0.01},               // one decade up
      {L::Repulsive, -100, 1.0},                // one decade down
      {L::Viscosity, 50, 0.15811388300841897},  // 0.05 * sqrt(10)
      {L::PreferredDistance, 7.5, 7.5},
  };
  for (const Case& c : cases) {
    EXPECT_FLOAT_EQ(app::constantForSliderPosition(c.constant, c.position),
                    static_cast<float>(c.value))
        << c.position;
    EXPECT_NEAR(app::sliderPositionForConstant(c.constant, static_cast<float>(c.value)), c.position,
                1e-4);
  }
}

TEST(ConstantSliders, EverySliderPositionRoundTrips) {
  for (LayoutConstant constant : kAll) {
    const app::SliderRange range = app::sliderRange(constant);
    ASSERT_LT(range.minimum, range.maximum);
    for (int s = range.minimum; s <= range.maximum; ++s) {
      const float c = app::constantForSliderPosition(constant, s);
      ASSERT_EQ(std::lround(app::sliderPositionForConstant(constant, c)), s)
          << static_cast<int>(constant);
    }
  }
}

TEST(ConstantSliders, FieldTextAndParsing) {
  struct Case {
    const char* text;
    std::optional<float> value;
  };
  const std::vector<Case> cases = {
      {" 2.5\t", 2.5f}, {"", {}}, {"1.5x", {}}, {"nan", {}}, {"1e39", {}},  // beyond float
  };
  for (const Case& c : cases) EXPECT_EQ(app::parseNumberField(c.text), c.value) << c.text;
}

TEST(LinearSlider, StepsCoverTheBoundsWithExactEnds) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(app::linearSliderStep(2.5, 1, 4, 1000), 500);
  EXPECT_EQ(app::linearSliderStep(-3, 0, 10, 1000), 0);     // clamped
  EXPECT_EQ(app::linearSliderStep(30, 0, 10, 1000), 1000);  // clamped
  for (auto [lower, upper] : {std::pair{3.0, 3.0}, {inf, 0.0}, {5.0, 1.0}}) {
    EXPECT_EQ(app::linearSliderStep(3, lower, upper, 1000), 0);
  }
  EXPECT_EQ(app::linearSliderStep(std::nan(""), 0, 1, 1000), 0);

  EXPECT_EQ(app::linearSliderValue(250, -1, 3, 1000), 0.0f);
  EXPECT_EQ(app::linearSliderValue(1200, 0.1, 0.7, 1000), 0.7f);
  EXPECT_EQ(app::linearSliderValue(700, 4, 4, 1000), 4.0f);
}

}  // namespace
