#pragma once
// Copies of NumPy data (or anything numpy.asarray accepts) into the model's
// arrays.
#include <pybind11/numpy.h>

#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace plexview {

// A 1-D array as a number array: float32 -> Float, float16 -> Float,
// float64 -> Double, bool -> Bool, int32 -> Int32, int64 and every other
// integer type -> Int64 (OverflowError for uint64 values beyond int64).
// ValueError when not 1-D, TypeError for other dtypes.
QLONumberArray::Ptr numberArrayFromNumpy(const pybind11::handle& object);

// An (N, 3) array as a vector array: float32 and float16 at Float precision,
// other real numbers (floats, ints, bools) at Double precision. ValueError for
// another shape, TypeError for other dtypes.
QLOVector3dArray::Ptr vectorArrayFromNumpy(const pybind11::handle& object);

// numpy.asarray(object); TypeError when NumPy cannot make an array of it.
pybind11::array asNumpy(const pybind11::handle& object);

}  // namespace plexview
