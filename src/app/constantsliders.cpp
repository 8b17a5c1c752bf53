#include "app/constantsliders.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "app/VXLController.h"

namespace app {
namespace {

// The default of a logarithmic constant: the value at slider position 0.
double logarithmicOrigin(LayoutConstant constant) {
  switch (constant) {
    case LayoutConstant::Attraction:
      return 0.001;
    case LayoutConstant::Repulsive:
      return 10.0;
    case LayoutConstant::Viscosity:
      return 0.05;
    default:
      return 0.0;
  }
}

bool isLogarithmic(LayoutConstant constant) {
  return logarithmicOrigin(constant) > 0.0;
}

}  // namespace

double sliderPositionForConstant(LayoutConstant constant, double c) {
  if (isLogarithmic(constant)) return 100.0 * std::log10(c / logarithmicOrigin(constant));
  if (constant == LayoutConstant::Gravitational) return 1000.0 * c;
  return c;
}

float constantForSliderPosition(LayoutConstant constant, double s) {
  if (isLogarithmic(constant)) {
    return static_cast<float>(logarithmicOrigin(constant) * std::pow(10.0, s * 0.01));
  }
  if (constant == LayoutConstant::Gravitational) return static_cast<float>(s * 0.01 * 0.1);
  return static_cast<float>(s);
}

SliderRange sliderRange(LayoutConstant constant) {
  switch (constant) {
    case LayoutConstant::Attraction:  // 1e-6 .. 1
    case LayoutConstant::Repulsive:   // 0.01 .. 10000
      return {-300, 300};
    case LayoutConstant::Viscosity:  // 5e-5 .. about 1 (all speed lost)
      return {-300, 130};
    case LayoutConstant::Gravitational:  // 0 .. 0.1
    case LayoutConstant::PreferredDistance:
      return {0, 100};
  }
  return {0, 100};
}

std::string constantFieldText(double c) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3g", c);
  return text;
}

std::optional<float> parseNumberField(const std::string& text) {
  const auto blank = [](unsigned char ch) { return std::isspace(ch) != 0; };
  const auto first = std::find_if_not(text.begin(), text.end(), blank);
  const auto last = std::find_if_not(text.rbegin(), text.rend(), blank).base();
  if (first >= last) return std::nullopt;
  const char* begin = &*first;
  const char* end = begin + (last - first);
  if (*begin == '+') ++begin;  // from_chars takes no plus sign
  float value = 0.0f;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

float layoutConstant(const VXLController& controller, LayoutConstant constant) {
  switch (constant) {
    case LayoutConstant::Attraction:
      return controller.attractionConstant();
    case LayoutConstant::Repulsive:
      return controller.repulsiveConstant();
    case LayoutConstant::Viscosity:
      return controller.viscosityConstant();
    case LayoutConstant::Gravitational:
      return controller.gravitationalConstant();
    case LayoutConstant::PreferredDistance:
      return controller.preferredDistance();
  }
  return 0.0f;
}

void setLayoutConstant(VXLController& controller, LayoutConstant constant, float value) {
  switch (constant) {
    case LayoutConstant::Attraction:
      return controller.setAttractionConstant(value);
    case LayoutConstant::Repulsive:
      return controller.setRepulsiveConstant(value);
    case LayoutConstant::Viscosity:
      return controller.setViscosityConstant(value);
    case LayoutConstant::Gravitational:
      return controller.setGravitationalConstant(value);
    case LayoutConstant::PreferredDistance:
      return controller.setPreferredDistance(value);
  }
}

namespace {
bool usableBounds(double lower, double upper) {
  return std::isfinite(lower) && std::isfinite(upper) && upper > lower;
}
}  // namespace

int linearSliderStep(double value, double lower, double upper, int steps) {
  if (!usableBounds(lower, upper) || std::isnan(value)) return 0;
  const double t = std::clamp((value - lower) / (upper - lower), 0.0, 1.0);
  return static_cast<int>(std::lround(t * steps));
}

float linearSliderValue(int step, double lower, double upper, int steps) {
  if (!usableBounds(lower, upper) || step <= 0) return static_cast<float>(lower);
  // The last step is the upper bound itself, so a range slider pushed to the
  // end keeps the largest value inside the range.
  if (step >= steps) return static_cast<float>(upper);
  return static_cast<float>(lower + (upper - lower) * step / steps);
}

}  // namespace app
