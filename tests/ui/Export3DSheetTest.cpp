// The 3D export sheet in a document window, and Web Bundle…
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

#include "application.h"
#include "ui/export3dsheet.h"

namespace {

namespace fs = std::filesystem;
using namespace uitest;

const fs::path kOutput = fs::path(PLEXVIEW_TEST_OUTPUT) / "export3d";

QAction* exportAction(ui::DocumentWindow* window, const QString& text) {
  QAction* exports = findAction(findMenu(window->menuBar(), "File"), "Export");
  if (!exports || !exports->menu()) return nullptr;
  emit exports->menu()->aboutToShow();  // validates the items
  return findAction(exports->menu(), text);
}

// Triangle 0-1-2 plus vertex 3, a numeric "Age" and a text "zone".
std::shared_ptr<QLONetwork> smallNetwork() {
  NetworkData data;
  data.verticesCount = 4;
  data.from = {0, 1, 2};
  data.to = {1, 2, 0};
  data.properties = {{"Age", QLONumberArray::initWithFloats(std::vector<float>{30, 40, 50, 60})},
                     {"zone", std::make_shared<TextList>(TextList{"n", "s", "n", "e"})}};
  return QLONetwork::make(std::move(data));
}

class Export3DSheetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::remove_all(kOutput);
    fs::create_directories(kOutput);
    const auto document = documents().newDocument();
    window_ = ui::DocumentWindow::windowFor(document.get());
    ASSERT_TRUE(window_ && QTest::qWaitForWindowExposed(window_));
    window_->controller().setIterations(0);
    window_->controller().setNetwork(smallNetwork());
  }
  void TearDown() override { closeAllDocuments(); }

  ui::Export3DSheet* openSheet() {
    QAction* action = exportAction(window_, QStringLiteral("3D Export\u2026"));
    if (!action || !action->isEnabled()) return nullptr;
    action->trigger();
    processEventsUntil([] { return visible<ui::Export3DSheet>("export3DSheet"); });
    return visible<ui::Export3DSheet>("export3DSheet");
  }

  static QStringList column(QTableView* table, int column, int role) {
    QStringList values;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
      values << table->model()->index(row, column).data(role).toString();
    }
    return values;
  }

  ui::DocumentWindow* window_ = nullptr;
};

TEST_F(Export3DSheetTest, TheSheetShowsTheOfferedPropertiesAllPickedAtFunctionOne) {
  ui::Export3DSheet* sheet = openSheet();
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->parentWidget(), window_);
  EXPECT_EQ(column(sheet->colorsTable(), 0, Qt::DisplayRole).size(), 4);
  EXPECT_EQ(sheet->colorsTable()->selectionModel()->selectedRows().size(), 4);

  // Cancel writes nothing and opening again starts afresh.
  auto* model = sheet->colorsTable()->model();
  ASSERT_TRUE(model->setData(model->index(0, 1), 4, Qt::EditRole));
  sheet->colorsTable()->selectionModel()->select(
      model->index(1, 0), QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  sheet->cancelButton()->click();
  EXPECT_FALSE(sheet->isVisible());
  QTest::qWait(100);
  EXPECT_FALSE(visible<QFileDialog>("webBundleSavePanel"));

  ASSERT_EQ(openSheet(), sheet);
  EXPECT_EQ(column(sheet->colorsTable(), 1, Qt::EditRole).first(), QStringLiteral("1"));
  EXPECT_EQ(sheet->colorsTable()->selectionModel()->selectedRows().size(), 4);
  sheet->cancelButton()->click();
}

TEST_F(Export3DSheetTest, OKAsksForTheFolderAndWritesTheBundleAsTheTablesSay) {
  ui::Export3DSheet* sheet = openSheet();
  ASSERT_TRUE(sheet);
  auto* model = sheet->colorsTable()->model();
  ASSERT_TRUE(model->setData(model->index(1, 1), 0, Qt::EditRole));  // degree: linear
  sheet->colorsTable()->selectionModel()->select(
      model->index(2, 0), QItemSelectionModel::Deselect | QItemSelectionModel::Rows);

  const fs::path folder = kOutput / "bundle";
  fs::remove_all(folder);  // left by an earlier run: the dialog would open it
  QString proposed;
  whenShown<QFileDialog>("webBundleSavePanel", [&](QFileDialog* panel) {
    proposed = panel->selectedFiles().value(0);
    uitest::chooseInFileDialog(panel, QString::fromStdString(folder.string()));
  });
  sheet->okButton()->click();
  EXPECT_FALSE(sheet->isVisible());
  ASSERT_TRUE(processEventsUntil([&] { return fs::exists(folder / "properties.json"); }));
  EXPECT_TRUE(proposed.endsWith(QStringLiteral("/Random Network"))) << proposed.toStdString();

  EXPECT_EQ(contentsOf(folder / "degree.colors"),
            window_->controller().colorsForProperty("Node Degree", "Linear")->text());
  EXPECT_TRUE(fs::exists(folder / "Age.property"));
  EXPECT_FALSE(fs::exists(folder / "Node_InDegree.colors"));
}

TEST_F(Export3DSheetTest, WebBundleWritesTheDefaultsOrSaysWhyNot) {
  QAction* action = exportAction(window_, QStringLiteral("Web Bundle\u2026"));
  ASSERT_TRUE(action);

  const fs::path folder = kOutput / "defaults";
  fs::remove_all(folder);  // left by an earlier run: the dialog would open it
  whenShown<QFileDialog>("webBundleSavePanel", [&](QFileDialog* panel) {
    uitest::chooseInFileDialog(panel, QString::fromStdString(folder.string()));
  });
  action->trigger();
  ASSERT_TRUE(processEventsUntil([&] { return fs::exists(folder / "properties.json"); }));
  EXPECT_TRUE(fs::exists(folder / "Node_InDegree.colors")) << "every offered row is written";

  // A folder inside a plain file cannot be made: an alert over the window.
  std::ofstream(kOutput / "plain") << "x";
  QString reason;
  bool alerted = false;
  whenShown<QFileDialog>("webBundleSavePanel", [&](QFileDialog* panel) {
    uitest::chooseInFileDialog(panel,
                               QString::fromStdString((kOutput / "plain" / "bundle").string()));
  });
  whenShown<QMessageBox>("webBundleFailedAlert", [&](QMessageBox* box) {
    alerted = true;
    reason = box->informativeText();
    box->button(QMessageBox::Ok)->click();
  });
  action->trigger();
  ASSERT_TRUE(processEventsUntil([&] { return alerted; }));
  EXPECT_TRUE(reason.contains(QStringLiteral("plain"))) << reason.toStdString();
  EXPECT_EQ(contentsOf(kOutput / "plain"), "x");
}

}  // namespace
