// Category colours: palette indices, the limit with "Others" or hiding, spare
// colours drawn at random, key-file colours, the legend, the whole recolouring.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "colour/categorycolours.h"
#include "colour/hexcolour.h"
#include "plexora/QLORandomGenerator.h"
#include "scratch.h"

using namespace colour;
using Colours = std::vector<Rgba>;
using Texts = std::vector<std::string>;

namespace {

constexpr Rgba kBlack{0, 0, 0, 1};

Rgba grey(int level) {
  const float v = static_cast<float>(level) / 100.0f;
  return {v, v, v, 1.0f};
}

// Five ordered colours (grey 10..14), three spare ones (grey 50..52) and a
// named list for key files.
CategoryPalette testPalette() {
  CategoryPalette palette;
  for (int k = 0; k < 5; ++k) palette.ordered.push_back(grey(10 + k));
  for (int k = 0; k < 3; ++k) palette.spare.push_back(grey(50 + k));
  palette.named.setColor("magenta", {1, 0, 1, 1});
  return palette;
}

std::string category(int i) {
  std::string name = "c";
  name += std::to_string(i);
  return name;
}

// Ten categories "c0".."c9"; ci is carried by 10 - i vertices, so under the
// default frequency order c0 comes last and gets palette index 0: ci gets i.
Texts tenCategories() {
  Texts values;
  for (int i = 0; i < 10; ++i) values.insert(values.end(), 10 - i, category(i));
  return values;
}

Rgba colourOf(const CategoryColouring& result, std::uint64_t vertex) {
  const auto v = result.colors->vectorAtIndex(vertex);
  return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2]), 1.0f};
}

// The colour of every vertex carrying `value`, checked to be one colour.
Rgba colourOfCategory(const CategoryColouring& result, const Texts& values,
                      const std::string& value) {
  std::optional<Rgba> seen;
  for (std::uint64_t i = 0; i < values.size(); ++i) {
    if (values[i] != value) continue;
    const Rgba c = colourOf(result, i);
    if (seen) {
      EXPECT_EQ(*seen, c) << value;
    }
    seen = c;
  }
  EXPECT_TRUE(seen) << value;
  return seen.value_or(kBlack);
}

CategoryColouring colourTen(const CategoryLimit& limit, const CategoryKeys& keys = {}) {
  const Texts values = tenCategories();
  const CategoryIndex index = indexCategories(values);
  return colorCategories(index, sortedArrayWithColorsArray(index, {}, nullptr), values.size(),
                         testPalette(), keys, limit);
}

}  // namespace

TEST(CategoryColours, WithoutLimitEveryCategoryHasItsEntryPaletteThenSparesThenBlack) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(11);
  const Texts values = tenCategories();
  const CategoryColouring result = colourTen({});
  EXPECT_FALSE(result.hidden);
  EXPECT_EQ(result.legendLabels,
            (Texts{"c9", "c8", "c7", "c6", "c5", "c4", "c3", "c2", "c1", "c0"}));
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(colourOfCategory(result, values, category(i)), grey(10 + i));
  }
  // c9, c8, c7 draw the three spares between them; c6 and c5 find none left.
  Colours drawn;
  for (const char* c : {"c9", "c8", "c7"}) drawn.push_back(colourOfCategory(result, values, c));
  Colours spare = testPalette().spare;
  EXPECT_TRUE(std::is_permutation(drawn.begin(), drawn.end(), spare.begin(), spare.end()));
  EXPECT_EQ(colourOfCategory(result, values, "c6"), kBlack);
  EXPECT_EQ(colourOfCategory(result, values, "c5"), kBlack);
  // The legend colours match the vertices'.
  EXPECT_EQ(result.legendColors[0], drawn[0]);
}

TEST(CategoryColours, LimitThreeSharesOthersAmongTheRest) {
  const Texts values = tenCategories();
  const CategoryColouring result = colourTen({3, HideOthers::Off});
  EXPECT_FALSE(result.hidden);
  EXPECT_EQ(result.legendLabels, (Texts{"Others", "c2", "c1", "c0"}));
  EXPECT_EQ(result.legendColors, (Colours{grey(13), grey(12), grey(11), grey(10)}));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(colourOfCategory(result, values, category(i)), grey(10 + i));
  }
  EXPECT_EQ(colourOfCategory(result, values, "c3"), grey(13));  // its own colour, P[3]
  for (int i = 4; i < 10; ++i) {
    EXPECT_EQ(colourOfCategory(result, values, category(i)), grey(13)) << i;
  }
}

TEST(CategoryColours, LimitThreeWithHidingHidesSevenCategories) {
  const Texts values = tenCategories();
  const CategoryColouring result = colourTen({3, HideOthers::On});
  EXPECT_EQ(result.legendLabels, (Texts{"c2", "c1", "c0"}));
  ASSERT_TRUE(result.hidden);
  ASSERT_EQ(result.hidden->count(), values.size());
  for (std::uint64_t i = 0; i < values.size(); ++i) {
    const int category = values[i][1] - '0';
    const bool hidden = category >= 3;
    EXPECT_EQ(result.hidden->boolValueAtIndex(i), hidden) << i;
    EXPECT_EQ(colourOf(result, i), hidden ? kBlack : grey(10 + category)) << i;
  }
}

TEST(CategoryColours, OthersBeyondThePaletteIsDrawnFirst) {
  // L = 6 lies past the five ordered colours: "Others" takes a spare.
  const Texts values = tenCategories();
  const CategoryColouring result = colourTen({6, HideOthers::Off});
  const Rgba others = result.legendColors.front();
  const Colours spare = testPalette().spare;
  EXPECT_NE(std::find(spare.begin(), spare.end(), others), spare.end());
  for (const char* c : {"c7", "c8", "c9"}) EXPECT_EQ(colourOfCategory(result, values, c), others);
  // c9 and c8 used up the two spares left, so c6 (which stands for "Others"
  // but keeps its own colour) and c5 find none: black.
  EXPECT_EQ(colourOfCategory(result, values, "c6"), kBlack);
  EXPECT_EQ(colourOfCategory(result, values, "c5"), kBlack);
  EXPECT_EQ(result.legendLabels, (Texts{"Others", "c5", "c4", "c3", "c2", "c1", "c0"}));
  EXPECT_EQ(result.legendColors,
            (Colours{others, kBlack, grey(14), grey(13), grey(12), grey(11), grey(10)}));
}

TEST(CategoryColours, KeyFileColoursWinAndUnknownKeysGiveBlack) {
  const Texts values = tenCategories();
  const CategoryColouring result = colourTen(
      {3, HideOthers::Off}, {{"c1", "magenta"}, {"c2", "no such colour"}, {"zz", "magenta"}});
  EXPECT_EQ(colourOfCategory(result, values, "c1"), (Rgba{1, 0, 1, 1}));
  EXPECT_EQ(colourOfCategory(result, values, "c2"), kBlack);
  EXPECT_EQ(colourOfCategory(result, values, "c0"), grey(10));
  EXPECT_EQ(result.legendColors, (Colours{grey(13), kBlack, (Rgba{1, 0, 1, 1}), grey(10)}));
}

TEST(CategoryColours, VerticesWithoutAValueAreBlack) {
  const Texts values = {"a", "b"};
  const CategoryIndex index = indexCategories(values);
  const auto result = colorCategories(index, sortedArrayWithColorsArray(index, {}, nullptr), 4,
                                      testPalette(), {}, {1, HideOthers::On});
  ASSERT_EQ(result.colors->count(), 4u);
  EXPECT_EQ(colourOf(result, 2), kBlack);
  EXPECT_EQ(colourOf(result, 3), kBlack);
  EXPECT_FALSE(result.hidden->boolValueAtIndex(3));

  const auto empty = colorCategories(indexCategories(Texts{}), {}, 3, testPalette(), {}, {});
  EXPECT_EQ(empty.colors->count(), 3u);
  EXPECT_TRUE(empty.legendLabels.empty());
}

TEST(CategoricalColouring, ReadsThePaletteAndTheNetworksKeyFile) {
  ScratchFolder folder;
  folder.write("somecolors.clr", "red #ff0000\ngreen #00ff00\nblue #0000ff\ngrey #808080\n");
  folder.write("colororder.txt", "green\nred\n");
  folder.write("net.keys", "<plist><dict><key>mid</key><string>blue</string></dict></plist>");
  const Texts values = {"common", "rare", "common", "mid", "mid", "common"};
  const CategorySources sources{folder.path(), folder.path() / "net.txt"};
  auto& random = QLORandomGenerator::sharedRandomGenerator();
  testing::internal::CaptureStderr();
  random.setSeed(5);
  const CategoryColouring result =
      categoricalColouring(values, values.size(), {}, nullptr, {}, sources);
  random.setSeed(5);
  const auto exported = colorsForCategories(values, values.size(), {}, nullptr, sources);
  const std::string log = testing::internal::GetCapturedStderr();

  const Rgba green = colorFromHexadecimalValue("#00ff00"),
             blue = colorFromHexadecimalValue("#0000ff");
  EXPECT_EQ(result.legendLabels, (Texts{"rare", "mid", "common"}));
  EXPECT_EQ(result.legendColors[1], blue);  // pinned by the key file instead of red
  EXPECT_EQ(result.legendColors[2], green);
  // "rare" has index 2, past the ordered palette: one of the two spares.
  const Rgba rare = colourOf(result, 1);
  EXPECT_TRUE(rare == blue || rare == colorFromHexadecimalValue("#808080"));
  EXPECT_EQ(result.legendColors[0], rare);
  for (std::uint64_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(result.colors->vectorAtIndex(i), exported->vectorAtIndex(i)) << i;
  }
  EXPECT_NE(log.find("FILE::" + (folder.path() / "net.keys").string()), std::string::npos);
}
