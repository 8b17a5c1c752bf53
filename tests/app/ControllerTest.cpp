#include "app/VXLController.h"

#include <gtest/gtest.h>

#include <limits>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "../support/networks.h"

namespace {

using Panel = VXLController::Panel;
using C = VXLController;
using testing_support::vectorsOf;

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

TEST(ControllerSettings, ResetRestoresDefaultsAndGeneratesANetwork) {
  Counted c;
  // One setting of the view, the overlay the setter leaves alone, and one
  // of the colouring.
  c.controller->setRepulsiveConstant(3.5f);
  c.view().setCameraInfo(true);
  c.controller->setPowerCoefficient(7);
  c.controller->resetToDefaults();
  EXPECT_EQ(c.view().repulsiveConstant(), 10.0f);
  EXPECT_FALSE(c.view().cameraInfo());
  EXPECT_EQ(c.controller->powerCoefficient(), 2.0f);

  // A generated network, with the thresholds at the view's (1, 0) of an
  // unweighted network.
  ASSERT_TRUE(c.controller->network());
  EXPECT_EQ(c.controller->networkName(), "Random(60,0)");
  EXPECT_EQ(c.controller->weightMaxThreshold(), 1.0f);
  EXPECT_EQ(c.controller->weightMinThreshold(), 0.0f);
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

TEST(ControllerPositions, AForeignPositionGivesARandomLayoutStoredAsPosition) {
  Counted c;
  auto network = twoComponents();
  network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(100.0f, 6), "Position");
  c.controller->setNetwork(network);
  const auto shown = c.controller->positions();
  ASSERT_TRUE(shown);
  const auto stored = network->propertyForKey("Position");
  ASSERT_TRUE(std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(stored));
  EXPECT_EQ(vectorsOf(*std::get<std::shared_ptr<QLOVector3dArray>>(stored)), vectorsOf(*shown));
  double widest = 0;
  for (const auto& p : vectorsOf(*shown)) {
    for (double x : p) widest = std::max(widest, std::abs(x));
  }
  EXPECT_GT(widest, 1.0);
  EXPECT_LE(widest, 30.0);
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
    EXPECT_EQ(stored()->vectorAtIndex(5), (std::array<double, 3>{0.5f, 1.0f / 3.0f, -7.7f}));
    auto floats = QLOVector3dArray::initWithSize(6, Precision::Float);
    c.controller->setPositions(floats);
    EXPECT_EQ(c.controller->positions(), floats);
    EXPECT_EQ(stored(), floats);
  }
}

TEST(ControllerPositions, CoordinatesThatAreNotFiniteBecomeZeroWithAnAlert) {
  Counted c;
  std::vector<std::string> alerts;
  c.controller->setAlertHandler([&](const std::string& message) { alerts.push_back(message); });
  auto network = twoComponents();
  auto saved = QLOVector3dArray::initWithSize(6, Precision::Float);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  saved->setVector({1, nan, 2}, 1);
  saved->setVector({-inf, 3, inf}, 4);
  saved->setVector({5, 6, 7}, 5);
  network->setPropertiesOfVertices(saved, "Position");
  c.controller->setNetwork(network);
  const auto shown = vectorsOf(*c.controller->positions());
  EXPECT_EQ(shown[1], (std::array<double, 3>{1, 0, 2}));
  EXPECT_EQ(shown[4], (std::array<double, 3>{0, 3, 0}));
  EXPECT_EQ(shown[5], (std::array<double, 3>{5, 6, 7}));
  ASSERT_EQ(alerts.size(), 1u);
  EXPECT_EQ(alerts[0].rfind("2 vertices", 0), 0u) << alerts[0];
}

TEST(ControllerInstall, ColourPropertiesDependOnHowTheNetworkIsInstalled) {
  enum class How { Whole, Major };
  struct Case {
    bool directed, weighted;
    How how;
    std::vector<std::string> expected;
  };
  const std::string D = "Node Degree", ID = "Node InDegree", S = "Node Strength";
  const std::vector<Case> cases = {
      {false, false, How::Whole, {D, ID}},
      {false, false, How::Major, {D}},
      {true, false, How::Major, {D, ID}},
      {false, true, How::Major, {D, S}},
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
  const auto first = VXLController::init();
  EXPECT_EQ(VXLController::sharedController(), first);
  const auto second = VXLController::init();
  EXPECT_NE(first->uuid(), second->uuid());
  first->cleanup();
  EXPECT_EQ(VXLController::controllerWithUUID(first->uuid()), first);
  EXPECT_EQ(VXLController::sharedController(), second);
}

TEST(ControllerLifecycle, CleanupStopsTheLayoutOnce) {
  auto view = std::make_shared<VXLNetworkView>();
  const auto controller = VXLController::init(view);
  controller->setNetwork(twoComponents());
  view->start();
  ASSERT_TRUE(view->fAnimate());
  controller->cleanup();
  EXPECT_FALSE(view->fAnimate());
  view->start();
  controller->cleanup();  // a second cleanup does nothing
  EXPECT_TRUE(view->fAnimate());
}

}  // namespace
