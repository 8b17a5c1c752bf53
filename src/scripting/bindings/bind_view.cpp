// Python access to the network view without a window: install a network,
// set the constants, step the layout, read positions and speeds, and select
// vertices; its text overlays.
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "bindings/bind_edge_style.h"
#include "bindings/bind_parts.h"
#include "bindings/bind_repulsion.h"
#include "bindings/bind_view_scene.h"
#include "filter/filtering.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

// A float vector handed to Python as a fresh numpy array (these caches are
// replaced, never changed, so a copy is what the caller saw at that moment).
py::object floatsCopy(const VXLNetworkView::FloatsPtr& values) {
  if (!values) return py::none();
  return py::array_t<float>(static_cast<py::ssize_t>(values->size()), values->data());
}

// A float property of the view as a Python property.
template <class Get, class Set>
void constant(py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>& cls, const char* name,
              const char* setter, Get get, Set set) {
  cls.def(name, get);
  cls.def(setter, set, py::arg("value"));
}

}  // namespace

void bindView(py::module_& m) {
  py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>> cls(
      m, "VXLNetworkView",
      "The network view without a window: it owns the layout of a network and steps it.");
  cls.def(py::init<>());

  cls.def("network", &VXLNetworkView::network);
  cls.def("setNetwork", &VXLNetworkView::setNetwork, py::arg("network"),
          "Installs a network with a fresh random layout in the -30..30 cube.");
  cls.def("positions", &VXLNetworkView::positions);
  cls.def("setPositions", &VXLNetworkView::setPositions, py::arg("positions"));
  cls.def("speeds", &VXLNetworkView::speeds);
  cls.def("setSpeeds", &VXLNetworkView::setSpeeds, py::arg("speeds"));
  cls.def("forces", &VXLNetworkView::forces);
  cls.def("setForces", &VXLNetworkView::setForces, py::arg("forces"));
  cls.def("resetSpeeds", &VXLNetworkView::resetSpeeds);
  cls.def("resetForces", &VXLNetworkView::resetForces);
  cls.def("resetPositions", &VXLNetworkView::resetPositions);
  cls.def("randomizePositionsWithSizeX", &VXLNetworkView::randomizePositionsWithSizeX,
          py::arg("sizeX"), py::arg("sizeY"), py::arg("sizeZ"));
  cls.def("resetCenter", &VXLNetworkView::resetCenter, py::arg("sizeX"), py::arg("sizeY"),
          py::arg("sizeZ"));

  constant(cls, "attractionConstant", "setAttractionConstant", &VXLNetworkView::attractionConstant,
           &VXLNetworkView::setAttractionConstant);
  constant(cls, "repulsiveConstant", "setRepulsiveConstant", &VXLNetworkView::repulsiveConstant,
           &VXLNetworkView::setRepulsiveConstant);
  constant(cls, "viscosityConstant", "setViscosityConstant", &VXLNetworkView::viscosityConstant,
           &VXLNetworkView::setViscosityConstant);
  constant(cls, "gravitationalConstant", "setGravitationalConstant",
           &VXLNetworkView::gravitationalConstant, &VXLNetworkView::setGravitationalConstant);
  constant(cls, "softeningConstant", "setSofteningConstant", &VXLNetworkView::softeningConstant,
           &VXLNetworkView::setSofteningConstant);
  constant(cls, "preferredDistance", "setPreferredDistance", &VXLNetworkView::preferredDistance,
           &VXLNetworkView::setPreferredDistance);
  constant(cls, "weightAsDistance", "setWeightAsDistance", &VXLNetworkView::weightAsDistance,
           &VXLNetworkView::setWeightAsDistance);
  constant(cls, "iterations", "setIterations", &VXLNetworkView::iterations,
           &VXLNetworkView::setIterations);
  constant(cls, "hierLevels", "setHierLevels", &VXLNetworkView::hierLevels,
           &VXLNetworkView::setHierLevels);
  constant(cls, "iterating", "setIterating", &VXLNetworkView::iterating,
           &VXLNetworkView::setIterating);
  cls.def("fAnimate", &VXLNetworkView::fAnimate);
  cls.def("time", &VXLNetworkView::time);

  // Stepping runs without the interpreter lock so other Python threads (and
  // the layout's own threads) go on.
  const auto nogil = py::call_guard<py::gil_scoped_release>();
  cls.def("iterateBy", &VXLNetworkView::iterateBy, py::arg("n"), nogil,
          "Runs up to n steps now, on the calling thread.");
  cls.def("iterate", &VXLNetworkView::iterate, nogil);
  cls.def("iterateByNumber", &VXLNetworkView::iterateByNumber, py::arg("n"), nogil);
  cls.def("animationTimer", &VXLNetworkView::animationTimer, nogil,
          "One tick of the 60 Hz timer: a frame, then a background batch when running.");
  cls.def("prepareFrame", &VXLNetworkView::prepareFrame,
          "What a frame does before drawing: refills the filter cache when needed.");
  cls.def("start", &VXLNetworkView::start);
  cls.def("pause", &VXLNetworkView::pause);
  cls.def("toggleStartPause", &VXLNetworkView::toggleStartPause);
  cls.def("waitForBatch", &VXLNetworkView::waitForBatch, nogil);

  constant(cls, "weightMaxThreshold", "setWeightMaxThreshold", &VXLNetworkView::weightMaxThreshold,
           &VXLNetworkView::setWeightMaxThreshold);
  constant(cls, "weightMinThreshold", "setWeightMinThreshold", &VXLNetworkView::weightMinThreshold,
           &VXLNetworkView::setWeightMinThreshold);
  cls.def("maxMinWeight", &VXLNetworkView::maxMinWeight);
  cls.def("weightThresholdData",
          [](const VXLNetworkView& view) { return floatsCopy(view.weightThresholdData()); });
  cls.def("weightThresholdCount", &VXLNetworkView::weightThresholdCount);
  constant(cls, "filterPropertyName", "setFilterPropertyName", &VXLNetworkView::filterPropertyName,
           &VXLNetworkView::setFilterPropertyName);
  constant(cls, "maxFilterProperty", "setMaxFilterProperty", &VXLNetworkView::maxFilterProperty,
           &VXLNetworkView::setMaxFilterProperty);
  constant(cls, "minFilterProperty", "setMinFilterProperty", &VXLNetworkView::minFilterProperty,
           &VXLNetworkView::setMinFilterProperty);
  constant(cls, "shouldUpdateFilterProperty", "setShouldUpdateFilterProperty",
           &VXLNetworkView::shouldUpdateFilterProperty,
           &VXLNetworkView::setShouldUpdateFilterProperty);
  cls.def("filterProperty",
          [](const VXLNetworkView& view) { return floatsCopy(view.filterProperty()); });
  constant(cls, "hiddenVertices", "setHiddenVertices", &VXLNetworkView::hiddenVertices,
           &VXLNetworkView::setHiddenVertices);
  constant(cls, "alphaChannel", "setAlphaChannel", &VXLNetworkView::alphaChannel,
           &VXLNetworkView::setAlphaChannel);
  constant(cls, "hideSpecialVertices", "setHideSpecialVertices",
           &VXLNetworkView::hideSpecialVertices, &VXLNetworkView::setHideSpecialVertices);

  // Selection and picking.
  cls.def("resetSelection", &VXLNetworkView::resetSelection);
  cls.def("selectVertexWithIndex", &VXLNetworkView::selectVertexWithIndex, py::arg("index"),
          "Selects the vertex alone (an index out of range only clears).");
  cls.def("addToSelectionVertexWithIndex", &VXLNetworkView::addToSelectionVertexWithIndex,
          py::arg("index"));
  cls.def("removeFromSelectionVertexWithIndex", &VXLNetworkView::removeFromSelectionVertexWithIndex,
          py::arg("index"));
  cls.def("toggleSelectionOfVertexWithIndex", &VXLNetworkView::toggleSelectionOfVertexWithIndex,
          py::arg("index"));
  cls.def("selectVertex", &VXLNetworkView::selectVertex, py::arg("vertex"));
  cls.def("addToSelectionVertex", &VXLNetworkView::addToSelectionVertex, py::arg("vertex"));
  cls.def("removeFromSelectionVertex", &VXLNetworkView::removeFromSelectionVertex,
          py::arg("vertex"));
  cls.def("toggleSelectionOfVertex", &VXLNetworkView::toggleSelectionOfVertex, py::arg("vertex"));
  cls.def(
      "setSelectedVertices",
      [](VXLNetworkView& view, const std::vector<QLOVertex>& vertices) {
        std::vector<std::uint64_t> indices;
        indices.reserve(vertices.size());
        for (const QLOVertex& v : vertices) indices.push_back(v.identification());
        view.setSelectedVertices(indices);
      },
      py::arg("vertices"), "Selects exactly these vertices.");
  cls.def("setSelectedVertices", &VXLNetworkView::setSelectedVertices, py::arg("indices"),
          "Selects exactly the vertices of these indices (past the end: ignored).");
  cls.def("setSelectedNodesIndexes", &VXLNetworkView::setSelectedNodesIndexes, py::arg("mask"),
          "Selects the vertices whose entry in the mask is not zero.");
  cls.def("selectedNodesIndexes", &VXLNetworkView::selectedNodesIndexes,
          "The selection mask as it is now (later changes go to a new mask).");
  cls.def("selectedIndices", &VXLNetworkView::selectedIndices,
          "The selected vertex indices, in increasing order, as a list.");
  cls.def(
      "selectedIndicesArray",
      [](const VXLNetworkView& view) {
        const std::vector<std::uint64_t> indices = view.selectedIndices();
        return py::array_t<std::uint64_t>(static_cast<py::ssize_t>(indices.size()), indices.data());
      },
      "The selected vertex indices as a fresh numpy array.");
  cls.def("selectedVertices", &VXLNetworkView::selectedVertices,
          "The vertices of a mask out of step with the network; empty while it matches.");
  cls.def("vertexInfoIndex", &VXLNetworkView::vertexInfoIndex,
          "The vertex whose details are shown, or None.");
  cls.def(
      "pickAt",
      [](VXLNetworkView& view, double x, double y, double dx, double dy) -> std::int64_t {
        const std::uint64_t picked = view.pickAt(x, y, dx, dy);
        return picked == VXLNetworkView::kNoVertex ? -1 : static_cast<std::int64_t>(picked);
      },
      py::arg("x"), py::arg("y"), py::arg("dx") = 3.0, py::arg("dy") = 3.0,
      "The vertex nearest the viewer in a dx by dy pixel region around (x, y) (backing pixels, "
      "origin lower left), or -1, as drawn at the camera's viewWidth x viewHeight (0 x 0, so "
      "nothing is picked, until a window draws the view or setCamera gives a size).");

  // Text overlays: the texts as they stand, which of them are drawn, and the
  // capability report.
  constant(cls, "networkName", "setNetworkName", &VXLNetworkView::networkName,
           &VXLNetworkView::setNetworkName);
  constant(cls, "cameraInfo", "setCameraInfo", &VXLNetworkView::cameraInfo,
           &VXLNetworkView::setCameraInfo);
  constant(cls, "generalInfo", "setGeneralInfo", &VXLNetworkView::generalInfo,
           &VXLNetworkView::setGeneralInfo);
  constant(cls, "vertexInfo", "setVertexInfo", &VXLNetworkView::vertexInfo,
           &VXLNetworkView::setVertexInfo);
  constant(cls, "fDrawCaps", "setFDrawCaps", &VXLNetworkView::fDrawCaps,
           &VXLNetworkView::setFDrawCaps);
  constant(cls, "fInfo", "setFInfo", &VXLNetworkView::fInfo, &VXLNetworkView::setFInfo);
  constant(cls, "legendsHeight", "setLegendsHeight", &VXLNetworkView::legendsHeight,
           &VXLNetworkView::setLegendsHeight);
  cls.def("cameraString", &VXLNetworkView::cameraString);
  cls.def("infoString", &VXLNetworkView::infoString);
  cls.def("vertexInfoString", &VXLNetworkView::vertexInfoString,
          "The details of the vertex last selected or clicked.");
  cls.def("messageString", &VXLNetworkView::messageString);
  cls.def("errorString", &VXLNetworkView::errorString, "The last GL error report, or ''.");
  cls.def("updateInfoString", &VXLNetworkView::updateInfoString);
  cls.def("updateCameraString", &VXLNetworkView::updateCameraString);
  cls.def("capabilitiesText", &VXLNetworkView::capabilitiesText,
          "The GL capability report of the current context, else the last one read ('' if none).");
  cls.def(
      "renderPath", [](const VXLNetworkView& v) { return renderPathName(v.renderPath()); },
      "The renderer of the last frame drawn into pixels: 'shader' or 'fixed-function' (before "
      "any frame, the one asked for).");
  cls.def(
      "preferredRenderPath",
      [](const VXLNetworkView& v) { return renderPathName(v.preferredRenderPath()); },
      "The renderer asked for: 'shader' unless PLEXVIEW_GL=legacy was set at start.");
  cls.def(
      "setPreferredRenderPath",
      [](VXLNetworkView& v, const std::string& name) {
        if (name == renderPathName(RenderPath::Shader)) {
          v.setPreferredRenderPath(RenderPath::Shader);
        } else if (name == renderPathName(RenderPath::FixedFunction)) {
          v.setPreferredRenderPath(RenderPath::FixedFunction);
        } else {
          throw py::value_error("unknown renderer '" + name +
                                "': use 'shader' or 'fixed-function'");
        }
      },
      py::arg("name"),
      "Draw frames with 'shader' (when the context runs GLSL 3.30) or 'fixed-function'.");

  m.def("getMaxMinValuesForPropertyOfNetwork", &filter::getMaxMinValuesForPropertyOfNetwork,
        py::arg("network"), py::arg("name"),
        "(maximum, minimum) of a filter property's values over all vertices.");

  bindViewScene(m, cls);
  bindViewEdgeStyle(cls);
  bindViewRepulsion(cls);
}

}  // namespace plexview
