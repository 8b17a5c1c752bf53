#pragma once
// Readable ticks for a legend's value scale: round steps (1, 2, 2.5 or 5
// times a power of ten) on a linear scale, decades on a logarithmic one,
// labelled without the noise of binary fractions; and their places along
// the colour bar.
#include <string>
#include <vector>

#include "colour/transforms.h"

namespace colour {

enum class TickScale { Linear, Logarithmic };

struct Tick {
  double value;
  std::string label;  // empty for an unlabelled minor tick
  bool operator==(const Tick&) const = default;
};

// Ticks inside [lo, hi] (in either order), ascending. Linear: 4 to 7 ticks
// when the range allows; a single value gives one tick. Logarithmic (needs
// lo > 0 and at least two decades inside the range, otherwise linear):
// labelled decades with unlabelled 2..9 minor ticks, fewer labels on very
// wide ranges.
std::vector<Tick> readableTicks(double lo, double hi, TickScale scale);

struct BarTick {
  float at;  // 0 at the bar's bottom (the lower limit), 1 at its top
  std::string label;
};

// The readable ticks of `limits` placed on the bar through the colouring
// function (so they sit where their colour is); logarithmic colouring asks
// for decades.
std::vector<BarTick> legendBarTicks(ScalarLimits limits, ColorFunction function,
                                    float powerCoefficient);

}  // namespace colour
