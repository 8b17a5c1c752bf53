// The palette files, the per-network key file and the resource folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>

#include "colour/hexcolour.h"
#include "colour/keyfile.h"
#include "colour/palette.h"
#include "quillo/resources.h"
#include "scratch.h"

using namespace colour;
using Colours = std::vector<Rgba>;

namespace {

Rgba hex(const char* text) {
  return colorFromHexadecimalValue(text);
}

ColorList listOf(std::initializer_list<std::pair<const char*, const char*>> entries) {
  ColorList list;
  for (const auto& [key, colour] : entries) list.setColor(key, hex(colour));
  return list;
}

std::vector<std::string> keysOf(const ColorList& list) {
  std::vector<std::string> keys;
  for (const NamedColor& entry : list.entries()) keys.push_back(entry.key);
  return keys;
}

}  // namespace

TEST(ColorList, ReadsKeysAndColoursSkippingWhatIsNotAnEntry) {
  ScratchFolder folder;
  const auto file = folder.write("somecolors.clr",
                                 "# the house colours\r\n"
                                 "red #FF0000\n"
                                 "\n"
                                 "  deep sea\t#003366  \n"
                                 "broken\n"
                                 "green #00FF0\n"
                                 "red #800000\n"
                                 "blue #0000ff");
  testing::internal::CaptureStderr();
  const ColorList list = ColorList::readFromFile(file);
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_EQ(keysOf(list), (std::vector<std::string>{"red", "deep sea", "blue"}));
  EXPECT_EQ(*list.colorWithKey("red"), hex("#800000"));  // repeated key: the later colour
  EXPECT_EQ(*list.colorWithKey("deep sea"), hex("#003366"));
  EXPECT_EQ(list.colorWithKey("broken"), nullptr);
  EXPECT_NE(log.find("somecolors.clr, line 5"), std::string::npos) << log;
  EXPECT_NE(log.find("line 6"), std::string::npos) << log;
}

TEST(CategoryPalette, OrderFileBuildsThePaletteTheRestIsSpare) {
  const ColorList list =
      listOf({{"red", "#ff0000"}, {"green", "#00ff00"}, {"blue", "#0000ff"}, {"grey", "#808080"}});
  testing::internal::CaptureStderr();
  const CategoryPalette palette =
      categoryPalette("blue\r\n#123456\rnosuch\n\n  red \n#12345\nblue\n", list, "order");
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_EQ(palette.ordered,
            (Colours{hex("#0000ff"), hex("#123456"), hex("#ff0000"), hex("#012345")}));
  EXPECT_EQ(palette.spare, (Colours{hex("#00ff00"), hex("#808080")}));
  EXPECT_EQ(palette.named.entries().size(), 4u);  // the key file sees the whole list
  EXPECT_NE(log.find("order, line 3"), std::string::npos) << log;  // nosuch
  EXPECT_NE(log.find("order, line 7"), std::string::npos) << log;  // blue a second time
}

TEST(CategoryPalette, MissingOrderFileLeavesEveryColourSpare) {
  ScratchFolder folder;
  folder.write("somecolors.clr", "b #0000ff\na #ff0000\n");
  const CategoryPalette palette = loadCategoryPalette(folder.path());
  EXPECT_TRUE(palette.ordered.empty());
  EXPECT_EQ(palette.spare, (Colours{hex("#0000ff"), hex("#ff0000")}));

  folder.write("colororder.txt", "a\n");
  const CategoryPalette ordered = loadCategoryPalette(folder.path());
  EXPECT_EQ(ordered.ordered, (Colours{hex("#ff0000")}));
  EXPECT_EQ(ordered.spare, (Colours{hex("#0000ff")}));
}

TEST(CategoryPalette, TheShippedPaletteNamesOnlyKnownDistinctColours) {
  const auto folder = quillo::resourceFolder();
  std::ifstream order(folder / kColorOrderFile);
  ASSERT_TRUE(order) << folder;
  std::size_t lines = 0;
  for (std::string line; std::getline(order, line);) lines += !line.empty();
  testing::internal::CaptureStderr();
  const CategoryPalette palette = loadCategoryPalette(folder);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(palette.ordered.size(), lines);
  EXPECT_GE(palette.ordered.size(), 12u);
  std::set<std::string> distinct;
  for (const Rgba& c : palette.ordered) distinct.insert(hexadecimalValue(c));
  for (const Rgba& c : palette.spare) distinct.insert(hexadecimalValue(c));
  EXPECT_EQ(distinct.size(), palette.named.entries().size());
  EXPECT_EQ(palette.ordered.size() + palette.spare.size(), palette.named.entries().size());
}

TEST(ResourceFolder, TheEnvironmentWinsOtherwiseAFolderWithThePalette) {
  const char* before = std::getenv("PLEXVIEW_RESOURCES");
  const std::string saved = before ? before : "";
  ::setenv("PLEXVIEW_RESOURCES", "/somewhere/else", 1);
  EXPECT_EQ(quillo::resourceFolder(), "/somewhere/else");
  ::setenv("PLEXVIEW_RESOURCES", "", 1);
  EXPECT_TRUE(std::filesystem::exists(quillo::resourceFolder() / kColorListFile));
  ::unsetenv("PLEXVIEW_RESOURCES");
  EXPECT_TRUE(std::filesystem::exists(quillo::resourceFolder() / kColorOrderFile));
  if (before) ::setenv("PLEXVIEW_RESOURCES", saved.c_str(), 1);
}

TEST(KeyFile, SitsBesideTheNetworkWithTheExtensionKeys) {
  EXPECT_EQ(keyFileForNetworkFile("a/net.txt"), "a/net.keys");
  EXPECT_EQ(keyFileForNetworkFile("/x/my.net.graphml"), "/x/my.net.keys");
}

TEST(KeyFile, ReadsTheStringEntriesOfTheTopDictionary) {
  ScratchFolder folder;
  const auto file = folder.write("net.keys", R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>Physics</key><string>azure</string>
  <key>7</key>
  <integer>3</integer>
  <key>Nested</key><dict><key>x</key><string>y</string></dict>
  <key>Caf&#233; &amp; Bar</key>
  <string>gold</string>
</dict>
</plist>
)");
  const CategoryKeys keys = readKeyFile(file);
  EXPECT_EQ(keys, (CategoryKeys{{"Physics", "azure"}, {"Caf\xc3\xa9 & Bar", "gold"}}));
}

TEST(KeyFile, MissingIsSilentMalformedIsLoggedAndIgnored) {
  ScratchFolder folder;
  testing::internal::CaptureStderr();
  EXPECT_TRUE(readKeyFile(folder.path() / "none.keys").empty());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  const auto broken = folder.write("broken.keys",
                                   "<plist><dict>\n<key>a</key><string>red</string>\n<key>b</key>\n"
                                   "<string>blue</dict></plist>");
  const auto wrong = folder.write("wrong.keys", "<plist><array/></plist>");
  testing::internal::CaptureStderr();
  EXPECT_TRUE(readKeyFile(broken).empty());
  EXPECT_TRUE(readKeyFile(wrong).empty());
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_NE(log.find("broken.keys, line 4"), std::string::npos) << log;
  EXPECT_NE(log.find("wrong.keys, line 1: expected a <dict>"), std::string::npos) << log;
}
