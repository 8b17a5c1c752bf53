// Vertex sizes from property values, and the view's sizes following its
// settings and its network.
#include "render/vertexsizes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "plexora/QLONetwork.h"
#include "render/VXLNetworkView.h"

namespace {

using vertex_sizes::Range;
using vertex_sizes::Transform;

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInf = std::numeric_limits<float>::infinity();

TEST(VertexSizes, ValuesPlacedBetweenTheSmallestAndLargestSize) {
  struct Case {
    const char* name;
    std::vector<float> values;
    Transform transform;
    Range range;
    std::vector<float> sizes;
  };
  const Case cases[] = {
      {"linear", {0, 5, 10}, Transform::Linear, {1, 3}, {1, 2, 3}},
      {"square root", {0, 25, 100}, Transform::SquareRoot, {1, 3}, {1, 2, 3}},
      {"log", {1, 10, 100}, Transform::Log, {0.5f, 2.5f}, {0.5f, 1.5f, 2.5f}},
      {"constant: the middle size", {7, 7, 7}, Transform::Linear, {1, 3}, {2, 2, 2}},
      {"no vertices", {}, Transform::Linear, {1, 3}, {}},
      {"NaN and infinities: the smallest size",
       {kNaN, 0, kInf, 10, -kInf},
       Transform::Linear,
       {1, 3},
       {1, 1, 1, 3, 1}},
      {"negative under the square root", {-1, 0, 4}, Transform::SquareRoot, {1, 3}, {1, 1, 3}},
      {"zero and less under the log", {0, -3, 1, 100}, Transform::Log, {1, 3}, {1, 1, 1, 3}},
      {"only unplaceable values", {0, -1}, Transform::Log, {1, 3}, {1, 1}},
      {"one placeable value among others", {0, 5}, Transform::Log, {1, 3}, {1, 2}},
  };
  for (const Case& c : cases) {
    const std::vector<float> sizes = vertex_sizes::sizesOf(c.values, c.transform, c.range);
    ASSERT_EQ(sizes.size(), c.sizes.size()) << c.name;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      EXPECT_NEAR(sizes[i], c.sizes[i], 1e-6) << c.name << " at " << i;
    }
  }
}

TEST(VertexSizes, RangesMustBePositiveOrderedAndBounded) {
  // Bounds: equal ends allowed, zero, reversed, too large or not finite not.
  const std::pair<Range, bool> ranges[] = {
      {{1, 1}, true}, {{0, 1}, false}, {{2, 1}, false}, {{1, 101}, false}, {{kNaN, 1}, false},
  };
  for (const auto& [range, valid] : ranges) {
    EXPECT_EQ(vertex_sizes::validRange(range), valid) << range.minimum << ".." << range.maximum;
  }
}

std::shared_ptr<QLONetwork> pathWithProperty(std::uint64_t n, std::vector<float> values) {
  NetworkData data;
  data.verticesCount = n;
  for (std::uint64_t i = 0; i + 1 < n; ++i) {
    data.from.push_back(i);
    data.to.push_back(i + 1);
  }
  auto network = QLONetwork::make(std::move(data));
  network->setPropertiesOfVertices(QLONumberArray::initWithFloats(values), "w");
  return network;
}

TEST(VertexSizes, ViewSizesFollowSettingsAndNetwork) {
  VXLNetworkView view;
  view.setNetwork(pathWithProperty(3, {1, 2, 3}));
  EXPECT_EQ(view.sizeProperty(), "None");
  EXPECT_EQ(view.vertexSizes(), nullptr);

  view.setSizeRange({1, 3});
  view.setSizeProperty("w");
  auto sizes = view.vertexSizes();
  ASSERT_TRUE(sizes);
  EXPECT_EQ(*sizes, (std::vector<float>{1, 2, 3}));
  EXPECT_EQ(view.vertexSizes(), sizes) << "made again with nothing changed";

  view.setSizeProperty("Node Degree");  // 1, 2, 1
  EXPECT_EQ(*view.vertexSizes(), (std::vector<float>{1, 3, 1}));
  view.setSizeRange({2, 4});
  EXPECT_EQ(*view.vertexSizes(), (std::vector<float>{2, 4, 2}));

  // Another network: its own values; one without the property: standard size.
  view.setSizeProperty("w");
  view.setNetwork(pathWithProperty(2, {5, 1}));
  EXPECT_EQ(*view.vertexSizes(), (std::vector<float>{4, 2}));
  NetworkData plain;
  plain.verticesCount = 2;
  view.setNetwork(QLONetwork::make(std::move(plain)));
  EXPECT_EQ(view.vertexSizes(), nullptr);

  view.setNetwork(pathWithProperty(2, {5, 1}));
  view.setSizeProperty("None");
  EXPECT_EQ(view.vertexSizes(), nullptr);

  EXPECT_THROW(view.setSizeRange({3, 1}), std::invalid_argument);
  EXPECT_EQ(view.sizeRange(), (Range{2, 4}));
}

}  // namespace
