// The view panel's edge controls: the colour mode, arrows and widths reach
// the view through the controller, and a refresh shows the view's state.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>

#include "app/VXLController.h"
#include "application.h"
#include "ui/panels/ViewPanel.h"

namespace {

using edge_style::ColourMode;

TEST(EdgeStylePanel, ControlsReachTheViewAndFollowIt) {
  uitest::ensureApplication();
  const auto controller = VXLController::init();
  ui::ViewPanel panel(controller);
  panel.refresh();
  auto* mode = panel.findChild<QComboBox*>("edgeColorMode");
  ASSERT_TRUE(mode);
  const int single = mode->findText("Single colour");
  mode->setCurrentIndex(single);
  emit mode->activated(single);
  EXPECT_EQ(controller->networkView()->edgeColorMode(), ColourMode::Single);
  controller->setEdgeColorMode(ColourMode::Weight);
  panel.refresh();
  EXPECT_EQ(mode->currentText(), "Weight");

  for (const char* name : {"showArrows", "edgeWidthByWeight"}) {
    auto* box = panel.findChild<QCheckBox*>(name);
    ASSERT_TRUE(box) << name;
    box->setChecked(!box->isChecked());
    const VXLNetworkView& view = *controller->networkView();
    const bool on =
        std::string(name) == "showArrows" ? view.showArrows() : view.edgeWidthByWeight();
    EXPECT_EQ(on, box->isChecked()) << name;
  }
}

}  // namespace
