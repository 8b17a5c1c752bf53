// Plexview's own settings in a GraphML document: written as marked graph
// keys, read back into the network's record, and kept through a save of a
// network whose writer is given none.
#include <gtest/gtest.h>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"

namespace {

using plexora::DocumentSetting;

std::shared_ptr<QLONetwork> read(const std::string& text) {
  ReadError error;
  auto network = plexora::readGraphml(text, "settings.graphml", &error);
  EXPECT_TRUE(network) << error.describe();
  return network;
}

TEST(GraphmlSettings, WrittenReadAndKeptOnce) {
  NetworkData data;
  data.verticesCount = 2;
  const auto network = QLONetwork::make(std::move(data));
  const std::vector<DocumentSetting> settings = {
      {"vertexSizeProperty", "string", "a \"<b>\" & c"},
      {"vertexSizeMinimum", "float", "0.25"},
  };
  const std::string text = plexora::graphmlText(*network, &settings);
  EXPECT_NE(text.find("plexview:setting=\"vertexSizeMinimum\""), std::string::npos) << text;

  const auto back = read(text);
  ASSERT_TRUE(back && back->graphmlExtras());
  EXPECT_EQ(back->graphmlExtras()->settings, settings);
  // Written again with none given: the settings read, once, not as other
  // graph data too.
  const std::string again = plexora::graphmlText(*back);
  EXPECT_EQ(read(again)->graphmlExtras()->settings, settings);
  EXPECT_EQ(again, text);
  // Given an empty list: none.
  const std::vector<DocumentSetting> none;
  EXPECT_TRUE(read(plexora::graphmlText(*back, &none))->graphmlExtras()->settings.empty());
}

TEST(GraphmlSettings, OnlyKeysInOurNamespaceAreSettings) {
  // The same attribute under another tool's namespace is other graph data.
  const std::string text =
      "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\" xmlns:o=\"urn:other\">"
      "<key id=\"k\" for=\"graph\" attr.name=\"s\" attr.type=\"string\" o:setting=\"s\"/>"
      "<graph><data key=\"k\">v</data></graph></graphml>";
  const auto network = read(text);
  ASSERT_TRUE(network && network->graphmlExtras());
  EXPECT_TRUE(network->graphmlExtras()->settings.empty());
  EXPECT_NE(network->graphmlExtras()->graphChildren.find(">v<"), std::string::npos);
}

}  // namespace
