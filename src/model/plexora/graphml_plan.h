#pragma once
// Decides which vertex properties the node keys of a document become: marked
// vector components join their vector, and in documents from other tools the
// usual coordinate, colour and label keys become Position, Color and Name.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/graphml_common.h"
#include "plexora/graphml_keys.h"

namespace plexora::graphml {

enum class Origin { Ours, Foreign };

struct PlannedProperty {
  std::string name;
  int column = -1;  // a plain property: the node key it comes from
  // A vector property: the node key of each component (-1 reads as zeros).
  std::array<int, 3> components{-1, -1, -1};
  bool isVector = false;
  // Colour keys of another tool, which may hold 0..255 values.
  bool colorScale = false;
  // A plain property from a key of a vector type ("1, 2, 3" texts).
  bool vectorText = false;
};

namespace detail {

inline int findUnclaimed(const std::vector<const Key*>& keys, const std::vector<bool>& claimed,
                         std::string_view name, bool numeric) {
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const Key& key = *keys[i];
    if (claimed[i] || key.axis >= 0 || key.name != name) continue;
    if (numeric ? isNumeric(key.kind) : key.kind == ValueKind::Text) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace detail

// `keys` are the node keys in declaration order; the plan lists properties in
// that order, a vector at the place of its first component key. When two
// properties would share a name, the first one wins.
inline std::vector<PlannedProperty> planProperties(const std::vector<const Key*>& keys,
                                                   Origin origin) {
  const std::size_t n = keys.size();
  std::vector<bool> claimed(n, false);
  std::vector<PlannedProperty> vectors;
  std::vector<int> vectorAt(n, -1);  // vector starting at this key

  auto addVector = [&](std::string name, const std::array<int, 3>& components, bool colorScale) {
    int first = -1;
    for (int component : components) {
      if (component < 0) continue;
      claimed[static_cast<std::size_t>(component)] = true;
      if (first < 0 || component < first) first = component;
    }
    PlannedProperty vector;
    vector.name = std::move(name);
    vector.components = components;
    vector.isVector = true;
    vector.colorScale = colorScale;
    vectorAt[static_cast<std::size_t>(first)] = static_cast<int>(vectors.size());
    vectors.push_back(std::move(vector));
  };

  // Keys marked as vector components; a second key for the same component
  // stays a plain property.
  std::vector<std::pair<std::string, std::array<int, 3>>> marked;
  for (std::size_t i = 0; i < n; ++i) {
    const Key& key = *keys[i];
    if (key.axis < 0) continue;
    auto group = marked.begin();
    while (group != marked.end() && group->first != key.vectorName) ++group;
    if (group == marked.end()) {
      marked.push_back({key.vectorName, {-1, -1, -1}});
      group = marked.end() - 1;
    }
    int& slot = group->second[static_cast<std::size_t>(key.axis)];
    if (slot < 0) slot = static_cast<int>(i);
  }
  auto isMarked = [&](std::string_view name) {
    for (const auto& group : marked) {
      if (group.first == name) return true;
    }
    return false;
  };
  for (const auto& [name, components] : marked) addVector(name, components, false);

  int nameKey = -1;
  int positionKey = -1;  // a layout kept as one vector key ("pos", "_pos")
  if (origin == Origin::Foreign) {
    const int x = detail::findUnclaimed(keys, claimed, "x", true);
    const int y = detail::findUnclaimed(keys, claimed, "y", true);
    if (x >= 0 && y >= 0 && !isMarked(kPositionName)) {
      const int z = detail::findUnclaimed(keys, claimed, "z", true);
      addVector(std::string(kPositionName), {x, y, z}, false);
    } else if (!isMarked(kPositionName)) {
      for (std::size_t i = 0; i < n && positionKey < 0; ++i) {
        const Key& key = *keys[i];
        if (!claimed[i] && key.vectorText && (key.name == "pos" || key.name == "_pos")) {
          positionKey = static_cast<int>(i);
        }
      }
    }
    const int r = detail::findUnclaimed(keys, claimed, "r", true);
    const int g = detail::findUnclaimed(keys, claimed, "g", true);
    const int b = detail::findUnclaimed(keys, claimed, "b", true);
    if (r >= 0 && g >= 0 && b >= 0 && !isMarked(kColorName)) {
      addVector(std::string(kColorName), {r, g, b}, true);
    }
    for (std::string_view candidate : {"Name", "name", "label"}) {
      nameKey = detail::findUnclaimed(keys, claimed, candidate, false);
      if (nameKey >= 0) break;
    }
  }

  std::vector<PlannedProperty> plan;
  auto taken = [&](std::string_view name) {
    for (const PlannedProperty& property : plan) {
      if (property.name == name) return true;
    }
    return false;
  };
  for (std::size_t i = 0; i < n; ++i) {
    if (vectorAt[i] >= 0) {
      PlannedProperty& vector = vectors[static_cast<std::size_t>(vectorAt[i])];
      if (!taken(vector.name)) plan.push_back(std::move(vector));
    }
    if (claimed[i]) continue;
    PlannedProperty plain;
    plain.name = static_cast<int>(i) == nameKey       ? std::string("Name")
                 : static_cast<int>(i) == positionKey ? std::string(kPositionName)
                                                      : propertyNameOf(*keys[i]);
    plain.column = static_cast<int>(i);
    plain.vectorText = keys[i]->vectorText;
    if (!taken(plain.name)) plan.push_back(std::move(plain));
  }
  return plan;
}

}  // namespace plexora::graphml
