// Python access to the window controller: the registry through which a
// script finds a window, the settings (forwarded to the view), the defaults,
// network installation, the generator, the selection and the filter selector
// (the colouring is in bind_controller_colour.cpp).
#include <pybind11/functional.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>

#include "app/VXLController.h"
#include "bindings/bind_controller_colour.h"
#include "bindings/bind_controller_web.h"
#include "bindings/bind_edge_style.h"
#include "bindings/bind_parts.h"
#include "bindings/bind_repulsion.h"
#include "bindings/bind_view_sizes.h"
#include "bindings/property_conversion.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Controller = py::class_<VXLController, std::shared_ptr<VXLController>>;

// A getter/setter pair of the controller as two Python methods.
template <class Get, class Set>
void setting(Controller& cls, const char* name, const char* setter, Get get, Set set) {
  cls.def(name, get);
  cls.def(setter, set, py::arg("value"));
}

void bindSettings(Controller& cls) {
  using C = VXLController;
  bindVertexSizes(cls);
  setting(cls, "attractionConstant", "setAttractionConstant", &C::attractionConstant,
          &C::setAttractionConstant);
  setting(cls, "repulsiveConstant", "setRepulsiveConstant", &C::repulsiveConstant,
          &C::setRepulsiveConstant);
  setting(cls, "viscosityConstant", "setViscosityConstant", &C::viscosityConstant,
          &C::setViscosityConstant);
  setting(cls, "gravitationalConstant", "setGravitationalConstant", &C::gravitationalConstant,
          &C::setGravitationalConstant);
  setting(cls, "preferredDistance", "setPreferredDistance", &C::preferredDistance,
          &C::setPreferredDistance);
  setting(cls, "showNodes", "setShowNodes", &C::showNodes, &C::setShowNodes);
  setting(cls, "showEdges", "setShowEdges", &C::showEdges, &C::setShowEdges);
  setting(cls, "blendLines", "setBlendLines", &C::blendLines, &C::setBlendLines);
  setting(cls, "edgesDepthTest", "setEdgesDepthTest", &C::edgesDepthTest, &C::setEdgesDepthTest);
  setting(cls, "verticesDepthTest", "setVerticesDepthTest", &C::verticesDepthTest,
          &C::setVerticesDepthTest);
  setting(cls, "edgesIntensity", "setEdgesIntensity", &C::edgesIntensity, &C::setEdgesIntensity);
  setting(cls, "verticesIntensity", "setVerticesIntensity", &C::verticesIntensity,
          &C::setVerticesIntensity);
  setting(cls, "showLegends", "setShowLegends", &C::showLegends, &C::setShowLegends);
  setting(cls, "limitNodes", "setLimitNodes", &C::limitNodes, &C::setLimitNodes);
  setting(cls, "limitEdges", "setLimitEdges", &C::limitEdges, &C::setLimitEdges);
  setting(cls, "simpleShapes", "setSimpleShapes", &C::simpleShapes, &C::setSimpleShapes);
  setting(cls, "blackBackground", "setBlackBackground", &C::blackBackground,
          &C::setBlackBackground);
  setting(cls, "shader", "setShader", &C::shader, &C::setShader);
  setting(cls, "generalInfo", "setGeneralInfo", &C::generalInfo, &C::setGeneralInfo);
  setting(cls, "cameraInfo", "setCameraInfo", &C::cameraInfo, &C::setCameraInfo);
  setting(cls, "weightAsDistance", "setWeightAsDistance", &C::weightAsDistance,
          &C::setWeightAsDistance);
  setting(cls, "vertexInfo", "setVertexInfo", &C::vertexInfo, &C::setVertexInfo);
  setting(cls, "iterations", "setIterations", &C::iterations, &C::setIterations);
  setting(cls, "weightMaxThreshold", "setWeightMaxThreshold", &C::weightMaxThreshold,
          &C::setWeightMaxThreshold);
  setting(cls, "weightMinThreshold", "setWeightMinThreshold", &C::weightMinThreshold,
          &C::setWeightMinThreshold);
  setting(cls, "minFilterProperty", "setMinFilterProperty", &C::minFilterProperty,
          &C::setMinFilterProperty);
  setting(cls, "maxFilterProperty", "setMaxFilterProperty", &C::maxFilterProperty,
          &C::setMaxFilterProperty);
  setting(cls, "nearClipDistance", "setNearClipDistance", &C::nearClipDistance,
          &C::setNearClipDistance);
  setting(cls, "farClipDistance", "setFarClipDistance", &C::farClipDistance,
          &C::setFarClipDistance);
  setting(cls, "viewLineWidth", "setViewLineWidth", &C::viewLineWidth, &C::setViewLineWidth);
  setting(cls, "viewLegendSize", "setViewLegendSize", &C::viewLegendSize, &C::setViewLegendSize);
}

void bindGenerator(Controller& cls) {
  cls.def("generateNetworkChangeType", &VXLController::generateNetworkChangeType, py::arg("tag"),
          "Selects the generator type (0 random, 1 Barabasi) and relabels its parameters.");
  cls.def(
      "generateNetwork",
      [](VXLController& c, std::optional<int> type, std::optional<std::string> vertices,
         std::optional<std::string> degree) {
        if (type) {
          c.generateNetworkChangeType(*type);
          c.generator().typeTag = *type;
        }
        if (vertices) c.generator().verticesText = *vertices;
        if (degree) c.generator().degreeText = *degree;
        c.generateNetwork();
      },
      py::arg("type") = py::none(), py::arg("vertices") = py::none(),
      py::arg("degree") = py::none(),
      "Makes, names and installs a network; given parameters replace the generator's fields "
      "(the counts as text, read like the panel's fields).");
  cls.def("generatorType", [](const VXLController& c) { return c.generator().typeTag; });
  cls.def("generatorParameters", [](const VXLController& c) {
    return py::make_tuple(c.generator().verticesText, c.generator().degreeText);
  });
  cls.def("generatorLabels", [](const VXLController& c) {
    return py::make_tuple(c.generator().verticesLabel, c.generator().degreeLabel);
  });
}

void bindSelection(Controller& cls) {
  using C = VXLController;
  cls.def("resetSelection", &C::resetSelection);
  cls.def("selectVertexWithIndex", &C::selectVertexWithIndex, py::arg("index"));
  cls.def("addToSelectionVertexWithIndex", &C::addToSelectionVertexWithIndex, py::arg("index"));
  cls.def("removeFromSelectionVertexWithIndex", &C::removeFromSelectionVertexWithIndex,
          py::arg("index"));
  cls.def("toggleSelectionOfVertexWithIndex", &C::toggleSelectionOfVertexWithIndex,
          py::arg("index"));
  cls.def("selectedVertices", &C::selectedVertices);
  cls.def("setSelectedVertices", &C::setSelectedVertices, py::arg("indices"),
          "Selects exactly these vertex indices (an undoable change).");
  cls.def("hiddenVertices", &C::hiddenVertices);
  cls.def("setHiddenVertices", &C::setHiddenVertices, py::arg("mask"));
}

void bindFilter(Controller& cls) {
  using C = VXLController;
  cls.def("filterPropertyTitles", &C::filterPropertyTitles,
          "The titles the filter selector offers for the network, in order.");
  cls.def("filterPropertyName", &C::filterPropertyName, "The selected filter title.");
  cls.def("selectFilterProperty", &C::selectFilterProperty, py::arg("name"),
          "Selects the filter property when offered (else the selection stays); the view "
          "resets the filter range to its values at the next frame.");
  cls.def("changeFilterProperty", &C::changeFilterProperty);
  cls.def(
      "filterRangeBounds",
      [](const C& c) {
        return py::make_tuple(c.filterRangeBounds().lower, c.filterRangeBounds().upper);
      },
      "(smallest, largest) value of the selected filter property.");
  cls.def(
      "weightThresholdBounds",
      [](const C& c) {
        return py::make_tuple(c.weightThresholdBounds().lower, c.weightThresholdBounds().upper);
      },
      "(smallest, largest) edge weight; (0, 1) without weights.");
}

}  // namespace

void bindController(py::module_& m) {
  Controller cls(m, "VXLController",
                 "The controller of a window: settings forwarded to its view, defaults, network "
                 "installation and the generator. Every controller stays registered by UUID.");
  py::enum_<VXLController::Panel>(cls, "Panel")
      .value("NetworkInfo", VXLController::Panel::NetworkInfo)
      .value("Nodes", VXLController::Panel::Nodes)
      .value("Colour", VXLController::Panel::Colour)
      .value("NodesSelected", VXLController::Panel::NodesSelected)
      .value("Properties", VXLController::Panel::Properties)
      .value("Generator", VXLController::Panel::Generator);

  cls.def_static("init", &VXLController::init, py::arg("view"),
                 "A registered controller for the view.");
  cls.def_static(
      "init", [] { return VXLController::init(); },
      "A registered controller with a view of its own.");
  cls.def_static("sharedController", &VXLController::sharedController,
                 "The last controller made, or None.");
  cls.def_static("controllerWithUUID", &VXLController::controllerWithUUID, py::arg("uuid"),
                 "The controller registered under the UUID, or None.");
  cls.def_static("UUIDString", &VXLController::UUIDString);
  cls.def("uuid", &VXLController::uuid);
  cls.def("networkName", &VXLController::networkName);
  cls.def("setNetworkName", &VXLController::setNetworkName, py::arg("name"));
  cls.def("networkView", &VXLController::networkView);
  cls.def("setRefreshListener", &VXLController::setRefreshListener, py::arg("listener"),
          "A callable told which panel would be refreshed (a VXLController.Panel).");

  cls.def("resetToDefaults", &VXLController::resetToDefaults);
  cls.def("cleanup", &VXLController::cleanup, py::call_guard<py::gil_scoped_release>());
  cls.def("isClean", &VXLController::isClean);
  cls.def("network", &VXLController::network);
  cls.def("positions", &VXLController::positions);
  cls.def("setPositions", &VXLController::setPositions, py::arg("positions"));
  cls.def("setNetwork", &VXLController::setNetwork, py::arg("network"));
  cls.def("setMajorConnectedNetwork", &VXLController::setMajorConnectedNetwork, py::arg("network"),
          "Installs the network's largest connected component.");
  cls.def("replaceNetworkWith", &VXLController::replaceNetworkWith, py::arg("network"));
  cls.def("colorPropertyNames", &VXLController::colorPropertyNames,
          "The names of the colour properties of the installed network, in order.");
  cls.def(
      "colorsDictionary",
      [](const VXLController& c) {
        py::dict result;
        for (const auto& [name, value] : c.colorsDictionary()) {
          result[py::str(name)] = propertyToPython(value);
        }
        return result;
      },
      "The colour properties by name.");
  bindSettings(cls);
  bindGenerator(cls);
  bindSelection(cls);
  bindFilter(cls);
  bindControllerColour(cls);
  bindControllerEdgeStyle(cls);
  bindControllerWeb(cls);
  bindControllerRepulsion(cls);
}

}  // namespace plexview
