#include "colour/cubehelix.h"

#include <algorithm>
#include <cmath>

namespace colour {
namespace {

constexpr float kSixth = 0.1666666716337204f;
constexpr float kRadiansPerDegree = 0.01745329238474369f;
constexpr float kGamma = 1.2000000476837158f;

// Lightness, saturation and hue (in whole turns, 0 to 1) of a colour, the
// way the blend measures them.
struct Hsl {
  float hue;  // 0 for a grey colour
  float saturation;
  float lightness;
};

Hsl hslOf(float r, float g, float b) {
  const float most = std::max(std::max(r, g), b);
  const float least = std::min(std::min(r, g), b);
  const float sum = most + least;
  Hsl hsl{0.0f, 0.0f, sum / 2.0f};
  if (most == least) return hsl;
  const float d = most - least;
  hsl.saturation = sum * 0.5f > 0.5f ? d / (2.0f - most - least) : d / sum;
  float sixths = 0.0f;
  if (most == r) {
    sixths = (g - b) / d + (g < b ? 6.0f : 0.0f);
  } else if (most == g) {
    sixths = (b - r) / d + 2.0f;
  } else if (most == b) {
    sixths = (r - g) / d + 4.0f;
  }
  hsl.hue = sixths * kSixth;
  return hsl;
}

}  // namespace

CubehelixEnds cubehelixEnds(float r0, float g0, float b0, float r1, float g1, float b1) {
  const Hsl start = hslOf(r0, g0, b0);
  const Hsl end = hslOf(r1, g1, b1);
  // A grey start colour keeps the hue term at 120 exactly (its hue reads 0).
  const float startHue = start.hue + 120.0f;
  CubehelixEnds ends{};
  ends.angle = startHue * kRadiansPerDegree;
  ends.angleStep = ((end.hue + 120.0f) - startHue) * kRadiansPerDegree;
  ends.saturation = start.saturation;
  ends.saturationStep = end.saturation - start.saturation;
  if (std::isnan(ends.saturationStep)) {
    if (std::isnan(start.saturation)) ends.saturation = end.saturation;
    ends.saturationStep = 0.0f;
  }
  if (std::isnan(ends.angleStep)) {
    if (std::isnan(ends.angle)) ends.angle = end.hue;
    ends.angleStep = 0.0f;
  }
  ends.lightness = start.lightness;
  ends.lightnessStep2 = 2.0f * end.lightness - 2.0f * start.lightness;
  return ends;
}

Rgba cubehelixAt(const CubehelixEnds& ends, float t) {
  const float h = ends.angleStep * t + ends.angle;
  const float l = std::pow(ends.lightnessStep2 * 0.5f * t + ends.lightness, kGamma);
  const float spread = (ends.saturation + ends.saturationStep * t) * l;
  const double amplitude = (1.0 - double{l}) * double{spread};
  const double c = std::cos(h);
  const double s = std::sin(h);
  const double lightness = l;
  return Rgba{static_cast<float>(lightness + amplitude * (1.78277 * s - 0.14861 * c)),
              static_cast<float>(lightness + amplitude * (-0.29227 * c - 0.90649 * s)),
              static_cast<float>(lightness + amplitude * (1.97294 * c)), 1.0f};
}

Rgba VXLCubehelixGradient(float t, float r0, float g0, float b0, float r1, float g1, float b1) {
  return cubehelixAt(cubehelixEnds(r0, g0, b0, r1, g1, b1), t);
}

}  // namespace colour
