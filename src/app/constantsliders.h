#pragma once
// How the panels' sliders and fields show and set numbers, as plain functions.
//
// The five layout constants each have a slider and a field. Attraction,
// repulsion and viscosity sliders are logarithmic, in hundredths of a decade
// around the default (slider 0 gives the default); the gravitational slider
// is linear in thousandths, the preferred-distance slider is the distance.
// Other sliders (filter range, weight thresholds) map a fixed number of steps
// linearly onto bounds.
#include <optional>
#include <string>

class VXLController;

namespace app {

enum class LayoutConstant { Attraction, Repulsive, Viscosity, Gravitational, PreferredDistance };

struct SliderRange {
  int minimum;
  int maximum;
};

// The slider position that shows constant `c` (not rounded, not clamped).
double sliderPositionForConstant(LayoutConstant constant, double c);
// The constant a slider at position `s` sets.
float constantForSliderPosition(LayoutConstant constant, double s);
// The positions a constant's slider offers.
SliderRange sliderRange(LayoutConstant constant);

// The constant as its field shows it ("%.3g").
std::string constantFieldText(double c);
// A typed number as it stands: surrounding blanks are ignored; anything else
// that is not one whole finite number gives nothing, and the value it was
// meant for stays as it was.
std::optional<float> parseNumberField(const std::string& text);

// The constant's value in the controller, and setting it through the
// controller's setter (which reaches the view and refreshes the panel).
float layoutConstant(const VXLController& controller, LayoutConstant constant);
void setLayoutConstant(VXLController& controller, LayoutConstant constant, float value);

// A slider of `steps` steps laid linearly over [lower, upper]: the step that
// shows `value` (rounded and clamped; 0 when the bounds are not a finite,
// non-empty interval), and the value a step sets.
int linearSliderStep(double value, double lower, double upper, int steps);
float linearSliderValue(int step, double lower, double upper, int steps);

}  // namespace app
