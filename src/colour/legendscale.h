#pragma once
// The value scale of the continuous legend: the colour map sampled evenly
// in normalised space, labelled with the property values the samples stand
// for.
#include <cstdint>
#include <string>
#include <vector>

#include "colour/colormaps.h"
#include "colour/rgba.h"
#include "colour/transforms.h"

namespace colour {

inline constexpr int kLegendSamples = 22;
inline constexpr int kLegendLabelEvery = 3;
inline constexpr float kLegendAlpha = 0.9f;

struct LegendScale {
  std::vector<std::string> labels;  // empty text for unlabelled entries
  std::vector<Rgba> colors;         // the map at each sample, alpha 0.9
};

// "%.0f" for 10 < |v| < 9999, "%.2g" otherwise (NaN included).
std::string legendLabel(float value);

// 22 entries from the bottom of the bar (sample 0) to the top (sample 1);
// `limits` are the property's resolved limits.
LegendScale legendScale(ScalarLimits limits, ColorFunction function, float powerCoefficient,
                        std::optional<ColorMap> map, const ColorMapSettings& mapSettings);

}  // namespace colour
