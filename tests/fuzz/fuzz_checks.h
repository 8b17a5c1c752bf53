#pragma once
// What every harness demands of a reader: a refusal carries a reason that is
// printable UTF-8, an accepted network hands the layout only finite
// positions, and nothing but a refusal leaves the reader (an escaping
// exception ends the run as a crash).
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "plexora/QLONetwork.h"
#include "quillo/ReadError.h"
#include "quillo/utf8.h"

namespace fuzzing {

// The same bits, or both NaN (a NaN's sign and payload are not kept).
inline bool sameFloat(float a, float b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::memcmp(&a, &b, sizeof a) == 0;
}

inline void requireReason(const ReadError& error) {
  if (error.message.empty() || !quillo::isValidUtf8(error.describe())) std::abort();
}

inline void requireFinite(const QLOVector3dArray& vectors) {
  for (std::uint64_t i = 0; i < vectors.count(); ++i) {
    const auto v = vectors.vectorAtIndex(i);
    if (!std::isfinite(v[0]) || !std::isfinite(v[1]) || !std::isfinite(v[2])) std::abort();
  }
}

inline void requireFinitePositions(const QLONetwork& network) {
  const PropertyValue position = network.propertyForKey("Position");
  if (const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&position)) {
    requireFinite(**vectors);
  }
}

}  // namespace fuzzing
