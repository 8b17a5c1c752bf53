#include "colour/colormaps.h"

#include <cmath>

#include "colour/cubehelix.h"
#include "quillo/QLOVector3dArray.h"

namespace colour {
namespace {

constexpr float kJetValue = 0.7199999690055847f;
constexpr float kJetFloor = 0.08000004291534424f;
constexpr float kJetSpan = 0.6399999260902405f;  // kJetValue - kJetFloor
constexpr Rgba kJetGrey{0.4f, 0.4f, 0.4f, 1.0f};

// A hue ramp at fixed saturation and value: blue at 0, green at 0.5, red at
// 1 (and for NaN); far above 1 it turns grey.
Rgba jet(float t) {
  float h = static_cast<float>((1.0 - double{t}) * 0.6666666666666666);
  if (!(h <= 1.0f)) h = 1.0f;
  const float x = 6.0f * h;
  if (!(x > -1.0f)) return kJetGrey;  // the sextant would be negative
  const int sextant = static_cast<int>(x);
  const float f = (x - static_cast<float>(sextant)) * kJetSpan;
  // Each channel is one of four levels; which one depends on the sextant.
  // A table instead of a switch keeps the loop free of unpredictable branches.
  const float levels[4] = {kJetValue, kJetFloor, kJetValue - f, f + kJetFloor};
  enum : unsigned char { V, P, Q, U };
  static constexpr unsigned char kChannels[7][3] = {{V, U, P}, {Q, V, P}, {P, V, U}, {P, Q, V},
                                                    {U, P, V}, {V, P, Q}, {V, U, P}};
  const unsigned char* c = kChannels[sextant];
  return {levels[c[0]], levels[c[1]], levels[c[2]], 1.0f};
}

Rgba gray(float t) {
  const float g = static_cast<float>(double{t} * 0.9 + 0.1);
  return {g, g, g, 1.0f};
}

// t clamped to [0, 1], NaN read as 0.
float clampUnit(float t) {
  if (!(t > 0.0f)) return 0.0f;
  return t > 1.0f ? 1.0f : t;
}

Rgba hot(float t) {
  return {1.0f - clampUnit(t), 0.0f, 0.0f, 1.0f};
}

Rgba blend(const Rgba& from, const Rgba& to, float u) {
  return {to.r * u + from.r * (1.0f - u), to.g * u + from.g * (1.0f - u),
          to.b * u + from.b * (1.0f - u), 1.0f};
}

Rgba custom3(float t, const ColorMapSettings& s) {
  // Below 0: the first colour; above 1 or NaN: the third.
  const float c = t < 0.0f ? 0.0f : (t <= 1.0f ? t : 1.0f);
  if (c <= 0.5f) return blend(s.colorCustom0, s.colorCustom1, 2.0f * c);
  const float u = 2.0f * (c - 0.5f);
  return {s.colorCustom1.r * (1.0f - u) + s.colorCustom2.r * u,
          s.colorCustom1.g * (1.0f - u) + s.colorCustom2.g * u,
          s.colorCustom1.b * (1.0f - u) + s.colorCustom2.b * u, 1.0f};
}

CubehelixEnds endsOf(const Rgba& from, const Rgba& to) {
  return cubehelixEnds(from.r, from.g, from.b, to.r, to.g, to.b);
}

// Writes the colour of every value through `put(index, colour)`, choosing the
// map once, outside the loop.
template <class Put>
void mapEach(const float* values, std::uint64_t count, std::optional<ColorMap> map,
             const ColorMapSettings& s, Put put) {
  if (!map || *map == ColorMap::Cubehelix) return;  // left black
  const bool inverted = s.invertColorMap == Inversion::On;
  auto each = [&](auto kernel) {
    for (std::uint64_t i = 0; i < count; ++i) {
      const float t = inverted ? 1.0f - values[i] : values[i];
      put(i, kernel(t));
    }
  };
  switch (*map) {
    case ColorMap::Jet:
      each(jet);
      break;
    case ColorMap::Gray:
      each(gray);
      break;
    case ColorMap::Hot:
      each(hot);
      break;
    case ColorMap::Custom2:
      each([&](float t) { return blend(s.colorCustom0, s.colorCustom1, clampUnit(t)); });
      break;
    case ColorMap::Custom3:
      each([&](float t) { return custom3(t, s); });
      break;
    case ColorMap::CustomCubehelix2: {
      const CubehelixEnds ends = endsOf(s.colorCustom0, s.colorCustom1);
      each([&](float t) { return cubehelixAt(ends, t); });
      break;
    }
    case ColorMap::CustomCubehelix3: {
      const CubehelixEnds lower = endsOf(s.colorCustom0, s.colorCustom1);
      const CubehelixEnds upper = endsOf(s.colorCustom1, s.colorCustom2);
      each([&](float t) {
        if (t >= 0.5f) return cubehelixAt(upper, static_cast<float>(2.0 * (double{t} - 0.5)));
        return cubehelixAt(lower, 2.0f * t);  // NaN lands here
      });
      break;
    }
    case ColorMap::Cubehelix:
      break;
  }
}

}  // namespace

const std::vector<std::string>& colorMapNames() {
  static const std::vector<std::string> names{"Jet",
                                              "Gray",
                                              "Hot",
                                              "Cubehelix",
                                              "Custom 2",
                                              "Custom 3",
                                              "Custom Cubehelix 2",
                                              "Custom Cubehelix 3"};
  return names;
}

std::optional<ColorMap> colorMapNamed(std::string_view name) {
  const auto& names = colorMapNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<ColorMap>(i);
  }
  return std::nullopt;
}

std::vector<Rgba> colorsForNormalizedValues(const float* values, std::uint64_t count,
                                            std::optional<ColorMap> map,
                                            const ColorMapSettings& settings) {
  std::vector<Rgba> colours(count, Rgba{0.0f, 0.0f, 0.0f, 1.0f});
  mapEach(values, count, map, settings,
          [&colours](std::uint64_t i, const Rgba& c) { colours[i] = c; });
  return colours;
}

std::shared_ptr<QLOVector3dArray> colorsFromNormalizedVector(const float* values,
                                                             std::uint64_t count,
                                                             std::optional<ColorMap> map,
                                                             const ColorMapSettings& settings) {
  auto colours = QLOVector3dArray::initWithSize(count, Precision::Float);
  float* red = colours->pointerForX();
  float* green = colours->pointerForY();
  float* blue = colours->pointerForZ();
  mapEach(values, count, map, settings, [=](std::uint64_t i, const Rgba& c) {
    red[i] = c.r;
    green[i] = c.g;
    blue[i] = c.b;
  });
  return colours;
}

std::shared_ptr<QLOVector3dArray> colorsFromNormalizedVector(const float* values,
                                                             std::uint64_t count,
                                                             std::string_view map,
                                                             const ColorMapSettings& settings) {
  return colorsFromNormalizedVector(values, count, colorMapNamed(map), settings);
}

}  // namespace colour
