#include "app/VXLController.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

using Panel = VXLController::Panel;
using C = VXLController;
using V = VXLNetworkView;

// A network of `vertices` vertices with the given edges.
std::shared_ptr<QLONetwork> makeNetwork(std::uint64_t vertices,
                                        std::vector<std::pair<std::uint64_t, std::uint64_t>> edges,
                                        bool directed = false, bool weighted = false) {
  NetworkData data;
  data.verticesCount = vertices;
  for (const auto& [a, b] : edges) {
    data.from.push_back(a);
    data.to.push_back(b);
    if (weighted) data.weights.push_back(static_cast<float>(a + b + 1));
  }
  data.directed = directed;
  data.edgeWeighted = weighted;
  auto network = QLONetwork::make(std::move(data));
  EXPECT_TRUE(network);
  return network;
}

// Two components: a path of four vertices and a single edge.
std::shared_ptr<QLONetwork> twoComponents(bool directed = false, bool weighted = false) {
  return makeNetwork(6, {{0, 1}, {1, 2}, {2, 3}, {4, 5}}, directed, weighted);
}

// A controller whose refreshes are counted per panel, generating small
// networks so that resets stay quick.
struct Counted {
  VXLController::Ptr controller = VXLController::init();
  std::map<Panel, int> refreshes;
  Counted() {
    controller->generator().verticesText = "60";
    controller->setRefreshListener([this](Panel panel) { ++refreshes[panel]; });
  }
  VXLNetworkView& view() const { return *controller->networkView(); }
};

// A controller setting, the view property it forwards to and, when a reset
// restores it, the default.
template <class T>
struct Setting {
  const char* name;
  void (C::*set)(T);
  T (C::*get)() const;
  T (V::*viewGet)() const;
  std::optional<T> standard;
};
#define SAME(Name, name, standard) \
  { #name, &C::set##Name, &C::name, &V::name, standard }

// Sets each value through the controller and reads it back from both sides,
// then moves every setting a reset restores off its default (to 0, or 1 when
// the default is 0). Answers how many properties refreshes the values made.
template <class T>
int exercise(Counted& c, const std::vector<Setting<T>>& rows, const std::vector<T>& values) {
  const int before = c.refreshes[Panel::Properties];
  for (const auto& row : rows) {
    for (T value : values) {
      ((*c.controller).*row.set)(value);
      EXPECT_EQ((c.view().*row.viewGet)(), value) << row.name;
      EXPECT_EQ(((*c.controller).*row.get)(), value) << row.name;
    }
  }
  const int made = c.refreshes[Panel::Properties] - before;
  for (const auto& row : rows) {
    if (row.standard) ((*c.controller).*row.set)(*row.standard ? T{} : T{1});
  }
  return made;
}

template <class T>
void expectDefaults(const Counted& c, const std::vector<Setting<T>>& rows) {
  for (const auto& row : rows) {
    if (row.standard) {
      EXPECT_EQ((c.view().*row.viewGet)(), *row.standard) << row.name;
    }
  }
}

TEST(ControllerSettings, SettersReachTheViewAndResetRestoresDefaultsAndANetwork) {
  const std::vector<Setting<float>> floats = {
      SAME(AttractionConstant, attractionConstant, 0.001f),
      SAME(RepulsiveConstant, repulsiveConstant, 10),
      SAME(ViscosityConstant, viscosityConstant, 0.05f),
      SAME(GravitationalConstant, gravitationalConstant, 0.001f),
      SAME(PreferredDistance, preferredDistance, 0),
      SAME(EdgesIntensity, edgesIntensity, 0.6f),
      SAME(VerticesIntensity, verticesIntensity, 1),
      SAME(WeightMaxThreshold, weightMaxThreshold, {}),
      SAME(WeightMinThreshold, weightMinThreshold, {}),
      SAME(MinFilterProperty, minFilterProperty, {}),
      SAME(MaxFilterProperty, maxFilterProperty, {}),
      SAME(NearClipDistance, nearClipDistance, {}),
      SAME(FarClipDistance, farClipDistance, {}),
      {"lineWidth", &C::setViewLineWidth, &C::viewLineWidth, &V::lineWidth, {}},
      {"legendSize", &C::setViewLegendSize, &C::viewLegendSize, &V::legendsHeight, {}},
  };
  const std::vector<Setting<bool>> switches = {
      SAME(ShowNodes, showNodes, true),
      SAME(ShowEdges, showEdges, true),
      SAME(BlendLines, blendLines, false),
      SAME(EdgesDepthTest, edgesDepthTest, false),
      SAME(VerticesDepthTest, verticesDepthTest, true),
      SAME(ShowLegends, showLegends, true),
      SAME(LimitNodes, limitNodes, true),
      SAME(LimitEdges, limitEdges, true),
      SAME(SimpleShapes, simpleShapes, false),
      SAME(BlackBackground, blackBackground, false),
      SAME(Shader, shader, false),
      SAME(GeneralInfo, generalInfo, true),
      SAME(WeightAsDistance, weightAsDistance, false),
      SAME(VertexInfo, vertexInfo, true),
  };
  const std::vector<Setting<std::uint64_t>> counts = {SAME(Iterations, iterations, 1u)};
  Counted c;
  // Values no default equals, then back, so a setter writing the wrong
  // property or nothing is seen.
  EXPECT_EQ(exercise(c, floats, {3.5f, 0.25f}), static_cast<int>(2 * floats.size()));
  EXPECT_EQ(exercise(c, switches, {true, false, true}), static_cast<int>(3 * switches.size()));
  EXPECT_EQ(exercise(c, counts, {std::uint64_t{7}, std::uint64_t{2}}), 2);
  c.controller->setPowerCoefficient(7);
  c.controller->changeSortOrder(C::SortOrder::Ascending);
  c.controller->changeSortModel(C::SortMode::Average);
  c.controller->setMinColorScalarValue(1);
  c.controller->setMaxColorScalarValue(1);
  c.refreshes.clear();

  c.controller->resetToDefaults();
  expectDefaults(c, floats);
  expectDefaults(c, switches);
  expectDefaults(c, counts);
  EXPECT_EQ(c.controller->powerCoefficient(), 2.0f);
  EXPECT_FALSE(c.controller->isSortAscending());
  EXPECT_FALSE(c.controller->isSortModeAverage());
  EXPECT_EQ(c.controller->minColorScalarValue(), FLT_MAX);
  EXPECT_EQ(c.controller->maxColorScalarValue(), FLT_MAX);

  // A generated network, with the filter fitted to its degrees and the
  // thresholds to the view's (1, 0) of an unweighted network.
  const auto network = c.controller->network();
  ASSERT_TRUE(network);
  EXPECT_EQ(c.controller->networkName(), "Random(60,0)");
  const auto degrees = network->calcDegrees();
  std::vector<double> values(degrees->count());
  for (std::uint64_t i = 0; i < degrees->count(); ++i) values[i] = degrees->doubleValueAtIndex(i);
  const auto [smallest, largest] = std::minmax_element(values.begin(), values.end());
  ASSERT_LT(*smallest, *largest);
  EXPECT_EQ(c.view().minFilterProperty(), static_cast<float>(*smallest));
  EXPECT_EQ(c.view().maxFilterProperty(), static_cast<float>(*largest));
  const auto [maxWeight, minWeight] = c.view().maxMinWeight();
  EXPECT_EQ(c.controller->weightMaxThreshold(), static_cast<float>(maxWeight));
  EXPECT_EQ(c.controller->weightMinThreshold(), static_cast<float>(minWeight));

  // Installation refreshes the panels once and the reset once more. Each
  // colour refresh also reloads the vertices table, installation then selects
  // "Node Degree" for colouring, and the properties panel also follows the
  // two thresholds.
  const std::map<Panel, int> expected = {{Panel::NetworkInfo, 2},
                                         {Panel::Nodes, 4},
                                         {Panel::Colour, 3},
                                         {Panel::NodesSelected, 2},
                                         {Panel::Properties, 4}};
  EXPECT_EQ(c.refreshes, expected);
}

TEST(ControllerSettings, CameraInfoSetterLeavesTheViewAloneButResetClearsIt) {
  Counted c;
  c.view().setCameraInfo(true);
  c.controller->setCameraInfo(false);
  EXPECT_TRUE(c.view().cameraInfo());
  EXPECT_TRUE(c.controller->cameraInfo());  // the getter reads the view
  c.controller->resetToDefaults();
  EXPECT_FALSE(c.view().cameraInfo());
}

TEST(ControllerGenerator, NamesUseTheAverageDegreeOfTheNetworkShownBefore) {
  struct Case {
    std::uint64_t edgesBefore;  // edges of the network shown before (between 2 vertices)
    int tag;
    const char* vertices;
    const char* degree;
    const char* expected;
  };
  const std::vector<Case> cases = {
      {5, 0, "7", "2", "Random(7,1.43)"},          // 10 / 7, three significant digits
      {1, 1, "3", "2", "Barabasi(3,0.667)"},       // the Barabasi form
      {2000, 0, "1", "0", "Random(1,4e+03)"},      // %g switches to an exponent
      {3, 1, "12abc", "2.9", "Barabasi(12,0.5)"},  // a field's leading number
  };
  for (const Case& item : cases) {
    Counted c;
    c.controller->setNetwork(makeNetwork(
        2, std::vector<std::pair<std::uint64_t, std::uint64_t>>(item.edgesBefore, {0, 1})));
    c.controller->generateNetworkChangeType(item.tag);
    c.controller->generator().verticesText = item.vertices;
    c.controller->generator().degreeText = item.degree;
    c.controller->generateNetwork();
    EXPECT_EQ(c.controller->networkName(), item.expected);
    ASSERT_TRUE(c.controller->network());
    EXPECT_EQ(c.controller->network()->countVertices(),
              static_cast<std::uint64_t>(std::atoi(item.vertices)));
  }
}

TEST(ControllerGenerator, TypeChangeRelabelsOnlyForKnownTypes) {
  Counted c;
  VXLController::Generator& g = c.controller->generator();
  c.controller->generateNetworkChangeType(1);
  EXPECT_EQ(g.degreeLabel, "A.Degree:");
  c.controller->generateNetworkChangeType(7);
  EXPECT_EQ(g.typeTag, 1);
  EXPECT_EQ(g.degreeLabel, "A.Degree:");
  c.controller->generateNetworkChangeType(0);
  EXPECT_EQ(g.degreeLabel, "Degree:");
  EXPECT_EQ(g.verticesLabel, "Vertices:");
  EXPECT_TRUE(g.parameterLabelsVisible);
  EXPECT_FALSE(g.extraControlsVisible);
  EXPECT_EQ(c.refreshes[Panel::Generator], 2);

  // An unknown type makes no network and leaves the name alone.
  g.typeTag = 5;
  c.controller->generateNetwork();
  EXPECT_FALSE(c.controller->network());
  EXPECT_EQ(c.controller->networkName(), "");
}

TEST(ControllerPositions, AbsentOrForeignPositionGivesARandomLayoutStoredAsPosition) {
  for (bool foreign : {false, true}) {
    Counted c;
    auto network = twoComponents();
    if (foreign) {
      network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(100.0f, 6), "Position");
    }
    c.controller->setNetwork(network);
    const auto shown = c.controller->positions();
    ASSERT_TRUE(shown);
    const auto stored = network->propertyForKey("Position");
    ASSERT_TRUE(std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(stored));
    const auto& position = std::get<std::shared_ptr<QLOVector3dArray>>(stored);
    bool spread = false;
    for (std::uint64_t i = 0; i < shown->count(); ++i) {
      const auto p = shown->vectorAtIndex(i);
      EXPECT_EQ(position->vectorAtIndex(i), p);
      for (double x : p) {
        EXPECT_LE(std::abs(x), 30.0);
        spread = spread || std::abs(x) > 1.0;
      }
    }
    EXPECT_TRUE(spread);
  }
}

TEST(ControllerPositions, DoublesBecomeAFloatCopyStoredBackFloatsAreKept) {
  for (bool installed : {true, false}) {  // with the network, or set afterwards
    Counted c;
    auto network = twoComponents();
    auto doubles = QLOVector3dArray::initWithSize(6, Precision::Double);
    for (std::uint64_t i = 0; i < 6; ++i) {
      doubles->setVector({0.1 * static_cast<double>(i), 1.0 / 3.0, -7.7}, i);
    }
    if (installed) network->setPropertiesOfVertices(doubles, "Position");
    c.controller->setNetwork(network);
    if (!installed) c.controller->setPositions(doubles);
    const auto stored = [&] {
      return std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position"));
    };
    EXPECT_EQ(stored()->precision(), Precision::Float);
    EXPECT_EQ(c.controller->positions(), stored());
    for (std::uint64_t i = 0; i < 6; ++i) {
      const auto want = doubles->vectorAtIndex(i);
      const auto got = stored()->vectorAtIndex(i);
      for (int a = 0; a < 3; ++a)
        EXPECT_EQ(got[a], static_cast<double>(static_cast<float>(want[a])));
    }
    auto floats = QLOVector3dArray::initWithSize(6, Precision::Float);
    c.controller->setPositions(floats);
    EXPECT_EQ(c.controller->positions(), floats);
    EXPECT_EQ(stored(), floats);
  }
}

TEST(ControllerInstall, ColourPropertiesDependOnHowTheNetworkIsInstalled) {
  enum class How { Whole, Major };
  struct Case {
    bool directed, weighted;
    How how;
    std::vector<std::string> expected;
  };
  const std::string D = "Node Degree", ID = "Node InDegree", S = "Node Strength",
                    IS = "Node InStrength";
  const std::vector<Case> cases = {
      {false, false, How::Whole, {D, ID}}, {false, false, How::Major, {D}},
      {true, false, How::Major, {D, ID}},  {false, true, How::Whole, {D, ID, S, IS}},
      {false, true, How::Major, {D, S}},   {true, true, How::Major, {D, ID, S, IS}},
  };
  for (const Case& item : cases) {
    Counted c;
    const auto network = twoComponents(item.directed, item.weighted);
    if (item.how == How::Whole) {
      c.controller->setNetwork(network);
      EXPECT_EQ(c.controller->network(), network);
    } else {
      c.controller->setMajorConnectedNetwork(network);
      EXPECT_EQ(c.controller->network()->countVertices(), 4u);
    }
    EXPECT_EQ(c.controller->colorPropertyNames(), item.expected)
        << item.directed << item.weighted << static_cast<int>(item.how);
    // Once each; the vertices table again with the colour interface, and the
    // colour panel again when "Node Degree" is selected.
    const std::map<Panel, int> expected = {{Panel::NetworkInfo, 1},
                                           {Panel::Nodes, 2},
                                           {Panel::Colour, 2},
                                           {Panel::NodesSelected, 1},
                                           {Panel::Properties, 1}};
    EXPECT_EQ(c.refreshes, expected);
  }
}

TEST(ControllerInstall, MeasuresComeFromTheComponentAndColourComesFirst) {
  Counted c;
  auto network = twoComponents();
  network->setPropertiesOfVertices(QLOVector3dArray::initWithSize(6, Precision::Float), "Color");
  c.controller->setNetwork(network);
  EXPECT_EQ(c.controller->colorPropertyNames().front(), "Color");

  c.controller->setMajorConnectedNetwork(twoComponents());
  const auto& [name, value] = c.controller->colorsDictionary().front();
  ASSERT_EQ(name, "Node Degree");
  EXPECT_EQ(propertyCount(value), 4u);
  // The path 0-1-2-3: two ends of degree 1.
  const auto& degrees = std::get<std::shared_ptr<QLONumberArray>>(value);
  EXPECT_EQ(degrees->doubleValueAtIndex(0) + degrees->doubleValueAtIndex(3), 2.0);
}

TEST(ControllerRegistry, FindsControllersByStandardFormUuidForTheLifeOfTheProcess) {
  EXPECT_FALSE(VXLController::controllerWithUUID("not-a-uuid"));
  EXPECT_FALSE(VXLController::controllerWithUUID(VXLController::UUIDString()));
  EXPECT_NE(VXLController::UUIDString(), VXLController::UUIDString());

  const auto first = VXLController::init();
  EXPECT_EQ(VXLController::sharedController(), first);
  const auto second = VXLController::init();
  EXPECT_EQ(VXLController::sharedController(), second);
  EXPECT_NE(first->uuid(), second->uuid());
  EXPECT_EQ(VXLController::controllerWithUUID(first->uuid()), first);
  const std::regex form(
      "[0-9a-fA-F]{8}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{12}");
  for (const std::string& uuid : {VXLController::UUIDString(), first->uuid()}) {
    EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
  }

  first->cleanup();
  EXPECT_TRUE(first->isClean());
  EXPECT_EQ(VXLController::controllerWithUUID(first->uuid()), first);
  EXPECT_EQ(VXLController::sharedController(), second);
  EXPECT_EQ(first->networkView()->controller(), first.get());
}

TEST(ControllerLifecycle, CleanupStopsTheLayoutOnce) {
  auto view = std::make_shared<VXLNetworkView>();
  const auto controller = VXLController::init(view);
  EXPECT_EQ(controller->networkView(), view);
  controller->setNetwork(twoComponents());
  view->start();
  ASSERT_TRUE(view->fAnimate());
  controller->cleanup();
  EXPECT_FALSE(view->fAnimate());
  view->start();
  controller->cleanup();  // a second cleanup does nothing
  EXPECT_TRUE(view->fAnimate());
}

TEST(ControllerSelection, SelectionCallsReachTheView) {
  Counted c;
  c.controller->setNetwork(twoComponents());
  c.controller->selectVertexWithIndex(2);
  c.controller->addToSelectionVertexWithIndex(4);
  c.controller->toggleSelectionOfVertexWithIndex(2);
  EXPECT_EQ(c.view().selectedIndices(), std::vector<std::uint64_t>{4});
  c.controller->setSelectedVertices({1, 5});
  c.controller->removeFromSelectionVertexWithIndex(5);
  EXPECT_EQ(c.view().selectedIndices(), std::vector<std::uint64_t>{1});
  c.controller->resetSelection();
  EXPECT_TRUE(c.view().selectedIndices().empty());
}

}  // namespace
