#include "colour/categorycolours.h"

#include <cstddef>

#include "plexora/QLORandomGenerator.h"

namespace colour {
namespace {

constexpr Rgba kBlack{0.0f, 0.0f, 0.0f, 1.0f};

// Takes one colour out of the spare pool at random; black once it is empty.
Rgba drawSpare(std::vector<Rgba>& spare) {
  if (spare.empty()) return kBlack;
  const std::int64_t pick = QLORandomGenerator::sharedRandomGenerator().randomIntegerFrom(
      0, static_cast<std::int64_t>(spare.size()) - 1);
  const auto at = spare.begin() + static_cast<std::ptrdiff_t>(pick);
  const Rgba colour = *at;
  spare.erase(at);
  return colour;
}

Rgba paletteColour(std::uint64_t k, CategoryPalette& palette) {
  return k < palette.ordered.size() ? palette.ordered[k] : drawSpare(palette.spare);
}

// What one category shows: a colour, or nothing (hidden).
struct Shown {
  Rgba colour = kBlack;
  bool hidden = false;
};

}  // namespace

CategoryColouring colorCategories(const CategoryIndex& categories,
                                  const std::vector<QLOCompareStub>& order,
                                  std::uint64_t vertexCount, CategoryPalette palette,
                                  const CategoryKeys& keys, const CategoryLimit& limit) {
  const std::int64_t L = limit.limit;
  const bool hide = limit.hide == HideOthers::On;
  CategoryColouring result;

  Rgba others = kBlack;
  if (L > 0) others = paletteColour(static_cast<std::uint64_t>(L), palette);

  std::vector<Shown> shown(categories.values.size());
  std::uint64_t k = order.size();
  for (const QLOCompareStub& stub : order) {
    --k;
    Rgba own = paletteColour(k, palette);
    if (const auto pinned = keys.find(stub.theObject()); pinned != keys.end()) {
      const Rgba* named = palette.named.colorWithKey(pinned->second);
      own = named ? *named : kBlack;
    }
    Shown& entry = shown[stub.category()];
    const auto index = static_cast<std::int64_t>(k);
    if (L >= 1 && index == L) {
      entry = {own, hide};
      if (!hide) {
        result.legendLabels.emplace_back("Others");
        result.legendColors.push_back(others);
      }
    } else if (L < 1 || index < L) {
      entry = {own, false};
      result.legendLabels.push_back(stub.theObject());
      result.legendColors.push_back(own);
    } else {
      entry = {others, hide};
    }
  }

  result.colors = QLOVector3dArray::initWithSize(vertexCount, Precision::Float);
  float* red = result.colors->pointerForX();
  float* green = result.colors->pointerForY();
  float* blue = result.colors->pointerForZ();
  std::uint8_t* hidden = nullptr;
  if (hide) {
    result.hidden = QLONumberArray::initWithCount(vertexCount, NumberType::Bool);
    hidden = result.hidden->data<std::uint8_t>();
  }
  const std::uint64_t known = std::min<std::uint64_t>(vertexCount, categories.ids.size());
  for (std::uint64_t i = 0; i < known; ++i) {
    const Shown& entry = shown[categories.ids[i]];
    if (entry.hidden) {
      hidden[i] = 1;  // only set while hiding; the colour stays black
      continue;
    }
    red[i] = entry.colour.r;
    green[i] = entry.colour.g;
    blue[i] = entry.colour.b;
  }
  return result;
}

CategoryColouring categoricalColouring(std::span<const std::string> values,
                                       std::uint64_t vertexCount, const CategorySort& sort,
                                       const QLONetwork* network, const CategoryLimit& limit,
                                       const CategorySources& sources) {
  const CategoryIndex categories = indexCategories(values);
  const std::vector<QLOCompareStub> order = sortedArrayWithColorsArray(categories, sort, network);
  return colorCategories(categories, order, vertexCount, loadCategoryPalette(sources.resources),
                         categoryKeysForNetworkFile(sources.networkFile), limit);
}

QLOVector3dArray::Ptr colorsForCategories(std::span<const std::string> values,
                                          std::uint64_t vertexCount, const CategorySort& sort,
                                          const QLONetwork* network,
                                          const CategorySources& sources) {
  return categoricalColouring(values, vertexCount, sort, network, CategoryLimit{}, sources).colors;
}

}  // namespace colour
