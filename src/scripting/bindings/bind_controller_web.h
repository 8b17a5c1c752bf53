#pragma once
// The controller's web bundle export and its 3D export table, added to its
// Python class.
#include <pybind11/pybind11.h>

#include <memory>

#include "app/VXLController.h"

namespace plexview {

void bindControllerWeb(pybind11::class_<VXLController, std::shared_ptr<VXLController>>& cls);

}  // namespace plexview
