#pragma once
// The controller's colouring methods, added to its Python class.
#include <pybind11/pybind11.h>

#include <memory>

#include "app/VXLController.h"

namespace plexview {

void bindControllerColour(pybind11::class_<VXLController, std::shared_ptr<VXLController>>& cls);

}  // namespace plexview
