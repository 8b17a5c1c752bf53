#include <algorithm>
#include <limits>

#include "plexora/formats.h"

namespace plexora {
namespace {

std::uint64_t saturated(std::uint64_t base, std::uint64_t perByte, std::uint64_t bytes) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  if (bytes > (kMost - base) / perByte) return kMost;
  return base + perByte * bytes;
}

}  // namespace

std::uint64_t vertexLimitForText(std::uint64_t bytes) {
  return std::min(maxReadVertices(), saturated(kFreeVertices, kVerticesPerByte, bytes));
}

std::uint64_t propertyBudgetForText(std::uint64_t bytes) {
  return saturated(kFreePropertyBytes, kPropertyBytesPerByte, bytes);
}

}  // namespace plexora
