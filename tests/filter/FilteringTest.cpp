// Filter values and ranges, and the edge-weight thresholds.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "../support/networks.h"
#include "filter/filtering.h"
#include "plexora/QLONetwork.h"

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

using testing_support::chain;
using testing_support::Weighted;

// Entry by entry, NaN matching NaN.
void expectSameFloats(const std::vector<float>& actual, const std::vector<float>& expected,
                      const char* what) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_TRUE(actual[i] == expected[i] || (std::isnan(actual[i]) && std::isnan(expected[i])))
        << what << ": entry " << i << " is " << actual[i] << ", not " << expected[i];
  }
}

}  // namespace

TEST(Filter, ValuesComeFromMeasuresNumberPropertiesOrDegrees) {
  // Directed: 0->1 (0.5), 1->2 (2), 2->2 (1, a self-loop), 0->2 (4); 3 is isolated.
  auto network = testing_support::makeNetwork(4, {{0, 1}, {1, 2}, {2, 2}, {0, 2}}, {0.5f, 2, 1, 4},
                                              testing_support::Directed::Yes);
  ASSERT_TRUE(network);
  const double sizes[] = {0.1, -4, 2.5, -1};
  ASSERT_TRUE(network->setPropertiesOfVertices(QLONumberArray::initWithDoubles(sizes), "sizes"));
  // A property under a built-in name does not shadow the measure.
  ASSERT_TRUE(
      network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(-7, 4), "Node Degree"));
  ASSERT_TRUE(network->setPropertiesOfVertices(
      std::make_shared<TextList>(TextList{"1", "2", "3", "4"}), "Label"));

  const std::vector<float> degrees = {2, 2, 4, 0};
  const std::vector<std::pair<const char*, std::vector<float>>> cases = {
      {"Node Degree", degrees},
      {"Node InDegree", {0, 1, 3, 0}},
      {"Node Strength", {4.5f, 2.5f, 8, 0}},
      {"Node InStrength", {0, 0.5f, 7, 0}},
      {"sizes", {0.1f, -4, 2.5f, -1}},
      // No single number per vertex: the degrees.
      {"Label", degrees},
      {"Absent", degrees},
  };
  for (const auto& [name, expected] : cases) {
    expectSameFloats(filter::filterValues(*network, name), expected, name);
  }
  EXPECT_EQ(filter::getMaxMinValuesForPropertyOfNetwork(*network, "sizes"),
            (std::pair{2.5f, -4.f}));
}

TEST(Ranges, OfValuesAndOfEdgeWeights) {
  // Both ignore NaN. The values' range starts at (0, +inf); the weights' has
  // no start, and falls back to (1, 0) when it has no weight to go by.
  struct Case {
    const char* what;
    std::vector<float> values;
    std::pair<float, float> ofValues;
    std::pair<double, double> ofWeights;
  };
  const std::vector<Case> cases = {
      {"mixed", {3, -2, 7, 0.5f}, {7, -2}, {7, -2}},
      {"all negative", {-3, -1, -8}, {0, -8}, {-1, -8}},
      {"empty", {}, {0, kInf}, {1, 0}},
      {"only NaN", {kNaN, kNaN}, {0, kInf}, {1, 0}},
      {"extremes in the tail, NaN last", {-4, 1, 2, 3, 4, 5, 6, 7, 9, kNaN}, {9, -4}, {9, -4}},
      {"extremes in late lanes, NaN first", {kNaN, 1, 1, 1, 1, 12, 1, -3, 1}, {12, -3}, {12, -3}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(filter::maxMinOfValues(c.values), c.ofValues) << c.what;
    EXPECT_EQ(filter::maxMinWeight(chain(c.values).get()), c.ofWeights) << c.what;
  }
  EXPECT_EQ(filter::maxMinWeight(nullptr), (std::pair{1.0, 0.0}));
  EXPECT_EQ(filter::maxMinWeight(chain({5, 7}, Weighted::No).get()), (std::pair{1.0, 0.0}));
}

TEST(Weights, ThresholdsNormaliseTheWeightsInRange) {
  // Were M - m taken in float, 2^24 + 1 would round to 2^24 and give 2^-23.
  const float wideSpan = static_cast<float>(2.0 / (16777216.0 + 1.0));
  struct Case {
    const char* what;
    std::vector<float> weights;
    float low;
    float high;
    std::vector<float> expected;
  };
  const std::vector<Case> cases = {
      {"positive: divided by the largest, bounds inclusive",
       {2, 4, 8, 16},
       4,
       8,
       {0, .25f, .5f, 0}},
      {"a non-positive smallest weight shifts", {-1, 0, 3}, -1, 3, {0, 0.25f, 1}},
      {"equal negative weights give NaN", {-2, -2}, -5, 5, {kNaN, kNaN}},
      {"NaN weights are never in range", {kNaN, 2, 4}, -kInf, kInf, {0, 0.5f, 1}},
      {"span computed in double", {-1, 16777216.0f, 1}, -2, 2, {0, 0, wideSpan}},
  };
  for (const Case& c : cases) {
    expectSameFloats(filter::thresholdedWeights(*chain(c.weights), c.low, c.high), c.expected,
                     c.what);
  }
}
