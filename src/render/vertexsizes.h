#pragma once
// Vertex sizes from a vertex property: each value is transformed (linear,
// square root or logarithm) and placed linearly between the smallest and the
// largest size, in units of the standard vertex size (scene_shapes::kSize).
// Plain functions, no GL.
//
// Rule for values that have no place on the scale (NaN or infinite values, a
// negative value under the square root, zero or less under the logarithm):
// they get the smallest size. When every placed value is the same (or there
// is only one), those vertices get the middle size.
#include <optional>
#include <string_view>
#include <vector>

namespace vertex_sizes {

enum class Transform { Linear, SquareRoot, Log };

// The property name that means "every vertex at the standard size".
inline constexpr std::string_view kNoProperty = "None";

// Sizes as multiples of the standard size.
struct Range {
  float minimum = 0.5f;
  float maximum = 3.0f;
  bool operator==(const Range&) const = default;
};
// Largest size accepted, as a multiple of the standard size.
inline constexpr float kLargestSize = 100.0f;
// Finite, 0 < minimum <= maximum <= kLargestSize.
bool validRange(const Range& range);

// "linear", "sqrt", "log" (the names scripts and documents use).
std::string_view transformName(Transform transform);
std::optional<Transform> transformNamed(std::string_view name);

// One size per value by the rules above (range assumed valid).
std::vector<float> sizesOf(const std::vector<float>& values, Transform transform,
                           const Range& range);

}  // namespace vertex_sizes
