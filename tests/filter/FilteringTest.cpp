// Filter values and ranges, and the edge-weight thresholds.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "filter/filtering.h"
#include "plexora/QLONetwork.h"

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// Directed, weighted: 0->1 (0.5), 1->2 (2), 2->2 (1, a self-loop), 0->2 (4);
// vertex 3 is isolated.
QLONetwork::Ptr smallNetwork() {
  NetworkData data;
  data.verticesCount = 4;
  data.from = {0, 1, 2, 0};
  data.to = {1, 2, 2, 2};
  data.weights = {0.5f, 2.0f, 1.0f, 4.0f};
  data.directed = true;
  data.edgeWeighted = true;
  return QLONetwork::make(std::move(data));
}

const std::vector<float> kSmallDegrees = {2, 2, 4, 0};

// A weighted network with one edge per weight (a chain over enough vertices).
QLONetwork::Ptr weightedChain(std::vector<float> weights, bool edgeWeighted = true) {
  NetworkData data;
  data.verticesCount = weights.size() + 1;
  for (std::uint64_t k = 0; k < weights.size(); ++k) {
    data.from.push_back(k);
    data.to.push_back(k + 1);
  }
  data.weights = std::move(weights);
  data.edgeWeighted = edgeWeighted;
  return QLONetwork::make(std::move(data));
}

// Equality that treats two NaNs as equal, for whole vectors.
void expectSameFloats(const std::vector<float>& actual, const std::vector<float>& expected,
                      const std::string& what) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (std::isnan(expected[i])) {
      EXPECT_TRUE(std::isnan(actual[i])) << what << " entry " << i << " is " << actual[i];
    } else {
      EXPECT_EQ(actual[i], expected[i]) << what << " entry " << i;
    }
  }
}

}  // namespace

TEST(Filter, BuiltInNamesGiveTheNetworkMeasures) {
  auto network = smallNetwork();
  ASSERT_TRUE(network);
  // A property under a built-in name must not shadow the measure.
  ASSERT_TRUE(
      network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(-7, 4), "Node Degree"));
  struct Case {
    const char* name;
    std::vector<float> expected;
  };
  const std::vector<Case> cases = {
      {"Node Degree", kSmallDegrees},
      {"Node InDegree", {0, 1, 3, 0}},
      {"Node Strength", {4.5f, 2.5f, 8, 0}},
      {"Node InStrength", {0, 0.5f, 7, 0}},
  };
  for (const Case& c : cases) {
    expectSameFloats(filter::filterValues(*network, c.name), c.expected, c.name);
  }
}

TEST(Filter, NumberPropertiesOfEveryElementTypeAreReadAsFloats) {
  auto network = smallNetwork();
  ASSERT_TRUE(network);

  auto ints = QLONumberArray::initWithCount(4, NumberType::Int32);
  const std::int32_t intValues[] = {-3, 0, 7, 100000};
  for (int i = 0; i < 4; ++i) ints->data<std::int32_t>()[i] = intValues[i];
  auto bools = QLONumberArray::initWithCount(4, NumberType::Bool);
  bools->setBoolValue(true, 0);
  bools->setBoolValue(true, 3);
  const double doubleValues[] = {0.1, -1e300, 2.5, 1e-50};
  auto doubles = QLONumberArray::initWithDoubles(doubleValues);

  struct Case {
    const char* name;
    std::shared_ptr<QLONumberArray> property;
    std::vector<float> expected;
  };
  const std::vector<Case> cases = {
      {"counts", ints, {-3, 0, 7, 100000}},
      {"flags", bools, {1, 0, 0, 1}},
      {"sizes", doubles, {0.1f, -kInf, 2.5f, 0.0f}},
  };
  for (const Case& c : cases) {
    ASSERT_TRUE(network->setPropertiesOfVertices(c.property, c.name)) << c.name;
  }
  for (const Case& c : cases) {
    expectSameFloats(filter::filterValues(*network, c.name), c.expected, c.name);
  }
}

TEST(Filter, PropertiesWithoutOneNumberPerVertexFallBackToDegrees) {
  auto network = smallNetwork();
  ASSERT_TRUE(network);
  ASSERT_TRUE(network->setPropertiesOfVertices(
      std::make_shared<TextList>(TextList{"1", "2", "3", "4"}), "Label"));
  ASSERT_TRUE(network->setPropertiesOfVertices(QLOVector3dArray::initWithSize(4, Precision::Float),
                                               "Position"));
  for (const char* name : {"Label", "Position", "Absent", "", "node degree"}) {
    expectSameFloats(filter::filterValues(*network, name), kSmallDegrees, name);
  }
}

TEST(Filter, MaxMinOfValues) {
  struct Case {
    const char* what;
    std::vector<float> values;
    float maximum;
    float minimum;
  };
  const std::vector<Case> cases = {
      {"mixed", {3, -2, 7, 0.5f}, 7, -2},
      {"all negative keep the maximum at 0", {-3, -1, -8}, 0, -8},
      {"all positive", {5, 2, 9}, 9, 2},
      {"empty", {}, 0, kInf},
      {"NaN entries ignored", {kNaN, 2, kNaN, -1, kNaN}, 2, -1},
      {"only NaN", {kNaN, kNaN}, 0, kInf},
      {"NaN after the extremes of a long run", {-4, 1, 2, 3, 4, 5, 6, 7, 9, kNaN}, 9, -4},
      {"infinities", {kInf, -kInf}, kInf, -kInf},
  };
  for (const Case& c : cases) {
    const auto [maximum, minimum] = filter::maxMinOfValues(c.values);
    EXPECT_EQ(maximum, c.maximum) << c.what;
    EXPECT_EQ(minimum, c.minimum) << c.what;
  }
}

TEST(Filter, RangeOfANetworkProperty) {
  auto network = smallNetwork();
  ASSERT_TRUE(network);
  const double below[] = {-4, -0.5, -9, -1};
  ASSERT_TRUE(network->setPropertiesOfVertices(QLONumberArray::initWithDoubles(below), "below"));

  struct Case {
    const char* name;
    float maximum;
    float minimum;
  };
  const std::vector<Case> cases = {
      {"Node Strength", 8, 0},
      {"below", 0, -9},
      {"Absent", 4, 0},
  };
  for (const Case& c : cases) {
    const auto [maximum, minimum] = filter::getMaxMinValuesForPropertyOfNetwork(*network, c.name);
    EXPECT_EQ(maximum, c.maximum) << c.name;
    EXPECT_EQ(minimum, c.minimum) << c.name;
  }
}

TEST(Weights, MaxMinWeight) {
  NetworkData noEdges;
  noEdges.verticesCount = 3;
  noEdges.edgeWeighted = true;
  auto empty = QLONetwork::make(std::move(noEdges));
  ASSERT_TRUE(empty);

  struct Case {
    const char* what;
    QLONetwork::Ptr network;
    double largest;
    double smallest;
  };
  const std::vector<Case> cases = {
      {"no network", nullptr, 1, 0},
      {"not edge-weighted, whatever the stored weights", weightedChain({5, 7}, false), 1, 0},
      {"no edges", empty, 1, 0},
      {"weighted", weightedChain({2.5f, -1.25f, 8}), 8, -1.25},
      {"NaN weights ignored", weightedChain({kNaN, 3, kNaN, 0.75f}), 3, 0.75},
      {"NaN after the extremes of a long run", weightedChain({0.5f, 1, 1, 1, 1, 1, 1, 1, 6, kNaN}),
       6, 0.5},
      {"every weight NaN", weightedChain({kNaN, kNaN}), 1, 0},
      {"one weight", weightedChain({0.1f}), static_cast<double>(0.1f), static_cast<double>(0.1f)},
  };
  for (const Case& c : cases) {
    const auto [largest, smallest] = filter::maxMinWeight(c.network.get());
    EXPECT_EQ(largest, c.largest) << c.what;
    EXPECT_EQ(smallest, c.smallest) << c.what;
  }
}

TEST(Weights, ThresholdsNormaliseTheWeightsInRange) {
  // 2^-23 would come out if M - m were taken in float (2^24 + 1 rounds to
  // 2^24); in double the span keeps the 1.
  const float wideSpan = static_cast<float>(2.0 / (16777216.0 + 1.0));
  ASSERT_NE(wideSpan, 0x1p-23f);

  struct Case {
    const char* what;
    std::vector<float> weights;
    float minThreshold;
    float maxThreshold;
    std::vector<float> expected;
  };
  const std::vector<Case> cases = {
      {"positive weights divide by the largest", {2, 4, 8}, 3, 8, {0, 0.5f, 1}},
      {"bounds are inclusive", {2, 4, 8}, 2, 4, {0.25f, 0.5f, 0}},
      {"a non-positive smallest weight shifts", {-1, 0, 3}, -1, 3, {0, 0.25f, 1}},
      {"a zero smallest weight", {0, 2, 4}, 0, 3, {0, 0.5f, 0}},
      {"nothing in range", {2, 4, 8}, 9, 20, {0, 0, 0}},
      {"inverted thresholds", {2, 4, 8}, 8, 2, {0, 0, 0}},
      {"equal positive weights", {3, 3}, 0, 5, {1, 1}},
      {"equal negative weights give NaN", {-2, -2, -2}, -5, 5, {kNaN, kNaN, kNaN}},
      {"equal zero weights give NaN", {0, 0}, 0, 0, {kNaN, kNaN}},
      {"NaN weights are never in range", {kNaN, 2, 4}, -kInf, kInf, {0, 0.5f, 1}},
      {"span computed in double", {-1, 16777216.0f, 1}, -2, 2, {0, 0, wideSpan}},
  };
  for (const Case& c : cases) {
    auto network = weightedChain(c.weights);
    ASSERT_TRUE(network) << c.what;
    expectSameFloats(filter::thresholdedWeights(*network, c.minThreshold, c.maxThreshold),
                     c.expected, c.what);
  }
}

TEST(Weights, LargeNetworkMatchesAStraightforwardLoop) {
  std::mt19937_64 engine(20240611);
  std::uniform_real_distribution<float> weight(-3.0f, 50.0f);
  std::uniform_int_distribution<std::uint64_t> vertex(0, 9999);
  NetworkData data;
  data.verticesCount = 10000;
  const std::size_t E = 300000;
  for (std::size_t k = 0; k < E; ++k) {
    data.from.push_back(vertex(engine));
    data.to.push_back(vertex(engine));
    data.weights.push_back(weight(engine));
  }
  data.edgeWeighted = true;
  auto network = QLONetwork::make(std::move(data));
  ASSERT_TRUE(network);

  double largest = network->edgesWeights[0];
  double smallest = largest;
  for (std::size_t k = 0; k < E; ++k) {
    largest = std::max(largest, static_cast<double>(network->edgesWeights[k]));
    smallest = std::min(smallest, static_cast<double>(network->edgesWeights[k]));
  }
  const auto [M, m] = filter::maxMinWeight(network.get());
  EXPECT_EQ(M, largest);
  EXPECT_EQ(m, smallest);

  for (const auto& [low, high] : {std::pair{-1.0f, 20.0f}, std::pair{5.5f, 49.0f}}) {
    const std::vector<float> result = filter::thresholdedWeights(*network, low, high);
    ASSERT_EQ(result.size(), E);
    std::size_t mismatches = 0;
    std::size_t inRange = 0;
    for (std::size_t k = 0; k < E; ++k) {
      const float w = network->edgesWeights[k];
      float expected = 0;
      if (w >= low && w <= high) {
        ++inRange;
        expected = static_cast<float>((w - smallest) / (largest - smallest));
      }
      if (result[k] != expected && mismatches++ == 0) {
        ADD_FAILURE() << "edge " << k << " weight " << w << ": " << result[k] << " instead of "
                      << expected;
      }
    }
    EXPECT_EQ(mismatches, 0u) << "thresholds " << low << ".." << high;
    EXPECT_GT(inRange, E / 10);
    EXPECT_LT(inRange, E);
  }
}
