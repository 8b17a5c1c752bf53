// The controller's categorical colouring, the key file and colour files.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../colour/scratch.h"
#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"
#include "colour/palette.h"
#include "quillo/resources.h"
#include "render/VXLLegends.h"

namespace {

using C = VXLController;
using L = C::LimitSwitch;
using H = C::HideSwitch;

// Ten categories "c0" ... "c9"; ck is carried by k + 1 vertices (55 in all,
// no edges), so by frequency c9 comes last and takes the first colour.
std::shared_ptr<QLONetwork> tenCategories() {
  NetworkData data;
  auto values = std::make_shared<TextList>();
  for (int k = 0; k < 10; ++k) {
    const std::string value{'c', static_cast<char>('0' + k)};
    for (int copy = 0; copy <= k; ++copy) values->push_back(value);
  }
  data.verticesCount = values->size();
  data.properties = {{"group", values}};
  return QLONetwork::make(std::move(data));
}

struct Categories {
  VXLController::Ptr controller = VXLController::init();
  std::vector<colour::Rgba> palette = colour::loadCategoryPalette(quillo::resourceFolder()).ordered;
  Categories() {
    controller->setNetwork(tenCategories());
    controller->selectColorProperty("group");
  }
  VXLNetworkView& view() const { return *controller->networkView(); }
  // The colour shown for the first vertex of category k.
  colour::Rgba shown(int k) const {
    const auto c = view().colors()->vectorAtIndex(static_cast<std::uint64_t>(k * (k + 1) / 2));
    return {static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2]), 1};
  }
  std::vector<std::string> labels() const { return view().legends()->labels(); }
};

TEST(ControllerCategories, EveryCategoryHasItsPaletteColourAndEntryWithoutALimit) {
  Categories f;
  ASSERT_GE(f.palette.size(), 10u);
  for (int k = 0; k < 10; ++k) EXPECT_EQ(f.shown(k), f.palette[static_cast<std::size_t>(9 - k)]);
  EXPECT_FALSE(f.view().legends()->continuous());
  EXPECT_EQ(f.labels().size(), 10u);

  // The order follows the panel: ascending frequencies put c0 last.
  f.controller->changeSortOrder(C::SortOrder::Ascending);
  EXPECT_EQ(f.shown(0), f.palette[0]);
  EXPECT_EQ(f.labels().front(), "c9");
}

TEST(ControllerCategories, ALimitOfThreeListsOthersAndThreeOrHidesSeven) {
  Categories f;
  // Which categories share "Others" is the colouring's business; here the
  // panel's values must reach it.
  f.controller->changeColorProperties(L::On, 3, H::Off);
  EXPECT_EQ(f.labels().front(), "Others");
  f.controller->changeColorProperties(L::On, 3, H::On);
  EXPECT_EQ(f.labels(), (std::vector<std::string>{"c7", "c8", "c9"}));
  EXPECT_TRUE(f.view().hideSpecialVertices());
  ASSERT_TRUE(f.view().hiddenVertices());
  EXPECT_TRUE(f.view().hiddenVertices()->boolValueAtIndex(0));
  f.controller->changeColorProperties(L::Off, 3, H::Off);
  EXPECT_EQ(f.labels().size(), 10u);
  EXPECT_FALSE(f.view().hideSpecialVertices());
}

TEST(ControllerCategories, ExportsColourEveryCategoryAndAnUnknownPropertyIsBlack) {
  Categories f;
  f.controller->changeColorProperties(L::On, 2, H::On);
  const auto shown = f.view().colors();
  const auto exported = f.controller->colorsForProperty("group", "Linear");
  ASSERT_TRUE(exported);
  EXPECT_EQ(f.view().colors(), shown);
  const auto first = exported->vectorAtIndex(0);  // c0, hidden in the view
  EXPECT_EQ(static_cast<float>(first[0]), f.palette[9].r);

  // A colour property that went away (no refresh yet) colours black, with
  // an empty legend.
  f.controller->addColorProperty(std::make_shared<TextList>(TextList(55, "x")), "transient");
  f.controller->selectColorProperty("transient");
  f.controller->removeColorPropertyWithName("transient");
  f.controller->updateCurrentColor();
  EXPECT_EQ(f.controller->selectedColorProperty(), "transient");
  EXPECT_EQ(f.shown(4), (colour::Rgba{0, 0, 0, 1}));
  EXPECT_TRUE(f.labels().empty());
}

TEST(ControllerCategories, TheKeyFileBesideTheDocumentPinsColours) {
  Categories f;
  const ScratchFolder folder;
  const auto list = colour::ColorList::readFromFile(quillo::resourcePath("somecolors.clr"));
  ASSERT_GE(list.entries().size(), 12u);
  const colour::NamedColor& pinned = list.entries().back();
  folder.write("net.keys",
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
               "<key>c9</key><string>" +
                   pinned.key + "</string></dict></plist>\n");
  EXPECT_NE(f.shown(9), pinned.color);
  QLOComplexNetwork document;
  document.setFileURL(folder.path() / "net.graphml");
  f.controller->setDocument(&document);
  f.controller->updateCurrentColor();
  EXPECT_EQ(f.shown(9), pinned.color);
  f.controller->setDocument(nullptr);
}

TEST(ControllerColourFiles, AColourFileBecomesTheSelectedColourProperty) {
  const ScratchFolder folder;
  std::string text;
  for (int i = 0; i < 54; ++i) text += "0.2 0.4 0.6\n";
  Categories f;
  ASSERT_TRUE(f.controller->openColorsFromURL(folder.write("rgb.txt", text + "1 0 0\n")));
  EXPECT_EQ(f.controller->selectedColorProperty(), "rgb");
  EXPECT_EQ(f.view().colors()->vectorAtIndex(54), (std::array<double, 3>{1, 0, 0}));
}

TEST(ControllerColourFiles, ShortClashingUnreadableAndMissingFiles) {
  const ScratchFolder folder;
  Categories f;
  std::vector<std::string> alerts;
  f.controller->setAlertHandler([&](const std::string& text) { alerts.push_back(text); });

  // Too short: refused, the selection stays, still a success.
  ASSERT_TRUE(f.controller->openColorsFromURL(folder.write("short.txt", "1\n2\n3\n")));
  EXPECT_EQ(f.controller->selectedColorProperty(), "group");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(f.controller->colorPropertyWithName("short")));

  // The network's own name: kept as group-2, and selecting "group" keeps
  // the network's property.
  std::string text;
  for (int i = 0; i < 55; ++i) text += "z\n";
  ASSERT_TRUE(f.controller->openColorsFromURL(folder.write("group.txt", text)));
  EXPECT_EQ(f.controller->selectedColorProperty(), "group");
  EXPECT_EQ(propertyCount(f.controller->colorPropertyWithName("group-2")), 55u);

  // A number file with a bad line fails without an alert.
  EXPECT_FALSE(f.controller->openColorsFromURL(folder.write("bad.txt", "1\n2\nthree\n")));
  EXPECT_TRUE(alerts.empty());
  const std::vector<std::string> before = f.controller->colorPropertyNames();
  EXPECT_FALSE(f.controller->openColorsFromURL(folder.path() / "missing.txt"));
  ASSERT_EQ(alerts.size(), 1u);
  EXPECT_NE(alerts[0].find("missing.txt"), std::string::npos) << alerts[0];
  EXPECT_EQ(f.controller->colorPropertyNames(), before);
}

}  // namespace

TEST(ControllerCategories, UndoPutsBackTheOrderLimitAndHiding) {
  Categories f;
  const auto colours = f.view().colors();
  f.controller->changeSortOrder(C::SortOrder::Ascending);
  f.controller->changeColorProperties(L::On, 3, H::On);
  ASSERT_NE(f.view().hiddenVertices(), nullptr);
  ASSERT_EQ(f.labels().size(), 3u) << "the rest hidden";

  f.controller->undo();
  EXPECT_LE(f.controller->indexedColorLimit(), 0);
  EXPECT_FALSE(f.controller->hideNonIndexItems());
  EXPECT_EQ(f.labels().size(), 10u);
  f.controller->undo();
  EXPECT_FALSE(f.controller->isSortAscending());
  EXPECT_EQ(f.view().colors(), colours);
  f.controller->redo();
  f.controller->redo();
  EXPECT_EQ(f.controller->indexedColorLimit(), 3);
  EXPECT_TRUE(f.controller->hideNonIndexItems());
}
