#pragma once
// Python access to the network model: arrays with NumPy views, the random
// source, networks and vertices.
#include <pybind11/pybind11.h>

namespace plexview {

// Adds the model classes, enums and the ReadError exception to `m`.
void bindModel(pybind11::module_& m);

}  // namespace plexview
