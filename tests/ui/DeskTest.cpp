// The window's desk manners: find, selection items and undo from the Edit
// menu, the wheel over the side panel's inputs, the Window and Help menus
// and files dropped on the window.
#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QSpinBox>
#include <filesystem>

#include "application.h"
#include "ui/NetworkViewWidget.h"
#include "ui/SidePanel.h"

namespace {

using uitest::documents;
using uitest::processEventsUntil;

class Desk : public ::testing::Test {
 protected:
  void SetUp() override {
    window_ = ui::DocumentWindow::windowFor(documents().newDocument().get());
    ASSERT_TRUE(window_ && QTest::qWaitForWindowExposed(window_));
    NetworkData data;
    data.verticesCount = 4;
    data.from = {0, 1};
    data.to = {1, 2};
    data.properties.emplace_back(
        "Name", std::make_shared<TextList>(TextList{"Ada", "Grace", "Alan", "Barbara"}));
    window_->controller().setNetwork(QLONetwork::make(std::move(data)));
  }
  void TearDown() override { uitest::closeAllDocuments(); }

  VXLNetworkView& view() { return window_->networkView()->view(); }
  QAction* action(const char* name) { return window_->findChild<QAction*>(QString(name)); }

  ui::DocumentWindow* window_ = nullptr;
};

TEST_F(Desk, FindSelectsTheMatchesAndEditItemsUndo) {
  QAction* find = action("findAction");
  ASSERT_TRUE(find);
  EXPECT_EQ(find->shortcut(), QKeySequence(QKeySequence::Find));
  find->trigger();
  auto* field = window_->findChild<QLineEdit*>(QStringLiteral("findField"));
  ASSERT_TRUE(field && field->isVisible());
  QTest::keyClicks(field, "a");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{0, 1, 2, 3}));

  // The edit items call through; what they select is the controller's rule.
  action("invertSelectionAction")->trigger();
  EXPECT_TRUE(view().selectedIndices().empty());
  action("undoAction")->trigger();
  EXPECT_EQ(view().selectedIndices().size(), 4u);
  action("redoAction")->trigger();
  EXPECT_TRUE(view().selectedIndices().empty());
}

TEST_F(Desk, WheelOverAnUnfocusedPanelInputLeavesItAlone) {
  QSpinBox* spin = nullptr;
  for (auto* box : window_->sidePanel()->findChildren<QSpinBox*>()) {
    if (box->isVisible() && box->isEnabled() && box->value() < box->maximum()) spin = box;
  }
  ASSERT_TRUE(spin);
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_));
  window_->networkView()->setFocus();
  const int before = spin->value();
  const QPointF centre = QRectF(spin->rect()).center();
  const auto wheel = [&] {
    QWheelEvent event(centre, spin->mapToGlobal(centre), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(spin, &event);
  };
  wheel();
  EXPECT_EQ(spin->value(), before);
  spin->setFocus();
  ASSERT_TRUE(processEventsUntil([&] { return spin->hasFocus(); }));
  wheel();
  EXPECT_NE(spin->value(), before) << "a focused input takes the wheel";
}

TEST_F(Desk, HelpWindowMenuAndDroppedFiles) {
  action("keyboardShortcutsAction")->trigger();
  auto* shortcuts = window_->findChild<QMessageBox*>(QStringLiteral("keyboardShortcutsDialog"));
  ASSERT_TRUE(shortcuts);
  shortcuts->close();

  QMenu* windows = uitest::findMenu(window_->menuBar(), "Window");
  ASSERT_TRUE(windows);
  emit windows->aboutToShow();
  QString title = window_->windowTitle();
  EXPECT_TRUE(uitest::findAction(windows, title.remove(QStringLiteral("[*]"))));

  // A network file dropped on the start-up window opens into it.
  const auto network = view().network();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(
      (std::filesystem::path(PLEXVIEW_TEST_DATA) / "documents" / "two-parts.graphml").string()))});
  const QPoint centre = window_->rect().center();
  QDragEnterEvent enter(centre, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window_, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(centre, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window_, &drop);
  EXPECT_TRUE(processEventsUntil(
      [&] { return documents().documents().size() > 1 || view().network() != network; }));
}

}  // namespace
