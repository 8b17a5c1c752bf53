#pragma once
// Colours given from Python: (r, g, b) or (r, g, b, a) numbers in 0..1, and
// where a setting is written as text also "#rrggbb".
#include <pybind11/pybind11.h>

#include "colour/rgba.h"

namespace plexview {

enum class HexText { Accepted, Refused };

// Raises ValueError naming the value when it is no colour.
colour::Rgba rgbaFromPython(const pybind11::handle& value, HexText hex);

}  // namespace plexview
