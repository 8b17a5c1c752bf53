#include "embedstartup.h"

#include <pybind11/embed.h>

#include <QCoreApplication>
#include <stdexcept>

#include <cstdio>
#include <cstdlib>

#include "bindings/bindings.h"
#include "quillo/log.h"
#include "quillo/resources.h"

namespace py = pybind11;

namespace scripting {
namespace {

constexpr const char* kScriptName = "PyInterpreter";
constexpr const char* kScriptExtensions[] = {"py", "pyc", "pyo"};
// The interpreter believes it was started as this program: its standard
// library is then found under /usr.
constexpr const char* kProgramName = "/usr/bin/python";

std::string missingScriptMessage(const char* file, int line) {
  const std::string source = std::filesystem::path(file).filename().string();
  char message[512];
  std::snprintf(message, sizeof message,
                "%s:%d main() Failed to find the Main.{py,pyc,pyo} file in the application "
                "wrapper's Resources directory.",
                source.c_str(), line);
  return message;
}

void startPython(const std::vector<std::string>& arguments) {
  PyConfig config;
  PyConfig_InitPythonConfig(&config);
  config.parse_argv = 0;               // the program's options are not the interpreter's
  config.install_signal_handlers = 0;  // Ctrl+C ends the program as usual
  PyConfig_SetBytesString(&config, &config.program_name, kProgramName);
  std::vector<const char*> argv;
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  py::initialize_interpreter(&config, static_cast<int>(argv.size()), argv.data(), false);
}

// Runs the script as __main__ under its bare file name; false when it
// raised. Compiled scripts keep their whole path: the interpreter reopens a
// .pyc file by the name it is given.
bool runScript(const std::filesystem::path& script) {
  std::FILE* file = std::fopen(script.c_str(), "r");
  if (!file) return false;
  const std::string name =
      script.extension() == ".pyc" ? script.string() : script.filename().string();
  const int failed = PyRun_SimpleFileExFlags(file, name.c_str(), 0, nullptr);
  std::fclose(file);
  return failed == 0;
}

}  // namespace

void setPythonPath(const std::filesystem::path& resources) {
  const std::string path = resources.string() + ":" + (resources / "PyObjC").string();
  setenv("PYTHONPATH", path.c_str(), 1);
}

std::filesystem::path findInterpreterScript(const std::filesystem::path& resources) {
  for (const char* extension : kScriptExtensions) {
    const std::filesystem::path candidate =
        resources / (std::string(kScriptName) + "." + extension);
    std::error_code ignored;
    if (std::filesystem::is_regular_file(candidate, ignored)) return candidate;
  }
  return {};
}

std::filesystem::path prepareInterpreter() {
  const std::filesystem::path resources = quillo::resourceFolder();
  setPythonPath(resources);
  std::filesystem::path script = findInterpreterScript(resources);
  if (script.empty()) throw StartupError(missingScriptMessage(__FILE__, __LINE__));
  return script;
}

EmbeddedInterpreter::EmbeddedInterpreter(const std::vector<std::string>& arguments,
                                         const std::filesystem::path& startupScript) {
  startPython(arguments);
  startupScriptRan_ = runScript(startupScript);
  if (!startupScriptRan_) {
    quillo::logLine("PyRun_SimpleFile failed with file '" + startupScript.string() +
                    "'.  See console for errors.");
  }
  releasedThread_ = PyEval_SaveThread();
}

EmbeddedInterpreter::~EmbeddedInterpreter() {
  PyEval_RestoreThread(static_cast<PyThreadState*>(releasedThread_));
  py::finalize_interpreter();
}

}  // namespace scripting

// The plexview module compiled into the program: everything the extension
// module offers, plus what only the running program can do (end its event
// loop). It lives beside the start-up so that linking the start-up always
// registers it.
PYBIND11_EMBEDDED_MODULE(plexview, m) {
  plexview::bindModel(m);
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
}
