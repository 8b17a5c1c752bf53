#pragma once
// How edges are styled beyond the endpoint colour rule, as plain functions
// (no GL): a colour per edge (by weight through a colour map, or one colour
// for all), a width class per edge by weight, and the arrow head drawn at the
// target end of a directed edge. Both renderers draw from these.
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "colour/colormaps.h"
#include "render/scenecolours.h"

struct SceneFrame;

namespace edge_style {

// Endpoints: each end in its vertex's colour (the line blends between them);
// Weight: the edge's weight through the colour map; Single: one colour.
enum class ColourMode { Endpoints, Weight, Single };
// "endpoints", "weight", "single"; nullopt for anything else.
std::optional<ColourMode> colourModeNamed(std::string_view name);
std::string_view colourModeName(ColourMode mode);

// The finite weights' range; {0, 0} when there are none.
struct WeightRange {
  float min = 0;
  float max = 0;
};
WeightRange weightRange(const float* weights, std::uint64_t count);
// w placed in the range, in [0, 1]; 0 for a range of one value or a weight
// that is not finite.
float normalisedWeight(float w, WeightRange range);

struct ColourSettings {
  ColourMode mode = ColourMode::Endpoints;
  scene::Rgb single{0.5f, 0.5f, 0.5f};
  std::optional<colour::ColorMap> map = colour::ColorMap::Jet;
  colour::ColorMapSettings mapSettings;
};
// The mode edges are drawn in: Weight falls back to Endpoints when the
// network has no weights (`weights` null).
ColourMode effectiveMode(ColourMode mode, const float* weights);
// r, g, b per edge, or nothing in Endpoints mode (or Weight without weights).
std::vector<float> edgeColours(const ColourSettings& settings, const float* weights,
                               std::uint64_t count);

// What a network's edges are drawn with while the style stays the same:
// colours (3 per edge) and width classes, each empty when not used, and a
// serial number that changes whenever they are made again.
struct EdgeArrays {
  std::vector<float> colours;
  std::vector<std::uint8_t> widths;
  std::uint64_t serial = 0;
};

// Widths by weight: the lightest edges keep the line width, the heaviest are
// kWidthClasses times as wide, in kWidthClasses steps (a GL line draw has one
// width, so each class is drawn on its own).
inline constexpr std::uint8_t kWidthClasses = 4;
// The class of every edge; nothing without weights.
std::vector<std::uint8_t> widthClasses(const float* weights, std::uint64_t count);
float classWidth(float lineWidth, std::uint8_t widthClass);

// Arrow heads, in world units (the drawing scale moves vertices, not sizes):
// a flat triangle facing the eye whose tip touches the target's shape.
inline constexpr float kHeadLength = 2.5f;
inline constexpr float kHeadHalfWidth = 0.9f;
using Point = std::array<float, 3>;
struct ArrowHead {
  Point tip, left, right;
};
// The head of the edge from `from` to `to`, both in eye space (the eye at the
// origin), stopping `targetRadius` short of `to`; none when the ends are too
// close for a head or the edge points at the eye.
std::optional<ArrowHead> arrowHead(const Point& from, const Point& to, float targetRadius);
// How far the tip stays from the target's centre: the sphere's radius, half
// a cube's edge, nothing when the frame draws no vertices.
float targetRadius(const SceneFrame& frame);

}  // namespace edge_style
