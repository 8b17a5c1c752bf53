#pragma once
// Small networks the tests of several programs build.
#include <array>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"

namespace testing_support {

enum class Weighted { Yes, No };

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
