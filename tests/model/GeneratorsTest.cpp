// Random and preferential-attachment generators: sizes, degrees, simplicity,
// reproducibility, degenerate arguments.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "plexora/QLONetwork.h"
#include "plexora/QLORandomGenerator.h"
#include "quillo/QLONumberArray.h"

namespace {

double averageDegree(const QLONetwork& n) {
  return n.countVertices()
             ? 2.0 * static_cast<double>(n.countEdges()) / static_cast<double>(n.countVertices())
             : 0.0;
}

// No self-loops and no pair joined twice.
bool isSimple(const QLONetwork& n) {
  std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
  for (std::uint64_t k = 0; k < n.countEdges(); ++k) {
    auto a = n.edgeFromList[k], b = n.edgeToList[k];
    if (a == b) return false;
    if (!seen.insert({std::min(a, b), std::max(a, b)}).second) return false;
  }
  return true;
}

std::vector<std::uint64_t> edgeList(const QLONetwork& n) {
  std::vector<std::uint64_t> out(n.edgeFromList, n.edgeFromList + n.countEdges());
  out.insert(out.end(), n.edgeToList, n.edgeToList + n.countEdges());
  return out;
}

}  // namespace

TEST(RandomGenerator, UnitFloatsAndIntegerBounds) {
  auto& random = QLORandomGenerator::sharedRandomGenerator();
  random.setSeed(11);
  auto values = random.newRandomFloatArrayWithCount(100000);
  const float* v = values->data<float>();
  EXPECT_GE(*std::min_element(v, v + 100000), 0.0f);
  EXPECT_LT(*std::max_element(v, v + 100000), 1.0f);
  double mean = 0;
  for (int i = 0; i < 100000; ++i) mean += v[i];
  EXPECT_NEAR(mean / 100000, 0.5, 0.01);

  std::set<std::int64_t> seen;
  for (int i = 0; i < 2000; ++i) {
    auto n = random.randomIntegerFrom(0, 4);
    ASSERT_GE(n, 0);
    ASSERT_LE(n, 4);
    seen.insert(n);
  }
  EXPECT_EQ(seen.size(), 5u);  // both ends are reached
  EXPECT_EQ(random.randomIntegerFrom(5, 2), 5);
  EXPECT_LT(unitFloat(UINT64_MAX), 1.0f);  // the largest draw still lies below 1
}

TEST(Generators, RandomNetworkHasTheRequestedDegree) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(1);
  auto network = QLONetwork::initRandomNetworkWithNumberOfVertices(20000, 6.0);
  ASSERT_TRUE(network);
  EXPECT_EQ(network->countVertices(), 20000u);
  EXPECT_NEAR(averageDegree(*network), 6.0, 0.1);
  EXPECT_TRUE(isSimple(*network));

  // Degree at or above V - 1 gives the complete graph.
  auto complete = QLONetwork::initRandomNetworkWithNumberOfVertices(30, 100.0);
  EXPECT_EQ(complete->countEdges(), 30u * 29u / 2u);
  EXPECT_TRUE(isSimple(*complete));

  for (auto [n, k] : std::vector<std::pair<std::uint64_t, double>>{
           {0, 4.0}, {1, 4.0}, {100, 0.0}, {100, -3.0}, {100, std::nan("")}}) {
    auto degenerate = QLONetwork::initRandomNetworkWithNumberOfVertices(n, k);
    ASSERT_TRUE(degenerate);
    EXPECT_EQ(degenerate->countVertices(), n);
    EXPECT_EQ(degenerate->countEdges(), 0u);
  }
}

TEST(Generators, BarabasiNetworkIsConnectedWithHeavyTail) {
  for (std::uint64_t k : {1u, 3u, 10u}) {
    QLORandomGenerator::sharedRandomGenerator().setSeed(k);
    auto network = QLONetwork::initBarabasiNetworkWitNumberOfVertices(20000, k);
    ASSERT_TRUE(network);
    EXPECT_EQ(network->countVertices(), 20000u);
    EXPECT_NEAR(averageDegree(*network), static_cast<double>(k), 0.05 * static_cast<double>(k))
        << k;
    EXPECT_TRUE(isSimple(*network)) << k;
    if (k >= 2) {
      EXPECT_EQ(network->largestConnectedSubNetwork()->countVertices(), 20000u) << k;
      // Preferential attachment gives hubs far above the average degree.
      auto degrees = network->calcDegrees();
      double largest = 0;
      for (std::uint64_t v = 0; v < 20000; ++v) {
        largest = std::max(largest, degrees->doubleValueAtIndex(v));
      }
      EXPECT_GT(largest, 15.0 * static_cast<double>(k)) << k;
    }
  }
  auto tiny = QLONetwork::initBarabasiNetworkWitNumberOfVertices(3, 40);
  EXPECT_EQ(tiny->countEdges(), 3u);  // every vertex joins all earlier ones
  EXPECT_EQ(QLONetwork::initBarabasiNetworkWitNumberOfVertices(10, 0)->countEdges(), 0u);
  EXPECT_EQ(QLONetwork::initBarabasiNetworkWitNumberOfVertices(0, 4)->countVertices(), 0u);
}

TEST(Generators, SeedingMakesRunsReproducible) {
  auto& random = QLORandomGenerator::sharedRandomGenerator();
  random.setSeed(42);
  auto a = QLONetwork::initRandomNetworkWithNumberOfVertices(500, 4.0);
  auto b1 = QLONetwork::initBarabasiNetworkWitNumberOfVertices(500, 4);
  random.setSeed(42);
  auto a2 = QLONetwork::initRandomNetworkWithNumberOfVertices(500, 4.0);
  auto b2 = QLONetwork::initBarabasiNetworkWitNumberOfVertices(500, 4);
  EXPECT_EQ(edgeList(*a), edgeList(*a2));
  EXPECT_EQ(edgeList(*b1), edgeList(*b2));
  random.setSeed(43);
  EXPECT_NE(edgeList(*a), edgeList(*QLONetwork::initRandomNetworkWithNumberOfVertices(500, 4.0)));
}
