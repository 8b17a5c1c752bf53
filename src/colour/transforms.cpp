#include "colour/transforms.h"

#include <cmath>

namespace colour {
namespace {

// Bases of the exponential functions: the 32-bit constants, widened.
constexpr double kBase = 0.004000000189989805;
constexpr double kBase10 = 0.03999999910593033;
constexpr double kBaseTenth = 0.00039999998989515007;

// Each function is written for one value; the loops below apply one of them
// to a whole array so that the dispatch happens once, outside the loop.
float exponential(float t) {
  return 1.0f + static_cast<float>((0.003999956490252552 - std::pow(kBase, double{t})) *
                                   1.004016064448547);
}

float exponential10(float t) {
  return 1.0f + static_cast<float>(std::pow(kBase10, double{t}) * -1.0416666656965388 +
                                   0.041611315948452667);
}

float exponentialTenth(float t) {
  return 1.0f + static_cast<float>((0.00039999994970507186 - std::pow(kBaseTenth, double{t})) *
                                   1.0004001600539127);
}

// The exponential inverses share one shape: ln(1 - y + offset) / ln(b) minus
// ln(1 / (1 - b)), with 1 - y = 1 giving exactly 0.
struct InverseConstants {
  double offset, scale, shift;
};
constexpr InverseConstants kInverse{0.0040160205733087906, -0.1811114890566871,
                                    -0.004008021588291635};
constexpr InverseConstants kInverse10{0.04161131594845267, -0.31066746512254373,
                                      -0.040821993588932556};
constexpr InverseConstants kInverseTenth{0.00040016001370651096, -0.12781110890499173,
                                         -0.00040008001123084186};

float exponentialInverse(float y, const InverseConstants& c) {
  const float u = 1.0f - y;
  if (!(u < 1.0f) && !(u > 1.0f)) return 0.0f;  // exactly 1, or NaN
  return static_cast<float>(std::log(double{u} + c.offset) * c.scale + c.shift);
}

template <class F>
void applyEach(const float* in, float* out, std::uint64_t count, F f) {
  for (std::uint64_t i = 0; i < count; ++i) out[i] = f(in[i]);
}

}  // namespace

const std::vector<std::string>& colorFunctionNames() {
  static const std::vector<std::string> names{"Linear",          "Exponential", "Exponential10",
                                              "Exponential1/10", "Logarithmic", "Power"};
  return names;
}

ColorFunction colorFunctionNamed(std::string_view name) {
  const auto& names = colorFunctionNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<ColorFunction>(i);
  }
  return ColorFunction::Linear;
}

ScalarLimits resolveLimits(const float* values, std::uint64_t count,
                           const TransformSettings& settings) {
  ScalarLimits limits{settings.minColorScalarValue, settings.maxColorScalarValue};
  if (count == 0) return limits;
  if (limits.max == kUnsetLimit) {
    float largest = values[0];
    for (std::uint64_t i = 1; i < count; ++i) {
      if (values[i] > largest) largest = values[i];
    }
    limits.max = largest;
  }
  if (limits.min == kUnsetLimit) {
    float smallest = values[0];
    for (std::uint64_t i = 1; i < count; ++i) {
      if (values[i] < smallest) smallest = values[i];
    }
    limits.min = smallest;
  }
  return limits;
}

std::vector<float> newVectorFromVectorWithTransformFunction(const float* values,
                                                            std::uint64_t count,
                                                            ColorFunction function,
                                                            const TransformSettings& settings) {
  std::vector<float> result(count, 0.0f);
  if (count == 0) return result;
  const ScalarLimits limits = resolveLimits(values, count, settings);
  const float min = limits.min;
  const float range = limits.max - limits.min;
  float* out = result.data();
  // Normalise first (a loop the compiler vectorises), then bend in place.
  for (std::uint64_t i = 0; i < count; ++i) out[i] = (values[i] - min) / range;
  switch (function) {
    case ColorFunction::Exponential:
      applyEach(out, out, count, exponential);
      break;
    case ColorFunction::Exponential10:
      applyEach(out, out, count, exponential10);
      break;
    case ColorFunction::Exponential1_10:
      applyEach(out, out, count, exponentialTenth);
      break;
    case ColorFunction::Logarithmic:
      applyEach(out, out, count, [](float t) { return std::log2(t + 1.0f); });
      break;
    case ColorFunction::Power: {
      const float p = settings.powerCoefficient;
      applyEach(out, out, count, [p](float t) { return std::pow(t, p); });
      break;
    }
    case ColorFunction::Linear:
      break;
  }
  return result;
}

std::vector<float> newVectorFromVectorWithTransformFunction(const float* values,
                                                            std::uint64_t count,
                                                            std::string_view function,
                                                            const TransformSettings& settings) {
  return newVectorFromVectorWithTransformFunction(values, count, colorFunctionNamed(function),
                                                  settings);
}

std::vector<float> newVectorFromVectorWithInverseTransformFunction(const float* values,
                                                                   std::uint64_t count,
                                                                   ColorFunction function,
                                                                   float powerCoefficient) {
  std::vector<float> result(count, 0.0f);
  float* out = result.data();
  switch (function) {
    case ColorFunction::Exponential:
      applyEach(values, out, count, [](float y) { return exponentialInverse(y, kInverse); });
      break;
    case ColorFunction::Exponential10:
      applyEach(values, out, count, [](float y) { return exponentialInverse(y, kInverse10); });
      break;
    case ColorFunction::Exponential1_10:
      applyEach(values, out, count, [](float y) { return exponentialInverse(y, kInverseTenth); });
      break;
    case ColorFunction::Logarithmic:
      applyEach(values, out, count, [](float y) { return std::exp(y); });
      break;
    case ColorFunction::Power: {
      const float exponent = 1.0f / powerCoefficient;
      applyEach(values, out, count, [exponent](float y) { return std::pow(y, exponent); });
      break;
    }
    case ColorFunction::Linear:
      applyEach(values, out, count, [](float y) { return y; });
      break;
  }
  return result;
}

std::vector<float> newVectorFromVectorWithInverseTransformFunction(const float* values,
                                                                   std::uint64_t count,
                                                                   std::string_view function,
                                                                   float powerCoefficient) {
  return newVectorFromVectorWithInverseTransformFunction(
      values, count, colorFunctionNamed(function), powerCoefficient);
}

}  // namespace colour
