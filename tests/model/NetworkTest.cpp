// The network's rules: validation, degrees and strengths, properties, vertices.
#include <gtest/gtest.h>

#include <cmath>

#include "../support/networks.h"
#include "plexora/QLONetwork.h"

namespace {

NetworkData smallData(bool directed) {
  // 0-1, 1-2, 2-2 (self-loop), 0-2 with weights; vertex 3 is isolated.
  NetworkData data;
  data.verticesCount = 4;
  data.from = {0, 1, 2, 0};
  data.to = {1, 2, 2, 2};
  data.weights = {0.5f, 2.0f, 1.0f, 4.0f};
  data.directed = directed;
  data.edgeWeighted = true;
  return data;
}

std::vector<double> values(const std::shared_ptr<QLONumberArray>& array) {
  std::vector<double> out;
  for (std::uint64_t i = 0; i < array->count(); ++i) out.push_back(array->doubleValueAtIndex(i));
  return out;
}

}  // namespace

TEST(Network, MakeRejectsInconsistentData) {
  struct Case {
    const char* what;
    std::function<void(NetworkData&)> spoil;
  };
  std::vector<Case> cases = {
      {"endpoint beyond V", [](NetworkData& d) { d.to[1] = 4; }},
      {"lists of different length", [](NetworkData& d) { d.to.pop_back(); }},
      {"weights of wrong length", [](NetworkData& d) { d.weights.pop_back(); }},
      {"short property",
       [](NetworkData& d) {
         d.properties.emplace_back("Name", std::make_shared<TextList>(TextList{"a"}));
       }},
      {"empty property value",
       [](NetworkData& d) { d.properties.emplace_back("x", std::monostate{}); }},
      {"duplicate property",
       [](NetworkData& d) {
         auto n = QLONumberArray::floatArrayWithScalar(1, 4);
         d.properties.emplace_back("a", n);
         d.properties.emplace_back("a", n);
       }},
  };
  for (auto& c : cases) {
    NetworkData data = smallData(false);
    c.spoil(data);
    std::string why;
    EXPECT_FALSE(QLONetwork::make(std::move(data), &why)) << c.what;
    EXPECT_FALSE(why.empty()) << c.what;
  }
}

TEST(Network, DegreesAndStrengths) {
  auto undirected = QLONetwork::make(smallData(false));
  EXPECT_EQ(values(undirected->calcDegrees()), (std::vector<double>{2, 2, 4, 0}));
  EXPECT_EQ(values(undirected->calcInDegrees()), values(undirected->calcDegrees()));
  EXPECT_EQ(values(undirected->calcStrengths()), (std::vector<double>{4.5, 2.5, 8, 0}));
  EXPECT_EQ(values(undirected->calcInStrengths()), values(undirected->calcStrengths()));

  auto directed = QLONetwork::make(smallData(true));
  EXPECT_EQ(values(directed->calcDegrees()), (std::vector<double>{2, 2, 4, 0}));
  EXPECT_EQ(values(directed->calcInDegrees()), (std::vector<double>{0, 1, 3, 0}));
  EXPECT_EQ(values(directed->calcInStrengths()), (std::vector<double>{0, 0.5, 7, 0}));

  auto empty = testing_support::makeNetwork(3, {});
  EXPECT_EQ(values(empty->calcDegrees()), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(empty->calcInStrengths()->count(), 3u);
  // Without weights every edge weighs 1.
  auto plain = testing_support::makeNetwork(2, {{0, 1}});
  EXPECT_FALSE(plain->isEdgeWeighted());
  EXPECT_EQ(plain->edgesWeights[0], 1.0f);
}

TEST(Network, PropertyTableKeepsOrderAndChecksCounts) {
  auto network = QLONetwork::make(smallData(false));
  EXPECT_EQ(network->propertyForKey("Name").index(), 0u);
  auto names = std::make_shared<TextList>(TextList{"a", "b c", "", "d"});
  EXPECT_TRUE(network->setPropertiesOfVertices(names, "Name"));
  auto position = QLOVector3dArray::initWithSize(4, Precision::Float);
  EXPECT_TRUE(network->setPropertiesOfVertices(position, "Position"));
  EXPECT_TRUE(network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(1, 4), "w"));
  EXPECT_FALSE(network->setPropertiesOfVertices(QLONumberArray::floatArrayWithScalar(1, 3), "bad"));
  EXPECT_FALSE(network->setPropertiesOfVertices(std::monostate{}, "nil"));
  // Replacing keeps the name's place.
  auto other = std::make_shared<TextList>(TextList{"w", "x", "y", "z"});
  EXPECT_TRUE(network->setPropertiesOfVertices(other, "Name"));
  EXPECT_EQ(network->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"Name", "Position", "w"}));
  EXPECT_EQ(std::get<std::shared_ptr<TextList>>(network->propertyForKey("Name")), other);

  // Text is always UTF-8 in the network (Python and the views show it); the
  // caller's list is not touched.
  auto bytes = std::make_shared<TextList>(TextList{"ok", "a\xaf", "\xed\xa0\x80", "\xc3"});
  EXPECT_TRUE(network->setPropertiesOfVertices(bytes, "raw"));
  EXPECT_EQ(*std::get<std::shared_ptr<TextList>>(network->propertyForKey("raw")),
            (TextList{"ok", "a\uFFFD", "\uFFFD\uFFFD\uFFFD", "\uFFFD"}));
  EXPECT_EQ((*bytes)[1], "a\xaf");
  NetworkData data = smallData(false);
  data.properties.emplace_back("Name", bytes);
  EXPECT_EQ(QLONetwork::make(std::move(data))->vertexName(1), "a\uFFFD");
}

TEST(Network, VerticesAnswerNameDegreeAndProperties) {
  auto network = QLONetwork::make(smallData(false));
  EXPECT_EQ(network->vertexAtIndex(3).name(), "3");  // no Name property: the number
  network->setPropertiesOfVertices(std::make_shared<TextList>(TextList{"a", "b", "c", "d"}),
                                   "Name");
  auto position = QLOVector3dArray::initWithSize(4, Precision::Float);
  position->setVector({1, 2, 3}, 2);
  network->setPropertiesOfVertices(position, "Position");
  auto vertices = network->vertices();
  ASSERT_EQ(vertices.size(), 4u);
  const QLOVertex& v = vertices[2];
  EXPECT_EQ(v.identification(), 2u);
  EXPECT_EQ(v.name(), "c");
  EXPECT_EQ(v.countEdges(), 4);  // self-loop counts twice
  auto props = v.properties();
  EXPECT_EQ(std::get<std::string>(props["Name"]), "c");
  EXPECT_EQ(vertices[3].countEdges(), 0);
  // A vertex keeps its network alive.
  QLOVertex kept = network->vertexAtIndex(0);
  network.reset();
  EXPECT_EQ(kept.name(), "a");
}
