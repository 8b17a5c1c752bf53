#include "embedconsole.h"

#include <pybind11/embed.h>
#include <pybind11/stl/filesystem.h>

#include <optional>

#include "quillo/log.h"

namespace py = pybind11;

namespace scripting {
namespace {

constexpr int kFailed = 1;

// A name the start-up script defined in __main__, or None.
py::object startupDefinition(const char* name) {
  const py::dict globals = py::module_::import("__main__").attr("__dict__");
  return globals.contains(name) ? py::object(globals[name]) : py::object(py::none());
}

std::string missing(const char* name) {
  return std::string("the start-up script defined no ") + name + " (see the log for its errors)";
}

// Prints the Python error of a failed call on stderr (as the interpreter
// does for an uncaught exception).
void reportError(py::error_already_set& error) {
  error.restore();
  PyErr_Print();
}

}  // namespace

struct ConsoleSession::State {
  std::optional<py::object> interpreter;  // None: the start-up script has no PyInterpreter
};

ConsoleSession::ConsoleSession() : state_(std::make_unique<State>()) {}

ConsoleSession::~ConsoleSession() {
  if (!state_->interpreter) return;
  py::gil_scoped_acquire gil;
  state_->interpreter.reset();
}

namespace {

// Calls the interpreter's method; the console shows what it answers, and
// any error escaping it.
template <class... Args>
std::string callInterpreter(std::optional<py::object>& interpreter, const char* method,
                            Args&&... args) {
  py::gil_scoped_acquire gil;
  try {
    if (!interpreter) {
      const py::object cls = startupDefinition("PyInterpreter");
      interpreter = cls.is_none() ? py::object(py::none()) : cls();
    }
    if (interpreter->is_none()) return missing("PyInterpreter") + "\n";
    const py::object answer = interpreter->attr(method)(std::forward<Args>(args)...);
    return answer.is_none() ? std::string() : py::str(answer).cast<std::string>();
  } catch (py::error_already_set& error) {
    return std::string(error.what()) + "\n";
  }
}

}  // namespace

std::string ConsoleSession::runCode(const std::string& source) {
  return callInterpreter(state_->interpreter, "runCode", source);
}

std::string ConsoleSession::evaluate(const std::string& line) {
  return callInterpreter(state_->interpreter, "evaluate", line);
}

void ConsoleSession::resetBuffer() {
  callInterpreter(state_->interpreter, "resetBuffer");
}

void runScriptFile(const std::filesystem::path& script) {
  py::gil_scoped_acquire gil;
  const py::object run = startupDefinition("runScript");
  if (run.is_none()) {
    quillo::logLine("cannot run " + script.string() + ": " + missing("runScript"));
    return;
  }
  try {
    run(script);
  } catch (py::error_already_set& error) {
    reportError(error);
  }
}

int renderPicture(const app::Options& options) {
  py::gil_scoped_acquire gil;
  const py::object render = startupDefinition("renderFile");
  if (render.is_none()) {
    quillo::logLine("cannot render: " + missing("renderFile"));
    return kFailed;
  }
  try {
    return render(options.files.front(), options.output, options.steps, options.width,
                  options.height, options.colorBy, options.labels)
        .cast<int>();
  } catch (py::error_already_set& error) {
    reportError(error);
    return kFailed;
  } catch (py::cast_error&) {
    quillo::logLine("renderFile answered no exit status");
    return kFailed;
  }
}

}  // namespace scripting
