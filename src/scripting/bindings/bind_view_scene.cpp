// Scripts reach the view's drawing options, colours and camera: everything
// the window's controls change, without a window.
#include "bindings/bind_view_scene.h"

#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "bindings/bind_view_sizes.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

using RotationTuple = std::tuple<float, float, float, float>;

RotationTuple toTuple(const Rotation& r) {
  return {r.angle, r.x, r.y, r.z};
}
Rotation fromTuple(const RotationTuple& t) {
  return {std::get<0>(t), std::get<1>(t), std::get<2>(t), std::get<3>(t)};
}

// A boolean or float drawing option as a getter and a setter of the same
// names as in C++.
template <class T>
void option(ViewClass& cls, const char* name, const char* setter, T (VXLNetworkView::*get)() const,
            void (VXLNetworkView::*set)(T)) {
  cls.def(name, get);
  cls.def(setter, set, py::arg("value"));
}

}  // namespace

void bindViewScene(py::module_& m, ViewClass& cls) {
  py::class_<VXLCamera>(m, "VXLCamera", "The camera record: eye, direction, up, centre, aperture.")
      .def(py::init<>())
      .def_readwrite("position", &VXLCamera::position)
      .def_readwrite("direction", &VXLCamera::direction)
      .def_readwrite("up", &VXLCamera::up)
      .def_readwrite("rotationCenter", &VXLCamera::rotationCenter)
      .def_readwrite("aperture", &VXLCamera::aperture)
      .def_readwrite("viewWidth", &VXLCamera::viewWidth)
      .def_readwrite("viewHeight", &VXLCamera::viewHeight);

  option(cls, "showNodes", "setShowNodes", &VXLNetworkView::showNodes,
         &VXLNetworkView::setShowNodes);
  option(cls, "showEdges", "setShowEdges", &VXLNetworkView::showEdges,
         &VXLNetworkView::setShowEdges);
  option(cls, "simpleShapes", "setSimpleShapes", &VXLNetworkView::simpleShapes,
         &VXLNetworkView::setSimpleShapes);
  option(cls, "blendLines", "setBlendLines", &VXLNetworkView::blendLines,
         &VXLNetworkView::setBlendLines);
  option(cls, "edgesDepthTest", "setEdgesDepthTest", &VXLNetworkView::edgesDepthTest,
         &VXLNetworkView::setEdgesDepthTest);
  option(cls, "verticesDepthTest", "setVerticesDepthTest", &VXLNetworkView::verticesDepthTest,
         &VXLNetworkView::setVerticesDepthTest);
  option(cls, "legendStyle", "setLegendStyle", &VXLNetworkView::legendStyle,
         &VXLNetworkView::setLegendStyle);
  option(cls, "exportLegendStyle", "setExportLegendStyle", &VXLNetworkView::exportLegendStyle,
         &VXLNetworkView::setExportLegendStyle);
  option(cls, "edgesIntensity", "setEdgesIntensity", &VXLNetworkView::edgesIntensity,
         &VXLNetworkView::setEdgesIntensity);
  option(cls, "verticesIntensity", "setVerticesIntensity", &VXLNetworkView::verticesIntensity,
         &VXLNetworkView::setVerticesIntensity);
  option(cls, "showLegends", "setShowLegends", &VXLNetworkView::showLegends,
         &VXLNetworkView::setShowLegends);
  option(cls, "limitNodes", "setLimitNodes", &VXLNetworkView::limitNodes,
         &VXLNetworkView::setLimitNodes);
  option(cls, "limitEdges", "setLimitEdges", &VXLNetworkView::limitEdges,
         &VXLNetworkView::setLimitEdges);
  option(cls, "blackBackground", "setBlackBackground", &VXLNetworkView::blackBackground,
         &VXLNetworkView::setBlackBackground);
  option(cls, "transparentBackground", "setTransparentBackground",
         &VXLNetworkView::transparentBackground, &VXLNetworkView::setTransparentBackground);
  option(cls, "shader", "setShader", &VXLNetworkView::shader, &VXLNetworkView::setShader);
  option(cls, "motionBlurFactor", "setMotionBlurFactor", &VXLNetworkView::motionBlurFactor,
         &VXLNetworkView::setMotionBlurFactor);
  option(cls, "lineWidth", "setLineWidth", &VXLNetworkView::lineWidth,
         &VXLNetworkView::setLineWidth);
  option(cls, "scale", "setScale", &VXLNetworkView::scale, &VXLNetworkView::setScale);
  option(cls, "nearClipDistance", "setNearClipDistance", &VXLNetworkView::nearClipDistance,
         &VXLNetworkView::setNearClipDistance);
  option(cls, "farClipDistance", "setFarClipDistance", &VXLNetworkView::farClipDistance,
         &VXLNetworkView::setFarClipDistance);

  cls.def(
      "showLabels", [](const VXLNetworkView& v) { return labelModeName(v.showLabels()); },
      "Which vertices show their label: \"none\", \"selected\" or \"all\".");
  cls.def(
      "setShowLabels",
      [](VXLNetworkView& v, const std::string& mode) {
        const std::optional<LabelMode> parsed = labelModeFromName(mode);
        if (!parsed) {
          throw py::value_error("labels mode must be \"none\", \"selected\" or \"all\", not \"" +
                                mode + "\"");
        }
        v.setShowLabels(*parsed);
      },
      py::arg("mode"),
      "Draws labels beside no vertex, the selected ones or all (nearest first where they "
      "would overlap).");
  cls.def("labelProperty", &VXLNetworkView::labelProperty,
          "The vertex property the labels show (\"\": Name, else the vertex number).");
  cls.def(
      "setLabelProperty",
      [](VXLNetworkView& v, const std::string& name) {
        const std::shared_ptr<QLONetwork> net = v.network();
        if (net && !name.empty() && propertyCount(net->propertyForKey(name)) == 0) {
          std::string known;
          for (const std::string& key : net->keysForPropertiesOfVertices()) {
            known += (known.empty() ? "" : ", ") + key;
          }
          throw py::value_error("the network has no vertex property \"" + name +
                                "\" (it has: " + known + ")");
        }
        v.setLabelProperty(name);
      },
      py::arg("name"), "Labels show this vertex property (\"\": Name).");
  bindVertexSizes(cls);
  cls.def(
      "vertexSizes",
      [](VXLNetworkView& v) -> std::optional<std::vector<float>> {
        if (const auto sizes = v.vertexSizes()) return *sizes;
        return std::nullopt;
      },
      "Each vertex's size as a multiple of the standard one, or None when all are standard.");

  cls.def("colors", &VXLNetworkView::colors);
  cls.def("setColors", &VXLNetworkView::setColors, py::arg("colors"),
          "One (r, g, b) per vertex in 0..1; shorter arrays are ignored when drawing.");
  cls.def("camera", &VXLNetworkView::camera);
  cls.def("setCamera", &VXLNetworkView::setCamera, py::arg("camera"));
  cls.def(
      "worldRotation", [](const VXLNetworkView& v) { return toTuple(v.worldRotation()); },
      "(angle in degrees, axis x, y, z)");
  cls.def(
      "setWorldRotation",
      [](VXLNetworkView& v, const RotationTuple& r) { v.setWorldRotation(fromTuple(r)); },
      py::arg("rotation"));
  cls.def("objectRotation", [](const VXLNetworkView& v) { return toTuple(v.objectRotation()); });
  cls.def(
      "setObjectRotation",
      [](VXLNetworkView& v, const RotationTuple& r) { v.setObjectRotation(fromTuple(r)); },
      py::arg("rotation"));
  cls.def("viewFromTop", &VXLNetworkView::viewFromTop);
  cls.def("viewFromLeft", &VXLNetworkView::viewFromLeft);
  cls.def("viewFromFront", &VXLNetworkView::viewFromFront);
  cls.def("updateScale", &VXLNetworkView::updateScale, py::arg("sliderValue"),
          "Scale 10^s; answers the field text.");
  cls.def("updateNear", &VXLNetworkView::updateNear, py::arg("sliderValue"));
  cls.def("updateFar", &VXLNetworkView::updateFar, py::arg("sliderValue"));
  cls.def(
      "scrollWheel",
      [](VXLNetworkView& v, double delta, bool shift) {
        v.scrollWheel(0, delta, 0, shift ? Modifiers(Modifier::Shift) : Modifiers());
      },
      py::arg("delta"), py::arg("shift") = false,
      "Moves the camera like the wheel (with shift: changes the aperture).");
}

}  // namespace plexview
