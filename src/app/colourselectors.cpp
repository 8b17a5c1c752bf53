#include "app/colourselectors.h"

#include <algorithm>
#include <cctype>

#include "app/filterselector.h"

namespace app {
namespace {

bool contains(const std::vector<std::string>& titles, const std::string& title) {
  return std::find(titles.begin(), titles.end(), title) != titles.end();
}

}  // namespace

bool isNoColourTitle(std::string_view title) {
  const std::string_view none = kNoColourTitle;
  return std::ranges::equal(title, none, [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  });
}

std::vector<std::string> colorPropertyKeys(const std::vector<std::string>& networkKeys,
                                           const std::vector<std::string>& addedKeys) {
  std::vector<std::string> keys = networkKeys;
  keys.insert(keys.end(), addedKeys.begin(), addedKeys.end());
  keys.emplace_back(kNoColourTitle);
  std::erase_if(keys, [](const std::string& key) {
    return key == "Position" || key == "Name" || key == "Color";
  });
  std::sort(keys.begin(), keys.end());
  return keys;
}

std::vector<std::string> colorSelectorTitles(const std::vector<std::string>& keys) {
  std::vector<std::string> titles{kNoColourTitle};
  for (const std::string& key : keys) {
    if (!contains(titles, key)) titles.push_back(key);
  }
  return titles;
}

std::string colorPropertyName(const std::string& name,
                              const std::vector<std::string>& networkKeys) {
  if (name != "Color" && contains(networkKeys, name)) return name + "-2";
  return name;
}

std::vector<std::string> sortPropertyTitles(const QLONetwork* network) {
  std::vector<std::string> titles{kDefaultSortTitle, "Alphabetical"};
  const std::vector<std::string> measures = filterPropertyTitles(network);
  titles.insert(titles.end(), measures.begin(), measures.end());
  return titles;
}

std::string offeredTitle(const std::vector<std::string>& titles, const std::string& wanted,
                         const std::string& fallback) {
  return contains(titles, wanted) ? wanted : fallback;
}

int customColoursUsed(std::string_view map) {
  if (map == "Custom 2" || map == "Custom Cubehelix 2") return 2;
  if (map == "Custom 3" || map == "Custom Cubehelix 3") return 3;
  return 0;
}

}  // namespace app
