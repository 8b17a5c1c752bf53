#include "app/constantsliders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "app/VXLController.h"

namespace {

using app::LayoutConstant;
using L = LayoutConstant;

const std::vector<LayoutConstant> kAll = {L::Attraction, L::Repulsive, L::Viscosity,
                                          L::Gravitational, L::PreferredDistance};

TEST(ConstantSliders, DefaultsAndHandComputedPositions) {
  struct Case {
    LayoutConstant constant;
    double position;
    double value;
  };
  const std::vector<Case> cases = {
      // The defaults: the three logarithmic constants at 0, gravitation at 1.
      {L::Attraction, 0, 0.001},
      {L::Repulsive, 0, 10.0},
      {L::Viscosity, 0, 0.05},
      {L::Gravitational, 1, 0.001},
      {L::PreferredDistance, 0, 0},
      {L::Attraction, 100, 0.01},  // one decade up
      {L::Attraction, -250, 0.001 / 316.2277660168379},
      {L::Repulsive, -100, 1.0},                // one decade down
      {L::Viscosity, 50, 0.15811388300841897},  // 0.05 * sqrt(10)
      {L::Viscosity, 130.10299956639813, 1.0},  // 100 log10(20)
      {L::Gravitational, 25, 0.025},
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
  EXPECT_EQ(app::constantFieldText(0.001f), "0.001");
  EXPECT_EQ(app::constantFieldText(10.0f), "10");
  EXPECT_EQ(app::constantFieldText(0.15811388f), "0.158");
  EXPECT_EQ(app::constantFieldText(12345.0), "1.23e+04");

  struct Case {
    const char* text;
    std::optional<float> value;
  };
  const std::vector<Case> cases = {
      {" 2.5\t", 2.5f}, {"1e-3", 0.001f}, {"+3", 3.0f}, {"-0.25", -0.25f}, {".5", 0.5f},
      {"", {}},         {"  ", {}},       {"abc", {}},  {"1.5x", {}},      {"1 2", {}},
      {"nan", {}},      {"inf", {}},      {"1e39", {}},  // beyond float
  };
  for (const Case& c : cases) EXPECT_EQ(app::parseNumberField(c.text), c.value) << c.text;
}

TEST(ConstantSliders, EachConstantReachesItsOwnSetting) {
  const auto controller = VXLController::init();
  const auto& view = *controller->networkView();
  float value = 1.25f;
  for (LayoutConstant constant : kAll) app::setLayoutConstant(*controller, constant, value += 1);
  EXPECT_EQ((std::vector<float>{view.attractionConstant(), view.repulsiveConstant(),
                                view.viscosityConstant(), view.gravitationalConstant(),
                                view.preferredDistance()}),
            (std::vector<float>{2.25f, 3.25f, 4.25f, 5.25f, 6.25f}));
  value = 1.25f;
  for (LayoutConstant constant : kAll) {
    EXPECT_EQ(app::layoutConstant(*controller, constant), value += 1);
  }
}

TEST(LinearSlider, StepsCoverTheBoundsWithExactEnds) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(app::linearSliderStep(5, 0, 10, 1000), 500);
  EXPECT_EQ(app::linearSliderStep(2.5, 1, 4, 1000), 500);
  EXPECT_EQ(app::linearSliderStep(-3, 0, 10, 1000), 0);      // clamped
  EXPECT_EQ(app::linearSliderStep(30, 0, 10, 1000), 1000);   // clamped
  EXPECT_EQ(app::linearSliderStep(0.00051, 0, 1, 1000), 1);  // rounded
  for (auto [lower, upper] : {std::pair{3.0, 3.0}, {inf, 0.0}, {5.0, 1.0}}) {
    EXPECT_EQ(app::linearSliderStep(3, lower, upper, 1000), 0);
  }
  EXPECT_EQ(app::linearSliderStep(std::nan(""), 0, 1, 1000), 0);

  EXPECT_EQ(app::linearSliderValue(250, -1, 3, 1000), 0.0f);
  EXPECT_EQ(app::linearSliderValue(0, 0.1, 0.7, 1000), 0.1f);
  EXPECT_EQ(app::linearSliderValue(1000, 0.1, 0.7, 1000), 0.7f);
  EXPECT_EQ(app::linearSliderValue(1200, 0.1, 0.7, 1000), 0.7f);
  EXPECT_EQ(app::linearSliderValue(700, 4, 4, 1000), 4.0f);
}

}  // namespace
