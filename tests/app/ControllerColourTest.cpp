// The controller's colouring: offered properties, selection, legend, recolouring.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "../support/networks.h"
#include "app/VXLController.h"
#include "colour/colormaps.h"
#include "colour/hexcolour.h"
#include "colour/transforms.h"
#include "render/VXLLegends.h"

namespace {

using Panel = VXLController::Panel;
using C = VXLController;
using testing_support::vectorsOf;

// A star: vertex 0 joined to each of `leaves` others (degrees leaves and 1),
// with a numeric "Weight" property.
std::shared_ptr<QLONetwork> star(std::uint64_t leaves) {
  NetworkData data;
  data.verticesCount = 1 + leaves;
  for (std::uint64_t k = 1; k <= leaves; ++k) {
    data.from.push_back(0);
    data.to.push_back(k);
  }
  std::vector<float> weight(data.verticesCount);
  for (std::size_t i = 0; i < weight.size(); ++i) weight[i] = static_cast<float>(i) * 0.5f;
  data.properties = {{"Weight", QLONumberArray::initWithFloats(weight)}};
  auto network = QLONetwork::make(std::move(data));
  EXPECT_TRUE(network);
  return network;
}

struct Fixture {
  VXLController::Ptr controller = VXLController::init();
  std::map<Panel, int> refreshes;
  explicit Fixture(std::shared_ptr<QLONetwork> network = star(40)) {
    controller->setRefreshListener([this](Panel panel) { ++refreshes[panel]; });
    controller->setNetwork(std::move(network));
  }
  VXLNetworkView& view() const { return *controller->networkView(); }
  std::shared_ptr<QLOVector3dArray> storedColour() const {
    const PropertyValue value = controller->network()->propertyForKey("Color");
    const auto* colours = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value);
    return colours ? *colours : nullptr;
  }
};

// The colour library's own "Exponential" then "Jet" (tested on its own) of
// `values`, as the view should show them.
std::vector<std::array<double, 3>> jetOfExponential(const std::vector<float>& values) {
  const auto t = colour::newVectorFromVectorWithTransformFunction(values.data(), values.size(),
                                                                  "Exponential", {});
  return vectorsOf(*colour::colorsFromNormalizedVector(t.data(), t.size(), "Jet", {}));
}

TEST(ControllerColour, DegreesShowJetOfExponentialAndAContinuousLegend) {
  Fixture f;
  EXPECT_EQ(f.controller->selectedColorProperty(), "Node Degree");
  std::vector<float> degrees(41, 1.0f);
  degrees[0] = 40.0f;
  const auto shown = f.view().colors();
  ASSERT_TRUE(shown);
  EXPECT_EQ(vectorsOf(*shown), jetOfExponential(degrees));
  EXPECT_EQ(f.storedColour(), shown);
  const auto legend = f.view().legends();
  ASSERT_TRUE(legend);
  EXPECT_TRUE(legend->continuous());
  EXPECT_EQ(legend->labels().front(), "1");
  EXPECT_EQ(legend->labels().back(), "40");
}

TEST(ControllerColour, NoneRemovesColoursAndLegendButKeepsTheStoredColor) {
  Fixture f;
  const auto before = f.storedColour();
  ASSERT_TRUE(before);
  f.view().setHideSpecialVertices(true);
  f.controller->selectColorProperty("None");
  EXPECT_FALSE(f.view().colors());
  EXPECT_FALSE(f.view().legends());
  EXPECT_FALSE(f.view().hideSpecialVertices());
  EXPECT_EQ(f.storedColour(), before);
}

TEST(ControllerColour, NamesOfAddedPropertiesAndWhatThePopUpOffers) {
  Fixture f;
  const auto weights = [](float scale) {
    std::vector<float> v(41);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = scale * static_cast<float>(i);
    return QLONumberArray::initWithFloats(v);
  };
  const auto first = weights(1), second = weights(2);
  f.controller->addColorProperty(first, "Weight");
  f.controller->addColorProperty(second, "Weight");  // replaces Weight-2
  f.controller->addColorProperty(QLONumberArray::floatArrayWithScalar(1, 40), "Short");  // refused
  f.controller->addColorProperty(QLOVector3dArray::initWithSize(41, Precision::Float), "Color");
  f.controller->addColorProperty(weights(4), "Position");  // the layout is the network's

  EXPECT_EQ(
      std::get<std::shared_ptr<QLONumberArray>>(f.controller->colorPropertyWithName("Weight-2")),
      second);
  // The network's own property wins over a colour property of the name.
  EXPECT_NE(
      std::get<std::shared_ptr<QLONumberArray>>(f.controller->colorPropertyWithName("Weight")),
      first);

  // "Color", "Position" and "Name" are never offered; "None" comes first.
  EXPECT_EQ(f.controller->colorPropertyTitles(),
            (std::vector<std::string>{"None", "Node Degree", "Node InDegree", "Position-2",
                                      "Weight", "Weight-2"}));
}

TEST(ControllerColour, UnofferedNamesKeepTheSelectionAndStillRecolour) {
  Fixture f;
  f.controller->selectColorProperty("Weight");
  const auto weightColours = f.view().colors();
  f.view().setColors(nullptr);
  f.controller->selectColorProperty("Color");
  EXPECT_EQ(f.controller->selectedColorProperty(), "Weight");
  ASSERT_TRUE(f.view().colors());
  EXPECT_EQ(vectorsOf(*f.view().colors()), vectorsOf(*weightColours));
}

TEST(ControllerColour, EverySettingRecoloursAtOnceButNotWhenUnchanged) {
  struct Change {
    const char* what;
    std::function<void(C&)> apply;
    bool recolours;
  };
  const colour::Rgba orange = colour::colorFromHexadecimalValue("#FF7F0E");
  const colour::Rgba red{1, 0, 0, 1}, black{0, 0, 0, 1}, white{1, 1, 1, 1};
  const std::vector<Change> changes = {
      {"same power", [](C& c) { c.setPowerCoefficient(2.0f); }, false},
      {"power", [](C& c) { c.setPowerCoefficient(3.0f); }, true},
      {"same custom", [orange](C& c) { c.setColorCustom1(orange); }, false},
      {"custom", [red](C& c) { c.setColorCustom2(red); }, true},
      {"wells", [=](C& c) { c.colorGradientChanged(black, orange, white); }, true},
      {"limit", [](C& c) { c.setMaxColorScalarValue(10); }, false},
      {"background", [](C& c) { c.setBlackBackground(true); }, true},
  };
  for (const Change& change : changes) {
    Fixture f;
    const auto before = f.view().colors();
    const int panel = f.refreshes[Panel::Colour];
    change.apply(*f.controller);
    EXPECT_EQ(f.view().colors() != before, change.recolours) << change.what;
    if (change.what != std::string("background")) {
      EXPECT_EQ(f.refreshes[Panel::Colour] - panel, change.recolours ? 1 : 0) << change.what;
    } else {
      EXPECT_EQ(f.view().legends()->textColor(), white);  // light on black
    }
  }
}

TEST(ControllerColour, MapsFunctionsLimitsAndInversionReachTheColours) {
  Fixture f;
  f.controller->selectColorFunction("Linear");
  f.controller->selectColorMap("Gray");
  // Linear over degrees 1..40: the hub is white, the leaves grey 0.1.
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(0)[0]), 1.0f);
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(1)[0]), 0.1f);
  f.controller->setInvertColorMap(true);
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(0)[0]), 0.1f);
  f.controller->setInvertColorMap(false);

  // A user limit narrower than the data is used at the next recolouring.
  f.controller->setMinColorScalarValue(0);
  f.controller->setMaxColorScalarValue(10);
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(1)[1]), 0.1f);
  f.controller->updateCurrentColor();
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(1)[1]), 0.19f);
  EXPECT_FLOAT_EQ(static_cast<float>(f.view().colors()->vectorAtIndex(0)[1]), 3.7f);  // t = 4
  EXPECT_EQ(f.view().legends()->labels().back(), "10");
}

TEST(ControllerColour, TheLimitSwitchRemembersItsValue) {
  Fixture f;
  struct Step {
    C::LimitSwitch limit;
    std::int64_t field;
    std::int64_t limitAfter;
  };
  using L = C::LimitSwitch;
  const std::vector<Step> steps = {
      {L::On, 0, 8},    // below 1: eight
      {L::On, 3, 3},    //
      {L::Off, 5, -3},  // kept, negated
      {L::Off, 5, -3},  // stays negated
      {L::On, 3, 3},    // the field's value again
  };
  for (const Step& step : steps) {
    f.controller->changeColorProperties(step.limit, step.field, C::HideSwitch::On);
    EXPECT_EQ(f.controller->indexedColorLimit(), step.limitAfter) << step.field;
  }
  EXPECT_TRUE(f.controller->hideNonIndexItems());
}

TEST(ControllerColour, SortTitlesFollowTheNetworkAndKeepTheirSelection) {
  Fixture f;
  EXPECT_EQ(f.controller->sortPropertyTitles(),
            (std::vector<std::string>{"Frequency", "Alphabetical", "Node Degree", "Weight"}));
  f.controller->changeSortProperty("Weight");
  f.controller->changeSortProperty("Node Strength");  // not offered: kept
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Weight");
  f.controller->setNetwork(star(3));  // still offers "Weight"
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Weight");
  NetworkData bare;
  bare.verticesCount = 2;
  f.controller->setNetwork(QLONetwork::make(std::move(bare)));
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Frequency");
}

}  // namespace
