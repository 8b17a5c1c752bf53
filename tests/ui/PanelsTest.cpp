// The side panel around a controller with a view of its own (no GL widget):
// its controls reach the controller and the view, a refresh shows the
// controller's state without firing the controls back, and the vertices
// table drives the view's selection.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "application.h"
#include "ui/SidePanel.h"
#include "ui/VXLVerticesTableController.h"

namespace {

using Panel = VXLController::Panel;
using V = VXLNetworkView;

// 0 -> 1 -> 2 -> 3 -> 4 -> 5 -> 6, weighted and directed, with a numeric
// property "score", a text "Name" and a vector "Color".
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

class Panels : public ::testing::Test {
 protected:
  void SetUp() override {
    uitest::ensureApplication();
    controller_ = VXLController::init();
    controller_->generator().verticesText = "60";
    scroll_ = std::make_unique<QScrollArea>();
    scroll_->setWidgetResizable(true);
    panel_ = new ui::SidePanel(controller_);
    scroll_->setWidget(panel_);
    // Every refresh is counted on its way to the panel.
    controller_->setRefreshListener([this](Panel p) {
      ++refreshes_[p];
      panel_->refresh(p);
    });
    controller_->awakeFromNib();
    scroll_->resize(420, 900);
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

  VXLController::Ptr controller_;
  std::unique_ptr<QScrollArea> scroll_;
  ui::SidePanel* panel_ = nullptr;
  std::map<Panel, int> refreshes_;
};

TEST_F(Panels, SlidersAndFieldsSetTheLayoutConstants) {
  auto* attraction = child<QSlider>("attractionConstantSlider");
  ASSERT_TRUE(attraction);
  EXPECT_EQ(attraction->value(), 0);  // the default
  EXPECT_EQ(child<QLineEdit>("attractionConstantField")->text(), "0.001");
  attraction->setValue(99);
  QTest::keyClick(attraction, Qt::Key_Right);  // one step, as the user moves it
  EXPECT_FLOAT_EQ(view().attractionConstant(), 0.01f);
  EXPECT_EQ(child<QLineEdit>("attractionConstantField")->text(), "0.01");

  auto* gravitation = child<QSlider>("gravitationalConstantSlider");
  EXPECT_EQ(gravitation->value(), 1);
  QTest::keyClick(gravitation, Qt::Key_Right);
  EXPECT_FLOAT_EQ(view().gravitationalConstant(), 0.002f);

  auto* viscosity = child<QLineEdit>("viscosityConstantField");
  typeInto(viscosity, "0.2");
  EXPECT_EQ(view().viscosityConstant(), 0.2f);
  EXPECT_EQ(child<QSlider>("viscosityConstantSlider")->value(), 60);  // 100 log10(4)
  typeInto(viscosity, "fast");  // not a number: nothing changes
  EXPECT_EQ(view().viscosityConstant(), 0.2f);
  EXPECT_EQ(viscosity->text(), "0.2");
  typeInto(child<QLineEdit>("preferredDistanceField"), "12.5");
  EXPECT_EQ(view().preferredDistance(), 12.5f);
  EXPECT_EQ(child<QSlider>("preferredDistanceSlider")->value(), 13);
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
  EXPECT_EQ(child<QLineEdit>("repulsiveConstantField")->text(), "123");
  EXPECT_EQ(child<QAbstractButton>("showNodes")->isChecked(), false);
  EXPECT_EQ(child<QDoubleSpinBox>("edgesIntensity")->value(), 0.35);
  auto* iterations = child<QAbstractSpinBox>("iterations");
  EXPECT_EQ(iterations->text(), "4");
  iterations->setFocus();
  QTest::keyClick(iterations, Qt::Key_Up);
  EXPECT_EQ(view().iterations(), 5u);
}

TEST_F(Panels, ViewSwitchesAndNumbersReachTheView) {
  struct Row {
    const char* name;
    bool (V::*get)() const;
  };
  const std::vector<Row> rows = {
      {"showNodes", &V::showNodes},
      {"showEdges", &V::showEdges},
      {"blendLines", &V::blendLines},
      {"edgesDepthTest", &V::edgesDepthTest},
      {"verticesDepthTest", &V::verticesDepthTest},
      {"simpleShapes", &V::simpleShapes},
      {"shader", &V::shader},
      {"limitNodes", &V::limitNodes},
      {"limitEdges", &V::limitEdges},
      {"showLegends", &V::showLegends},
      {"blackBackground", &V::blackBackground},
      {"generalInfo", &V::generalInfo},
      {"vertexInfo", &V::vertexInfo},
      {"drawCaps", &V::fDrawCaps},
  };
  for (const Row& row : rows) {
    auto* box = child<QAbstractButton>(row.name);
    ASSERT_TRUE(box);
    const bool before = (view().*row.get)();
    EXPECT_EQ(box->isChecked(), before) << row.name;
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    EXPECT_EQ((view().*row.get)(), !before) << row.name;
  }
  // The camera overlay's box keeps to the controller's own copy.
  const bool camera = view().cameraInfo();
  auto* cameraBox = child<QAbstractButton>("cameraInfo");
  QTest::mouseClick(cameraBox, Qt::LeftButton, {}, QPoint(6, cameraBox->height() / 2));
  EXPECT_NE(cameraBox->isChecked(), camera);
  EXPECT_EQ(view().cameraInfo(), camera);

  struct Number {
    const char* name;
    double value;
    float (V::*get)() const;
  };
  for (const Number& n : std::vector<Number>{{"edgesIntensity", 0.25, &V::edgesIntensity},
                                             {"verticesIntensity", 0.5, &V::verticesIntensity},
                                             {"scale", 2.5, &V::scale},
                                             {"nearClipDistance", 3, &V::nearClipDistance},
                                             {"farClipDistance", 5000, &V::farClipDistance},
                                             {"viewLineWidth", 4.5, &V::lineWidth},
                                             {"viewLegendSize", 1.75, &V::legendsHeight}}) {
    auto* box = child<QDoubleSpinBox>(n.name);
    ASSERT_TRUE(box);
    box->setValue(n.value);
    EXPECT_EQ((view().*n.get)(), static_cast<float>(n.value)) << n.name;
  }
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

  for (const char* name : {"sizeX", "sizeY", "sizeZ"}) {
    auto* size = child<QDoubleSpinBox>(name);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->value(), 30.0);
    size->setValue(name[4] == 'Y' ? 2.0 : 4.0);
  }
  QTest::mouseClick(child<QAbstractButton>("randomize"), Qt::LeftButton);
  const auto positions = view().positions();
  ASSERT_EQ(positions->count(), 60u);
  double widestY = 0;
  for (std::uint64_t i = 0; i < positions->count(); ++i) {
    const auto p = positions->vectorAtIndex(i);
    EXPECT_LE(std::abs(p[0]), 4.0);
    EXPECT_LE(std::abs(p[1]), 2.0);
    EXPECT_LE(std::abs(p[2]), 4.0);
    widestY = std::max(widestY, std::abs(p[1]));
  }
  EXPECT_GT(widestY, 0.5);
}

TEST_F(Panels, GeneratorRelabelsAndGeneratesWithTheNameRule) {
  auto* type = child<QComboBox>("generatorType");
  ASSERT_TRUE(type);
  EXPECT_EQ(child<QLabel>("degreeLabel")->text(), "Degree:");
  type->setFocus();
  QTest::keyClick(type, Qt::Key_Down);  // Barabasi
  EXPECT_EQ(controller_->generator().typeTag, 1);
  EXPECT_EQ(child<QLabel>("verticesLabel")->text(), "Vertices:");
  EXPECT_EQ(child<QLabel>("degreeLabel")->text(), "A.Degree:");
  for (const char* hidden : {"weightedLabel", "directedLabel", "weightedCheck", "directedCheck"}) {
    EXPECT_TRUE(child<QWidget>(hidden)->isHidden()) << hidden;
  }
  EXPECT_FALSE(child<QWidget>("degreeLabel")->isHidden());

  const auto edgesBefore = static_cast<float>(controller_->network()->countEdges());
  typeInto(child<QLineEdit>("verticesField"), "40");
  typeInto(child<QLineEdit>("degreeField"), "3");
  QTest::mouseClick(child<QAbstractButton>("generate"), Qt::LeftButton);
  char expected[64];
  std::snprintf(expected, sizeof expected, "Barabasi(40,%0.3g)",
                static_cast<double>(2.0f * edgesBefore / 40.0f));
  EXPECT_EQ(controller_->networkName(), expected);
  EXPECT_EQ(controller_->network()->countVertices(), 40u);
  EXPECT_EQ(child<QLabel>("networkName")->text(), expected);
  EXPECT_EQ(child<QLabel>("vertexCount")->text(), "40");
  EXPECT_EQ(child<QTableView>("verticesTable")->model()->rowCount(), 40);
}

TEST_F(Panels, NetworkInfoAndFilterFollowAnInstalledNetwork) {
  controller_->setNetwork(directedWeightedPath());
  EXPECT_EQ(child<QLabel>("edgeCount")->text(), "6");
  EXPECT_EQ(child<QLabel>("directed")->text(), "Yes");
  EXPECT_EQ(child<QLabel>("edgeWeighted")->text(), "Yes");
  EXPECT_EQ(child<QLabel>("vertexWeighted")->text(), "No");
  const QString properties = child<QLabel>("propertyList")->text();
  for (const char* line : {"score (numbers)", "Name (texts)", "Color (vectors)"}) {
    EXPECT_TRUE(properties.contains(line)) << properties.toStdString();
  }

  auto* selector = child<QComboBox>("filterProperty");
  ASSERT_TRUE(selector);
  QStringList titles;
  for (int i = 0; i < selector->count(); ++i) titles << selector->itemText(i);
  EXPECT_EQ(titles, QStringList({"Node Degree", "Node InDegree", "Node Strength", "Node InStrength",
                                 "score"}));
  EXPECT_EQ(selector->currentText(), "Node Degree");

  selector->setFocus();
  QTest::keyClick(selector, Qt::Key_End);  // "score": values 0 .. 8
  EXPECT_EQ(controller_->filterPropertyName(), "score");
  EXPECT_EQ(view().filterPropertyName(), "score");
  auto* maximum = child<QSlider>("maxFilterPropertySlider");
  maximum->setValue(0);
  maximum->setValue(750);
  EXPECT_EQ(view().maxFilterProperty(), 6.0f);
  typeInto(child<QLineEdit>("minFilterPropertyField"), "2.5");
  EXPECT_EQ(view().minFilterProperty(), 2.5f);
  EXPECT_EQ(child<QSlider>("minFilterPropertySlider")->value(), 313);  // 2.5 / 8, rounded

  // Thresholds span the weights 1 .. 6.
  auto* minimumWeight = child<QSlider>("weightMinThresholdSlider");
  minimumWeight->setValue(1000);
  minimumWeight->setValue(200);
  EXPECT_EQ(view().weightMinThreshold(), 2.0f);
  typeInto(child<QLineEdit>("weightMaxThresholdField"), "4");
  EXPECT_EQ(view().weightMaxThreshold(), 4.0f);
  EXPECT_EQ(child<QSlider>("weightMaxThresholdSlider")->value(), 600);
}

TEST_F(Panels, SelectedRowsBecomeTheViewSelection) {
  auto* table = child<QTableView>("verticesTable");
  ASSERT_TRUE(table);
  controller_->setNetwork(directedWeightedPath());
  auto* model = table->model();
  ASSERT_EQ(model->rowCount(), 7);
  ASSERT_EQ(model->columnCount(), 4);
  EXPECT_EQ(model->index(3, 1).data().toString(), "d");
  EXPECT_EQ(model->index(3, 2).data().toULongLong(), 3u);
  EXPECT_EQ(model->index(0, 3).data().toULongLong(), 1u);
  EXPECT_EQ(model->index(3, 3).data().toULongLong(), 2u);
  EXPECT_FALSE(model->index(3, 0).data(Qt::DecorationRole).value<QIcon>().isNull());

  controller_->selectVertexWithIndex(1);
  QItemSelectionModel* selection = table->selectionModel();
  selection->select(model->index(2, 0),
                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  selection->select(model->index(5, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  EXPECT_EQ(view().selectedIndices(), (std::vector<std::uint64_t>{2, 5}));
  // A selection made in the view leaves the table alone.
  controller_->selectVertexWithIndex(6);
  EXPECT_EQ(selection->selectedRows().size(), 2);
}

TEST_F(Panels, TheTableShowsAMillionVerticesLazily) {
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
  table->selectionModel()->select(model->index(999'999, 0),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  EXPECT_EQ(view().selectedIndices(), std::vector<std::uint64_t>{999'999});
}

}  // namespace
