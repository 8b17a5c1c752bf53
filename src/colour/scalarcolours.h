#pragma once
// A numeric vertex property to per-vertex colours: forward transform, then
// colour map.
#include <cstdint>
#include <memory>
#include <optional>

#include "colour/colormaps.h"
#include "colour/transforms.h"

class QLOVector3dArray;

namespace colour {

struct ScalarColourSettings {
  ColorFunction function = ColorFunction::Exponential;
  std::optional<ColorMap> map = ColorMap::Jet;
  TransformSettings transform;
  ColorMapSettings colours;
};

// One colour per value, as a single-precision vector array.
std::shared_ptr<QLOVector3dArray> colorsForScalarValues(const float* values, std::uint64_t count,
                                                        const ScalarColourSettings& settings);

}  // namespace colour
