#pragma once
// Checks on arguments that Python callers pass as plain ints: element type
// codes, precisions and indices.
#include <pybind11/pybind11.h>

#include <cstdint>

#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace plexview {

// A plexview.NumberType or its int code; ValueError for an unknown code.
NumberType numberTypeFrom(const pybind11::handle& value);
// A plexview.Precision or its int code; ValueError for an unknown code.
Precision precisionFrom(const pybind11::handle& value);
// `index` as an element number below `count`; IndexError otherwise.
std::uint64_t checkedIndex(std::int64_t index, std::uint64_t count);

}  // namespace plexview
