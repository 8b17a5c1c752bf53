// Python access to the repulsion choice and the multilevel start.
#include "bindings/bind_repulsion.h"

#include <functional>

#include "app/VXLController.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

constexpr const char* kMultilevelDoc =
    "Lays the network out on ever coarser versions of itself and installs the positions; "
    "returns once they are placed. progress(fraction), if given, may return False to stop "
    "(the positions then stay). Returns whether positions were placed.";

// The start runs without the interpreter lock; a Python progress callback
// takes it back for each call. None or a true answer goes on.
template <class Owner>
bool multilevelStart(Owner& owner, const py::object& progress) {
  std::function<bool(double)> report;
  if (!progress.is_none()) {
    report = [&progress](double fraction) {
      const py::gil_scoped_acquire acquire;
      const py::object answer = progress(fraction);
      return answer.is_none() || py::bool_(answer);
    };
  }
  const py::gil_scoped_release release;
  return owner.multilevelStart(report);
}

template <class Class>
void bindCommon(Class& cls) {
  using Owner = typename Class::type;
  cls.def("barnesHutTheta", &Owner::barnesHutTheta);
  cls.def("setBarnesHutTheta", &Owner::setBarnesHutTheta, py::arg("theta"),
          "Approximate repulsion with this opening angle (0: all pairs); turns the automatic "
          "choice off.");
  cls.def("automaticRepulsion", &Owner::automaticRepulsion);
  cls.def("setAutomaticRepulsion", &Owner::setAutomaticRepulsion, py::arg("on"),
          "All pairs below 20,000 participating vertices, theta 0.8 from there on.");
  cls.def("repulsionStatus", &Owner::repulsionStatus,
          "What the next step uses, e.g. 'Repulsion: exact'.");
  cls.def(
      "multilevelStart",
      [](Owner& owner, const py::object& progress) { return multilevelStart(owner, progress); },
      py::arg("progress") = py::none(), kMultilevelDoc);
}

}  // namespace

void bindViewRepulsion(py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>& cls) {
  bindCommon(cls);
  cls.def("repulsionThetaInUse", &VXLNetworkView::repulsionThetaInUse,
          "The theta the next step uses (0: all pairs).");
}

void bindControllerRepulsion(py::class_<VXLController, std::shared_ptr<VXLController>>& cls) {
  bindCommon(cls);
}

}  // namespace plexview
