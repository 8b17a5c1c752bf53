// A saved document keeps the window's vertex-size settings, and reopening it
// gives them back.
#include <gtest/gtest.h>

#include "../colour/scratch.h"
#include "../support/files.h"
#include "app/QLOComplexNetwork.h"
#include "app/doctypes.h"

namespace {

using vertex_sizes::Range;
using vertex_sizes::Transform;

std::shared_ptr<QLONetwork> pathWithWeights() {
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1};
  data.to = {1, 2};
  auto network = QLONetwork::make(std::move(data));
  network->setPropertiesOfVertices(QLONumberArray::initWithFloats(std::vector<float>{1, 5, 9}),
                                   "w & <more>");
  return network;
}

// Opens `file` into a fresh window controller, as a window does.
std::shared_ptr<VXLController> reopen(const std::filesystem::path& file) {
  QLOComplexNetwork document;
  EXPECT_TRUE(document.readFromURL(file, app::kComplexNetworkType, nullptr));
  auto controller = VXLController::init();
  document.setNetworkController(controller.get());
  document.loadOpennedNetwork();
  document.setNetworkController(nullptr);
  return controller;
}

TEST(SizeSettingsDocument, SavedSettingsComeBackWhenReopened) {
  const ScratchFolder scratch;
  auto controller = VXLController::init();
  controller->setNetwork(pathWithWeights());
  controller->setSizeTransform(Transform::SquareRoot);
  controller->setSizeRange({0.25f, 4.5f});
  controller->setSizeProperty("w & <more>");
  QLOComplexNetwork document;
  document.setNetworkController(controller.get());
  std::string error;
  const auto file = scratch.path() / "sized.graphml";
  ASSERT_TRUE(document.saveToURL(file, &error)) << error;

  const auto reopened = reopen(file);
  EXPECT_EQ(reopened->sizeProperty(), "w & <more>");
  EXPECT_EQ(reopened->sizeTransform(), Transform::SquareRoot);
  EXPECT_EQ(reopened->sizeRange(), (Range{0.25f, 4.5f}));
  EXPECT_EQ(*reopened->networkView()->vertexSizes(), *controller->networkView()->vertexSizes());

  // Saved again without sizes: the document carries none, and opening it
  // leaves a window's settings at their defaults.
  controller->setSizeProperty("None");
  ASSERT_TRUE(document.saveToURL(file, &error)) << error;
  document.setNetworkController(nullptr);
  EXPECT_EQ(testing_support::contentsOf(file).find("vertexSize"), std::string::npos);
  const auto plain = reopen(file);
  EXPECT_EQ(plain->sizeProperty(), "None");
  EXPECT_EQ(plain->sizeRange(), Range{});
}

}  // namespace
