// The view as the simulation's driver: installation, batches, the timer, and
// replacing state while a batch runs (also run under ThreadSanitizer).
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "../support/networks.h"
#include "plexora/QLORandomGenerator.h"
#include "render/VXLNetworkView.h"

namespace {

using namespace std::chrono_literals;

std::shared_ptr<QLONetwork> randomNetwork(std::uint64_t vertices, double degree,
                                          std::uint64_t seed = 5) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(seed);
  return QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree);
}

using testing_support::chain;

// The largest coordinate magnitude; infinity when one is not finite.
double extent(const QLOVector3dArray& array) {
  double largest = 0;
  for (std::uint64_t i = 0; i < array.count(); ++i) {
    for (double c : array.vectorAtIndex(i)) {
      largest = std::isfinite(c) ? std::max(largest, std::abs(c)) : INFINITY;
    }
  }
  return largest;
}

// Waits (bounded) until the condition holds.
template <class Condition>
bool eventually(Condition condition) {
  for (int i = 0; i < 2000 && !condition(); ++i) std::this_thread::sleep_for(5ms);
  return condition();
}

}  // namespace

TEST(View, InstallingNetworksAndPositions) {
  VXLNetworkView view;
  auto network = randomNetwork(500, 4);
  view.setNetwork(network);
  auto positions = view.positions();
  ASSERT_EQ(positions->count(), 500u);
  EXPECT_LT(extent(*positions), 30.0);
  view.setNetwork(network);  // the same network: nothing changes
  EXPECT_EQ(view.positions(), positions);

  // Installing the held array keeps the speeds; another precision is copied.
  view.iterateBy(3);
  auto speeds = view.speeds();
  EXPECT_NE(speeds->vectorAtIndex(0), (std::array<double, 3>{0, 0, 0}));
  view.setPositions(positions);
  EXPECT_EQ(view.speeds(), speeds);
  auto doubles = QLOVector3dArray::initWithSize(500, Precision::Double);
  doubles->setVector({1.5, 2, 3}, 7);
  view.setPositions(doubles);
  EXPECT_NE(view.positions(), doubles);
  EXPECT_EQ(view.positions()->precision(), Precision::Float);
  EXPECT_EQ(view.positions()->vectorAtIndex(7), (std::array<double, 3>{1.5, 2, 3}));
  EXPECT_EQ(view.speeds()->vectorAtIndex(0), (std::array<double, 3>{0, 0, 0}));
}

TEST(View, StepsSpareFilteredVerticesOnceAFrameFilledTheFilterCache) {
  // Only degrees >= 100 take part: none, so every vertex moves alike (the
  // centring); without a frame there is no cache and all take part.
  for (const bool framed : {true, false}) {
    VXLNetworkView view;
    view.setNetwork(randomNetwork(300, 6));
    if (framed) view.prepareFrame();
    view.setMinFilterProperty(100);
    const auto before = view.positions()->xfv();
    view.iterateBy(1);
    const auto after = view.positions()->xfv();
    std::size_t alike = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
      alike += std::abs((after[i] - before[i]) - (after[0] - before[0])) < 1e-3;
    }
    EXPECT_EQ(alike == before.size(), framed);
  }
  VXLNetworkView empty;  // no network, then an empty one: steps do nothing
  empty.iterateBy(3);
  empty.setNetwork(randomNetwork(0, 0));
  empty.iterateBy(3);
  EXPECT_EQ(empty.positions()->count(), 0u);
}

TEST(View, FilterCacheFollowsTheNetworkAndTheName) {
  VXLNetworkView view;
  auto network = chain({1, 2, 3});
  view.setNetwork(network);
  view.prepareFrame();
  EXPECT_EQ(view.maxFilterProperty(), 2.0f);  // degrees 1 2 2 1

  view.setFilterPropertyName("Node Strength");
  view.prepareFrame();
  EXPECT_EQ(view.maxFilterProperty(), 5.0f);  // strengths 1 3 5 3

  // The same name again does nothing unless asked to update.
  view.setMinFilterProperty(3);
  view.setFilterPropertyName("Node Strength");
  view.prepareFrame();
  EXPECT_EQ(view.minFilterProperty(), 3.0f);
  view.setShouldUpdateFilterProperty(true);
  view.setFilterPropertyName("Node Strength");
  view.prepareFrame();
  EXPECT_EQ(view.minFilterProperty(), 1.0f);

  view.setNetwork(chain({1, 1}));
  view.prepareFrame();
  EXPECT_EQ(view.filterProperty()->size(), 3u);
}

TEST(View, ZeroThresholdedWeightsChangeTheWeightedLaws) {
  // Two vertices joined by one edge whose thresholded weight is 0.
  auto run = [](bool asDistance, float L) {
    VXLNetworkView view;
    view.setNetwork(chain({5}));
    view.setWeightMinThreshold(6);  // 5 is outside: entry 0
    view.setWeightMaxThreshold(10);
    view.setRepulsiveConstant(0);
    view.setGravitationalConstant(0);
    view.setAttractionConstant(0.01f);
    view.setPreferredDistance(L);
    view.setWeightAsDistance(asDistance);
    auto positions = QLOVector3dArray::initWithSize(2, Precision::Float);
    positions->setVector({-1, 0, 0}, 0);
    positions->setVector({1, 0, 0}, 1);
    view.setPositions(positions);
    view.iterateBy(1);
    return view.positions()->vectorAtIndex(1)[0];
  };
  EXPECT_DOUBLE_EQ(run(false, 0), 1.0);  // no force
  EXPECT_GT(run(false, 10), 1.0);        // x = -L: pushed apart
  EXPECT_DOUBLE_EQ(run(true, 10), 1.0);  // skipped
}

TEST(View, TimerStartsBatchesOnlyWhileRunningAndPauseStopsALongBatch) {
  VXLNetworkView view;
  view.setNetwork(randomNetwork(2000, 4));
  auto before = view.positions()->xfv();
  view.animationTimer();  // not running: a frame only
  view.waitForBatch();
  EXPECT_EQ(view.positions()->xfv(), before);

  view.setIterations(0);
  view.start();
  view.animationTimer();
  view.waitForBatch();
  EXPECT_EQ(view.positions()->xfv(), before);  // iterations 0: never a batch

  view.setIterations(3);
  view.animationTimer();
  view.waitForBatch();
  EXPECT_NE(view.positions()->xfv(), before);
  EXPECT_FALSE(view.iterating());

  // A long batch stops after the current step; paused, ticks start nothing.
  view.setIterations(1000000);
  view.animationTimer();
  ASSERT_TRUE(view.iterating());
  std::this_thread::sleep_for(30ms);
  view.pause();
  EXPECT_FALSE(view.fAnimate());
  EXPECT_TRUE(eventually([&] { return !view.iterating(); }));
  view.waitForBatch();
  before = view.positions()->xfv();
  view.animationTimer();
  view.waitForBatch();
  EXPECT_EQ(view.positions()->xfv(), before);
}

TEST(View, ReplacingStateWhileABatchRuns) {
  VXLNetworkView view;
  view.setNetwork(randomNetwork(1500, 6, 1));
  view.prepareFrame();
  view.setIterations(1000000);
  view.start();
  view.animationTimer();
  for (int round = 0; round < 4; ++round) {
    std::this_thread::sleep_for(10ms);
    // Read while the batch writes, then swap every shared object.
    EXPECT_EQ(view.positions()->xfv().size(), view.network()->countVertices());
    view.setPositions(
        QLOVector3dArray::initWithSize(view.network()->countVertices(), Precision::Float));
    view.setFilterPropertyName(round % 2 ? "Node Degree" : "Node Strength");
    view.prepareFrame();
    view.setMinFilterProperty(1);
    view.setNetwork(randomNetwork(1000 + 100 * static_cast<std::uint64_t>(round), 4, 2));
    view.prepareFrame();
    view.animationTimer();
  }
  view.pause();
  view.waitForBatch();
  EXPECT_FALSE(view.iterating());
  EXPECT_LT(extent(*view.positions()), INFINITY);
}

TEST(View, PlacementActionsWhileABatchWritesThePositions) {
  VXLNetworkView view;
  view.setNetwork(randomNetwork(1500, 6, 3));
  view.setIterations(1000000);
  for (int round = 0; round < 3; ++round) {
    view.start();
    view.animationTimer();
    ASSERT_TRUE(view.iterating());
    std::this_thread::sleep_for(10ms);
    // The batch writes the installed array while the actions read it: the
    // bounds and the rescaling must see the same coordinates.
    view.resetCenter(5, 5, 5);
    EXPECT_LE(extent(*view.positions()), 2.5 + 1e-4);
    view.randomizePositionsWithSizeX(10, 10, 10);
    view.pause();
    view.waitForBatch();
  }
}

TEST(View, DestroyingAViewWhileItsBatchRuns) {
  for (int i = 0; i < 3; ++i) {
    auto view = std::make_unique<VXLNetworkView>();
    view->setNetwork(randomNetwork(1500, 4, static_cast<std::uint64_t>(i)));
    view->setIterations(1000000);
    view->start();
    view->animationTimer();
    std::this_thread::sleep_for(std::chrono::milliseconds(5 * i));
    view.reset();  // stops the batch and waits for it
  }
}

TEST(View, PlacementActionsStoreThePositionInTheNetwork) {
  VXLNetworkView view;
  view.randomizePositionsWithSizeX(10, 10, 0);  // no network: nothing
  EXPECT_EQ(view.positions(), nullptr);
  auto network = randomNetwork(100, 3);
  view.setNetwork(network);
  EXPECT_EQ(network->propertyForKey("Position").index(), 0u);  // a start layout is not stored
  view.randomizePositionsWithSizeX(10, 10, 0);
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position")),
            view.positions());
}
