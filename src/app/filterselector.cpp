#include "app/filterselector.h"

#include <algorithm>
#include <variant>

#include "plexora/QLONetwork.h"

namespace app {

std::vector<std::string> filterPropertyTitles(const QLONetwork* network) {
  std::vector<std::string> titles{kDefaultFilterTitle};
  if (!network) return titles;
  const bool directed = network->isDirected();
  if (directed) titles.emplace_back("Node InDegree");
  if (network->isEdgeWeighted()) {
    titles.emplace_back("Node Strength");
    if (directed) titles.emplace_back("Node InStrength");
  }
  std::vector<std::string> numeric;
  for (const auto& [name, value] : network->propertiesOfVertices()) {
    if (std::holds_alternative<std::shared_ptr<QLONumberArray>>(value)) numeric.push_back(name);
  }
  std::sort(numeric.begin(), numeric.end());
  titles.insert(titles.end(), numeric.begin(), numeric.end());
  return titles;
}

std::string selectedFilterTitle(const std::vector<std::string>& titles, const std::string& wanted,
                                const std::string& previous) {
  const auto offered = [&](const std::string& title) {
    return std::find(titles.begin(), titles.end(), title) != titles.end();
  };
  if (offered(wanted)) return wanted;
  if (offered(previous)) return previous;
  return kDefaultFilterTitle;
}

}  // namespace app
