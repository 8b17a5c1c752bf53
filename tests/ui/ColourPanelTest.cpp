// The colour panel inside the side panel, around a controller with a view of
// its own: the pop-ups offer the controller's titles, every control
// recolours at once, the power controls and colour wells are enabled for the
// selected function and map, and the limit controls keep to one another.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QScrollArea>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "app/QLOComplexNetwork.h"
#include "application.h"
#include "colour/hexcolour.h"
#include "render/VXLLegends.h"
#include "ui/SidePanel.h"

namespace {

using Panel = VXLController::Panel;

// 0 -> 1 -> ... -> 6, weighted and directed, with a numeric "score", a text
// "Name" and a vector "Color".
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

class ColourPanelTest : public ::testing::Test {
 protected:
  void SetUp() override {
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
    controller_->setNetwork(directedWeightedPath());
    scroll_->resize(420, 1400);
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
  VXLNetworkView& view() { return *controller_->networkView(); }

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

TEST_F(ColourPanelTest, PopUpsOfferTheControllersTitles) {
  auto* property = child<QComboBox>("colorSelector");
  ASSERT_TRUE(property);
  EXPECT_EQ(itemsOf(property), QStringList({"None", "Node Degree", "Node InDegree",
                                            "Node InStrength", "Node Strength", "score"}));
  EXPECT_EQ(property->currentText(), "Node Degree");
  EXPECT_EQ(itemsOf(child<QComboBox>("colorFunctionSelector")),
            QStringList({"Linear", "Exponential", "Exponential10", "Exponential1/10", "Logarithmic",
                         "Power"}));
  EXPECT_EQ(child<QComboBox>("colorFunctionSelector")->currentText(), "Exponential");
  EXPECT_EQ(itemsOf(child<QComboBox>("colorMapSelector")),
            QStringList({"Jet", "Gray", "Hot", "Cubehelix", "Custom 2", "Custom 3",
                         "Custom Cubehelix 2", "Custom Cubehelix 3"}));
  EXPECT_EQ(child<QComboBox>("colorMapSelector")->currentText(), "Jet");
  EXPECT_EQ(itemsOf(child<QComboBox>("sortPropertySelector")),
            QStringList({"Frequency", "Alphabetical", "Node Degree", "Node InDegree",
                         "Node Strength", "Node InStrength", "score"}));

  // A property added from elsewhere is offered at once.
  controller_->addColorProperty(QLONumberArray::floatArrayWithScalar(1, 7), "extra");
  EXPECT_TRUE(itemsOf(property).contains("extra"));
  choose(property, "score");
  EXPECT_EQ(controller_->selectedColorProperty(), "score");
  choose(property, "None");
  EXPECT_FALSE(view().colors());
}

TEST_F(ColourPanelTest, ChangingTheMapOrFunctionRecoloursAtOnce) {
  const auto jet = view().colors();
  ASSERT_TRUE(jet);
  choose(child<QComboBox>("colorMapSelector"), "Gray");
  EXPECT_EQ(controller_->selectedColorMap(), "Gray");
  const auto gray = view().colors();
  ASSERT_NE(gray, jet);
  for (std::uint64_t i = 0; i < gray->count(); ++i) {
    const auto c = gray->vectorAtIndex(i);
    EXPECT_EQ(c[0], c[1]);
    EXPECT_EQ(c[1], c[2]);
  }
  EXPECT_EQ(refreshes_[Panel::Colour], 1);

  auto* invert = child<QCheckBox>("colorInvertColorMapCheck");
  click(invert);
  EXPECT_TRUE(controller_->invertColorMap());
  EXPECT_NE(view().colors(), gray);

  choose(child<QComboBox>("colorFunctionSelector"), "Logarithmic");
  EXPECT_EQ(controller_->selectedColorFunction(), "Logarithmic");
  EXPECT_EQ(child<QComboBox>("colorFunctionSelector")->currentText(), "Logarithmic");
}

TEST_F(ColourPanelTest, PowerControlsAndWellsAreEnabledForTheirFunctionAndMaps) {
  const std::vector<std::pair<const char*, int>> maps = {{"Jet", 0},
                                                         {"Gray", 0},
                                                         {"Hot", 0},
                                                         {"Cubehelix", 0},
                                                         {"Custom 2", 2},
                                                         {"Custom 3", 3},
                                                         {"Custom Cubehelix 2", 2},
                                                         {"Custom Cubehelix 3", 3}};
  for (const auto& [map, enabled] : maps) {
    choose(child<QComboBox>("colorMapSelector"), map);
    for (int i = 0; i < 3; ++i) {
      const std::string name = "colorGradient" + std::to_string(i);
      EXPECT_EQ(child<QToolButton>(name.c_str())->isEnabled(), i < enabled) << map << i;
    }
  }
  EXPECT_EQ(child<QToolButton>("colorGradient1")->toolTip(), "#ff7f0e");

  auto* slider = child<QSlider>("colorPowerSlider");
  auto* field = child<QLineEdit>("colorPowerField");
  EXPECT_FALSE(slider->isEnabled());
  EXPECT_FALSE(field->isEnabled());
  choose(child<QComboBox>("colorFunctionSelector"), "Power");
  EXPECT_TRUE(slider->isEnabled());
  EXPECT_TRUE(field->isEnabled());
  EXPECT_EQ(field->text(), "2");
  EXPECT_EQ(slider->value(), 20);
  const auto before = view().colors();
  typeInto(field, "0.5");
  EXPECT_EQ(controller_->powerCoefficient(), 0.5f);
  EXPECT_EQ(slider->value(), 5);
  EXPECT_NE(view().colors(), before);
}

TEST_F(ColourPanelTest, AWellsDialogChangesItsCustomColourAndRecolours) {
  choose(child<QComboBox>("colorMapSelector"), "Custom 3");
  const auto before = view().colors();
  click(child<QToolButton>("colorGradient2"));
  auto* dialog = panel_->findChild<QColorDialog*>("customColourDialog");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->currentColor().name(), "#2ca02c");
  dialog->setCurrentColor(QColor(255, 0, 0));
  dialog->accept();
  EXPECT_EQ(colour::hexadecimalValue(controller_->colorCustom2()), "#ff0000");
  EXPECT_EQ(colour::hexadecimalValue(controller_->colorCustom0()), "#1f77b4");
  EXPECT_EQ(child<QToolButton>("colorGradient2")->toolTip(), "#ff0000");
  EXPECT_NE(view().colors(), before);
}

TEST_F(ColourPanelTest, LimitControlsFollowOneAnotherAndTheController) {
  auto* check = child<QCheckBox>("propertyColorLimitCheck");
  auto* field = child<QLineEdit>("propertyColorLimitField");
  auto* slider = child<QSlider>("propertyColorLimitSlider");
  auto* hide = child<QCheckBox>("propertyHideNonIndexedCheck");
  for (QWidget* w :
       {static_cast<QWidget*>(field), static_cast<QWidget*>(slider), static_cast<QWidget*>(hide)}) {
    EXPECT_FALSE(w->isEnabled());
  }
  click(check);  // the field is empty: eight
  EXPECT_EQ(controller_->indexedColorLimit(), 8);
  EXPECT_EQ(field->text(), "8");
  EXPECT_EQ(slider->value(), 8);
  EXPECT_TRUE(field->isEnabled() && slider->isEnabled() && hide->isEnabled());

  typeInto(field, "3");
  EXPECT_EQ(controller_->indexedColorLimit(), 3);
  EXPECT_EQ(slider->value(), 3);
  slider->setValue(5);
  EXPECT_EQ(field->text(), "5");
  EXPECT_EQ(controller_->indexedColorLimit(), 5);
  click(hide);
  EXPECT_TRUE(controller_->hideNonIndexItems());

  click(check);  // off: remembered, not lost
  EXPECT_EQ(controller_->indexedColorLimit(), -5);
  EXPECT_FALSE(field->isEnabled());
  EXPECT_EQ(field->text(), "5");
  click(check);
  EXPECT_EQ(controller_->indexedColorLimit(), 5);

  // The sort controls reach the controller.
  click(child<QAbstractButton>("ascendingSortButton"));
  EXPECT_TRUE(controller_->isSortAscending());
  click(child<QAbstractButton>("averageSortModelButton"));
  EXPECT_TRUE(controller_->isSortModeAverage());
  click(child<QAbstractButton>("descendingSortButton"));
  EXPECT_FALSE(controller_->isSortAscending());
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
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
  EXPECT_EQ(QDir(dialog->directory()).canonicalPath(), QDir(folder.path()).canonicalPath());
  uitest::chooseInFileDialog(dialog, QString::fromStdString(file.string()));
  EXPECT_EQ(controller_->selectedColorProperty(), "levels");
  EXPECT_EQ(child<QComboBox>("colorSelector")->currentText(), "levels");
  EXPECT_EQ(view().legends()->labels().front(), "-1");
  controller_->setDocument(nullptr);
}

}  // namespace
