// The side panel around a controller without a GL widget: controls reach the
// controller and view, refreshes do not fire them back, the table selects.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <map>
#include <string>
#include <vector>

#include "../support/networks.h"
#include "app/QLOComplexNetwork.h"
#include "application.h"
#include "colour/hexcolour.h"
#include "render/VXLLegends.h"
#include "ui/SidePanel.h"
#include "ui/VXLVerticesTableController.h"

namespace {

using Panel = VXLController::Panel;
using V = VXLNetworkView;

// 0 -> 1 -> ... -> 6, weighted and directed, with "score", "Name" and "Color".
std::shared_ptr<QLONetwork> directedWeightedPath() {
  NetworkData data;
  data.verticesCount = 7;
  for (std::uint64_t k = 0; k + 1 < 7; ++k) {
    data.from.push_back(k);
    data.to.push_back(k + 1);
    data.weights.push_back(static_cast<float>(k + 1));
  }
  data.directed = true;
  data.edgeWeighted = true;
  data.properties = {
      {"score", QLONumberArray::initWithFloats(std::vector<float>{4, 0, 2, 8, 6, 1, 3})},
      {"Name", std::make_shared<TextList>(TextList{"a", "b", "c", "d", "e", "f", "g"})},
      {"Color", QLOVector3dArray::initWithSize(7, Precision::Float)},
  };
  return QLONetwork::make(std::move(data));
}

QStringList itemsOf(const QComboBox* box) {
  QStringList items;
  for (int i = 0; i < box->count(); ++i) items << box->itemText(i);
  return items;
}
QStringList qtList(const std::vector<std::string>& titles) {
  QStringList list;
  for (const std::string& title : titles) list << QString::fromStdString(title);
  return list;
}

class SidePanelTest : public ::testing::Test {
 protected:
  // Shows the panel in a scroll area of this height around a new
  // controller, which `prepare` sets up once every refresh is counted.
  template <class Prepare>
  void showPanel(Prepare prepare, int height) {
    uitest::ensureApplication();
    controller_ = VXLController::init();
    scroll_ = std::make_unique<QScrollArea>();
    scroll_->setWidgetResizable(true);
    panel_ = new ui::SidePanel(controller_);
    scroll_->setWidget(panel_);
    controller_->setRefreshListener([this](Panel p) {
      ++refreshes_[p];
      panel_->refresh(p);
    });
    prepare(*controller_);
    scroll_->resize(420, height);
    scroll_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(scroll_.get()));
    refreshes_.clear();
  }

  template <class W>
  W* child(const char* name) {
    W* found = panel_->findChild<W*>(name);
    EXPECT_TRUE(found) << name;
    return found;
  }
  V& view() { return *controller_->networkView(); }

  // Types `text` into a field as a user would and presses Return.
  void typeInto(QLineEdit* field, const QString& text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
  }
  // Chooses the item of that text as a user would (the activated signal).
  void choose(QComboBox* box, const QString& text) {
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    box->setCurrentIndex(index);
    emit box->activated(index);
  }
  void click(QAbstractButton* button) {
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
  }

  VXLController::Ptr controller_;
  std::unique_ptr<QScrollArea> scroll_;
  ui::SidePanel* panel_ = nullptr;
  std::map<Panel, int> refreshes_;
};

// Around a generated network of 60 vertices.
class Panels : public SidePanelTest {
 protected:
  void SetUp() override {
    showPanel(
        [](VXLController& c) {
          c.generator().verticesText = "60";
          c.awakeFromNib();
        },
        900);
  }
};

// Around the weighted path.
class ColourPanelTest : public SidePanelTest {
 protected:
  void SetUp() override {
    showPanel([](VXLController& c) { c.setNetwork(directedWeightedPath()); }, 1400);
  }
};

TEST_F(Panels, SlidersAndFieldsSetTheLayoutConstants) {
  auto* attraction = child<QSlider>("attractionConstantSlider");
  ASSERT_TRUE(attraction);
  attraction->setValue(99);
  QTest::keyClick(attraction, Qt::Key_Right);  // one step, as the user moves it
  EXPECT_FLOAT_EQ(view().attractionConstant(), 0.01f);
  EXPECT_EQ(child<QLineEdit>("attractionConstantField")->text(), "0.01");

  auto* viscosity = child<QLineEdit>("viscosityConstantField");
  typeInto(viscosity, "0.2");
  EXPECT_EQ(view().viscosityConstant(), 0.2f);
  EXPECT_EQ(child<QSlider>("viscosityConstantSlider")->value(), 60);  // 100 log10(4)
  typeInto(viscosity, "fast");  // not a number: nothing changes
  EXPECT_EQ(view().viscosityConstant(), 0.2f);
  EXPECT_EQ(viscosity->text(), "0.2");
}

TEST_F(Panels, ARefreshShowsTheControllerWithoutFiringTheControlsBack) {
  controller_->setRepulsiveConstant(123.0f);
  controller_->setIterations(4);
  controller_->setEdgesIntensity(0.35f);
  controller_->setShowNodes(false);
  // One refresh per setter: no control answered its own refresh.
  EXPECT_EQ(refreshes_[Panel::Properties], 4);
  EXPECT_EQ(view().repulsiveConstant(), 123.0f);                       // not the slider's rounding
  EXPECT_EQ(child<QSlider>("repulsiveConstantSlider")->value(), 109);  // 100 log10(12.3)
  EXPECT_EQ(child<QAbstractButton>("showNodes")->isChecked(), false);
  EXPECT_EQ(child<QDoubleSpinBox>("edgesIntensity")->value(), 0.35);
  auto* iterations = child<QAbstractSpinBox>("iterations");
  EXPECT_EQ(iterations->text(), "4");
  iterations->setFocus();
  QTest::keyClick(iterations, Qt::Key_Up);
  EXPECT_EQ(view().iterations(), 5u);
}

TEST_F(Panels, StartPauseFollowsTheViewAndBoxLayoutUsesTheSizes) {
  auto* startPause = child<QAbstractButton>("startPause");
  ASSERT_TRUE(startPause);
  EXPECT_FALSE(view().fAnimate());
  EXPECT_EQ(startPause->text(), "Start");
  QTest::mouseClick(startPause, Qt::LeftButton);
  EXPECT_TRUE(view().fAnimate());
  EXPECT_EQ(startPause->text(), "Pause");
  view().pause();  // from elsewhere (the Space key)
  EXPECT_TRUE(uitest::processEventsUntil([&] { return startPause->text() == "Start"; }));
  EXPECT_FALSE(startPause->isChecked());

  // The box sizes reach the randomizer: Y stays within its half-height.
  child<QDoubleSpinBox>("sizeY")->setValue(2.0);
  QTest::mouseClick(child<QAbstractButton>("randomize"), Qt::LeftButton);
  double widestY = 0;
  for (const auto& p : testing_support::vectorsOf(*view().positions())) {
    widestY = std::max(widestY, std::abs(p[1]));
  }
  EXPECT_LE(widestY, 2.0);
}

TEST_F(Panels, RepulsionMethodReachesTheViewAndMultilevelStartPlaces) {
  auto* method = child<QComboBox>("repulsionMethod");
  ASSERT_TRUE(method);
  method->setCurrentIndex(1);  // Exact
  EXPECT_FALSE(view().automaticRepulsion());
  EXPECT_EQ(view().barnesHutTheta(), 0.0f);
  child<QDoubleSpinBox>("barnesHutTheta")->setValue(0.5);
  EXPECT_EQ(method->currentText(), "Approximate");
  EXPECT_EQ(view().barnesHutTheta(), 0.5f);
  method->setCurrentIndex(0);
  EXPECT_TRUE(view().automaticRepulsion());

  const auto before = testing_support::vectorsOf(*view().positions());
  QTest::mouseClick(child<QAbstractButton>("multilevelStart"), Qt::LeftButton);
  EXPECT_NE(testing_support::vectorsOf(*view().positions()), before);
}

TEST_F(Panels, NetworkInfoAndFilterFollowAnInstalledNetwork) {
  controller_->setNetwork(directedWeightedPath());
  EXPECT_EQ(child<QLabel>("edgeCount")->text(), "6");

  auto* selector = child<QComboBox>("filterProperty");
  ASSERT_TRUE(selector);
  EXPECT_EQ(itemsOf(selector), qtList(controller_->filterPropertyTitles()));

  selector->setFocus();
  QTest::keyClick(selector, Qt::Key_End);  // "score": values 0 .. 8
  EXPECT_EQ(view().filterPropertyName(), "score");
  typeInto(child<QLineEdit>("minFilterPropertyField"), "2.5");
  EXPECT_EQ(view().minFilterProperty(), 2.5f);
  EXPECT_EQ(child<QSlider>("minFilterPropertySlider")->value(), 313);  // 2.5 / 8, rounded
}

TEST_F(Panels, TheTableShowsAMillionVerticesLazilyAndSelects) {
  NetworkData data;
  data.verticesCount = 1'000'000;
  data.from = {999'999};
  data.to = {0};
  controller_->setNetwork(QLONetwork::make(std::move(data)));
  auto* table = child<QTableView>("verticesTable");
  ASSERT_TRUE(table);
  auto* model = table->model();
  ASSERT_EQ(model->rowCount(), 1'000'000);
  EXPECT_EQ(model->index(999'999, 1).data().toString(), "999999");
  EXPECT_EQ(model->index(999'999, 3).data().toULongLong(), 1u);
  table->scrollToBottom();
  QTest::qWait(50);
  QItemSelectionModel* selection = table->selectionModel();
  selection->select(model->index(2, 0),
                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  selection->select(model->index(999'999, 0),
                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{2, 999'999}));
  // A selection made in the view selects its rows, and the search field
  // keeps the rows whose name holds its text.
  controller_->selectVertexWithIndex(6);
  EXPECT_TRUE(uitest::processEventsUntil([&] {
    const QModelIndexList rows = selection->selectedRows();
    return rows.size() == 1 && rows.front().row() == 6;
  }));
  child<QLineEdit>("verticesSearch")->setText("123456");
  ASSERT_EQ(model->rowCount(), 1);
  EXPECT_EQ(model->index(0, 2).data().toULongLong(), 123456u);
  child<QLineEdit>("verticesSearch")->setText("99999");
  ASSERT_EQ(model->rowCount(), 19);  // 99999, x99999 and 99999x
  // Sorted by degree, the two ends of the one edge come first.
  table->sortByColumn(3, Qt::DescendingOrder);
  EXPECT_EQ(model->index(0, 2).data().toULongLong(), 999'999u);
  EXPECT_EQ(model->index(1, 3).data().toULongLong(), 0u);
}

TEST_F(ColourPanelTest, PopUpsOfferTheControllersTitlesAndRecolourAtOnce) {
  auto* property = child<QComboBox>("colorSelector");
  ASSERT_TRUE(property);
  EXPECT_EQ(itemsOf(property), qtList(controller_->colorPropertyTitles()));
  EXPECT_EQ(itemsOf(child<QComboBox>("sortPropertySelector")),
            qtList(controller_->sortPropertyTitles()));
  // A property added from elsewhere is offered at once.
  controller_->addColorProperty(QLONumberArray::floatArrayWithScalar(1, 7), "extra");
  EXPECT_TRUE(itemsOf(property).contains("extra"));
  choose(property, "score");
  EXPECT_EQ(controller_->selectedColorProperty(), "score");

  refreshes_.clear();
  const auto before = view().colors();
  choose(child<QComboBox>("colorMapSelector"), "Gray");
  EXPECT_EQ(controller_->selectedColorMap(), "Gray");
  EXPECT_NE(view().colors(), before);
  EXPECT_EQ(refreshes_[Panel::Colour], 1);
  choose(child<QComboBox>("colorFunctionSelector"), "Logarithmic");
  EXPECT_EQ(controller_->selectedColorFunction(), "Logarithmic");
}

TEST_F(ColourPanelTest, LimitControlsFollowOneAnotherAndTheController) {
  auto* check = child<QCheckBox>("propertyColorLimitCheck");
  auto* field = child<QLineEdit>("propertyColorLimitField");
  auto* slider = child<QSlider>("propertyColorLimitSlider");
  auto* hide = child<QCheckBox>("propertyHideNonIndexedCheck");
  EXPECT_FALSE(field->isEnabled());
  click(check);  // the field is empty: eight
  EXPECT_EQ(field->text(), "8");

  typeInto(field, "3");
  EXPECT_EQ(controller_->indexedColorLimit(), 3);
  EXPECT_EQ(slider->value(), 3);
  slider->setValue(5);
  EXPECT_EQ(field->text(), "5");
  EXPECT_EQ(controller_->indexedColorLimit(), 5);
  click(hide);
  EXPECT_TRUE(controller_->hideNonIndexItems());

  choose(child<QComboBox>("sortPropertySelector"), "score");
  EXPECT_EQ(controller_->sortPropertyTitle(), "score");
}

TEST_F(ColourPanelTest, TheOpenButtonStartsBesideTheDocumentAndSelectsTheFile) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const std::filesystem::path base = folder.path().toStdString();
  QLOComplexNetwork document;
  document.setFileURL(base / "network.graphml");
  controller_->setDocument(&document);
  const std::filesystem::path file = base / "levels.txt";
  std::ofstream(file) << "5\n4\n3\n2\n1\n0\n-1\n";

  click(child<QAbstractButton>("colorsOpenButton"));
  auto* dialog = scroll_->findChild<QFileDialog*>("colourFileDialog");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(QDir(dialog->directory()).canonicalPath(), QDir(folder.path()).canonicalPath());
  uitest::chooseInFileDialog(dialog, QString::fromStdString(file.string()));
  EXPECT_EQ(child<QComboBox>("colorSelector")->currentText(), "levels");
  EXPECT_EQ(view().legends()->labels().front(), "-1");
  controller_->setDocument(nullptr);
}

}  // namespace
