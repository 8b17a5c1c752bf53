// The controller's part in the edge style: edges by weight use the map the
// vertices use, through undo too, and the defaults put the style back.
#include <gtest/gtest.h>

#include "../support/networks.h"
#include "app/VXLController.h"

namespace {

using edge_style::ColourMode;

TEST(ControllerEdgeStyle, EdgesFollowTheVerticesMapAndTheDefaults) {
  auto controller = VXLController::init();
  controller->setNetwork(testing_support::chain({1, 2, 3, 4, 5}));  // edge-weighted
  VXLNetworkView& view = *controller->networkView();
  controller->setEdgeColorMode(ColourMode::Weight);
  const auto first = colour::colorMapNamed(controller->selectedColorMap());
  ASSERT_NE(first, colour::ColorMap::Hot);
  EXPECT_EQ(view.edgeColorMap(), first);
  controller->selectColorMap("Hot");
  EXPECT_EQ(view.edgeColorMap(), colour::ColorMap::Hot);
  controller->undo();
  EXPECT_EQ(view.edgeColorMap(), first);

  controller->setEdgeWidthByWeight(true);
  controller->setEdgeColor({0.1f, 0.2f, 0.3f});
  controller->resetToDefaults();
  EXPECT_EQ(view.edgeColorMode(), ColourMode::Endpoints);
  EXPECT_FALSE(view.edgeWidthByWeight());
  EXPECT_EQ(view.edgeColor(), edge_style::ColourSettings{}.single);
}

}  // namespace
