#pragma once
// The filter property selector as plain values: which titles it offers for a
// network and which one stays selected.
#include <string>
#include <vector>

class QLONetwork;

namespace app {

inline constexpr const char* kDefaultFilterTitle = "Node Degree";

// "Node Degree"; "Node InDegree" when directed; "Node Strength" when
// edge-weighted and also "Node InStrength" when directed too; then the names
// of the number-array vertex properties in ascending order. Only "Node
// Degree" without a network.
std::vector<std::string> filterPropertyTitles(const QLONetwork* network);

// `wanted` when the titles offer it, else `previous` when they do, else
// "Node Degree" (which every list offers).
std::string selectedFilterTitle(const std::vector<std::string>& titles, const std::string& wanted,
                                const std::string& previous);

}  // namespace app
