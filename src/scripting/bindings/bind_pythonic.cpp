// The module's Python-level functions (pythonic.py, compiled in as text) run
// in the module's own namespace, so the extension module and the program's
// embedded module offer them alike.
#include <pybind11/eval.h>

#include "app/VXLController.h"
#include "app/controller_registry.h"
#include "bindings/bind_parts.h"
#include "pythonic_source.h"

namespace py = pybind11;

namespace plexview {

void bindPythonic(py::module_& m) {
  // render() draws through a controller of its own; afterwards the window's
  // controller must again be the one sharedController() answers.
  m.def(
      "_restoreSharedController",
      [](const VXLController::Ptr& controller) {
        if (controller) app::registerController(controller->uuid(), controller);
      },
      py::arg("controller").none(true),
      "Makes the controller the one sharedController() answers (None: no change).");

  m.def(
      "_forgetController",
      [](const VXLController::Ptr& controller) {
        if (controller) app::forgetController(controller->uuid());
      },
      py::arg("controller"),
      "Drops a controller made for one picture from the registry, so it is freed.");

  const py::str source(kPythonicSource);
  // Tracebacks show the lines of the source: linecache keeps them under the
  // file name the code is compiled with (a None time stamp: never reloaded).
  const py::list lines = source.attr("splitlines")(true);
  py::module_::import("linecache").attr("cache")[py::str(kPythonicFileName)] =
      py::make_tuple(py::len(source), py::none(), lines, kPythonicFileName);
  const py::module_ builtins = py::module_::import("builtins");
  const py::object code = builtins.attr("compile")(source, kPythonicFileName, "exec");
  builtins.attr("exec")(code, m.attr("__dict__"));
}

}  // namespace plexview
