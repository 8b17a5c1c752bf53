#include "plexora/GraphmlExtras.h"

namespace plexora {
namespace {

std::vector<std::string> picked(const std::vector<std::string>& all,
                                const std::vector<std::uint64_t>& indices) {
  std::vector<std::string> result;
  if (all.empty()) return result;
  result.reserve(indices.size());
  for (std::uint64_t i : indices) result.push_back(all[i]);
  return result;
}

}  // namespace

std::shared_ptr<const GraphmlExtras> GraphmlExtras::subset(
    const std::vector<std::uint64_t>& vertices, const std::vector<std::uint64_t>& edges) const {
  auto cut = std::make_shared<GraphmlExtras>();
  cut->plexviewDocument = plexviewDocument;
  cut->rootAttributes = rootAttributes;
  cut->rootBefore = rootBefore;
  cut->rootAfter = rootAfter;
  cut->keys = keys;
  cut->keyIds = keyIds;
  cut->propertyKeys = propertyKeys;
  cut->hasWeightKey = hasWeightKey;
  cut->weightKey = weightKey;
  cut->graphAttributes = graphAttributes;
  cut->graphChildren = graphChildren;
  cut->settings = settings;
  cut->nodeIds = picked(nodeIds, vertices);
  cut->nodeAttributes = picked(nodeAttributes, vertices);
  cut->nodeChildren = picked(nodeChildren, vertices);
  cut->edgeAttributes = picked(edgeAttributes, edges);
  cut->edgeChildren = picked(edgeChildren, edges);
  return cut;
}

}  // namespace plexora
