#pragma once
// The texts of the web bundle's own files: the edge list, the vertex names,
// one property's values, the file stem of a property name and the bundle's
// index. Each is built whole in memory; the writer puts it in place.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/PropertyValue.h"

class QLONetwork;

namespace io {

// The name whose colours and property always lead the bundle, under the
// stem "degree".
inline constexpr std::string_view kDegreeName = "Node Degree";
inline constexpr std::string_view kDegreeStem = "degree";

// Whether a property name is kDegreeName in any letter case (ASCII).
bool isDegreeName(std::string_view name);

// A property name with every blank made "_": the name of its files.
std::string webStem(std::string_view name);

// One "from to\n" line per edge, in edge order, zero-based.
std::string edgesText(const QLONetwork& network);

// The "Name" entries joined by "\n" (nothing after the last); without a
// "Name" property the numbers 0 to V-1, each followed by "\n".
std::string namesText(const QLONetwork& network);

// One line per vertex: the entry's text with each line break made a blank.
// Empty for an absent property.
std::string propertyText(const PropertyValue& property, std::uint64_t count);

// One entry of the index: a property's stem and its display name.
struct WebIndexEntry {
  std::string stem;
  std::string name;
};

// The index: an object with one "stem" : "name" member per entry and an
// "ORDER" array of the stems, tab-indented. Names are not escaped.
std::string propertiesJsonText(const std::vector<WebIndexEntry>& entries);

}  // namespace io
