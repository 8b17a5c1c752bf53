#pragma once
// The program's embedded Python interpreter, from start-up to shutdown:
// the search path, the start-up script "PyInterpreter" in the resource
// folder, and the interpreter lock, which C++ takes only while it calls
// into Python (the event loop runs without it).
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace scripting {

// The resource folder holds no start-up script: the program cannot start.
class StartupError : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// Sets PYTHONPATH to `resources` and its "PyObjC" folder, joined by ':',
// overwriting any value already set.
void setPythonPath(const std::filesystem::path& resources);

// The first of PyInterpreter.py, .pyc and .pyo in `resources`; empty when
// there is none.
std::filesystem::path findInterpreterScript(const std::filesystem::path& resources);

// Sets the search path for the resource folder and answers the start-up
// script; throws StartupError when there is none.
std::filesystem::path prepareInterpreter();

// The interpreter for the whole run. Starting it runs the start-up script;
// a script that fails is logged and start-up goes on. Between calls the
// interpreter lock is free: take it (pybind11::gil_scoped_acquire) around
// every use of Python.
class EmbeddedInterpreter {
 public:
  // `arguments` become sys.argv, the program's own name first.
  EmbeddedInterpreter(const std::vector<std::string>& arguments,
                      const std::filesystem::path& startupScript);
  ~EmbeddedInterpreter();
  EmbeddedInterpreter(const EmbeddedInterpreter&) = delete;
  EmbeddedInterpreter& operator=(const EmbeddedInterpreter&) = delete;

  bool startupScriptRan() const { return startupScriptRan_; }

 private:
  bool startupScriptRan_ = false;
  void* releasedThread_ = nullptr;  // the PyThreadState saved while the lock is free
};

}  // namespace scripting
