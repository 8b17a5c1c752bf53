#pragma once
// Scalar transforms: a vertex property is scaled onto the normalised interval
// by its limits and bent by a named function; the inverse functions turn
// normalised legend samples back into property values.
#include <cfloat>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace colour {

// A limit equal to this value is taken from the data.
inline constexpr float kUnsetLimit = FLT_MAX;

// In the order the function pop-up lists them; the index is the function's
// integer code (1 is "Exponential").
enum class ColorFunction {
  Linear,
  Exponential,
  Exponential10,
  Exponential1_10,
  Logarithmic,
  Power
};

const std::vector<std::string>& colorFunctionNames();
// Exact, case-sensitive match; any other name means Linear.
ColorFunction colorFunctionNamed(std::string_view name);
inline constexpr std::string_view kDefaultColorFunction = "Exponential";

struct TransformSettings {
  float minColorScalarValue = kUnsetLimit;
  float maxColorScalarValue = kUnsetLimit;
  float powerCoefficient = 2.0f;
};

struct ScalarLimits {
  float min;
  float max;
};

// The user limits with each unset one replaced by the data's extreme; with no
// values both stay as given.
ScalarLimits resolveLimits(const float* values, std::uint64_t count,
                           const TransformSettings& settings);

// (x - min) / (max - min) bent by the function, one result per value, no
// clamping (NaN and values outside the interval pass on).
std::vector<float> newVectorFromVectorWithTransformFunction(const float* values,
                                                            std::uint64_t count,
                                                            ColorFunction function,
                                                            const TransformSettings& settings);
std::vector<float> newVectorFromVectorWithTransformFunction(const float* values,
                                                            std::uint64_t count,
                                                            std::string_view function,
                                                            const TransformSettings& settings);

// Normalised values back to the normalised pre-images the legend labels;
// "Logarithmic" deliberately answers e^y.
std::vector<float> newVectorFromVectorWithInverseTransformFunction(const float* values,
                                                                   std::uint64_t count,
                                                                   ColorFunction function,
                                                                   float powerCoefficient);
std::vector<float> newVectorFromVectorWithInverseTransformFunction(const float* values,
                                                                   std::uint64_t count,
                                                                   std::string_view function,
                                                                   float powerCoefficient);

}  // namespace colour
