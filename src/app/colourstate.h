#pragma once
// The colour settings a window's controller keeps, as plain values: the
// transform and map with their parameters, the categorical options, and the
// titles the colour panel's pop-ups offer with the one selected in each.
#include <cstdint>
#include <string>
#include <vector>

#include "app/colourselectors.h"
#include "colour/colormaps.h"
#include "colour/transforms.h"

namespace app {

struct ColourState {
  colour::TransformSettings transform;  // both limits unset, power 2
  colour::ColorMapSettings maps;        // the three custom colours and the inversion
  std::string selectedColorFunction{colour::kDefaultColorFunction};
  std::string selectedColorMap{colour::kDefaultColorMap};

  // Categories: a positive limit colours that many individually; zero or a
  // negative value (the last limit, kept while switched off) means none.
  std::int64_t indexedColorLimit = 0;
  bool hideNonIndexItems = false;
  bool isSortAscending = false;
  bool isSortModeAverage = false;

  std::vector<std::string> propertyTitles{kNoColourTitle};
  std::string propertyTitle{kNoColourTitle};
  std::vector<std::string> sortTitles = sortPropertyTitles(nullptr);
  std::string sortTitle{kDefaultSortTitle};
};

}  // namespace app
