#pragma once
// The colour panel's pop-ups as plain values: which colour properties a
// network offers, under which name a new one is kept, and the sort keys of
// the categorical colouring.
#include <string>
#include <string_view>
#include <vector>

class QLONetwork;

namespace app {

inline constexpr const char* kNoColourTitle = "None";
inline constexpr const char* kDefaultSortTitle = "Frequency";

// "None" in any letter case stands for no colouring.
bool isNoColourTitle(std::string_view title);

// The network's property names and the controller's colour property names,
// plus "None", without "Position", "Name" and "Color", sorted by code point.
// A name held by both sources is listed twice.
std::vector<std::string> colorPropertyKeys(const std::vector<std::string>& networkKeys,
                                           const std::vector<std::string>& addedKeys);

// The titles of the property pop-up: "None" first, then each key once.
std::vector<std::string> colorSelectorTitles(const std::vector<std::string>& keys);

// The name a colour property is kept under: `name` + "-2" when the network
// already has a property of that name (except "Color"), else `name`.
std::string colorPropertyName(const std::string& name, const std::vector<std::string>& networkKeys);

// "Frequency", "Alphabetical", then the filter selector's titles (the
// degrees and strengths the network has and its numeric properties).
std::vector<std::string> sortPropertyTitles(const QLONetwork* network);

// `wanted` when `titles` offer it, else `fallback`.
std::string offeredTitle(const std::vector<std::string>& titles, const std::string& wanted,
                         const std::string& fallback);

// How many of the three custom colours a map uses, so how many colour wells
// the panel enables: two for "Custom 2" and "Custom Cubehelix 2", three for
// "Custom 3" and "Custom Cubehelix 3", none for any other name.
int customColoursUsed(std::string_view map);

}  // namespace app
