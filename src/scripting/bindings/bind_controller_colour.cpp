// Python access to the controller's colouring: functions, maps and their
// parameters, the colour properties (added from arrays, lists or NumPy), the
// selection, the categorical limit, hiding and order, and colour files.
#include "bindings/bind_controller_colour.h"

#include <pybind11/functional.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <string>

#include "bindings/colour_conversion.h"
#include "bindings/property_conversion.h"
#include "colour/hexcolour.h"

namespace py = pybind11;

namespace plexview {
namespace {

using C = VXLController;
using Controller = py::class_<VXLController, std::shared_ptr<VXLController>>;

// "#rrggbb" text, or (r, g, b[, a]) numbers in 0..1.
colour::Rgba colourFrom(const py::handle& value) {
  return rgbaFromPython(value, HexText::Accepted);
}

void customColour(Controller& cls, const char* name, const char* setter,
                  colour::Rgba (C::*get)() const, void (C::*set)(colour::Rgba)) {
  cls.def(
      name, [get](const C& c) { return colour::hexadecimalValue((c.*get)()); },
      "The custom colour as \"#rrggbb\".");
  cls.def(
      setter, [set](C& c, const py::handle& value) { (c.*set)(colourFrom(value)); },
      py::arg("colour"), "Sets the custom colour from \"#rrggbb\" or (r, g, b[, a]); recolours.");
}

void bindScalarColouring(Controller& cls) {
  cls.def_static("colorFunctionTitles", &C::colorFunctionTitles,
                 "The transform functions, as the function pop-up lists them.");
  cls.def_static("colorMapTitles", &C::colorMapTitles,
                 "The colour maps, as the map pop-up lists them.");
  cls.def("buildColorLists", &C::buildColorLists,
          "Selects \"Exponential\" and \"Jet\" without recolouring.");
  cls.def("selectedColorFunction", &C::selectedColorFunction);
  cls.def("setSelectedColorFunction", &C::setSelectedColorFunction, py::arg("name"),
          "Stores the name only.");
  cls.def("selectColorFunction", &C::selectColorFunction, py::arg("name"),
          "Selects the transform function (unknown names act as \"Linear\") and recolours.");
  cls.def("selectedColorMap", &C::selectedColorMap);
  cls.def("setSelectedColorMap", &C::setSelectedColorMap, py::arg("name"), "Stores the name only.");
  cls.def("selectColorMap", &C::selectColorMap, py::arg("name"),
          "Selects the colour map (unknown names colour black) and recolours.");
  cls.def("powerCoefficient", &C::powerCoefficient);
  cls.def("setPowerCoefficient", &C::setPowerCoefficient, py::arg("value"),
          "The exponent of \"Power\"; recolours unless unchanged.");
  cls.def("invertColorMap", &C::invertColorMap);
  cls.def("setInvertColorMap", &C::setInvertColorMap, py::arg("on"));
  customColour(cls, "colorCustom0", "setColorCustom0", &C::colorCustom0, &C::setColorCustom0);
  customColour(cls, "colorCustom1", "setColorCustom1", &C::colorCustom1, &C::setColorCustom1);
  customColour(cls, "colorCustom2", "setColorCustom2", &C::colorCustom2, &C::setColorCustom2);
  cls.def(
      "colorGradientChanged",
      [](C& c, const py::handle& c0, const py::handle& c1, const py::handle& c2) {
        c.colorGradientChanged(colourFrom(c0), colourFrom(c1), colourFrom(c2));
      },
      py::arg("colour0"), py::arg("colour1"), py::arg("colour2"),
      "Sets the three custom colours at once, recolouring once.");
  cls.def("minColorScalarValue", &C::minColorScalarValue);
  cls.def("setMinColorScalarValue", &C::setMinColorScalarValue, py::arg("value"),
          "Lower limit of the scalar range, used at the next recolouring.");
  cls.def("maxColorScalarValue", &C::maxColorScalarValue);
  cls.def("setMaxColorScalarValue", &C::setMaxColorScalarValue, py::arg("value"),
          "Upper limit of the scalar range, used at the next recolouring.");
  cls.def("resetMinColorScalarValue", &C::resetMinColorScalarValue,
          "The lower limit is taken from the data again.");
  cls.def("resetMaxColorScalarValue", &C::resetMaxColorScalarValue,
          "The upper limit is taken from the data again.");
  cls.def("updateTopColorsInterface", &C::updateTopColorsInterface);
}

void bindColourProperties(Controller& cls) {
  cls.def(
      "addColorProperty",
      [](C& c, const py::handle& value, const std::string& name) {
        c.addColorProperty(propertyFromPython(value), name);
      },
      py::arg("property"), py::arg("name"),
      "Offers a property for colouring: numbers (1-D), colours ((N, 3)) or texts (categories). "
      "Ignored without a network or when shorter than the vertex count; a name the network "
      "uses gets \"-2\" appended.");
  cls.def("removeColorPropertyWithName", &C::removeColorPropertyWithName, py::arg("name"));
  cls.def(
      "colorPropertyWithName",
      [](const C& c, const std::string& name) {
        return propertyToPython(c.colorPropertyWithName(name));
      },
      py::arg("name"), "The property of that name (the network's own first), or None.");
  cls.def("colorPropertyKeys", &C::colorPropertyKeys);
  cls.def("colorPropertyTitles", &C::colorPropertyTitles,
          "The titles the property pop-up offers: \"None\", then the properties.");
  cls.def("selectedColorProperty", &C::selectedColorProperty);
  cls.def("selectColorProperty", &C::selectColorProperty, py::arg("name"),
          "Colours by the property when offered (else the selection stays) and recolours.");
  cls.def("updateColorInterface", &C::updateColorInterface);
  cls.def("updateCurrentColor", &C::updateCurrentColor);
  cls.def("colorsForProperty", &C::colorsForProperty, py::arg("name"), py::arg("function"),
          "The colours the property would give with that transform function, without changing "
          "the view; None for \"None\".");
}

void bindCategories(Controller& cls) {
  cls.def("indexedColorLimit", &C::indexedColorLimit);
  cls.def("setIndexedColorLimit", &C::setIndexedColorLimit, py::arg("limit"));
  cls.def("hideNonIndexItems", &C::hideNonIndexItems);
  cls.def("setHideNonIndexItems", &C::setHideNonIndexItems, py::arg("hide"));
  cls.def("isSortAscending", &C::isSortAscending);
  cls.def("isSortModeAverage", &C::isSortModeAverage);
  cls.def("sortPropertyTitles", &C::sortPropertyTitles);
  cls.def("sortPropertyTitle", &C::sortPropertyTitle);
  cls.def("changeSortProperty", &C::changeSortProperty, py::arg("title"),
          "Orders categories by the title when offered (else it stays) and recolours.");
  cls.def(
      "changeSortOrder",
      [](C& c, bool ascending) {
        c.changeSortOrder(ascending ? C::SortOrder::Ascending : C::SortOrder::Descending);
      },
      py::arg("ascending"));
  cls.def(
      "changeSortModel",
      [](C& c, bool average) {
        c.changeSortModel(average ? C::SortMode::Average : C::SortMode::TotalSum);
      },
      py::arg("average"));
  cls.def("selectSortProperty", &C::selectSortProperty, py::arg("title"), "Does nothing.");
  cls.def(
      "setSortOrderAscending", [](C&, bool) {}, py::arg("ascending"), "Does nothing.");
  cls.def(
      "changeColorProperties",
      [](C& c, bool limit, std::int64_t value, bool hide) {
        c.changeColorProperties(limit ? C::LimitSwitch::On : C::LimitSwitch::Off, value,
                                hide ? C::HideSwitch::On : C::HideSwitch::Off);
      },
      py::arg("limit"), py::arg("value"), py::arg("hide"),
      "The limit check box, its field and the hide check box: on, at most `value` categories "
      "(8 below 1) are coloured one by one; off, the limit is kept for later. Recolours.");
}

}  // namespace

void bindControllerColour(Controller& cls) {
  bindScalarColouring(cls);
  bindColourProperties(cls);
  bindCategories(cls);
  cls.def("openColorsFromURL", &C::openColorsFromURL, py::arg("path"),
          "Reads a colour file (colours, numbers or categories), offers it under the file's "
          "base name and selects it; False when the file cannot be read.");
  cls.def("setAlertHandler", &C::setAlertHandler, py::arg("handler"),
          "A callable given the text of an alert (None: alerts go to the log).");
}

}  // namespace plexview
