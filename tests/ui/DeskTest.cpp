// The window's desk manners: find, selection items and undo from the Edit
// menu, the wheel over the side
// panel's inputs, the export sheets per format, the Window and Help menus
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
  field->setText("AL");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{2}));

  action("selectNeighboursAction")->trigger();
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{1, 2}));
  action("invertSelectionAction")->trigger();
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{0, 3}));
  action("undoAction")->trigger();
  action("undoAction")->trigger();
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{2}));
  action("redoAction")->trigger();
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{1, 2}));
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

TEST_F(Desk, ExportSheetsFollowTheirFormat) {
  struct Case {
    const char* action;
    QString title, suffix, filter;
  };
  const Case cases[] = {
      {"exportToPDF", "Export Vector Document", ".pdf", "PDF document (*.pdf)"},
      {"exportToImage", "Export Image", ".png", "PNG image (*.png)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.action);
    QAction* item = nullptr;
    for (QAction* a : window_->findChildren<QAction*>()) {
      if (a->data().toString() == QString(c.action)) item = a;
    }
    ASSERT_TRUE(item);
    item->trigger();
    QFileDialog* dialog = nullptr;
    ASSERT_TRUE(processEventsUntil([&] {
      dialog = window_->findChild<QFileDialog*>();
      return dialog && dialog->isVisible();
    }));
    EXPECT_EQ(dialog->windowModality(), Qt::WindowModal) << "a sheet over the window";
    EXPECT_EQ(dialog->windowTitle(), c.title);
    EXPECT_EQ(dialog->nameFilters().front(), c.filter);
    EXPECT_TRUE(dialog->selectedFiles().value(0).endsWith(c.suffix))
        << dialog->selectedFiles().value(0).toStdString();
    dialog->reject();
    processEventsUntil([&] { return !window_->findChild<QFileDialog*>(); });
  }
}

TEST_F(Desk, HelpWindowMenuAndDroppedFiles) {
  action("keyboardShortcutsAction")->trigger();
  auto* shortcuts = window_->findChild<QMessageBox*>(QStringLiteral("keyboardShortcutsDialog"));
  ASSERT_TRUE(shortcuts);
  EXPECT_TRUE(shortcuts->text().contains(QStringLiteral("View \u203a Fit All:")));
  EXPECT_TRUE(shortcuts->text().contains(
      QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText)));
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
