// Scripts export the view as a raster picture or a vector document, the
// same operation the window's export sheet runs.
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <QGuiApplication>
#include <cstdlib>
#include <optional>

#include "bindings/bind_parts.h"
#include "bindings/bind_view_scene.h"
#include "bindings/errors.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace plexview {
namespace {

// Drawing needs a QGuiApplication with OpenGL: a script that has none gets
// one on the platform QT_QPA_PLATFORM names, else on the display (xcb), else
// off screen.
void ensureGuiApplication() {
  if (QCoreApplication::instance()) return;
  static char name[] = "plexview", option[] = "-platform", platform[] = "offscreen";
  static char* argv[] = {name, option, platform, nullptr};
  const bool choose = std::getenv("QT_QPA_PLATFORM") || std::getenv("DISPLAY");
  static int argc = choose ? 1 : 3;
  new QGuiApplication(argc, argv);  // lives as long as the process
}

py::dict reportDict(const ExportReport& report) {
  py::dict d;
  d["path"] = report.path;
  d["format"] = std::string(formatName(report.format));
  d["width"] = report.width;
  d["height"] = report.height;
  d["tiles"] = report.tiles;
  d["rounds"] = report.rounds;
  d["bufferSize"] = report.bufferSize;
  return d;
}

}  // namespace

void bindExport(py::module_& m) {
  auto view = py::reinterpret_borrow<ViewClass>(m.attr("VXLNetworkView"));
  view.def(
      "exportImageToFile",
      [](VXLNetworkView& v, const std::filesystem::path& path, int width, int height,
         std::optional<float> lineWidth) {
        ensureGuiApplication();
        const ExportReport report =
            v.exportImageToFile(path, width, height, lineWidth.value_or(v.lineWidth()));
        if (!report.written) throw WriteFailure(report.error);
        return reportDict(report);
      },
      py::arg("path"), py::arg("width") = 0, py::arg("height") = 0,
      py::arg("lineWidth") = py::none(),
      "Writes the view as a picture of width x height pixels ((0, 0): the view's size) with "
      "edges lineWidth pixels wide (None: the view's own). The extension picks the format: "
      "tif/tiff, bmp, gif, jpg/jpeg, png, or the vector pdf, svg, eps and ps; any other gets "
      ".png appended. Answers a dict (path written, format, width, height, tiles drawn, gl2ps "
      "rounds and buffer size); raises OSError when nothing was written.");
}

}  // namespace plexview
