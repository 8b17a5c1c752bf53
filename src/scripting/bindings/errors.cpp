#include "bindings/errors.h"

#include "bindings/bind_parts.h"
#include "quillo/utf8.h"

namespace py = pybind11;

namespace plexview {
namespace {

// The Python class of plexview.ReadError, made anew each time the module is
// set up (an embedding program may start a fresh interpreter). Never released:
// the translator may run until the interpreter shuts down.
PyObject* gReadErrorType = nullptr;

void raiseReadError(const ReadFailure& failure) {
  const ReadError& error = failure.error();
  py::object type = py::reinterpret_borrow<py::object>(gReadErrorType);
  // The description and its parts are made printable UTF-8 (file names and
  // quoted file text may hold any bytes), so building the Python strings
  // cannot fail and the error always says what went wrong.
  py::object instance = type(error.describe());
  instance.attr("file") = quillo::printable(error.file);
  instance.attr("line") = error.line;
  instance.attr("reason") = quillo::printable(error.message);
  PyErr_SetObject(gReadErrorType, instance.ptr());
}

}  // namespace

void bindErrors(py::module_& m) {
  PyObject* type = PyErr_NewExceptionWithDoc(
      "plexview.ReadError",
      "A file could not be read. The message is \"FILE, line N: REASON\"; the parts are "
      "also available as the attributes file, line (0 when not tied to a line) and reason.",
      PyExc_ValueError, nullptr);
  if (!type) throw py::error_already_set();
  gReadErrorType = type;
  m.attr("ReadError") = py::reinterpret_borrow<py::object>(gReadErrorType);

  py::register_local_exception_translator([](std::exception_ptr pointer) {
    try {
      if (pointer) std::rethrow_exception(pointer);
    } catch (const ReadFailure& failure) {
      raiseReadError(failure);
    } catch (const WriteFailure& failure) {
      PyErr_SetString(PyExc_OSError, quillo::printable(failure.what()).c_str());
    }
  });
}

}  // namespace plexview
