#include "colour/legendticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace colour {
namespace {

constexpr int kFewestTicks = 4;
constexpr int kMostTicks = 7;
constexpr std::array<double, 4> kMantissas{1.0, 2.0, 2.5, 5.0};

// Text for value = i * step with as many digits as the step needs, so
// 0.1 * 3 reads "0.3"; scientific beyond six integer digits or four
// leading zeros.
std::string tickText(double value, double step, double largest) {
  const int stepExponent = static_cast<int>(std::floor(std::log10(step) + 1e-9));
  const double mantissa = step / std::pow(10.0, stepExponent);
  const int extra = std::fabs(mantissa - 2.5) < 1e-9 ? 1 : 0;  // 2.5 needs a digit more
  const int decimals = std::max(0, extra - stepExponent);
  if (value == 0.0) value = 0.0;  // never "-0"
  char text[64];
  const int topExponent = static_cast<int>(std::floor(std::log10(largest)));
  if (topExponent >= 6 || topExponent < -4) {
    const int digits = std::max(1, topExponent - stepExponent + extra + 1);
    std::snprintf(text, sizeof text, "%.*g", digits, value);
  } else {
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
  }
  return text;
}

std::vector<Tick> linearTicks(double lo, double hi) {
  if (!(hi > lo)) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", lo);
    return {{lo, text}};
  }
  // The smallest round step that keeps to at most kMostTicks, looking one
  // decade each side of the range's own magnitude.
  const int exponent = static_cast<int>(std::floor(std::log10((hi - lo) / kMostTicks)));
  double step = 0;
  long first = 0, count = 0;
  for (int e = exponent - 1; e <= exponent + 1 && step == 0; ++e) {
    for (const double m : kMantissas) {
      const double s = m * std::pow(10.0, e);
      // Limits often come from floats: 0.1f is a little above 0.1.
      const double slack = std::min(1e-7 * std::max(std::fabs(lo), std::fabs(hi)), 1e-3 * s);
      const long a = static_cast<long>(std::ceil((lo - slack) / s));
      const long b = static_cast<long>(std::floor((hi + slack) / s));
      if (b - a + 1 <= kMostTicks) {
        step = s;
        first = a;
        count = b - a + 1;
        break;
      }
    }
  }
  const double largest = std::max(std::fabs(lo), std::fabs(hi));
  std::vector<Tick> ticks;
  for (long i = 0; i < count; ++i) {
    const double value = static_cast<double>(first + i) * step;
    ticks.push_back({value, tickText(value, step, largest)});
  }
  return ticks;
}

std::string decadeText(int exponent) {
  if (exponent >= 0 && exponent < 6)
    return std::to_string(static_cast<long>(std::pow(10, exponent)));
  char text[32];
  if (exponent < 0 && exponent >= -4) {
    std::snprintf(text, sizeof text, "%.*f", -exponent, std::pow(10.0, exponent));
  } else {
    std::snprintf(text, sizeof text, "1e%d", exponent);
  }
  return text;
}

std::vector<Tick> logTicks(double lo, double hi) {
  const int low = static_cast<int>(std::ceil(std::log10(lo) - 1e-9));
  const int high = static_cast<int>(std::floor(std::log10(hi) + 1e-9));
  const int decades = high - low + 1;
  const int every = (decades + kMostTicks - 1) / kMostTicks;  // label every n-th decade
  std::vector<Tick> ticks;
  for (int e = low - 1; e <= high; ++e) {
    const double decade = std::pow(10.0, e);
    if (e >= low && (e - low) % every == 0) ticks.push_back({decade, decadeText(e)});
    if (every > 1) continue;  // minor ticks only while each decade is labelled
    for (int m = 2; m <= 9; ++m) {
      const double value = m * decade;
      if (value >= lo * (1 - 1e-9) && value <= hi * (1 + 1e-9)) ticks.push_back({value, ""});
    }
  }
  return ticks;
}

}  // namespace

std::vector<Tick> readableTicks(double lo, double hi, TickScale scale) {
  if (!std::isfinite(lo) || !std::isfinite(hi)) return {};
  if (lo > hi) std::swap(lo, hi);
  if (scale == TickScale::Logarithmic && lo > 0) {
    const double decades = std::floor(std::log10(hi) + 1e-9) - std::ceil(std::log10(lo) - 1e-9);
    if (decades >= 1) return logTicks(lo, hi);
  }
  return linearTicks(lo, hi);
}

std::vector<BarTick> legendBarTicks(ScalarLimits limits, ColorFunction function,
                                    float powerCoefficient) {
  const TickScale scale =
      function == ColorFunction::Logarithmic ? TickScale::Logarithmic : TickScale::Linear;
  const std::vector<Tick> ticks = readableTicks(limits.min, limits.max, scale);
  const double range = double{limits.max} - double{limits.min};
  std::vector<float> normalised;
  for (const Tick& tick : ticks) {
    normalised.push_back(range > 0 ? static_cast<float>((tick.value - limits.min) / range) : 0.5f);
  }
  TransformSettings settings;
  settings.minColorScalarValue = 0;
  settings.maxColorScalarValue = 1;
  settings.powerCoefficient = powerCoefficient;
  const std::vector<float> at = newVectorFromVectorWithTransformFunction(
      normalised.data(), normalised.size(), function, settings);
  std::vector<BarTick> placed;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    placed.push_back({std::clamp(at[i], 0.0f, 1.0f), ticks[i].label});
  }
  return placed;
}

}  // namespace colour
