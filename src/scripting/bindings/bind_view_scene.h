#pragma once
// The drawing side of the view for scripts: options, colours, camera.
#include <pybind11/pybind11.h>

#include <memory>

class VXLNetworkView;

namespace plexview {

using ViewClass = pybind11::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>;

void bindViewScene(pybind11::module_& m, ViewClass& cls);

}  // namespace plexview
