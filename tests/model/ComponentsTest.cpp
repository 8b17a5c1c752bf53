// The largest connected component: which one is kept and how it is renumbered.
#include <gtest/gtest.h>

#include "../support/networks.h"
#include "plexora/QLONetwork.h"

namespace {

using testing_support::Directed;

// Each edge a -> b weighs 10 a + b.
QLONetwork::Ptr build(std::uint64_t V, const testing_support::EdgeList& edges,
                      Directed directed = Directed::No) {
  std::vector<float> weights;
  for (const auto& [a, b] : edges) weights.push_back(static_cast<float>(10 * a + b));
  return testing_support::makeNetwork(V, edges, weights, directed);
}

}  // namespace

TEST(Components, KeepsTheLargestAndCutsEveryProperty) {
  // Components {0,2}, {1,3,5} (through a self-loop and a direction-ignoring
  // chain), {4}.
  auto network = build(6, {{0, 2}, {5, 3}, {1, 3}, {5, 5}}, Directed::Yes);
  network->setPropertiesOfVertices(
      std::make_shared<TextList>(TextList{"a", "b", "c", "d", "e", "f"}), "Name");
  auto position = QLOVector3dArray::initWithSize(6, Precision::Double);
  for (std::uint64_t v = 0; v < 6; ++v) position->setVector({double(v), 0, 0}, v);
  network->setPropertiesOfVertices(position, "Position");
  auto flags = QLONumberArray::initWithBoolScalar(false, 6);
  flags->setBoolValue(true, 5);
  network->setPropertiesOfVertices(flags, "flag");

  auto part = network->largestConnectedSubNetwork();
  ASSERT_TRUE(part);
  EXPECT_EQ(part->countVertices(), 3u);
  EXPECT_TRUE(part->isDirected());
  EXPECT_TRUE(part->isEdgeWeighted());
  ASSERT_EQ(part->countEdges(), 3u);
  // Old 1,3,5 become 0,1,2; edges keep their order and weights.
  EXPECT_EQ(part->edgeFromList[0], 2u);
  EXPECT_EQ(part->edgeToList[0], 1u);
  EXPECT_EQ(part->edgesWeights[0], 53.0f);
  EXPECT_EQ(part->edgeFromList[2], 2u);
  EXPECT_EQ(part->edgeToList[2], 2u);
  EXPECT_EQ(part->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"Name", "Position", "flag"}));
  EXPECT_EQ(part->vertexAtIndex(1).name(), "d");
  auto cutPosition = std::get<std::shared_ptr<QLOVector3dArray>>(part->propertyForKey("Position"));
  EXPECT_EQ(cutPosition->precision(), Precision::Double);
  EXPECT_EQ(cutPosition->vectorAtIndex(2)[0], 5.0);
  auto cutFlags = std::get<std::shared_ptr<QLONumberArray>>(part->propertyForKey("flag"));
  EXPECT_EQ(cutFlags->numberArrayType(), NumberType::Bool);
  EXPECT_TRUE(cutFlags->boolValueAtIndex(2));
  EXPECT_FALSE(cutFlags->boolValueAtIndex(0));
  // The original is untouched.
  EXPECT_EQ(network->countVertices(), 6u);
}

TEST(Components, TiesGoToTheComponentWithTheLowestVertex) {
  auto network = build(6, {{4, 5}, {1, 3}, {2, 0}});
  auto part = network->largestConnectedSubNetwork();
  ASSERT_EQ(part->countVertices(), 2u);
  EXPECT_EQ(part->edgesWeights[0], 20.0f);  // the {0,2} component
  // A network without edges keeps vertex 0 alone; an empty one stays empty.
  EXPECT_EQ(build(4, {})->largestConnectedSubNetwork()->countVertices(), 1u);
  EXPECT_EQ(build(0, {})->largestConnectedSubNetwork()->countVertices(), 0u);
}

TEST(Components, LongChainStaysLinear) {
  // A path given in an order that builds deep trees without path compression.
  const std::uint64_t n = 200000;
  testing_support::EdgeList edges;
  for (std::uint64_t v = n - 1; v > 0; --v) edges.push_back({v, v - 1});
  auto part = build(n + 5, edges)->largestConnectedSubNetwork();
  EXPECT_EQ(part->countVertices(), n);
  EXPECT_EQ(part->countEdges(), n - 1);
}
