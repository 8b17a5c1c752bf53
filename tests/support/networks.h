#pragma once
// Small networks and arrays the tests of several programs build.
#include <array>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"

namespace testing_support {

enum class Weighted { Yes, No };
enum class Directed { Yes, No };
using EdgeList = std::vector<std::array<std::uint64_t, 2>>;

// A network of `vertices` with these edges, weighted when weights are given;
// null when the data do not make a network.
inline QLONetwork::Ptr makeNetwork(std::uint64_t vertices, const EdgeList& edges,
                                   std::vector<float> weights = {},
                                   Directed directed = Directed::No,
                                   PropertyTable properties = {}) {
  NetworkData data;
  data.verticesCount = vertices;
  for (const auto& [from, to] : edges) {
    data.from.push_back(from);
    data.to.push_back(to);
  }
  data.edgeWeighted = !weights.empty();
  data.weights = std::move(weights);
  data.directed = directed == Directed::Yes;
  data.properties = std::move(properties);
  return QLONetwork::make(std::move(data));
}

// An array holding these vectors.
inline std::shared_ptr<QLOVector3dArray> vectorArray(
    const std::vector<std::array<double, 3>>& values, Precision precision = Precision::Float) {
  auto array = QLOVector3dArray::initWithSize(values.size(), precision);
  for (std::size_t i = 0; i < values.size(); ++i) array->setVector(values[i], i);
  return array;
}

// A path 0 - 1 - ... - n with one edge k -> k + 1 per weight.
inline QLONetwork::Ptr chain(std::vector<float> weights, Weighted weighted = Weighted::Yes) {
  NetworkData data;
  data.verticesCount = weights.size() + 1;
  for (std::uint64_t k = 0; k < weights.size(); ++k) {
    data.from.push_back(k);
    data.to.push_back(k + 1);
  }
  data.weights = std::move(weights);
  data.edgeWeighted = weighted == Weighted::Yes;
  return QLONetwork::make(std::move(data));
}

// The vectors of an array, for comparing whole arrays in one assertion.
inline std::vector<std::array<double, 3>> vectorsOf(const QLOVector3dArray& array) {
  std::vector<std::array<double, 3>> out;
  for (std::uint64_t i = 0; i < array.count(); ++i) out.push_back(array.vectorAtIndex(i));
  return out;
}

}  // namespace testing_support
