// Python access to selections and placement beyond the index forms: the
// selection handler a script subclasses, the vertex-object selection
// operations and the box layout and recentring of the controller.
#include <Python.h>

#include <cstdint>
#include <memory>
#include <string>

#include "app/VXLController.h"
#include "bindings/bind_parts.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Controller = py::class_<VXLController, std::shared_ptr<VXLController>>;
using View = py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>;

// Lets a Python subclass replace handleSelectionWithController. The view
// calls it on the main thread, from a script (GIL held) or from a click (GIL
// released while the event loop runs), so the GIL is taken here. An
// exception raised by the script is reported and the selection stands.
class PythonSelectionHandler : public VXLSelectionHandler {
 public:
  void handleSelectionWithController(VXLController* controller,
                                     std::uint64_t vertexIndex) override {
    py::gil_scoped_acquire gil;
    try {
      const py::function method = py::get_override(static_cast<const VXLSelectionHandler*>(this),
                                                   "handleSelectionWithController");
      if (!method) return;
      // The registered controller, so Python sees the object it already knows.
      const VXLController::Ptr shared =
          controller ? VXLController::controllerWithUUID(controller->uuid()) : nullptr;
      method(shared, vertexIndex);
    } catch (py::error_already_set& error) {
      error.discard_as_unraisable("handleSelectionWithController");
    }
  }
};

// The handler as the view keeps it. The view may hold it long after the
// script dropped its own reference, so the Python object (which carries the
// overriding method) is kept alive for as long as the view holds it.
std::shared_ptr<VXLSelectionHandler> heldHandler(const py::object& handler) {
  if (handler.is_none()) return nullptr;
  if (!py::isinstance<VXLSelectionHandler>(handler)) {
    throw py::type_error("a selection handler must be a VXLSelectionHandler (or None), not " +
                         std::string(py::str(py::type::of(handler).attr("__name__"))));
  }
  auto* raw = handler.cast<VXLSelectionHandler*>();
  PyObject* owner = handler.inc_ref().ptr();
  return std::shared_ptr<VXLSelectionHandler>(raw, [owner](VXLSelectionHandler*) {
    if (!Py_IsInitialized()) return;  // the interpreter is gone, and the object with it
    py::gil_scoped_acquire gil;
    Py_DECREF(owner);
  });
}

}  // namespace

void bindControllerSelection(py::module_& m) {
  py::class_<VXLSelectionHandler, PythonSelectionHandler, std::shared_ptr<VXLSelectionHandler>>(
      m, "VXLSelectionHandler",
      "Told each time the view shows a vertex's details; does nothing. Subclass it and "
      "override handleSelectionWithController(controller, vertexIndex).")
      .def(py::init<>())
      .def("handleSelectionWithController", &VXLSelectionHandler::handleSelectionWithController,
           py::arg("controller"), py::arg("vertexIndex"));

  auto view = py::reinterpret_borrow<View>(m.attr("VXLNetworkView"));
  view.def("selectionhandler", &VXLNetworkView::selectionhandler);
  view.def(
      "setSelectionhandler",
      [](VXLNetworkView& v, const py::object& handler) {
        v.setSelectionhandler(heldHandler(handler));
      },
      py::arg("handler"), "A VXLSelectionHandler (or None) told of shown vertex details.");

  using C = VXLController;
  auto cls = py::reinterpret_borrow<Controller>(m.attr("VXLController"));
  cls.def("selectionHandler", &C::selectionHandler);
  cls.def(
      "setSelectionHandler",
      [](C& c, const py::object& handler) { c.setSelectionHandler(heldHandler(handler)); },
      py::arg("handler"), "Sets the view's selection handler (a VXLSelectionHandler or None).");
  cls.def("selectVertex", &C::selectVertex, py::arg("vertex"));
  cls.def("addToSelectionVertex", &C::addToSelectionVertex, py::arg("vertex"));
  cls.def("removeFromSelectionVertex", &C::removeFromSelectionVertex, py::arg("vertex"));
  cls.def("toggleSelectionOfVertex", &C::toggleSelectionOfVertex, py::arg("vertex"));
  cls.def("randomizePositionsWithSizeX", &C::randomizePositionsWithSizeX, py::arg("sizeX"),
          py::arg("sizeY"), py::arg("sizeZ"),
          "A random layout in the box -X..X, -Y..Y, -Z..Z, stored as the network's Position.");
  cls.def("resetCenter", &C::resetCenter, py::arg("sizeX"), py::arg("sizeY"), py::arg("sizeZ"),
          "Recentres the layout and rescales its longest extent to its axis's size; stored as "
          "the network's Position.");
}

}  // namespace plexview
