// The view as the simulation's driver: installation rules, batches, the timer,
// start and pause, and replacing state while a batch runs (this program also
// runs under ThreadSanitizer).
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
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
  EXPECT_EQ(view.speeds()->count(), 500u);
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

TEST(View, StepsKeepTheMeanAtTheOriginStayFiniteAndSpareFilteredVertices) {
  VXLNetworkView view;
  view.setNetwork(randomNetwork(300, 6));
  view.prepareFrame();
  // Keep only vertices of degree >= 100: none pass, so only centring moves;
  // then let every vertex take part again.
  view.setMinFilterProperty(100);
  const auto before = view.positions()->xfv();
  view.iterateBy(1);
  const auto after = view.positions()->xfv();
  for (std::size_t i = 1; i < before.size(); ++i) {
    EXPECT_NEAR(after[i] - before[i], after[0] - before[0], 1e-3) << i;
  }
  view.setMinFilterProperty(0);

  view.iterateBy(20);
  EXPECT_FALSE(view.iterating());
  for (const auto& axis :
       {view.positions()->xfv(), view.positions()->yfv(), view.positions()->zfv()}) {
    EXPECT_NEAR(std::accumulate(axis.begin(), axis.end(), 0.0) / 300, 0.0, 1e-4);
  }
  EXPECT_LT(extent(*view.positions()), INFINITY);
  EXPECT_LT(extent(*view.speeds()), INFINITY);

  // Without a frame (no filter cache) every vertex takes part; an empty
  // network or none at all steps without effect.
  VXLNetworkView headless, empty;
  headless.setNetwork(randomNetwork(50, 3));
  headless.iterateBy(5);
  EXPECT_LT(extent(*headless.positions()), INFINITY);
  empty.iterateBy(3);
  empty.setNetwork(randomNetwork(0, 0));
  empty.iterateBy(3);
  EXPECT_EQ(empty.positions()->count(), 0u);
}

TEST(View, FilterCacheFollowsTheNetworkAndTheName) {
  VXLNetworkView view;
  auto network = chain({1, 2, 3});
  view.setNetwork(network);
  EXPECT_EQ(view.filterProperty(), nullptr);
  view.prepareFrame();
  ASSERT_EQ(view.filterProperty()->size(), 4u);
  EXPECT_EQ(view.maxFilterProperty(), 2.0f);  // degrees 1 2 2 1
  EXPECT_EQ(view.minFilterProperty(), 1.0f);
  view.setMinFilterProperty(2);
  view.prepareFrame();  // nothing changed: the narrowed range stays
  EXPECT_EQ(view.minFilterProperty(), 2.0f);

  view.setFilterPropertyName("Node Strength");
  view.prepareFrame();
  EXPECT_EQ(view.maxFilterProperty(), 5.0f);  // strengths 1 3 5 3
  EXPECT_EQ(view.minFilterProperty(), 1.0f);

  // The same name again does nothing unless asked to update.
  view.setMinFilterProperty(3);
  view.setFilterPropertyName("Node Strength");
  view.prepareFrame();
  EXPECT_EQ(view.minFilterProperty(), 3.0f);
  view.setShouldUpdateFilterProperty(true);
  view.setFilterPropertyName("Node Strength");
  EXPECT_FALSE(view.shouldUpdateFilterProperty());
  view.prepareFrame();
  EXPECT_EQ(view.minFilterProperty(), 1.0f);

  view.setNetwork(chain({1, 1}));
  view.prepareFrame();
  EXPECT_EQ(view.filterProperty()->size(), 3u);
}

TEST(View, WeightThresholdsThroughTheView) {
  VXLNetworkView view;
  view.setNetwork(chain({2, 4, 8}));
  EXPECT_EQ(view.maxMinWeight(), (std::pair<double, double>{8, 2}));
  EXPECT_EQ(view.weightThresholdCount(), 0u);
  view.setWeightMinThreshold(3);
  view.setWeightMaxThreshold(8);
  ASSERT_EQ(view.weightThresholdCount(), 3u);
  EXPECT_EQ(*view.weightThresholdData(), (std::vector<float>{0, 0.5f, 1.0f}));

  // An unweighted network leaves the data as it was.
  auto kept = view.weightThresholdData();
  view.setNetwork(randomNetwork(10, 2));
  view.setWeightMaxThreshold(5);
  EXPECT_EQ(view.weightThresholdData(), kept);
  EXPECT_EQ(view.maxMinWeight(), (std::pair<double, double>{1, 0}));
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
  EXPECT_GT(view.time(), 0.0);

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
  view.toggleStartPause();
  EXPECT_FALSE(view.fAnimate());
  view.toggleStartPause();
  EXPECT_TRUE(view.fAnimate());

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
    view.resetCenter(10, 10, 10);
    view.setNetwork(randomNetwork(1000 + 100 * static_cast<std::uint64_t>(round), 4, 2));
    view.prepareFrame();
    view.animationTimer();
  }
  view.pause();
  view.waitForBatch();
  EXPECT_FALSE(view.iterating());
  EXPECT_LT(extent(*view.positions()), INFINITY);
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
  auto stored = std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position"));
  EXPECT_EQ(stored, view.positions());
  for (float z : stored->zfv()) EXPECT_EQ(z, 0.0f);
  view.resetCenter(5, 5, 5);
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position")),
            view.positions());
  float largest = 0;
  for (float x : view.positions()->xfv()) largest = std::max(largest, std::abs(x));
  EXPECT_LE(largest, 2.5f + 1e-4f);
}

TEST(View, MasksAreConvertedToTheirTypes) {
  VXLNetworkView view;
  auto floats = QLONumberArray::initWithFloats(std::vector<float>{0, 2, 0.5f});
  view.setHiddenVertices(floats);
  ASSERT_NE(view.hiddenVertices(), floats);
  EXPECT_EQ(view.hiddenVertices()->numberArrayType(), NumberType::Bool);
  EXPECT_TRUE(view.hiddenVertices()->boolValueAtIndex(1));
  auto bytes = QLONumberArray::initWithBoolScalar(true, 3);
  view.setHiddenVertices(bytes);
  EXPECT_EQ(view.hiddenVertices(), bytes);
  auto mask = QLONumberArray::initWithBoolScalar(true, 3);
  view.setAlphaChannel(mask);
  EXPECT_EQ(view.alphaChannel()->numberArrayType(), NumberType::Float);
  EXPECT_EQ(view.alphaChannel()->data<float>()[2], 1.0f);
}
