#include "bindings/bind_edge_style.h"

#include <pybind11/stl.h>

#include <string>
#include <tuple>

#include "app/VXLController.h"
#include "bindings/colour_conversion.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

edge_style::ColourMode modeNamed(const std::string& name) {
  if (const auto mode = edge_style::colourModeNamed(name)) return *mode;
  throw py::value_error("an edge colour mode is \"endpoints\", \"weight\" or \"single\", not " +
                        py::repr(py::str(name)).cast<std::string>());
}

bool isHexColour(const std::string& text) {
  return text.size() == 7 && text[0] == '#' &&
         text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
}

// One colour as (r, g, b), "#rrggbb", or three numbers, each in 0..1.
scene::Rgb colourOf(const py::args& args) {
  const py::handle value = args.size() == 1 ? args[0] : py::handle(args);
  // Text is taken only as exactly "#rrggbb".
  const bool hex = py::isinstance<py::str>(value) && isHexColour(value.cast<std::string>());
  const colour::Rgba c = rgbaFromPython(value, hex ? HexText::Accepted : HexText::Refused);
  for (float component : {c.r, c.g, c.b}) {
    if (!(component >= 0 && component <= 1)) {
      throw py::value_error("an edge colour's components lie in 0..1, not " +
                            py::repr(value).cast<std::string>());
    }
  }
  return {c.r, c.g, c.b};
}

template <class Target, class Cls>
void bindOn(Cls& cls) {
  cls.def(
      "edgeColorMode",
      [](const Target& t) { return std::string(edge_style::colourModeName(t.edgeColorMode())); },
      "\"endpoints\", \"weight\" or \"single\".");
  cls.def(
      "setEdgeColorMode",
      [](Target& t, const std::string& mode) { t.setEdgeColorMode(modeNamed(mode)); },
      py::arg("mode"),
      "Edge colours: \"endpoints\" (each end in its vertex's colour), \"weight\" (the weight "
      "through the vertices' colour map; the endpoints' colours without weights) or \"single\" "
      "(edgeColor()). ValueError for any other text.");
  cls.def(
      "edgeColor",
      [](const Target& t) {
        const scene::Rgb c = t.edgeColor();
        return std::make_tuple(c.r, c.g, c.b);
      },
      "The single edge colour as (r, g, b).");
  cls.def(
      "setEdgeColor", [](Target& t, const py::args& args) { t.setEdgeColor(colourOf(args)); },
      "setEdgeColor(r, g, b), setEdgeColor((r, g, b)) or setEdgeColor(\"#rrggbb\"): the colour "
      "of every edge in \"single\" mode, components in 0..1.");
  cls.def("edgeWidthByWeight", &Target::edgeWidthByWeight);
  cls.def("setEdgeWidthByWeight", &Target::setEdgeWidthByWeight, py::arg("on"),
          "Edges from the line width (lightest) to four times it (heaviest).");
  cls.def("showArrows", &Target::showArrows);
  cls.def("setShowArrows", &Target::setShowArrows, py::arg("on"),
          "Arrow heads at the target ends of a directed network's edges (on by default there).");
}

}  // namespace

void bindViewEdgeStyle(py::class_<VXLNetworkView, std::shared_ptr<VXLNetworkView>>& cls) {
  bindOn<VXLNetworkView>(cls);
}

void bindControllerEdgeStyle(py::class_<VXLController, std::shared_ptr<VXLController>>& cls) {
  bindOn<VXLController>(cls);
}

}  // namespace plexview
