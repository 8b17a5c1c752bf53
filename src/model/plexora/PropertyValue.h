#pragma once
// A vertex property: one entry per vertex, held as numbers, vectors or texts.
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

using TextList = std::vector<std::string>;

// std::monostate stands for "no such property".
using PropertyValue = std::variant<std::monostate, std::shared_ptr<QLONumberArray>,
                                   std::shared_ptr<QLOVector3dArray>, std::shared_ptr<TextList>>;

// Number of entries held (0 for an absent property).
std::uint64_t propertyCount(const PropertyValue& value);

// A property's class name as a log line shows it: "QLONumberArray",
// "QLOVector3dArray", "TextList" or "nil".
const char* propertyClassName(const PropertyValue& value);

// One vertex's entry of a property.
using PropertyEntry = std::variant<std::monostate, double, std::array<double, 3>, std::string>;
PropertyEntry propertyEntry(const PropertyValue& value, std::uint64_t index);
// The entry's text form: numbers in shortest round-trip form, vectors as
// "(x, y, z)", texts as they stand.
std::string propertyEntryText(const PropertyEntry& entry);

// Ordered (name, value) pairs, in the order the names were first set.
using PropertyTable = std::vector<std::pair<std::string, PropertyValue>>;
