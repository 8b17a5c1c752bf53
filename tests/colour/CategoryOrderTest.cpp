// The order categories take their colours in: numeric text comparison, the
// three sort keys and the direction switch.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/networks.h"
#include "colour/categoryorder.h"
#include "colour/textorder.h"

using namespace colour;
using Texts = std::vector<std::string>;

namespace {

Texts orderOf(const Texts& values, const CategorySort& sort, const QLONetwork* network = nullptr) {
  Texts names;
  for (const QLOCompareStub& stub : sortedArrayWithColorsArray(values, sort, network)) {
    names.push_back(stub.theObject());
  }
  return names;
}

Texts reversed(Texts texts) {
  return Texts(texts.rbegin(), texts.rend());
}

}  // namespace

TEST(CompareNumerically, DigitRunsAsNumbersEverythingElseByCodePoint) {
  struct Case {
    const char* a;
    const char* b;
    int expected;
  };
  const Case cases[] = {
      {"item2", "item10", -1}, {"item10", "item9b", 1}, {"B", "a", -1},
      {"x", "x10", -1},        {"abc", "abc", 0},       {"007", "7", -1},
      {"1.10", "1.9", 1},      {"\xc3\xa9", "z", 1},  // é after every ASCII letter
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.a) + " vs " + c.b);
    EXPECT_EQ(compareNumerically(c.a, c.b), c.expected);
    EXPECT_EQ(compareNumerically(c.b, c.a), -c.expected);
  }
}

TEST(IndexCategories, NumbersValuesInOrderOfFirstAppearance) {
  const Texts values = {"b", "a", "b", "c", "a", "b"};
  const CategoryIndex index = indexCategories(values);
  EXPECT_EQ(index.values, (Texts{"b", "a", "c"}));
  EXPECT_EQ(index.ids, (std::vector<std::uint32_t>{0, 1, 0, 2, 1, 0}));
  EXPECT_EQ(index.counts, (std::vector<std::uint64_t>{3, 2, 1}));
}

TEST(FrequencyOrder, LeastFrequentFirstTiesByValueDescendingPlaceholdersCountZero) {
  const Texts values = {"a", "a", "a", "None", "None", "None",  "None",  "c",
                        "d", "c", "d", "b",    "null", "item2", "item10"};
  const Texts expected = {"null", "None", "item10", "item2", "b", "d", "c", "a"};
  EXPECT_EQ(orderOf(values, {}), expected);
  EXPECT_EQ(orderOf(values, {"Frequency", SortOrder::Ascending, SortMode::TotalSum}),
            reversed(expected));

  const auto stubs = sortedArrayWithColorsArray(values, {}, nullptr);
  EXPECT_EQ(std::get<std::int64_t>(stubs[1].sortObject()), 0);  // "None", 4 vertices
  EXPECT_EQ(std::get<std::int64_t>(stubs.back().sortObject()), 3);
}

TEST(AlphabeticalOrder, LowToHighUnlessTheSwitchIsOn) {
  const Texts values = {"item10", "beta", "item2", "Alpha", "item2", "10", "9"};
  const Texts expected = {"9", "10", "Alpha", "beta", "item2", "item10"};
  CategorySort sort{"Alphabetical"};
  EXPECT_EQ(orderOf(values, sort), expected);
  sort.order = SortOrder::Ascending;
  EXPECT_EQ(orderOf(values, sort), reversed(expected));
  EXPECT_EQ(
      std::get<std::string>(sortedArrayWithColorsArray(values, sort, nullptr)[0].sortObject()),
      "item10");
}

TEST(MeasureOrder, TotalsAndAveragesOfTheNamedMeasure) {
  // Path 0-1-2-3-4 with weights 5, 1, 1, 1: degrees 1 2 2 2 1, strengths 5 6 2 2 1.
  const auto network = testing_support::chain({5, 1, 1, 1});
  const Texts values = {"x", "y", "y", "z", "x"};
  struct Case {
    const char* title;
    SortOrder order;
    SortMode mode;
    Texts expected;
  };
  const Case cases[] = {
      // degree totals x 2, y 4, z 2: equal keys keep their first appearance
      {"Node Degree", SortOrder::Descending, SortMode::TotalSum, {"x", "z", "y"}},
      // averages x 1, y 2, z 2
      {"Node Degree", SortOrder::Descending, SortMode::Average, {"x", "y", "z"}},
      // strength totals x 6, y 8, z 2
      {"Node Strength", SortOrder::Descending, SortMode::TotalSum, {"z", "x", "y"}},
      // an unknown title sorts by degree
      {"No such measure", SortOrder::Descending, SortMode::TotalSum, {"x", "z", "y"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.title);
    EXPECT_EQ(orderOf(values, {c.title, c.order, c.mode}, network.get()), c.expected);
  }
  const auto stubs = sortedArrayWithColorsArray(
      values, {"Node Strength", SortOrder::Ascending, SortMode::Average}, network.get());
  EXPECT_EQ(stubs.front().theObject(), "y");
  EXPECT_EQ(std::get<float>(stubs.front().sortObject()), -4.0f);
}

TEST(MeasureOrder, ANumberPropertyOfTheNetworkByName) {
  const auto network = testing_support::makeNetwork(
      4, {{0, 1}, {1, 2}}, {}, testing_support::Directed::No,
      {{"Score", QLONumberArray::initWithDoubles(std::vector{9.0, -1.0, 3.0, 0.5})},
       {"Label", std::make_shared<TextList>(TextList{"p", "q", "r", "s"})}});
  ASSERT_TRUE(network);
  const Texts values = {"a", "b", "c", "d"};
  EXPECT_EQ(orderOf(values, {"Score"}, network.get()), (Texts{"b", "d", "c", "a"}));
  // A text property is no measure: degrees 1 2 1 0.
  EXPECT_EQ(orderOf(values, {"Label"}, network.get()), (Texts{"d", "a", "c", "b"}));
  // Without a network every key is 0 and the first appearance decides.
  EXPECT_EQ(orderOf({"b", "a"}, {"Score"}), (Texts{"b", "a"}));
}
