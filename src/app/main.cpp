// The plexview program: a window per network file (or the untitled start-up
// window), or with --snapshot one frame rendered off screen to a PNG file.
// See app/options.h for the command line.
#include <QApplication>
#include <QGuiApplication>
#include <QImage>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "app/QLODocumentController.h"
#include "app/networkfile.h"
#include "app/options.h"
#include "render/VXLNetworkView.h"
#include "ui/documentui.h"
#include "ui/snapshot.h"

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
  const QImage image = ui::renderSnapshot(view, QSize(options.width, options.height), error);
  if (image.isNull()) {
    printError(error);
    return kFailed;
  }
  const QString out = QString::fromStdString(options.snapshot.string());
  if (!image.save(out, "PNG")) {
    printError("could not write " + options.snapshot.string());
    return kFailed;
  }
  std::printf("%s\n", options.snapshot.c_str());
  return 0;
}

int runWindow(int argc, char** argv, const app::Options& options) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("plexview"));
  QApplication::setOrganizationName(QStringLiteral("plexview"));
  QLODocumentController documents;
  ui::installDocumentUi(documents);
  if (options.files.empty()) {
    documents.newDocument();
    return application.exec();
  }

  // Until every file has been read no document window may exist yet; the
  // progress and alerts shown meanwhile must not end the program.
  QApplication::setQuitOnLastWindowClosed(false);
  auto remaining = std::make_shared<std::size_t>(options.files.size());
  for (const auto& file : options.files) {
    documents.openDocumentInBackground(file, QLODocumentController::Display::Show,
                                       [&documents, remaining](const QLOComplexNetwork::Ptr&) {
                                         if (--*remaining > 0) return;
                                         QApplication::setQuitOnLastWindowClosed(true);
                                         if (documents.documents().empty())
                                           QApplication::exit(kFailed);
                                       });
  }
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const app::ParsedOptions parsed = app::parseOptions(arguments);
  if (!parsed.options) {
    printError(parsed.error);
    std::fputs(app::usageText().c_str(), stderr);
    return kUsage;
  }
  const app::Options& options = *parsed.options;
  switch (options.mode) {
    case app::RunMode::Help:
      std::fputs(app::usageText().c_str(), stdout);
      return 0;
    case app::RunMode::Snapshot:
      return runSnapshot(argc, argv, options);
    case app::RunMode::Window:
      break;
  }
  return runWindow(argc, argv, options);
}
