// The view panel's vertex-size controls: they reach the view, follow the
// controller, and keep the range valid.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QTest>

#include "application.h"
#include "ui/SidePanel.h"

namespace {

using vertex_sizes::Range;
using vertex_sizes::Transform;

class ViewPanelSizes : public ::testing::Test {
 protected:
  void SetUp() override {
    uitest::ensureApplication();
    controller_ = VXLController::init();
    panel_ = std::make_unique<ui::SidePanel>(controller_);
    controller_->setRefreshListener([this](VXLController::Panel p) { panel_->refresh(p); });
    NetworkData data;
    data.verticesCount = 3;
    data.from = {0, 1};
    data.to = {1, 2};
    data.properties = {{"score", QLONumberArray::initWithFloats(std::vector<float>{4, 0, 2})}};
    controller_->setNetwork(QLONetwork::make(std::move(data)));
  }
  template <class W>
  W* child(const char* name) {
    W* found = panel_->findChild<W*>(name);
    EXPECT_TRUE(found) << name;
    return found;
  }
  static void choose(QComboBox* box, const QString& text) {
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    box->setCurrentIndex(index);
    emit box->activated(index);
  }
  VXLNetworkView& view() { return *controller_->networkView(); }

  VXLController::Ptr controller_;
  std::unique_ptr<ui::SidePanel> panel_;
};

TEST_F(ViewPanelSizes, ControlsReachTheViewAndFollowTheController) {
  auto* property = child<QComboBox>("sizeProperty");
  auto* transform = child<QComboBox>("sizeTransform");
  auto* minimum = child<QDoubleSpinBox>("sizeMinimum");
  auto* maximum = child<QDoubleSpinBox>("sizeMaximum");
  ASSERT_TRUE(property && transform && minimum && maximum);

  choose(property, "score");
  choose(transform, "Logarithm");
  EXPECT_EQ(view().sizeProperty(), "score");
  EXPECT_EQ(view().sizeTransform(), Transform::Log);
  // A bound moved past the other takes it along.
  minimum->setValue(5);
  EXPECT_EQ(view().sizeRange(), (Range{5, 5}));
  maximum->setValue(2);
  EXPECT_EQ(view().sizeRange(), (Range{2, 2}));

  controller_->setSizeProperty("Node Degree");
  controller_->setSizeTransform(Transform::SquareRoot);
  controller_->setSizeRange({0.75f, 6});
  EXPECT_EQ(property->currentText(), "Node Degree");
  EXPECT_EQ(transform->currentText(), "Square root");
  EXPECT_EQ(minimum->value(), 0.75);
  EXPECT_EQ(maximum->value(), 6.0);
}

}  // namespace
