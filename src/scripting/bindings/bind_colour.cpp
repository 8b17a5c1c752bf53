// plexview.colour: the scalar transforms, colour maps, legend scale and
// hexadecimal colour text, with NumPy arrays in and out (the categorical part
// is in bind_categories.cpp).
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "bindings/bind_parts.h"
#include "colour/colormaps.h"
#include "colour/cubehelix.h"
#include "colour/hexcolour.h"
#include "colour/legendscale.h"
#include "colour/legendticks.h"
#include "colour/transforms.h"
#include "quillo/QLOVector3dArray.h"

namespace py = pybind11;

namespace plexview {
namespace {

using namespace colour;
using FloatArray = py::array_t<float, py::array::c_style | py::array::forcecast>;

// Values as a flat float32 array; ValueError for more than one dimension.
FloatArray flatFloats(const FloatArray& values) {
  if (values.ndim() > 1) throw py::value_error("expected a 1-D array of numbers");
  return values;
}

py::array_t<float> toNumpy(const std::vector<float>& values) {
  return py::array_t<float>(static_cast<py::ssize_t>(values.size()), values.data());
}

// A colour from a sequence of three or four numbers (alpha defaults to 1).
Rgba rgbaFrom(const std::vector<float>& components) {
  if (components.size() != 3 && components.size() != 4) {
    throw py::value_error("a colour is 3 or 4 numbers (red, green, blue[, alpha])");
  }
  return Rgba{components[0], components[1], components[2],
              components.size() == 4 ? components[3] : 1.0f};
}

std::tuple<float, float, float, float> tupleOf(const Rgba& c) {
  return {c.r, c.g, c.b, c.a};
}

// Colours as an (N, 3) or (N, 4) float32 array.
py::array_t<float> colourTable(const std::vector<Rgba>& colours, bool withAlpha) {
  const py::ssize_t width = withAlpha ? 4 : 3;
  py::array_t<float> out({static_cast<py::ssize_t>(colours.size()), width});
  auto cells = out.mutable_unchecked<2>();
  for (py::ssize_t i = 0; i < static_cast<py::ssize_t>(colours.size()); ++i) {
    const Rgba& c = colours[static_cast<std::size_t>(i)];
    cells(i, 0) = c.r;
    cells(i, 1) = c.g;
    cells(i, 2) = c.b;
    if (withAlpha) cells(i, 3) = c.a;
  }
  return out;
}

void bindSettings(py::module_& m) {
  py::class_<TransformSettings>(m, "TransformSettings",
                                "Limits of the scalar range (UNSET_LIMIT: from the data) and "
                                "the exponent of \"Power\".")
      .def(py::init([](float minValue, float maxValue, float power) {
             return TransformSettings{minValue, maxValue, power};
           }),
           py::arg("minColorScalarValue") = kUnsetLimit,
           py::arg("maxColorScalarValue") = kUnsetLimit, py::arg("powerCoefficient") = 2.0f)
      .def_readwrite("minColorScalarValue", &TransformSettings::minColorScalarValue)
      .def_readwrite("maxColorScalarValue", &TransformSettings::maxColorScalarValue)
      .def_readwrite("powerCoefficient", &TransformSettings::powerCoefficient);

  auto colourProperty = [](Rgba ColorMapSettings::*field) {
    return std::make_pair(
        [field](const ColorMapSettings& s) { return tupleOf(s.*field); },
        [field](ColorMapSettings& s, const std::vector<float>& c) { s.*field = rgbaFrom(c); });
  };
  auto [get0, set0] = colourProperty(&ColorMapSettings::colorCustom0);
  auto [get1, set1] = colourProperty(&ColorMapSettings::colorCustom1);
  auto [get2, set2] = colourProperty(&ColorMapSettings::colorCustom2);
  py::class_<ColorMapSettings>(m, "ColorMapSettings",
                               "The three custom colours and the invert switch of the maps.")
      .def(py::init([](py::object c0, py::object c1, py::object c2, bool invert) {
             ColorMapSettings s;
             if (!c0.is_none()) s.colorCustom0 = rgbaFrom(c0.cast<std::vector<float>>());
             if (!c1.is_none()) s.colorCustom1 = rgbaFrom(c1.cast<std::vector<float>>());
             if (!c2.is_none()) s.colorCustom2 = rgbaFrom(c2.cast<std::vector<float>>());
             s.invertColorMap = invert ? Inversion::On : Inversion::Off;
             return s;
           }),
           py::arg("colorCustom0") = py::none(), py::arg("colorCustom1") = py::none(),
           py::arg("colorCustom2") = py::none(), py::arg("invertColorMap") = false)
      .def_property("colorCustom0", get0, set0)
      .def_property("colorCustom1", get1, set1)
      .def_property("colorCustom2", get2, set2)
      .def_property(
          "invertColorMap",
          [](const ColorMapSettings& s) { return s.invertColorMap == Inversion::On; },
          [](ColorMapSettings& s, bool on) {
            s.invertColorMap = on ? Inversion::On : Inversion::Off;
          });
}

void bindTransforms(py::module_& m) {
  m.attr("UNSET_LIMIT") = kUnsetLimit;
  m.def("colorFunctionNames", &colorFunctionNames,
        "Transform function names; the index is the function's integer code.");
  m.def(
      "resolveLimits",
      [](const FloatArray& values, const TransformSettings& settings) {
        const FloatArray flat = flatFloats(values);
        const ScalarLimits limits =
            resolveLimits(flat.data(), static_cast<std::uint64_t>(flat.size()), settings);
        return std::make_pair(limits.min, limits.max);
      },
      py::arg("values"), py::arg("settings") = TransformSettings{},
      "(min, max) with each unset limit taken from the values.");
  m.def(
      "newVectorFromVectorWithTransformFunction",
      [](const FloatArray& values, const std::string& function, const TransformSettings& settings) {
        const FloatArray flat = flatFloats(values);
        return toNumpy(newVectorFromVectorWithTransformFunction(
            flat.data(), static_cast<std::uint64_t>(flat.size()), function, settings));
      },
      py::arg("values"), py::arg("function"), py::arg("settings") = TransformSettings{},
      "The values normalised by their limits and bent by the named function (float32).");
  m.def(
      "newVectorFromVectorWithInverseTransformFunction",
      [](const FloatArray& values, const std::string& function, float power) {
        const FloatArray flat = flatFloats(values);
        return toNumpy(newVectorFromVectorWithInverseTransformFunction(
            flat.data(), static_cast<std::uint64_t>(flat.size()), function, power));
      },
      py::arg("values"), py::arg("function"), py::arg("powerCoefficient") = 2.0f,
      "Normalised values back through the named function's inverse (float32).");
}

void bindMaps(py::module_& m) {
  m.def("colorMapNames", &colorMapNames, "Colour map names in menu order.");
  m.def(
      "colorsFromNormalizedVector",
      [](const FloatArray& values, const std::string& map, const ColorMapSettings& settings) {
        const FloatArray flat = flatFloats(values);
        return colourTable(
            colorsForNormalizedValues(flat.data(), static_cast<std::uint64_t>(flat.size()),
                                      colorMapNamed(map), settings),
            false);
      },
      py::arg("values"), py::arg("map"), py::arg("settings") = ColorMapSettings{},
      "An (N, 3) float32 array of red, green, blue; unknown maps and \"Cubehelix\" give "
      "black.");
  m.def(
      "VXLCubehelixGradient",
      [](float t, const std::vector<float>& start, const std::vector<float>& end) {
        const Rgba s = rgbaFrom(start), e = rgbaFrom(end);
        const Rgba c = VXLCubehelixGradient(t, s.r, s.g, s.b, e.r, e.g, e.b);
        return std::make_tuple(c.r, c.g, c.b);
      },
      py::arg("t"), py::arg("start"), py::arg("end"),
      "The cubehelix blend from start to end at t, as (r, g, b).");
  m.def(
      "colorFromHexadecimalValue",
      [](const std::string& text) { return tupleOf(colorFromHexadecimalValue(text)); },
      py::arg("text"), "\"#RRGGBB\" as (r, g, b, 1.0).");
  m.def(
      "hexadecimalValue",
      [](const std::vector<float>& colour) { return hexadecimalValue(rgbaFrom(colour)); },
      py::arg("colour"), "(r, g, b[, a]) as \"#rrggbb\".");
}

void bindLegend(py::module_& m) {
  m.def(
      "readableTicks",
      [](double lo, double hi, bool logarithmic) {
        std::vector<std::pair<double, std::string>> out;
        for (const Tick& t :
             readableTicks(lo, hi, logarithmic ? TickScale::Logarithmic : TickScale::Linear)) {
          out.emplace_back(t.value, t.label);
        }
        return out;
      },
      py::arg("lo"), py::arg("hi"), py::arg("logarithmic") = false,
      "Round (value, label) ticks inside [lo, hi]: 4 to 7 steps of 1, 2, 2.5 or 5 x 10^k, or "
      "decades with unlabelled minor ticks.");
  m.def("legendLabel", &legendLabel, py::arg("value"),
        "A legend value as text: \"%.0f\" for 10 < |v| < 9999, \"%.2g\" otherwise.");
  m.def(
      "legendScale",
      [](const FloatArray& values, const std::string& function, const std::string& map,
         const TransformSettings& transform, const ColorMapSettings& colours) {
        const FloatArray flat = flatFloats(values);
        const ScalarLimits limits =
            resolveLimits(flat.data(), static_cast<std::uint64_t>(flat.size()), transform);
        LegendScale scale = legendScale(limits, colorFunctionNamed(function),
                                        transform.powerCoefficient, colorMapNamed(map), colours);
        return std::make_pair(std::move(scale.labels), colourTable(scale.colors, true));
      },
      py::arg("values"), py::arg("function"), py::arg("map"),
      py::arg("transform") = TransformSettings{}, py::arg("colours") = ColorMapSettings{},
      "(labels, colours) of the continuous legend for a property: 22 entries from the bottom "
      "up, every third labelled, colours as a (22, 4) float32 array.");
}

}  // namespace

void bindColour(py::module_& m) {
  py::module_ sub = m.def_submodule(
      "colour",
      "Scalar transforms, colour maps, the legend's value scale, hex colours, categorical "
      "colouring and colour files.");
  bindSettings(sub);
  bindTransforms(sub);
  bindMaps(sub);
  bindLegend(sub);
  bindCategories(sub);
}

}  // namespace plexview
