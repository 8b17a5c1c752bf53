#include "embedmodule.h"

#include <pybind11/embed.h>
#include <pybind11/stl/filesystem.h>

#include <QCoreApplication>

#include "bindings/bindings.h"
#include "render/VXLNetworkView.h"

namespace py = pybind11;

namespace scripting {
namespace {

ProgramServices& services() {
  static ProgramServices lent;
  return lent;
}

void bindProgram(py::module_& m) {
  m.attr("isEmbedded") = true;
  m.def(
      "quitApplication",
      [](int status) {
        if (!QCoreApplication::instance())
          throw std::runtime_error("the program has no event loop");
        QCoreApplication::exit(status);
      },
      py::arg("status") = 0,
      "Ends the program's event loop once the running script returns; `status` is the "
      "program's exit status.");
  m.def(
      "writeSnapshot",
      [](VXLNetworkView& view, const std::filesystem::path& file, int width, int height) {
        if (!services().writeSnapshot) throw std::runtime_error("this program renders no frames");
        if (width < 1 || height < 1) throw py::value_error("the size must be at least 1x1 pixels");
        std::string error;
        {
          py::gil_scoped_release release;
          error = services().writeSnapshot(view, file, width, height);
        }
        if (!error.empty()) throw std::runtime_error(error);
      },
      py::arg("view"), py::arg("path"), py::arg("width"), py::arg("height"),
      "Renders one frame of the view off screen and writes it as a PNG file.");
}

}  // namespace

void setProgramServices(ProgramServices lent) {
  services() = std::move(lent);
}

}  // namespace scripting

PYBIND11_EMBEDDED_MODULE(plexview, m) {
  plexview::bindModel(m);
  scripting::bindProgram(m);
}
