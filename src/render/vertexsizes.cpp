#include "render/vertexsizes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace vertex_sizes {
namespace {

struct Named {
  Transform transform;
  std::string_view name;
};
constexpr std::array<Named, 3> kNames = {{
    {Transform::Linear, "linear"},
    {Transform::SquareRoot, "sqrt"},
    {Transform::Log, "log"},
}};

// The value's place on the transformed scale, NaN when it has none.
double placed(float value, Transform transform) {
  const double v = value;
  if (!std::isfinite(v)) return std::nan("");
  switch (transform) {
    case Transform::Linear:
      return v;
    case Transform::SquareRoot:
      return v >= 0 ? std::sqrt(v) : std::nan("");
    case Transform::Log:
      return v > 0 ? std::log(v) : std::nan("");
  }
  return std::nan("");
}

}  // namespace

bool validRange(const Range& range) {
  return std::isfinite(range.minimum) && std::isfinite(range.maximum) && range.minimum > 0 &&
         range.minimum <= range.maximum && range.maximum <= kLargestSize;
}

std::string_view transformName(Transform transform) {
  for (const Named& n : kNames) {
    if (n.transform == transform) return n.name;
  }
  return kNames[0].name;
}

std::optional<Transform> transformNamed(std::string_view name) {
  for (const Named& n : kNames) {
    if (n.name == name) return n.transform;
  }
  return std::nullopt;
}

std::vector<float> sizesOf(const std::vector<float>& values, Transform transform,
                           const Range& range) {
  std::vector<double> scale(values.size());
  double lo = std::numeric_limits<double>::infinity();
  double hi = -lo;
  for (std::size_t i = 0; i < values.size(); ++i) {
    scale[i] = placed(values[i], transform);
    if (std::isnan(scale[i])) continue;
    lo = std::min(lo, scale[i]);
    hi = std::max(hi, scale[i]);
  }
  const double smallest = range.minimum;
  const double span = static_cast<double>(range.maximum) - smallest;
  const double middle = smallest + span / 2;
  std::vector<float> sizes(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    double size = smallest;
    if (!std::isnan(scale[i]))
      size = hi > lo ? smallest + (scale[i] - lo) / (hi - lo) * span : middle;
    sizes[i] = static_cast<float>(size);
  }
  return sizes;
}

}  // namespace vertex_sizes
