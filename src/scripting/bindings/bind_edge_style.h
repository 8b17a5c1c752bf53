#pragma once
// The edge style (colour mode, single colour, widths by weight, arrows) on
// the view's and the controller's Python classes, with the same names.
#include <pybind11/pybind11.h>

#include <memory>

class VXLController;
class VXLNetworkView;

namespace plexview {

void bindViewEdgeStyle(pybind11::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>& cls);
void bindControllerEdgeStyle(pybind11::class_<VXLController, std::shared_ptr<VXLController>>& cls);

}  // namespace plexview
