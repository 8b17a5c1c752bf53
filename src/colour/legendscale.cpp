#include "colour/legendscale.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace colour {

std::string legendLabel(float value) {
  const float size = std::fabs(value);
  const bool plain = size > 10.0f && size < 9999.0f;
  char text[64];
  std::snprintf(text, sizeof text, plain ? "%.0f" : "%.2g", double{value});
  return text;
}

LegendScale legendScale(ScalarLimits limits, ColorFunction function, float powerCoefficient,
                        std::optional<ColorMap> map, const ColorMapSettings& mapSettings) {
  std::array<float, kLegendSamples> samples{};
  for (int i = 0; i < kLegendSamples; ++i) {
    samples[static_cast<std::size_t>(i)] = static_cast<float>(i / double{kLegendSamples - 1});
  }
  const std::vector<Rgba> colours =
      colorsForNormalizedValues(samples.data(), samples.size(), map, mapSettings);
  const std::vector<float> preimages = newVectorFromVectorWithInverseTransformFunction(
      samples.data(), samples.size(), function, powerCoefficient);
  const float range = limits.max - limits.min;

  LegendScale scale;
  scale.labels.reserve(kLegendSamples);
  scale.colors.reserve(kLegendSamples);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const float value = preimages[i] * range + limits.min;
    scale.labels.push_back(i % kLegendLabelEvery == 0 ? legendLabel(value) : std::string());
    Rgba c = colours[i];
    c.a = kLegendAlpha;
    scale.colors.push_back(c);
  }
  return scale;
}

}  // namespace colour
