// Scripts build legends (labels with (r, g, b[, a]) colours, boxes or a
// bar), read and change their look and size, and hand them to a view.
#include <pybind11/stl.h>

#include <QGuiApplication>
#include <cstdlib>

#include "bindings/bind_parts.h"
#include "bindings/bind_view_scene.h"
#include "bindings/colour_conversion.h"
#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

using LegendClass = py::class_<VXLLegends, std::shared_ptr<VXLLegends>>;
using SizeTuple = std::tuple<double, double>;

colour::Rgba toRgba(const py::handle& value) {
  return rgbaFromPython(value, HexText::Refused);
}

std::vector<colour::Rgba> toRgbas(const py::iterable& values) {
  std::vector<colour::Rgba> colours;
  for (const py::handle value : values) colours.push_back(toRgba(value));
  return colours;
}

py::tuple fromRgba(const colour::Rgba& c) {
  return py::make_tuple(c.r, c.g, c.b, c.a);
}

py::list fromRgbas(const std::vector<colour::Rgba>& colours) {
  py::list list;
  for (const colour::Rgba& c : colours) list.append(fromRgba(c));
  return list;
}

// Measuring text needs a QGuiApplication. A script that has none gets one,
// on the platform QT_QPA_PLATFORM names or else the off-screen one.
void ensureGuiApplication() {
  if (QCoreApplication::instance()) return;
  static int argc = std::getenv("QT_QPA_PLATFORM") ? 1 : 3;
  static char name[] = "plexview", option[] = "-platform", platform[] = "offscreen";
  static char* argv[] = {name, option, platform, nullptr};
  new QGuiApplication(argc, argv);  // lives as long as the process
}

std::shared_ptr<VXLLegends> makeLegend(std::string title, std::vector<std::string> labels,
                                       const py::iterable& colours, bool continuous,
                                       bool blackBackground) {
  return VXLLegends::initWithTitle(
      std::move(title), std::move(labels), toRgbas(colours),
      continuous ? LegendKind::Continuous : LegendKind::Categorical,
      blackBackground ? scene::Background::Black : scene::Background::White);
}

void colourProperty(LegendClass& cls, const char* name, const char* setter,
                    colour::Rgba (VXLLegends::*get)() const,
                    void (VXLLegends::*set)(colour::Rgba)) {
  cls.def(name, [get](const VXLLegends& l) { return fromRgba((l.*get)()); });
  cls.def(
      setter, [set](VXLLegends& l, const py::handle& value) { (l.*set)(toRgba(value)); },
      py::arg("color"));
}

template <class T>
void property(LegendClass& cls, const char* name, const char* setter, T (VXLLegends::*get)() const,
              void (VXLLegends::*set)(T)) {
  cls.def(name, get);
  cls.def(setter, set, py::arg("value"));
}

}  // namespace

void bindLegends(py::module_& m) {
  py::enum_<LegendStyle>(m, "LegendStyle",
                         "Rows: the labels as given, no title. Readable: the title and round "
                         "ticks.")
      .value("Rows", LegendStyle::Rows)
      .value("Readable", LegendStyle::Readable);
  LegendClass cls(m, "VXLLegends",
                  "A legend: coloured boxes with one label each, or a colour bar with labelled "
                  "rows (entry 0 at the bottom). Colours are (r, g, b) or (r, g, b, a) tuples.");
  cls.def(py::init([](std::vector<std::string> labels, const py::iterable& colors, bool continuous,
                      bool blackBackground, std::string title) {
            return makeLegend(std::move(title), std::move(labels), colors, continuous,
                              blackBackground);
          }),
          py::arg("labels"), py::arg("colors"), py::arg("continuous") = false,
          py::arg("blackBackground") = false, py::arg("title") = "");
  cls.def_static("initWithTitle", &makeLegend, py::arg("title"), py::arg("labels"),
                 py::arg("withTextColor"), py::arg("continuous"), py::arg("blackBackground"),
                 "As the constructor; `withTextColor` holds the entry colours.");

  property(cls, "labels", "setLabels", &VXLLegends::labels, &VXLLegends::setLabels);
  cls.def("colors", [](const VXLLegends& l) { return fromRgbas(l.colors()); });
  cls.def(
      "setColors", [](VXLLegends& l, const py::iterable& colors) { l.setColors(toRgbas(colors)); },
      py::arg("colors"));
  property(cls, "title", "setTitle", &VXLLegends::title, &VXLLegends::setTitle);
  colourProperty(cls, "textColor", "setTextColor", &VXLLegends::textColor,
                 &VXLLegends::setTextColor);
  colourProperty(cls, "backgroundColor", "setBackgroundColor", &VXLLegends::backgroundColor,
                 &VXLLegends::setBackgroundColor);
  colourProperty(cls, "borderColor", "setBorderColor", &VXLLegends::borderColor,
                 &VXLLegends::setBorderColor);
  property(cls, "continuous", "setContinuous", &VXLLegends::continuous, &VXLLegends::setContinuous);
  property(cls, "hasBackground", "setHasBackground", &VXLLegends::hasBackground,
           &VXLLegends::setHasBackground);
  property(cls, "height", "setHeight", &VXLLegends::height, &VXLLegends::setHeight);
  cls.def("marginSize", [](const VXLLegends& l) {
    return SizeTuple{l.marginSize().width, l.marginSize().height};
  });
  cls.def(
      "setMarginSize",
      [](VXLLegends& l, double width, double height) {
        l.setMarginSize({width, height});
      },
      py::arg("width"), py::arg("height"), "Margins in units of the legend's height.");
  property(cls, "boxRadius", "setBoxRadius", &VXLLegends::boxRadius, &VXLLegends::setBoxRadius);
  property(cls, "internalBoxRadius", "setInternalBoxRadius", &VXLLegends::internalBoxRadius,
           &VXLLegends::setInternalBoxRadius);
  property(cls, "requiresUpdate", "setRequiresUpdate", &VXLLegends::requiresUpdate,
           &VXLLegends::setRequiresUpdate);
  cls.def("style", &VXLLegends::style);
  cls.def("setStyle", &VXLLegends::setStyle, py::arg("style"));
  cls.def("readableTitle", &VXLLegends::readableTitle);
  cls.def(
      "setReadable",
      [](VXLLegends& l, std::string title,
         const std::vector<std::pair<float, std::string>>& ticks) {
        std::vector<colour::BarTick> placed;
        for (const auto& [at, label] : ticks) placed.push_back({at, label});
        l.setReadable(std::move(title), std::move(placed));
      },
      py::arg("title"), py::arg("ticks") = std::vector<std::pair<float, std::string>>{},
      "The title and the bar's (place 0..1 from the bottom, label) ticks of the Readable style; "
      "an empty label is a minor tick.");
  cls.def("texName", &VXLLegends::texName, "The GL texture, 0 until it is first drawn.");
  cls.def("texSize", [](const VXLLegends& l) {
    return SizeTuple{l.texSize().width, l.texSize().height};
  });
  cls.def(
      "frameSize",
      [](VXLLegends& l) {
        ensureGuiApplication();
        const TextSize size = l.frameSize();
        return SizeTuple{size.width, size.height};
      },
      "The legend's size in pixels (width, height), measured when first asked and again after "
      "new labels, margins or height.");
  cls.def("useDarkBackgroundDefaults", &VXLLegends::useDarkBackgroundDefaults);
  cls.def("useLightBackgroundDefaults", &VXLLegends::useLightBackgroundDefaults);

  auto view = py::reinterpret_borrow<ViewClass>(m.attr("VXLNetworkView"));
  view.def("legends", &VXLNetworkView::legends, "The legend drawn at the bottom left, or None.");
  view.def("setLegends", &VXLNetworkView::setLegends, py::arg("legends").none(true),
           "Installs the legend (None: no legend); its height follows legendsHeight and the "
           "view's height.");
}

}  // namespace plexview
