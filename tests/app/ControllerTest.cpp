#include "app/VXLController.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace {

using Panel = VXLController::Panel;

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
  VXLNetworkView& view() { return *controller->networkView(); }
};

// A view setting, a value unlike its default, and the default.
template <class T>
struct ViewDefault {
  const char* name;
  void (VXLNetworkView::*set)(T);
  T (VXLNetworkView::*get)() const;
  T other, standard;
};

template <class T>
void disturb(VXLNetworkView& view, const std::vector<ViewDefault<T>>& cases) {
  for (const auto& c : cases) (view.*c.set)(c.other);
}

template <class T>
void expectDefaults(const VXLNetworkView& view, const std::vector<ViewDefault<T>>& cases) {
  for (const auto& c : cases) EXPECT_EQ((view.*c.get)(), c.standard) << c.name;
}

TEST(ControllerDefaults, ResetSendsEveryDefaultToTheView) {
  using V = VXLNetworkView;
  const std::vector<ViewDefault<float>> floats = {
      {"attraction", &V::setAttractionConstant, &V::attractionConstant, 5, 0.001f},
      {"repulsive", &V::setRepulsiveConstant, &V::repulsiveConstant, 5, 10},
      {"viscosity", &V::setViscosityConstant, &V::viscosityConstant, 5, 0.05f},
      {"gravitational", &V::setGravitationalConstant, &V::gravitationalConstant, 5, 0.001f},
      {"distance", &V::setPreferredDistance, &V::preferredDistance, 5, 0},
      {"edgesIntensity", &V::setEdgesIntensity, &V::edgesIntensity, 0.1f, 0.6f},
      {"verticesIntensity", &V::setVerticesIntensity, &V::verticesIntensity, 0.1f, 1},
  };
  const std::vector<ViewDefault<bool>> switches = {
      {"showNodes", &V::setShowNodes, &V::showNodes, false, true},
      {"showEdges", &V::setShowEdges, &V::showEdges, false, true},
      {"blendLines", &V::setBlendLines, &V::blendLines, true, false},
      {"edgesDepth", &V::setEdgesDepthTest, &V::edgesDepthTest, true, false},
      {"verticesDepth", &V::setVerticesDepthTest, &V::verticesDepthTest, false, true},
      {"showLegends", &V::setShowLegends, &V::showLegends, false, true},
      {"limitNodes", &V::setLimitNodes, &V::limitNodes, false, true},
      {"limitEdges", &V::setLimitEdges, &V::limitEdges, false, true},
      {"simpleShapes", &V::setSimpleShapes, &V::simpleShapes, true, false},
      {"black", &V::setBlackBackground, &V::blackBackground, true, false},
      {"shader", &V::setShader, &V::shader, true, false},
      {"generalInfo", &V::setGeneralInfo, &V::generalInfo, false, true},
      {"cameraInfo", &V::setCameraInfo, &V::cameraInfo, true, false},
      {"weightAsDistance", &V::setWeightAsDistance, &V::weightAsDistance, true, false},
      {"vertexInfo", &V::setVertexInfo, &V::vertexInfo, false, true},
  };
  Counted c;
  disturb(c.view(), floats);
  disturb(c.view(), switches);
  c.view().setIterations(9);
  c.controller->powerCoefficient = 7;
  c.controller->isSortAscending = c.controller->isSortModeAverage = true;
  c.controller->minColorScalarValue = c.controller->maxColorScalarValue = 1;

  c.controller->resetToDefaults();
  expectDefaults(c.view(), floats);
  expectDefaults(c.view(), switches);
  EXPECT_EQ(c.view().iterations(), 1u);
  EXPECT_EQ(c.controller->powerCoefficient, 2.0f);
  EXPECT_FALSE(c.controller->isSortAscending);
  EXPECT_FALSE(c.controller->isSortModeAverage);
  EXPECT_EQ(c.controller->minColorScalarValue, FLT_MAX);
  EXPECT_EQ(c.controller->maxColorScalarValue, FLT_MAX);
}

TEST(ControllerDefaults, ResetGeneratesANetworkAndFitsThresholdsAndFilterToIt) {
  Counted c;
  c.controller->resetToDefaults();
  const auto network = c.controller->network();
  ASSERT_TRUE(network);
  EXPECT_EQ(network->countVertices(), 60u);
  EXPECT_EQ(c.controller->networkName(), "Random(60,0)");

  const auto degrees = network->calcDegrees();
  std::vector<double> values(degrees->count());
  for (std::uint64_t i = 0; i < degrees->count(); ++i) values[i] = degrees->doubleValueAtIndex(i);
  const auto [smallest, largest] = std::minmax_element(values.begin(), values.end());
  EXPECT_EQ(c.view().minFilterProperty(), static_cast<float>(*smallest));
  EXPECT_EQ(c.view().maxFilterProperty(), static_cast<float>(*largest));
  ASSERT_LT(*smallest, *largest);  // a range that tells min and max apart

  // A random network is not weighted: the thresholds span the view's (1, 0).
  const auto [maxWeight, minWeight] = c.view().maxMinWeight();
  EXPECT_EQ(c.controller->weightMaxThreshold(), static_cast<float>(maxWeight));
  EXPECT_EQ(c.controller->weightMinThreshold(), static_cast<float>(minWeight));

  // Installation refreshes the five panels once, and the reset once more.
  for (Panel panel : {Panel::NetworkInfo, Panel::Nodes, Panel::Colour, Panel::NodesSelected}) {
    EXPECT_EQ(c.refreshes[panel], 2) << static_cast<int>(panel);
  }
  // The properties panel also follows the two thresholds.
  EXPECT_EQ(c.refreshes[Panel::Properties], 4);
}

// A controller setting and the view property it forwards to.
template <class T>
struct Forwarded {
  const char* name;
  void (VXLController::*set)(T);
  T (VXLController::*get)() const;
  T (VXLNetworkView::*viewGet)() const;
};

// Sets each value in turn through the controller; answers how many property
// refreshes that made.
template <class T>
int expectForwarded(Counted& c, const std::vector<Forwarded<T>>& cases,
                    const std::vector<T>& values) {
  const int before = c.refreshes[Panel::Properties];
  for (const auto& item : cases) {
    for (T value : values) {
      ((*c.controller).*item.set)(value);
      EXPECT_EQ((c.view().*item.viewGet)(), value) << item.name;
      EXPECT_EQ(((*c.controller).*item.get)(), value) << item.name;
    }
  }
  return c.refreshes[Panel::Properties] - before;
}

TEST(ControllerSettings, SettersReachTheViewAndRefreshThePropertiesPanel) {
  using C = VXLController;
  using V = VXLNetworkView;
  const std::vector<Forwarded<float>> floats = {
      {"attraction", &C::setAttractionConstant, &C::attractionConstant, &V::attractionConstant},
      {"repulsive", &C::setRepulsiveConstant, &C::repulsiveConstant, &V::repulsiveConstant},
      {"viscosity", &C::setViscosityConstant, &C::viscosityConstant, &V::viscosityConstant},
      {"gravitational", &C::setGravitationalConstant, &C::gravitationalConstant,
       &V::gravitationalConstant},
      {"distance", &C::setPreferredDistance, &C::preferredDistance, &V::preferredDistance},
      {"edgesIntensity", &C::setEdgesIntensity, &C::edgesIntensity, &V::edgesIntensity},
      {"verticesIntensity", &C::setVerticesIntensity, &C::verticesIntensity, &V::verticesIntensity},
      {"maxThreshold", &C::setWeightMaxThreshold, &C::weightMaxThreshold, &V::weightMaxThreshold},
      {"minThreshold", &C::setWeightMinThreshold, &C::weightMinThreshold, &V::weightMinThreshold},
      {"minFilter", &C::setMinFilterProperty, &C::minFilterProperty, &V::minFilterProperty},
      {"maxFilter", &C::setMaxFilterProperty, &C::maxFilterProperty, &V::maxFilterProperty},
      {"near", &C::setNearClipDistance, &C::nearClipDistance, &V::nearClipDistance},
      {"far", &C::setFarClipDistance, &C::farClipDistance, &V::farClipDistance},
      {"lineWidth", &C::setViewLineWidth, &C::viewLineWidth, &V::lineWidth},
      {"legendSize", &C::setViewLegendSize, &C::viewLegendSize, &V::legendsHeight},
  };
  const std::vector<Forwarded<bool>> switches = {
      {"showNodes", &C::setShowNodes, &C::showNodes, &V::showNodes},
      {"showEdges", &C::setShowEdges, &C::showEdges, &V::showEdges},
      {"blendLines", &C::setBlendLines, &C::blendLines, &V::blendLines},
      {"edgesDepth", &C::setEdgesDepthTest, &C::edgesDepthTest, &V::edgesDepthTest},
      {"verticesDepth", &C::setVerticesDepthTest, &C::verticesDepthTest, &V::verticesDepthTest},
      {"showLegends", &C::setShowLegends, &C::showLegends, &V::showLegends},
      {"limitNodes", &C::setLimitNodes, &C::limitNodes, &V::limitNodes},
      {"limitEdges", &C::setLimitEdges, &C::limitEdges, &V::limitEdges},
      {"simpleShapes", &C::setSimpleShapes, &C::simpleShapes, &V::simpleShapes},
      {"black", &C::setBlackBackground, &C::blackBackground, &V::blackBackground},
      {"shader", &C::setShader, &C::shader, &V::shader},
      {"generalInfo", &C::setGeneralInfo, &C::generalInfo, &V::generalInfo},
      {"weightAsDistance", &C::setWeightAsDistance, &C::weightAsDistance, &V::weightAsDistance},
      {"vertexInfo", &C::setVertexInfo, &C::vertexInfo, &V::vertexInfo},
  };
  const std::vector<Forwarded<std::uint64_t>> counts = {
      {"iterations", &C::setIterations, &C::iterations, &V::iterations}};
  Counted c;
  // Values no default equals, then back, so a setter writing the wrong
  // property or nothing is seen.
  EXPECT_EQ(expectForwarded(c, floats, {3.5f, 0.25f}), static_cast<int>(2 * floats.size()));
  EXPECT_EQ(expectForwarded(c, switches, {true, false, true}),
            static_cast<int>(3 * switches.size()));
  EXPECT_EQ(expectForwarded(c, counts, {std::uint64_t{7}, std::uint64_t{2}}), 2);
}

TEST(ControllerSettings, CameraInfoSetterLeavesTheViewAlone) {
  Counted c;
  for (bool shown : {true, false}) {
    c.view().setCameraInfo(shown);
    c.controller->setCameraInfo(!shown);
    EXPECT_EQ(c.view().cameraInfo(), shown);
    EXPECT_EQ(c.controller->cameraInfo(), shown);  // the getter reads the view
  }
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
      {6, 0, "4", "1.5", "Random(4,3)"},           // no trailing zeros
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

TEST(ControllerGenerator, FirstNetworkHasDegreeZeroAndTheSecondTheFirstsDegree) {
  for (int tag : {0, 1}) {
    Counted c;
    c.controller->generateNetworkChangeType(tag);
    c.controller->generator().verticesText = "80";
    c.controller->generator().degreeText = "4";
    c.controller->generateNetwork();
    const std::string prefix = tag == 0 ? "Random" : "Barabasi";
    EXPECT_EQ(c.controller->networkName(), prefix + "(80,0)");
    const auto first = c.controller->network();
    ASSERT_GT(first->countEdges(), 0u);

    c.controller->generateNetwork();
    EXPECT_NE(c.controller->network(), first);
    char expected[64];
    std::snprintf(expected, sizeof expected, "(80,%0.3g)",
                  static_cast<double>(2.0f * static_cast<float>(first->countEdges()) / 80.0f));
    EXPECT_EQ(c.controller->networkName(), prefix + expected);
  }
}

TEST(ControllerGenerator, TypeChangeRelabelsOnlyForKnownTypes) {
  Counted c;
  VXLController::Generator& g = c.controller->generator();
  c.controller->generateNetworkChangeType(1);
  EXPECT_EQ(g.typeTag, 1);
  EXPECT_EQ(g.verticesLabel, "Vertices:");
  EXPECT_EQ(g.degreeLabel, "A.Degree:");
  c.controller->generateNetworkChangeType(7);
  EXPECT_EQ(g.typeTag, 1);
  EXPECT_EQ(g.degreeLabel, "A.Degree:");
  c.controller->generateNetworkChangeType(0);
  EXPECT_EQ(g.degreeLabel, "Degree:");
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

TEST(ControllerPositions, DoublePositionsBecomeAFloatCopyStoredBack) {
  Counted c;
  auto network = twoComponents();
  auto doubles = QLOVector3dArray::initWithSize(6, Precision::Double);
  for (std::uint64_t i = 0; i < 6; ++i) {
    doubles->setVector({0.1 * static_cast<double>(i), 1.0 / 3.0, -7.7}, i);
  }
  network->setPropertiesOfVertices(doubles, "Position");
  c.controller->setNetwork(network);

  const auto stored =
      std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position"));
  EXPECT_NE(stored, doubles);
  EXPECT_EQ(stored->precision(), Precision::Float);
  EXPECT_EQ(c.controller->positions(), stored);
  for (std::uint64_t i = 0; i < 6; ++i) {
    const auto want = doubles->vectorAtIndex(i);
    const auto got = stored->vectorAtIndex(i);
    for (int a = 0; a < 3; ++a) EXPECT_EQ(got[a], static_cast<double>(static_cast<float>(want[a])));
  }
}

TEST(ControllerPositions, SetPositionsMirrorsTheLayoutInThePositionProperty) {
  Counted c;
  auto network = twoComponents();
  c.controller->setNetwork(network);
  auto doubles = QLOVector3dArray::initWithSize(6, Precision::Double);
  doubles->setVector({0.1, 0.2, 0.3}, 4);
  c.controller->setPositions(doubles);
  const auto shown = c.controller->positions();
  EXPECT_EQ(shown->precision(), Precision::Float);
  EXPECT_EQ(shown->vectorAtIndex(4)[1], static_cast<double>(0.2f));
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position")),
            shown);

  auto floats = QLOVector3dArray::initWithSize(6, Precision::Float);
  c.controller->setPositions(floats);
  EXPECT_EQ(c.controller->positions(), floats);
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position")),
            floats);
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
      {false, false, How::Whole, {D, ID}},      {false, false, How::Major, {D}},
      {true, false, How::Major, {D, ID}},       {false, true, How::Whole, {D, ID, S, IS}},
      {false, true, How::Major, {D, S}},        {true, true, How::Major, {D, ID, S, IS}},
      {true, true, How::Whole, {D, ID, S, IS}},
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
    for (Panel p : {Panel::NetworkInfo, Panel::Nodes, Panel::Colour, Panel::NodesSelected,
                    Panel::Properties}) {
      EXPECT_EQ(c.refreshes[p], 1);
    }
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

TEST(ControllerRegistry, FindsControllersByUuidForTheLifeOfTheProcess) {
  EXPECT_FALSE(VXLController::controllerWithUUID("not-a-uuid"));
  EXPECT_FALSE(VXLController::controllerWithUUID(VXLController::UUIDString()));

  const auto first = VXLController::init();
  EXPECT_EQ(VXLController::sharedController(), first);
  const auto second = VXLController::init();
  EXPECT_EQ(VXLController::sharedController(), second);
  EXPECT_NE(first->uuid(), second->uuid());
  EXPECT_EQ(VXLController::controllerWithUUID(first->uuid()), first);

  first->cleanup();
  EXPECT_TRUE(first->isClean());
  EXPECT_EQ(VXLController::controllerWithUUID(first->uuid()), first);
  EXPECT_EQ(VXLController::sharedController(), second);
  EXPECT_EQ(first->networkView()->controller(), first.get());
}

TEST(ControllerRegistry, UuidsHaveTheStandardTextForm) {
  const std::regex form(
      "[0-9a-fA-F]{8}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{12}");
  const auto controller = VXLController::init();
  for (const std::string& uuid : {VXLController::UUIDString(), controller->uuid()}) {
    EXPECT_EQ(uuid.size(), 36u);
    EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
  }
  EXPECT_NE(VXLController::UUIDString(), VXLController::UUIDString());
}

TEST(ControllerLifecycle, NewControllerStateAndCleanupStopsTheLayout) {
  auto view = std::make_shared<VXLNetworkView>();
  const auto controller = VXLController::init(view);
  EXPECT_EQ(controller->networkView(), view);
  EXPECT_EQ(controller->networkName(), "");
  EXPECT_EQ(controller->minColorScalarValue, FLT_MAX);
  EXPECT_EQ(controller->maxColorScalarValue, FLT_MAX);
  EXPECT_EQ(controller->colorCustom0, "#1F77B4");
  EXPECT_EQ(controller->colorCustom1, "#FF7F0E");
  EXPECT_EQ(controller->colorCustom2, "#2CA02C");

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

  const auto mask = QLONumberArray::initWithBoolScalar(true, 6);
  c.controller->setHiddenVertices(mask);
  EXPECT_EQ(c.view().hiddenVertices(), mask);
  EXPECT_EQ(c.controller->hiddenVertices(), mask);

  const auto handler = std::make_shared<VXLSelectionHandler>();
  c.controller->setSelectionHandler(handler);
  EXPECT_EQ(c.view().selectionhandler(), handler);
  EXPECT_EQ(c.controller->selectionHandler(), handler);
}

}  // namespace
