// The controller's filter selector: titles, selection, slider bounds.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "app/VXLController.h"
#include "app/filterselector.h"

namespace {

using Titles = std::vector<std::string>;

enum class Directed { Yes, No };
enum class Weighted { Yes, No };

// A path 0 - 1 - 2 - 3 with weights 2, 4, 8 and four kinds of property:
// numbers ("size", "age"), texts ("Name") and vectors ("Color").
std::shared_ptr<QLONetwork> path(Directed directed, Weighted weighted,
                                 std::vector<float> size = {-3, -1, -2, -7}) {
  NetworkData data;
  data.verticesCount = 4;
  data.from = {0, 1, 2};
  data.to = {1, 2, 3};
  data.weights = {2, 4, 8};
  data.directed = directed == Directed::Yes;
  data.edgeWeighted = weighted == Weighted::Yes;
  data.properties = {
      {"size", QLONumberArray::initWithFloats(size)},
      {"Name", std::make_shared<TextList>(TextList{"a", "b", "c", "d"})},
      {"Color", QLOVector3dArray::initWithSize(4, Precision::Float)},
      {"age", QLONumberArray::initWithFloats(std::vector<float>{10, 20, 30, 40})},
  };
  auto network = QLONetwork::make(std::move(data));
  EXPECT_TRUE(network);
  return network;
}

std::shared_ptr<QLONetwork> isolated(std::uint64_t vertices) {
  NetworkData data;
  data.verticesCount = vertices;
  return QLONetwork::make(std::move(data));
}

TEST(FilterSelector, TitlesFollowDirectionWeightsAndNumericProperties) {
  struct Case {
    Directed directed;
    Weighted weighted;
    Titles expected;
  };
  const std::vector<Case> cases = {
      {Directed::No, Weighted::No, {"Node Degree", "age", "size"}},
      {Directed::Yes,
       Weighted::Yes,
       {"Node Degree", "Node InDegree", "Node Strength", "Node InStrength", "age", "size"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(app::filterPropertyTitles(path(c.directed, c.weighted).get()), c.expected);
  }
  EXPECT_EQ(app::filterPropertyTitles(nullptr), Titles{"Node Degree"});
}

TEST(FilterSelector, SelectionIsKeptFallsBackAndReachesTheView) {
  const auto controller = VXLController::init();
  const auto& view = *controller->networkView();
  controller->setNetwork(path(Directed::Yes, Weighted::Yes));
  EXPECT_EQ(controller->filterPropertyName(), "Node Degree");

  controller->selectFilterProperty("age");
  EXPECT_EQ(controller->filterPropertyName(), "age");
  EXPECT_EQ(view.filterPropertyName(), "age");

  // Not offered (a text property, a vector property, an unknown name): the
  // selection stays.
  for (const char* name : {"Name", "nothing"}) {
    controller->selectFilterProperty(name);
    EXPECT_EQ(controller->filterPropertyName(), "age") << name;
  }
  // Kept by a network that still offers it.
  controller->setNetwork(path(Directed::No, Weighted::No));
  EXPECT_EQ(controller->filterPropertyName(), "age");
  // A network that does not offer it falls back to the degrees.
  controller->selectFilterProperty("Node InStrength");
  EXPECT_EQ(controller->filterPropertyName(), "age");
  controller->setNetwork(isolated(3));
  EXPECT_EQ(controller->filterPropertyName(), "Node Degree");
  EXPECT_EQ(view.filterPropertyName(), "Node Degree");
}

TEST(FilterSelector, SelectingResetsTheRangeAtOnceAndAFrameKeepsItsChanges) {
  const auto controller = VXLController::init();
  auto& view = *controller->networkView();
  controller->setNetwork(path(Directed::No, Weighted::No));
  for (int round = 0; round < 2; ++round) {  // a new title, then the same title again
    SCOPED_TRACE(round);
    controller->selectFilterProperty("age");
    EXPECT_EQ(view.minFilterProperty(), 10.0f);
    EXPECT_EQ(view.maxFilterProperty(), 40.0f);
    // Set before any frame is drawn: the next frames keep it.
    controller->setMinFilterProperty(15);
    controller->setMaxFilterProperty(25);
    view.prepareFrame();
    view.prepareFrame();
    EXPECT_EQ(view.minFilterProperty(), 15.0f);
    EXPECT_EQ(view.maxFilterProperty(), 25.0f);
  }
}

TEST(FilterSelector, SliderBoundsFollowTheSelectedPropertyAndTheWeights) {
  const auto controller = VXLController::init();
  controller->setNetwork(path(Directed::Yes, Weighted::Yes));
  // Degrees 1, 2, 2, 1; strengths 2, 6, 12, 8; sizes all negative, where
  // the top stays 0.
  for (const auto& [title, lower, upper] :
       {std::tuple{"Node Degree", 1.0, 2.0}, {"Node Strength", 2.0, 12.0}, {"size", -7.0, 0.0}}) {
    controller->selectFilterProperty(title);
    EXPECT_EQ(controller->filterRangeBounds().lower, lower) << title;
    EXPECT_EQ(controller->filterRangeBounds().upper, upper) << title;
  }
  EXPECT_EQ(controller->weightThresholdBounds().lower, 2.0);
  EXPECT_EQ(controller->weightThresholdBounds().upper, 8.0);

  // New values of the property are seen at the next refresh.
  auto network = controller->network();
  network->setPropertiesOfVertices(QLONumberArray::initWithFloats(std::vector<float>{1, 9, 5, 3}),
                                   "size");
  controller->changeFilterProperty();
  EXPECT_EQ(controller->filterRangeBounds().upper, 9.0);

  // An unweighted network's thresholds span (0, 1).
  controller->setNetwork(isolated(2));
  EXPECT_EQ(controller->weightThresholdBounds().lower, 0.0);
  EXPECT_EQ(controller->weightThresholdBounds().upper, 1.0);
}

}  // namespace
