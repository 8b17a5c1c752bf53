// View > Labels and the View panel's labels box: one mode for both, and the
// window's frame showing the labels.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenu>

#include "application.h"
#include "ui/NetworkViewWidget.h"

namespace {

using uitest::documents;
using uitest::processEventsUntil;

TEST(LabelsMenu, MenuAndPanelSetTheModeTheWindowDraws) {
  ui::DocumentWindow* window = ui::DocumentWindow::windowFor(documents().newDocument().get());
  ASSERT_TRUE(window && QTest::qWaitForWindowExposed(window));
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1};
  data.to = {1, 2};
  data.properties.emplace_back("Name",
                               std::make_shared<TextList>(TextList{"Ada", "Grace", "Alan"}));
  window->controller().setNetwork(QLONetwork::make(std::move(data)));
  VXLNetworkView& view = window->networkView()->view();
  view.zoomToFit();
  ASSERT_TRUE(processEventsUntil([&] { return view.camera().viewWidth > 0; }));
  const QImage bare = window->networkView()->grabFramebuffer();

  auto* all = window->findChild<QAction*>(QStringLiteral("labelsAllAction"));
  auto* box = window->findChild<QComboBox*>(QStringLiteral("showLabels"));
  ASSERT_TRUE(all && box);
  all->trigger();
  EXPECT_EQ(view.showLabels(), LabelMode::All);
  EXPECT_EQ(box->currentIndex(), 2);
  EXPECT_NE(window->networkView()->grabFramebuffer(), bare) << "no labels drawn";

  box->setCurrentIndex(1);
  EXPECT_EQ(view.showLabels(), LabelMode::Selected);
  auto* menu = window->findChild<QMenu*>(QStringLiteral("labelsMenu"));
  ASSERT_TRUE(menu);
  emit menu->aboutToShow();
  EXPECT_TRUE(window->findChild<QAction*>(QStringLiteral("labelsSelectedAction"))->isChecked());
  EXPECT_FALSE(all->isChecked());
  uitest::closeAllDocuments();
}

}  // namespace
