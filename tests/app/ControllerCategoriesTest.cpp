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
  EXPECT_EQ(f.labels(),
            (std::vector<std::string>{"c0", "c1", "c2", "c3", "c4", "c5", "c6", "c7", "c8", "c9"}));
  // The network's "Color" mirrors the view.
  const PropertyValue stored = f.controller->network()->propertyForKey("Color");
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(stored), f.view().colors());

  // The order follows the panel: ascending frequencies put c0 last.
  f.controller->changeSortOrder(C::SortOrder::Ascending);
  EXPECT_EQ(f.shown(0), f.palette[0]);
  EXPECT_EQ(f.labels().front(), "c9");
}

TEST(ControllerCategories, ALimitOfThreeListsOthersAndThreeOrHidesSeven) {
  Categories f;
  f.controller->changeColorProperties(L::On, 3, H::Off);
  EXPECT_EQ(f.labels(), (std::vector<std::string>{"Others", "c7", "c8", "c9"}));
  // Which vertex gets which colour is the colouring's own business; here
  // the panel's values must reach it, with the shipped palette.
  EXPECT_EQ(f.view().legends()->colors()[0], f.palette[3]);
  EXPECT_EQ(f.shown(0), f.palette[3]);
  EXPECT_FALSE(f.view().hideSpecialVertices());

  f.controller->changeColorProperties(L::On, 3, H::On);
  EXPECT_EQ(f.labels(), (std::vector<std::string>{"c7", "c8", "c9"}));
  EXPECT_TRUE(f.view().hideSpecialVertices());
  const auto hidden = f.view().hiddenVertices();
  ASSERT_TRUE(hidden);
  ASSERT_EQ(hidden->count(), 55u);
  int count = 0;
  for (std::uint64_t i = 0; i < 55; ++i) count += hidden->boolValueAtIndex(i);
  EXPECT_EQ(count, 28);  // c0 ... c6: 1 + 2 + ... + 7 vertices

  // Off: every category again, nothing hidden; on again: the same three.
  f.controller->changeColorProperties(L::Off, 3, H::Off);
  EXPECT_EQ(f.labels().size(), 10u);
  EXPECT_FALSE(f.view().hideSpecialVertices());
  f.controller->changeColorProperties(L::On, 3, H::Off);
  EXPECT_EQ(f.labels().size(), 4u);
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
  EXPECT_EQ(f.controller->currentFolder(), folder.path());
  f.controller->updateCurrentColor();
  EXPECT_EQ(f.shown(9), pinned.color);
  EXPECT_EQ(f.shown(8), f.palette[1]);
  f.controller->setDocument(nullptr);
}

TEST(ControllerColourFiles, EachKindBecomesASelectedColourProperty) {
  const ScratchFolder folder;
  struct Case {
    const char* name;
    std::string text;
    std::size_t kind;  // index in PropertyValue
  };
  // 54 lines of `line`, then `last`.
  const auto lines = [](const std::string& line, const std::string& last) {
    std::string text;
    for (int i = 0; i < 54; ++i) text += line + "\n";
    return text + last;
  };
  const std::vector<Case> cases = {
      {"rgb", lines("0.2 0.4 0.6", "1 0 0\n"), 2},
      {"numbers", lines("7", "8\n"), 1},
      {"pairs", lines("1 2", "3 4\n"), 3},
  };
  Categories f;
  for (const Case& item : cases) {
    const auto file = folder.write(std::string(item.name) + ".txt", item.text);
    ASSERT_TRUE(f.controller->openColorsFromURL(file)) << item.name;
    EXPECT_EQ(f.controller->selectedColorProperty(), item.name);
    const PropertyValue value = f.controller->colorPropertyWithName(item.name);
    EXPECT_EQ(value.index(), item.kind) << item.name;
    EXPECT_EQ(propertyCount(value), 55u) << item.name;
  }
  const auto pairs =
      std::get<std::shared_ptr<TextList>>(f.controller->colorPropertyWithName("pairs"));
  EXPECT_EQ(pairs->front(), "1 2");
  // The colour file's colours are what the view shows.
  f.controller->selectColorProperty("rgb");
  EXPECT_EQ(f.view().colors()->vectorAtIndex(54), (std::array<double, 3>{1, 0, 0}));
  EXPECT_EQ(f.view().colors()->vectorAtIndex(0), (std::array<double, 3>{0.2f, 0.4f, 0.6f}));
}

TEST(ControllerColourFiles, ShortClashingUnreadableAndMissingFiles) {
  const ScratchFolder folder;
  Categories f;
  std::vector<std::string> alerts;
  f.controller->setAlertHandler([&](const std::string& text) { alerts.push_back(text); });

  // Too short (and empty): refused, the selection stays, still a success.
  for (const char* name : {"short", "empty"}) {
    const std::string text = std::string(name) == "short" ? "1\n2\n3\n" : "";
    ASSERT_TRUE(f.controller->openColorsFromURL(folder.write(std::string(name) + ".txt", text)));
    EXPECT_EQ(f.controller->selectedColorProperty(), "group") << name;
    EXPECT_TRUE(std::holds_alternative<std::monostate>(f.controller->colorPropertyWithName(name)));
  }

  // The network's own name: kept as group-2, and selecting "group" keeps
  // the network's property.
  std::string text;
  for (int i = 0; i < 55; ++i) text += "z\n";
  ASSERT_TRUE(f.controller->openColorsFromURL(folder.write("group.txt", text)));
  EXPECT_EQ(f.controller->selectedColorProperty(), "group");
  EXPECT_EQ(propertyCount(f.controller->colorPropertyWithName("group-2")), 55u);
  EXPECT_EQ(f.labels().size(), 10u);

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
