// The plexview program: a window per network file (or the untitled start-up
// window) with the embedded Python interpreter and its script console; with
// --snapshot one frame rendered off screen to a PNG file; with --render a
// picture laid out and written by the start-up script. See app/options.h for
// the command line.
#include <unistd.h>
#include <QApplication>
#include <QGuiApplication>
#include <QImage>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/QLODocumentController.h"
#include "app/networkfile.h"
#include "app/options.h"
#include "render/VXLNetworkView.h"
#include "ui/documentui.h"
#include "ui/snapshot.h"

#include "scripting/embedconsole.h"
#include "scripting/embedstartup.h"
#include "ui/ScriptConsoleWindow.h"

namespace {

// Exit statuses: 1 for a run that failed, 2 for a command line refused.
constexpr int kFailed = 1;
constexpr int kUsage = 2;

void printError(const std::string& message) {
  std::fprintf(stderr, "plexview: %s\n", message.c_str());
}

// The file's network, or a generated one without a file; null (with the
// reason in `error`) when the file cannot be read.
QLONetwork::Ptr networkFor(const app::Options& options, std::string& error) {
  if (options.files.empty()) return app::generatedNetwork();
  ReadError readError;
  auto network = app::openNetworkFile(options.files.front(), readError);
  if (!network) error = readError.describe();
  return network;
}

bool haveDisplay() {
  return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY") || std::getenv("QT_QPA_PLATFORM");
}

// One frame of the view written as a PNG; empty when written, else why not.
std::string writeSnapshot(VXLNetworkView& view, const std::filesystem::path& file, int width,
                          int height) {
  std::string error;
  const QImage image = ui::renderSnapshot(view, QSize(width, height), error);
  if (image.isNull()) return error;
  if (!image.save(QString::fromStdString(file.string()), "PNG")) {
    return "could not write " + file.string();
  }
  return {};
}

int runSnapshot(int argc, char** argv, const app::Options& options) {
  std::string error;
  const auto network = networkFor(options, error);
  if (!network) {
    printError(error);
    return kFailed;
  }
  if (!haveDisplay()) {
    printError("no display for OpenGL: run under a display or xvfb-run");
    return kFailed;
  }
  QGuiApplication application(argc, argv);
  VXLNetworkView view;
  view.setNetwork(network);
  view.prepareFrame();  // the filter cache the steps read
  view.iterateBy(options.steps);
  // Framed as a window frames a new network once its layout has settled.
  view.prepareFrame();
  view.zoomToFit(options.width, options.height);
  error = writeSnapshot(view, options.snapshot, options.width, options.height);
  if (!error.empty()) {
    printError(error);
    return kFailed;
  }
  std::printf("%s\n", options.snapshot.c_str());
  return 0;
}

// The console's view of the interpreter object the start-up script defines.
VXLPythonController::Interpreter consoleInterpreter(
    const std::shared_ptr<scripting::ConsoleSession>& session) {
  return {
      [session](const std::string& source) { return session->runCode(source); },
      [session] { session->resetBuffer(); },
      [session](const std::string& line) { return session->evaluate(line); },
  };
}

// Runs the same command again under a virtual X server; returns only when
// that cannot be done.
void runUnderXvfb(const std::vector<std::string>& processArguments) {
  std::vector<std::string> command{"xvfb-run", "-a", "-s", "-screen 0 1024x768x24"};
  command.insert(command.end(), processArguments.begin(), processArguments.end());
  std::vector<char*> argv;
  for (std::string& word : command) argv.push_back(word.data());
  argv.push_back(nullptr);
  std::fflush(nullptr);
  execvp(argv[0], argv.data());
}

int runRender(const std::vector<std::string>& processArguments, int argc, char** argv,
              const app::Options& options) {
  if (!haveDisplay()) {
    // A picture needs OpenGL, and OpenGL a display: lend one.
    runUnderXvfb(processArguments);
    printError(
        "--render draws with OpenGL and needs a display: neither DISPLAY nor WAYLAND_DISPLAY "
        "is set and xvfb-run was not found (Debian: apt install xvfb xauth)");
    return kFailed;
  }
  const std::filesystem::path startupScript = scripting::prepareInterpreter();
  QGuiApplication application(argc, argv);
  const scripting::EmbeddedInterpreter interpreter(processArguments, startupScript);
  return scripting::renderPicture(options);
}

int runWindow(const std::vector<std::string>& processArguments, int argc, char** argv,
              const app::Options& options) {
  if (!haveDisplay()) {
    printError(
        "no display for the window: neither DISPLAY nor WAYLAND_DISPLAY is set "
        "(plexview --render FILE -o OUT.png draws a picture without one)");
    return kFailed;
  }
  std::error_code ignored;
  if (!options.script.empty() && !std::filesystem::is_regular_file(options.script, ignored)) {
    printError("no script file " + options.script.string());
    return kFailed;
  }
  const std::filesystem::path startupScript = scripting::prepareInterpreter();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("plexview"));
  QApplication::setOrganizationName(QStringLiteral("plexview"));
  const scripting::EmbeddedInterpreter interpreter(processArguments, startupScript);
  ui::ScriptConsoleWindow console(
      consoleInterpreter(std::make_shared<scripting::ConsoleSession>()));
  QLODocumentController documents;
  ui::installDocumentUi(documents);

  // The --run script starts inside the event loop once the first window exists.
  auto scriptStarted = std::make_shared<bool>(options.script.empty());
  auto startScript = [&options, scriptStarted] {
    if (*scriptStarted) return;
    *scriptStarted = true;
    QTimer::singleShot(0, [&options] { scripting::runScriptFile(options.script); });
  };
  if (options.files.empty()) {
    documents.newDocument();
    startScript();
    return application.exec();
  }

  // Until every file has been read no document window may exist yet; the
  // progress and alerts shown meanwhile must not end the program.
  QApplication::setQuitOnLastWindowClosed(false);
  auto remaining = std::make_shared<std::size_t>(options.files.size());
  for (const auto& file : options.files) {
    documents.openDocumentInBackground(
        file, QLODocumentController::Display::Show,
        [&documents, remaining, startScript](const QLOComplexNetwork::Ptr& document) {
          if (document) startScript();
          if (--*remaining > 0) return;
          QApplication::setQuitOnLastWindowClosed(true);
          if (documents.documents().empty()) QApplication::exit(kFailed);
        });
  }
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  // The interpreter gets the arguments as given, before Qt takes its own.
  const std::vector<std::string> processArguments(argv, argv + argc);
  const std::vector<std::string> arguments(processArguments.begin() + 1, processArguments.end());
  const app::ParsedOptions parsed = app::parseOptions(arguments);
  if (!parsed.options) {
    printError(parsed.error);
    std::fputs(app::tryHelpText().c_str(), stderr);
    return kUsage;
  }
  const app::Options& options = *parsed.options;
  try {
    switch (options.mode) {
      case app::RunMode::Help:
        std::fputs(app::usageText().c_str(), stdout);
        return 0;
      case app::RunMode::Version:
        std::fputs(app::versionText().c_str(), stdout);
        return 0;
      case app::RunMode::Snapshot:
        return runSnapshot(argc, argv, options);
      case app::RunMode::Render:
        return runRender(processArguments, argc, argv, options);
      case app::RunMode::Window:
        break;
    }
    return runWindow(processArguments, argc, argv, options);
  } catch (const scripting::StartupError& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return kFailed;
  }
}
