#pragma once
// The categories of a text property and the order in which they take the
// palette's colours: by frequency, alphabetically or by a numeric measure.
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "colour/QLOCompareStub.h"

class QLONetwork;
class QLONumberArray;

namespace colour {

// Each vertex's value replaced by a category number, made once so that later
// steps never compare or hash texts per vertex.
struct CategoryIndex {
  std::vector<std::string> values;    // the distinct values, in order of first appearance
  std::vector<std::uint32_t> ids;     // per vertex: its value's position in `values`
  std::vector<std::uint64_t> counts;  // per distinct value: how many vertices carry it
};
CategoryIndex indexCategories(std::span<const std::string> values);

// The state of the panel's "ascending" switch. Its sense differs per sort key
// (see sortedArrayWithColorsArray).
enum class SortOrder { Descending, Ascending };
// For a numeric sort key: the total over each category or its average.
enum class SortMode { TotalSum, Average };

inline constexpr std::string_view kSortByFrequency = "Frequency";
inline constexpr std::string_view kSortAlphabetically = "Alphabetical";

struct CategorySort {
  std::string title{kSortByFrequency};  // "Frequency", "Alphabetical" or a measure
  SortOrder order = SortOrder::Descending;
  SortMode mode = SortMode::TotalSum;
};

// The per-vertex measure a numeric sort title names: "Node Degree",
// "Node InDegree", "Node Strength", "Node InStrength", else the network's
// number property of that name, else the degrees. Null without a network.
std::shared_ptr<const QLONumberArray> sortMeasure(const std::string& title,
                                                  const QLONetwork* network);

// One stub per distinct value, in colouring order (the first stub later takes
// the highest palette index):
//  - "Frequency": key = the number of vertices with the value, 0 for the texts
//    "None" and "null". Descending: counts from low to high, ties by value from
//    high to low; Ascending: exactly the reverse.
//  - "Alphabetical": key = the value. Descending: low to high; Ascending: high
//    to low.
//  - otherwise: key = the measure summed over the value's vertices (each term
//    negated when Ascending), divided by the number of terms in Average mode;
//    always low to high, equal keys in order of first appearance.
// Values compare with digit runs as numbers (textorder.h).
std::vector<QLOCompareStub> sortedArrayWithColorsArray(const CategoryIndex& categories,
                                                       const CategorySort& sort,
                                                       const QLONetwork* network);
std::vector<QLOCompareStub> sortedArrayWithColorsArray(std::span<const std::string> values,
                                                       const CategorySort& sort,
                                                       const QLONetwork* network);

}  // namespace colour
