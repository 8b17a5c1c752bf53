#include "colour/categoryorder.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "colour/textorder.h"
#include "plexora/QLONetwork.h"

namespace colour {
namespace {

std::vector<QLOCompareStub> frequencyStubs(const CategoryIndex& categories) {
  std::vector<QLOCompareStub> stubs;
  stubs.reserve(categories.values.size());
  for (std::uint32_t c = 0; c < categories.values.size(); ++c) {
    const std::string& value = categories.values[c];
    // Placeholder values sort as if no vertex carried them.
    const bool placeholder = value == "None" || value == "null";
    const auto count = placeholder ? 0 : static_cast<std::int64_t>(categories.counts[c]);
    stubs.emplace_back(value, count, c);
  }
  return stubs;
}

std::vector<QLOCompareStub> alphabeticalStubs(const CategoryIndex& categories) {
  std::vector<QLOCompareStub> stubs;
  stubs.reserve(categories.values.size());
  for (std::uint32_t c = 0; c < categories.values.size(); ++c) {
    stubs.emplace_back(categories.values[c], categories.values[c], c);
  }
  return stubs;
}

std::vector<QLOCompareStub> measureStubs(const CategoryIndex& categories, const CategorySort& sort,
                                         const QLONetwork* network) {
  const std::size_t n = categories.values.size();
  std::vector<double> sums(n, 0.0);
  std::vector<std::uint64_t> terms(n, 0);
  if (const auto measure = sortMeasure(sort.title, network)) {
    const double sign = sort.order == SortOrder::Ascending ? -1.0 : 1.0;
    const std::uint64_t count = std::min<std::uint64_t>(categories.ids.size(), measure->count());
    for (std::uint64_t i = 0; i < count; ++i) {
      const std::uint32_t c = categories.ids[i];
      sums[c] += sign * measure->doubleValueAtIndex(i);
      ++terms[c];
    }
  }
  std::vector<QLOCompareStub> stubs;
  stubs.reserve(n);
  for (std::uint32_t c = 0; c < n; ++c) {
    double key = sums[c];
    if (sort.mode == SortMode::Average)
      key = terms[c] == 0 ? 0.0 : key / static_cast<double>(terms[c]);
    stubs.emplace_back(categories.values[c], static_cast<float>(key), c);
  }
  return stubs;
}

}  // namespace

CategoryIndex indexCategories(std::span<const std::string> values) {
  if (values.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("too many vertices for a category index");
  }
  CategoryIndex index;
  index.ids.resize(values.size());
  std::unordered_map<std::string_view, std::uint32_t> numbers;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto [slot, added] =
        numbers.try_emplace(values[i], static_cast<std::uint32_t>(index.values.size()));
    if (added) {
      index.values.push_back(values[i]);
      index.counts.push_back(0);
    }
    index.ids[i] = slot->second;
    ++index.counts[slot->second];
  }
  return index;
}

std::shared_ptr<const QLONumberArray> sortMeasure(const std::string& title,
                                                  const QLONetwork* network) {
  if (!network) return nullptr;
  if (title == "Node Degree") return network->calcDegrees();
  if (title == "Node InDegree") return network->calcInDegrees();
  if (title == "Node Strength") return network->calcStrengths();
  if (title == "Node InStrength") return network->calcInStrengths();
  const PropertyValue property = network->propertyForKey(title);
  if (const auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&property)) {
    return *numbers;
  }
  return network->calcDegrees();
}

std::vector<QLOCompareStub> sortedArrayWithColorsArray(const CategoryIndex& categories,
                                                       const CategorySort& sort,
                                                       const QLONetwork* network) {
  const bool ascending = sort.order == SortOrder::Ascending;
  std::vector<QLOCompareStub> stubs;
  if (sort.title == kSortByFrequency) {
    stubs = frequencyStubs(categories);
    // Counts from low to high, equal counts by value from high to low; the
    // switch reverses both.
    std::sort(stubs.begin(), stubs.end(), [ascending](const auto& a, const auto& b) {
      int order = a.compare(b);
      if (order == 0) order = -compareNumerically(a.theObject(), b.theObject());
      return (ascending ? -order : order) < 0;
    });
  } else if (sort.title == kSortAlphabetically) {
    stubs = alphabeticalStubs(categories);
    std::sort(stubs.begin(), stubs.end(), [ascending](const auto& a, const auto& b) {
      return (ascending ? a.compareInverse(b) : a.compare(b)) < 0;
    });
  } else {
    stubs = measureStubs(categories, sort, network);
    std::stable_sort(stubs.begin(), stubs.end(),
                     [](const auto& a, const auto& b) { return a.compare(b) < 0; });
  }
  return stubs;
}

std::vector<QLOCompareStub> sortedArrayWithColorsArray(std::span<const std::string> values,
                                                       const CategorySort& sort,
                                                       const QLONetwork* network) {
  return sortedArrayWithColorsArray(indexCategories(values), sort, network);
}

}  // namespace colour
