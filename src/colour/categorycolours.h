#pragma once
// Colours for the categories of a text property: palette colours in sort
// order, an optional limit past which categories share an "Others" colour or
// are hidden, colours pinned by the network's key file, and the legend.
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "colour/categoryorder.h"
#include "colour/keyfile.h"
#include "colour/palette.h"
#include "colour/rgba.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

class QLONetwork;

namespace colour {

// Whether the categories past the limit are hidden rather than drawn in the
// "Others" colour.
enum class HideOthers { Off, On };

struct CategoryLimit {
  std::int64_t limit = 0;  // categories coloured one by one; 0 or less: all of them
  HideOthers hide = HideOthers::Off;
};

struct CategoryColouring {
  QLOVector3dArray::Ptr colors;  // one (r, g, b) per vertex, single precision
  QLONumberArray::Ptr hidden;    // Bool per vertex (true: hidden); null unless hiding
  std::vector<std::string> legendLabels;
  std::vector<Rgba> legendColors;
};

// Colours `vertexCount` vertices from their categories and the stubs in
// colouring order. The stubs get palette indices n-1 ... 0 in turn; index k
// takes ordered[k], else a random spare colour (drawn from the shared random
// source and used up), else black; a key-file entry for the value replaces it
// (an unknown colour key gives black). With limit L > 0 the categories with
// k > L take the "Others" colour (ordered[L], else a spare drawn before any
// other, else black) or are hidden, and k == L stands for them in the legend
// as "Others" (hidden too when hiding). Vertices past the categories' end are
// black; hidden vertices are black.
CategoryColouring colorCategories(const CategoryIndex& categories,
                                  const std::vector<QLOCompareStub>& order,
                                  std::uint64_t vertexCount, CategoryPalette palette,
                                  const CategoryKeys& keys, const CategoryLimit& limit);

// Where the palette and key files come from.
struct CategorySources {
  std::filesystem::path resources;    // folder holding the palette files
  std::filesystem::path networkFile;  // the network's file; empty: no key file
};

// The whole recolouring of a text property: index, sort, palette and key
// file read afresh, colours and legend.
CategoryColouring categoricalColouring(std::span<const std::string> values,
                                       std::uint64_t vertexCount, const CategorySort& sort,
                                       const QLONetwork* network, const CategoryLimit& limit,
                                       const CategorySources& sources);

// The same without limit, "Others", hiding or legend (for exports).
QLOVector3dArray::Ptr colorsForCategories(std::span<const std::string> values,
                                          std::uint64_t vertexCount, const CategorySort& sort,
                                          const QLONetwork* network,
                                          const CategorySources& sources);

}  // namespace colour
