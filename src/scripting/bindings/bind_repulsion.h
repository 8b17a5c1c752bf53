#pragma once
// The repulsion choice and the multilevel start, on the view and on the
// controller.
#include <pybind11/pybind11.h>

#include <memory>

class VXLController;
class VXLNetworkView;

namespace plexview {

void bindViewRepulsion(pybind11::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>& cls);
void bindControllerRepulsion(pybind11::class_<VXLController, std::shared_ptr<VXLController>>& cls);

}  // namespace plexview
