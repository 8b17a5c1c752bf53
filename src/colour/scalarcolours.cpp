#include "colour/scalarcolours.h"

#include "quillo/QLOVector3dArray.h"

namespace colour {

std::shared_ptr<QLOVector3dArray> colorsForScalarValues(const float* values, std::uint64_t count,
                                                        const ScalarColourSettings& settings) {
  const std::vector<float> normalised = newVectorFromVectorWithTransformFunction(
      values, count, settings.function, settings.transform);
  return colorsFromNormalizedVector(normalised.data(), count, settings.map, settings.colours);
}

}  // namespace colour
