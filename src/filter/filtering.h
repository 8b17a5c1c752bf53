#pragma once
// The vertex filter's values and range, and the edge-weight thresholds.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QLONetwork;

namespace filter {

// The per-vertex values of a filter property: the four built-in names
// ("Node Degree", "Node InDegree", "Node Strength", "Node InStrength") give
// the network's measures; any other name gives the vertex property of that
// name when it is a number array, and the degrees otherwise.
std::vector<float> filterValues(const QLONetwork& network, const std::string& name);

// The per-vertex values of a built-in measure or a number property of that
// name; none for any other name (no fall-back to the degrees).
std::optional<std::vector<float>> namedValues(const QLONetwork& network, const std::string& name);

// (maximum, minimum) of the values: the maximum starts at 0 and the minimum at
// +infinity, so an all-negative property gets maximum 0 and an empty one
// (0, +inf). NaN values are ignored by the comparisons.
std::pair<float, float> maxMinOfValues(const std::vector<float>& values);

// (maximum, minimum) of a property's values over all vertices, as above.
std::pair<float, float> getMaxMinValuesForPropertyOfNetwork(const QLONetwork& network,
                                                            const std::string& name);

// (largest, smallest) edge weight; (1, 0) when there is no network, it is not
// edge-weighted, or it has no edges.
std::pair<double, double> maxMinWeight(const QLONetwork* network);

// Thresholded, normalised weights, one per edge: w within [minThreshold,
// maxThreshold] becomes w / M when the smallest weight m > 0, else
// (w - m) / (M - m) (computed in double, stored as float); any other w
// becomes 0. (M, m) = maxMinWeight. Only meaningful for edge-weighted
// networks.
std::vector<float> thresholdedWeights(const QLONetwork& network, float minThreshold,
                                      float maxThreshold);

}  // namespace filter
