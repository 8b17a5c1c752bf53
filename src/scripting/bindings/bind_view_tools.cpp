// The desk tools from Python: on the view fit all, frame the selection,
// find vertices by text, select all, invert, grow by neighbours and the
// rectangle selection; on the controller undo and redo.
#include <pybind11/stl.h>

#include "app/VXLController.h"
#include "bindings/bind_parts.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {

void bindViewTools(py::module_& m) {
  auto cls = py::reinterpret_borrow<py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>>(
      m.attr("VXLNetworkView"));
  cls.def("zoomToFit", py::overload_cast<>(&VXLNetworkView::zoomToFit),
          "Moves the camera so every shown vertex fits the view; False when none is shown.");
  cls.def("zoomToFit", py::overload_cast<int, int>(&VXLNetworkView::zoomToFit), py::arg("width"),
          py::arg("height"),
          "The same for a picture of width x height pixels (a view without a window has no "
          "size of its own).");
  cls.def("frameSelection", &VXLNetworkView::frameSelection,
          "Moves the camera so the selected shown vertices fit the view.");
  cls.def("shownVertices", &VXLNetworkView::shownVertices,
          "Indices of the vertices the filter and the colouring leave shown, ascending.");
  cls.def("findVertices", &VXLNetworkView::findVertices, py::arg("text"),
          "Vertices whose Name (without names: number) or a text property contains text, "
          "ignoring case.");
  cls.def("selectAll", &VXLNetworkView::selectAll, "Selects every vertex.");
  cls.def("invertSelection", &VXLNetworkView::invertSelection,
          "Selects the vertices that were not selected, and only those.");
  cls.def("selectNeighbours", &VXLNetworkView::selectNeighbours,
          "Adds every vertex joined by an edge to a selected vertex.");
  cls.def("verticesInRectangle", &VXLNetworkView::verticesInRectangle, py::arg("x0"), py::arg("y0"),
          py::arg("x1"), py::arg("y1"),
          "Shown vertices projecting inside the rectangle (backing pixels, origin lower left).");
  cls.def("changeCount", &VXLNetworkView::changeCount,
          "A counter bumped by every change to the picture.");
}

void bindControllerUndo(py::module_& m) {
  auto cls = py::reinterpret_borrow<py::class_<VXLController, std::shared_ptr<VXLController>>>(
      m.attr("VXLController"));
  cls.def("undo", &VXLController::undo,
          "Puts back the state before the last undoable change (colouring, filter, thresholds, "
          "selection, positions).");
  cls.def("redo", &VXLController::redo, "Makes again the change the last undo took back.");
  cls.def("canUndo", &VXLController::canUndo, "Whether undo has a change to take back.");
  cls.def("canRedo", &VXLController::canRedo, "Whether redo has a change to make again.");
}

}  // namespace plexview
