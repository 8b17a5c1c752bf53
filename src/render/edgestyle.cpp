#include "render/edgestyle.h"

#include <algorithm>
#include <cmath>

#include "render/sceneframe.h"

namespace edge_style {

namespace {

constexpr std::string_view kNames[] = {"endpoints", "weight", "single"};

float length(const Point& v) {
  return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

Point along(const Point& p, const Point& d, float t) {
  return {p[0] + d[0] * t, p[1] + d[1] * t, p[2] + d[2] * t};
}

}  // namespace

std::optional<ColourMode> colourModeNamed(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    if (name == kNames[i]) return static_cast<ColourMode>(i);
  }
  return std::nullopt;
}

std::string_view colourModeName(ColourMode mode) {
  return kNames[static_cast<std::size_t>(mode)];
}

WeightRange weightRange(const float* weights, std::uint64_t count) {
  std::optional<WeightRange> range;
  for (std::uint64_t k = 0; k < count; ++k) {
    const float w = weights[k];
    if (!std::isfinite(w)) continue;
    if (!range) {
      range = WeightRange{w, w};
    } else {
      range->min = std::min(range->min, w);
      range->max = std::max(range->max, w);
    }
  }
  return range.value_or(WeightRange{});
}

float normalisedWeight(float w, WeightRange range) {
  if (!std::isfinite(w) || !(range.max > range.min)) return 0;
  const double t = (static_cast<double>(w) - range.min) /
                   (static_cast<double>(range.max) - static_cast<double>(range.min));
  return static_cast<float>(std::clamp(t, 0.0, 1.0));
}

ColourMode effectiveMode(ColourMode mode, const float* weights) {
  return mode == ColourMode::Weight && !weights ? ColourMode::Endpoints : mode;
}

std::vector<float> edgeColours(const ColourSettings& settings, const float* weights,
                               std::uint64_t count) {
  std::vector<float> out;
  switch (effectiveMode(settings.mode, weights)) {
    case ColourMode::Endpoints:
      break;
    case ColourMode::Single:
      out.resize(3 * count);
      for (std::uint64_t k = 0; k < count; ++k) {
        out[3 * k] = settings.single.r;
        out[3 * k + 1] = settings.single.g;
        out[3 * k + 2] = settings.single.b;
      }
      break;
    case ColourMode::Weight: {
      const WeightRange range = weightRange(weights, count);
      std::vector<float> t(count);
      for (std::uint64_t k = 0; k < count; ++k) t[k] = normalisedWeight(weights[k], range);
      const std::vector<colour::Rgba> colours =
          colour::colorsForNormalizedValues(t.data(), count, settings.map, settings.mapSettings);
      out.resize(3 * count);
      for (std::uint64_t k = 0; k < count; ++k) {
        out[3 * k] = colours[k].r;
        out[3 * k + 1] = colours[k].g;
        out[3 * k + 2] = colours[k].b;
      }
      break;
    }
  }
  return out;
}

std::vector<std::uint8_t> widthClasses(const float* weights, std::uint64_t count) {
  if (!weights) return {};
  const WeightRange range = weightRange(weights, count);
  std::vector<std::uint8_t> out(count);
  const float top = static_cast<float>(kWidthClasses - 1);
  for (std::uint64_t k = 0; k < count; ++k) {
    out[k] = static_cast<std::uint8_t>(std::lround(normalisedWeight(weights[k], range) * top));
  }
  return out;
}

float classWidth(float lineWidth, std::uint8_t widthClass) {
  return lineWidth * static_cast<float>(1 + widthClass);
}

std::optional<ArrowHead> arrowHead(const Point& from, const Point& to, float targetRadius) {
  Point d{to[0] - from[0], to[1] - from[1], to[2] - from[2]};
  const float len = length(d);
  // Room for the head between the two shapes, else none.
  const float room = len - 2 * targetRadius;
  if (!(room > 0)) return std::nullopt;
  for (float& c : d) c /= len;
  const float h = std::min(kHeadLength, room);
  const Point tip = along(to, d, -targetRadius);
  const Point base = along(tip, d, -h);
  // Across the edge and across the line of sight to the base.
  Point side{d[1] * -base[2] - d[2] * -base[1], d[2] * -base[0] - d[0] * -base[2],
             d[0] * -base[1] - d[1] * -base[0]};
  const float n = length(side);
  if (!(n > 1e-6f * length(base))) return std::nullopt;
  for (float& c : side) c *= kHeadHalfWidth / n;
  return ArrowHead{tip, along(base, side, 1), along(base, side, -1)};
}

float targetRadius(const SceneFrame& frame) {
  if (!frame.showNodes) return 0;
  const double size = frame.simpleShapes ? scene_shapes::kSize / 2 : scene_shapes::kSize;
  return static_cast<float>(size);
}

}  // namespace edge_style
