// Python access to the controller's file commands: positions files in and
// out, the shown network written as Pajek or as an edge list, and the file
// and folder of the window's document.
#include <pybind11/functional.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <filesystem>
#include <optional>
#include <string>

#include "app/VXLController.h"
#include "bindings/bind_parts.h"
#include "bindings/errors.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Controller = py::class_<VXLController, std::shared_ptr<VXLController>>;
using Export = bool (VXLController::*)(const std::filesystem::path&, std::string*);

// Runs an export without the GIL; a failure raises OSError with the reason.
template <Export write>
void exportTo(VXLController& controller, const std::filesystem::path& path) {
  std::string error;
  bool written;
  {
    py::gil_scoped_release release;
    written = (controller.*write)(path, &error);
  }
  if (!written) throw WriteFailure(error);
}

// None for an empty path (no document, or one without a file).
std::optional<std::string> pathOrNone(const std::filesystem::path& path) {
  if (path.empty()) return std::nullopt;
  return path.string();
}

}  // namespace

void bindControllerFiles(py::module_& m) {
  auto cls = py::reinterpret_borrow<Controller>(m.attr("VXLController"));
  cls.def("exportNodesPositions", &exportTo<&VXLController::exportNodesPositions>, py::arg("path"),
          "Writes the layout, one \"X Y Z\" line per vertex that reads back to the same "
          "floats, through a temporary file renamed over `path`. Raises OSError on failure.");
  cls.def(
      "openPositionsFromURL",
      [](VXLController& c, const std::filesystem::path& path) {
        ReadError reason;
        if (!c.openPositionsFromURL(path, &reason)) throw ReadFailure(reason);
        return true;
      },
      py::arg("path"),
      "Reads a positions file into the layout and the network's \"Position\" and answers "
      "True. Raises ReadError (file, line, reason), the layout kept, when the file cannot be "
      "reached (the file alert is raised too), read or parsed, or holds another count of "
      "positions than the network has vertices.");
  cls.def("exportNetworkToPajekFormat", &exportTo<&VXLController::exportNetworkToPajekFormat>,
          py::arg("path"),
          "Writes the shown network, with the layout as its coordinates, as a Pajek file. "
          "Raises OSError on failure.");
  cls.def("exportNetworkToEdges", &exportTo<&VXLController::exportNetworkToEdges>, py::arg("path"),
          "Writes one \"from to [weight]\" line per edge. Raises OSError on failure.");
  cls.def("exportNetworkToGexf", &exportTo<&VXLController::exportNetworkToGexf>, py::arg("path"),
          "Writes the shown network as GEXF 1.3 with the layout as viz positions and the shown "
          "colours as viz colours, leaving the network as it is. Raises OSError on failure.");
  cls.def("exportNetworkToGml", &exportTo<&VXLController::exportNetworkToGml>, py::arg("path"),
          "Writes the shown network as GML with the layout as graphics coordinates, leaving the "
          "network as it is. Raises OSError on failure.");
  cls.def(
      "currentFolder", [](const VXLController& c) { return pathOrNone(c.currentFolder()); },
      "The folder of the window's document file, or None.");
  cls.def(
      "currentFile", [](const VXLController& c) { return pathOrNone(c.currentFile()); },
      "The window's document file, or None.");
  cls.def("setFileAlert", &VXLController::setFileAlert, py::arg("alert").none(true),
          "A callable given (message, detail) when a file command fails to reach a file; "
          "None logs the message instead. A window installs its own.");
  cls.def_static("proposedFileName", &VXLController::proposedFileName, py::arg("displayName"),
                 py::arg("extension"),
                 "The display name without its extension, a full stop and the extension.");
}

}  // namespace plexview
