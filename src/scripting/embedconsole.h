#pragma once
// Calls from the program into what the start-up script defined: the
// console's PyInterpreter object, and the functions behind --run and
// --render. Each call takes the interpreter lock for its duration; none
// may outlive the EmbeddedInterpreter.
#include <filesystem>
#include <memory>
#include <string>

#include "app/options.h"

namespace scripting {

// The script console's interpreter: one PyInterpreter made by the start-up
// script's class, at the first call. Without that class every call answers
// a note saying so.
class ConsoleSession {
 public:
  ConsoleSession();
  ~ConsoleSession();
  ConsoleSession(const ConsoleSession&) = delete;
  ConsoleSession& operator=(const ConsoleSession&) = delete;

  // What running the source printed: output, errors and tracebacks.
  std::string runCode(const std::string& source);
  // One line of an interactive session, echoed with its prompt, and what it printed.
  std::string evaluate(const std::string& line);
  void resetBuffer();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// Runs the script file through the start-up script's runScript().
void runScriptFile(const std::filesystem::path& script);

// Lays out, colours and writes the picture of a render run through the
// start-up script's renderFile(); answers the program's exit status.
int renderPicture(const app::Options& options);

}  // namespace scripting
