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
#include "colour/legendscale.h"
#include "colour/transforms.h"
#include "render/VXLLegends.h"

namespace {

using Panel = VXLController::Panel;
using C = VXLController;
using testing_support::vectorsOf;

// A star: vertex 0 joined to each of `leaves` others (degrees leaves and 1),
// plus `isolated` vertices without edges, with a numeric "Weight" property.
std::shared_ptr<QLONetwork> star(std::uint64_t leaves, std::uint64_t isolated = 0) {
  NetworkData data;
  data.verticesCount = 1 + leaves + isolated;
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
  const auto colours = colour::colorsFromNormalizedVector(t.data(), t.size(), "Jet", {});
  std::vector<std::array<double, 3>> out;
  for (std::uint64_t i = 0; i < colours->count(); ++i) out.push_back(colours->vectorAtIndex(i));
  return out;
}

TEST(ControllerColour, DegreesShowJetOfExponentialAndAContinuousLegend) {
  for (const auto leaves : {std::uint64_t{40}, std::uint64_t{0}}) {  // no edges: all NaN, red
    Fixture f(star(leaves, leaves ? 0 : 5));
    SCOPED_TRACE(leaves);
    EXPECT_EQ(f.controller->selectedColorProperty(), "Node Degree");
    EXPECT_EQ(f.controller->selectedColorFunction(), "Exponential");
    EXPECT_EQ(f.controller->selectedColorMap(), "Jet");
    std::vector<float> degrees(leaves ? 41 : 6, leaves ? 1.0f : 0.0f);
    degrees[0] = static_cast<float>(leaves);
    const auto shown = f.view().colors();
    ASSERT_TRUE(shown);
    EXPECT_EQ(vectorsOf(*shown), jetOfExponential(degrees));
    EXPECT_EQ(f.storedColour(), shown);
    EXPECT_FALSE(f.view().hideSpecialVertices());

    const auto legend = f.view().legends();
    ASSERT_TRUE(legend);
    EXPECT_TRUE(legend->continuous());
    EXPECT_EQ(legend->title(), "");
    const colour::LegendScale want =
        colour::legendScale({leaves ? 1.0f : 0.0f, degrees[0]}, colour::ColorFunction::Exponential,
                            2.0f, colour::ColorMap::Jet, {});
    EXPECT_EQ(legend->labels(), want.labels);
    EXPECT_EQ(legend->colors(), want.colors);
    EXPECT_EQ(legend->labels().front(), leaves ? "1" : "0");
    EXPECT_EQ(legend->labels().back(), leaves ? "40" : "0");
  }
}

TEST(ControllerColour, NoneRemovesColoursAndLegendButKeepsTheStoredColor) {
  Fixture f;
  const auto before = f.storedColour();
  ASSERT_TRUE(before);
  f.view().setAlphaChannel(QLONumberArray::floatArrayWithScalar(0.5f, 41));
  f.view().setHideSpecialVertices(true);
  f.controller->selectColorProperty("None");
  EXPECT_EQ(f.controller->selectedColorProperty(), "None");
  EXPECT_FALSE(f.view().colors());
  EXPECT_FALSE(f.view().legends());
  EXPECT_FALSE(f.view().alphaChannel());
  EXPECT_FALSE(f.view().hideSpecialVertices());
  EXPECT_EQ(f.storedColour(), before);
  EXPECT_FALSE(f.controller->colorsForProperty("NONE", "Linear"));
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
  f.controller->addColorProperty(weights(3), "Ranking");
  f.controller->addColorProperty(QLONumberArray::floatArrayWithScalar(1, 40), "Short");  // refused
  f.controller->addColorProperty(QLOVector3dArray::initWithSize(41, Precision::Float), "Color");
  f.controller->addColorProperty(weights(4), "Position");  // the layout is the network's

  const std::vector<std::string> names = f.controller->colorPropertyNames();
  EXPECT_EQ(std::count(names.begin(), names.end(), "Weight-2"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), "Short"), 0);
  EXPECT_EQ(
      std::get<std::shared_ptr<QLONumberArray>>(f.controller->colorPropertyWithName("Weight-2")),
      second);
  // The network's own property wins over a colour property of the name.
  EXPECT_NE(
      std::get<std::shared_ptr<QLONumberArray>>(f.controller->colorPropertyWithName("Weight")),
      first);

  // "Color", "Position" and "Name" are never offered; "None" comes first.
  const std::vector<std::string> expected = {
      "None", "Node Degree", "Node InDegree", "Position-2", "Ranking", "Weight", "Weight-2"};
  EXPECT_EQ(f.controller->colorPropertyTitles(), expected);
  std::vector<std::string> keys = f.controller->colorPropertyKeys();
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
  EXPECT_EQ(keys, (std::vector<std::string>{"Node Degree", "Node InDegree", "None", "Position-2",
                                            "Ranking", "Weight", "Weight-2"}));

  f.controller->removeColorPropertyWithName("Ranking");
  EXPECT_TRUE(
      std::holds_alternative<std::monostate>(f.controller->colorPropertyWithName("Ranking")));
}

TEST(ControllerColour, UnofferedNamesKeepTheSelectionAndStillRecolour) {
  Fixture f;
  f.controller->selectColorProperty("Weight");
  const auto weightColours = f.view().colors();
  for (const char* name : {"Color", "Position", "Name", "no such property"}) {
    f.view().setColors(nullptr);
    const int before = f.refreshes[Panel::Colour];
    f.controller->selectColorProperty(name);
    EXPECT_EQ(f.controller->selectedColorProperty(), "Weight") << name;
    EXPECT_EQ(f.refreshes[Panel::Colour], before + 1) << name;
    const auto again = f.view().colors();
    ASSERT_TRUE(again) << name;
    for (std::uint64_t i = 0; i < 41; ++i) {
      EXPECT_EQ(again->vectorAtIndex(i), weightColours->vectorAtIndex(i)) << name << i;
    }
  }
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
      {"same inversion", [](C& c) { c.setInvertColorMap(false); }, false},
      {"inversion", [](C& c) { c.setInvertColorMap(true); }, true},
      {"same custom", [orange](C& c) { c.setColorCustom1(orange); }, false},
      {"custom", [red](C& c) { c.setColorCustom2(red); }, true},
      {"wells", [=](C& c) { c.colorGradientChanged(black, orange, white); }, true},
      {"function", [](C& c) { c.selectColorFunction("Linear"); }, true},
      {"map", [](C& c) { c.selectColorMap("Hot"); }, true},
      {"limit", [](C& c) { c.setMaxColorScalarValue(10); }, false},
      {"no limit", [](C& c) { c.resetMaxColorScalarValue(); }, false},
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
  f.controller->resetMinColorScalarValue();
  f.controller->resetMaxColorScalarValue();
  EXPECT_EQ(f.controller->minColorScalarValue(), C::kUnsetBound);

  // "Cubehelix" and unknown maps colour black, legend included.
  for (const char* map : {"Cubehelix", "Rainbow"}) {
    f.controller->selectColorMap(map);
    for (std::uint64_t i : {0u, 1u}) {
      EXPECT_EQ(f.view().colors()->vectorAtIndex(i), (std::array<double, 3>{0, 0, 0})) << map;
    }
    EXPECT_EQ(f.view().legends()->colors()[5], (colour::Rgba{0, 0, 0, 0.9f})) << map;
  }
  f.controller->resetToDefaults();
  EXPECT_EQ(f.controller->selectedColorMap(), "Jet");
  EXPECT_EQ(f.controller->selectedColorFunction(), "Exponential");
}

TEST(ControllerColour, ColourPropertiesAreShownAsFloatCopiesWithoutALegend) {
  Fixture f;
  auto doubles = QLOVector3dArray::initWithSize(43, Precision::Double);  // longer is accepted
  for (std::uint64_t i = 0; i < 43; ++i)
    doubles->setVector({0.1, 1.0 / 3.0, static_cast<double>(i) / 64.0}, i);
  f.controller->addColorProperty(doubles, "Palette");
  f.controller->selectColorProperty("Palette");
  const auto shown = f.view().colors();
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->precision(), Precision::Float);
  ASSERT_EQ(shown->count(), 41u);
  EXPECT_EQ(shown->vectorAtIndex(40),
            (std::array<double, 3>{0.1f, static_cast<float>(1.0 / 3.0), 40 / 64.0}));
  EXPECT_FALSE(f.view().legends());
  EXPECT_EQ(f.storedColour(), shown);
}

TEST(ControllerColour, ColoursForAnExportUseTheFunctionGivenAndLeaveTheViewAlone) {
  Fixture f;
  f.controller->selectColorProperty("Weight");
  const auto shown = f.view().colors();
  const auto legend = f.view().legends();
  const auto linear = f.controller->colorsForProperty("Weight", "Linear");
  ASSERT_TRUE(linear);
  EXPECT_EQ(f.view().colors(), shown);
  EXPECT_EQ(f.view().legends(), legend);
  f.controller->selectColorFunction("Linear");
  ASSERT_EQ(linear->count(), 41u);
  for (std::uint64_t i : {0u, 10u, 40u}) {
    EXPECT_EQ(linear->vectorAtIndex(i), f.view().colors()->vectorAtIndex(i));
  }
  EXPECT_NE(linear->vectorAtIndex(10), shown->vectorAtIndex(10));
}

TEST(ControllerColour, TheLimitSwitchRemembersItsValueAndLogsIt) {
  Fixture f;
  struct Step {
    C::LimitSwitch limit;
    std::int64_t field;
    C::HideSwitch hide;
    std::int64_t limitAfter;
    bool hideAfter;
    const char* log;
  };
  using L = C::LimitSwitch;
  using H = C::HideSwitch;
  const std::vector<Step> steps = {
      {L::On, 0, H::Off, 8, false, "SIM? 1 newvalue:0"},    // below 1: eight
      {L::On, 3, H::On, 3, true, "SIM? 1 newvalue:3"},      //
      {L::Off, 5, H::On, -3, true, "SIM? 0 newvalue:5"},    // kept, negated
      {L::Off, 5, H::Off, -3, false, "SIM? 0 newvalue:5"},  // stays negated
      {L::On, 3, H::Off, 3, false, "SIM? 1 newvalue:3"},    // the field's value again
  };
  for (const Step& step : steps) {
    testing::internal::CaptureStderr();
    f.controller->changeColorProperties(step.limit, step.field, step.hide);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find(step.log), std::string::npos) << log;
    EXPECT_EQ(f.controller->indexedColorLimit(), step.limitAfter) << step.log;
    EXPECT_EQ(f.controller->hideNonIndexItems(), step.hideAfter) << step.log;
  }
}

TEST(ControllerColour, SortTitlesFollowTheNetworkAndKeepTheirSelection) {
  Fixture f;
  EXPECT_EQ(f.controller->sortPropertyTitles(),
            (std::vector<std::string>{"Frequency", "Alphabetical", "Node Degree", "Weight"}));
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Frequency");
  f.controller->changeSortProperty("Weight");
  f.controller->changeSortProperty("Node Strength");  // not offered: kept
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Weight");
  f.controller->changeSortOrder(C::SortOrder::Ascending);
  f.controller->changeSortModel(C::SortMode::Average);
  EXPECT_TRUE(f.controller->isSortAscending());
  EXPECT_TRUE(f.controller->isSortModeAverage());
  f.controller->setNetwork(star(3));  // still offers "Weight"
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Weight");
  NetworkData bare;
  bare.verticesCount = 2;
  f.controller->setNetwork(QLONetwork::make(std::move(bare)));
  EXPECT_EQ(f.controller->sortPropertyTitle(), "Frequency");
}

}  // namespace
