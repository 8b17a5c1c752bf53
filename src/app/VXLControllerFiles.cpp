// The controller's file commands: positions files in and out, and the shown
// network written as Pajek, GEXF, GML or as an edge list. The panels and alerts are the
// window's (see setFilePanel and setFileAlert); everything here is also
// reachable without them, by path.
#include <cstdlib>
#include <string>
#include <system_error>

#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"
#include "quillo/log.h"

namespace fs = std::filesystem;

namespace {

// "~" and "~/..." name the home folder; the rest is made absolute, with "."
// and ".." resolved and symbolic links followed as far as they exist (so a
// write replaces the file a link points to, not the link).
fs::path standardized(const fs::path& given) {
  fs::path path = given;
  const std::string text = given.string();
  if (const char* home = std::getenv("HOME"); home && (text == "~" || text.starts_with("~/"))) {
    path = fs::path(home) / text.substr(text.size() > 1 ? 2 : 1);
  }
  std::error_code failed;
  fs::path full = fs::weakly_canonical(path, failed);
  if (!failed) return full;
  full = fs::absolute(path, failed);
  return failed ? path.lexically_normal() : full.lexically_normal();
}

std::string quotedName(const fs::path& path) {
  return "\u201C" + path.filename().string() + "\u201D";
}

// The name the window shows for the controller's network.
std::string shownName(const VXLController& controller) {
  if (const QLOComplexNetwork* document = controller.currentDocument()) {
    return document->displayName();
  }
  const std::string& name = controller.networkName();
  return name.empty() ? QLOComplexNetwork::defaultDraftName() : name;
}

}  // namespace

std::string VXLController::proposedFileName(const std::string& displayName,
                                            const std::string& extension) {
  const std::string suffix = extension.empty() ? std::string() : "." + extension;
  if (!suffix.empty() && displayName.ends_with(suffix)) return displayName;
  std::string stem = displayName;
  // An extension is what follows the last full stop of a name that does not
  // start there, and holds no space or folder separator ("v1.2 network" has
  // none).
  const auto dot = stem.rfind('.');
  if (dot != std::string::npos && dot > 0 && dot + 1 < stem.size() &&
      stem.find_first_of(" /\\", dot + 1) == std::string::npos) {
    stem.erase(dot);
  }
  return stem + suffix;
}

void VXLController::showFileAlert(const std::string& message, const std::string& detail) const {
  if (fileAlert_) {
    fileAlert_(message, detail);
  } else {
    quillo::logLine(message + " " + detail);
  }
}

void VXLController::runSavePanel(const FilePanelRequest& request, const FileWriter& write) {
  if (!filePanel_) return;
  // Controllers stay registered for the whole run, so `this` outlives the
  // panel.
  filePanel_(request, [this, write](const std::optional<fs::path>& chosen) {
    if (!chosen) return;
    std::string reason;
    if (write(*chosen, &reason)) return;
    showFileAlert("The file " + quotedName(*chosen) + " could not be written.", reason);
  });
}

// --- Positions ---

void VXLController::exportNodesPositions() {
  FilePanelRequest request;
  request.title = "Export Positions";
  request.folder = currentFolder();
  runSavePanel(request, [this](const fs::path& path, std::string* error) {
    return exportNodesPositions(path, error);
  });
}

bool VXLController::exportNodesPositions(const fs::path& path, std::string* error) {
  const auto shown = positions();
  if (!shown) {
    if (error) *error = path.string() + ": there are no positions to export";
    return false;
  }
  return shown->writeToURL(standardized(path), WriteMode::Atomic, error);
}

void VXLController::openPositionsFromPanel() {
  if (!filePanel_) return;
  FilePanelRequest request;
  request.mode = FilePanelRequest::Mode::Open;
  request.title = "Import Positions";
  request.folder = currentFolder();
  filePanel_(request, [this](const std::optional<fs::path>& chosen) {
    if (!chosen) return;
    ReadError reason;
    std::error_code failed;
    const bool reachable = fs::exists(standardized(*chosen), failed);
    if (openPositionsFromURL(*chosen, &reason)) return;
    quillo::logLine("Failed opening file: " + chosen->string());
    quillo::logLine(reason.describe());
    // An unreachable file has had its alert already.
    if (reachable) {
      showFileAlert("The positions in " + quotedName(*chosen) +
                        " could not be imported; the layout is unchanged.",
                    reason.describe());
    }
  });
}

bool VXLController::openPositionsFromURL(const fs::path& url, ReadError* error) {
  const fs::path path = standardized(url);
  ReadError reason;
  std::error_code failed;
  if (!fs::exists(path, failed)) {
    const std::error_code why =
        failed ? failed : std::make_error_code(std::errc::no_such_file_or_directory);
    reason = ReadError{path.string(), 0, why.message()};
    showFileAlert("The file " + quotedName(path) + " could not be opened.", reason.describe());
    if (error) *error = reason;
    return false;
  }
  const auto read = QLOVector3dArray::initWithContentsOfURL(path, Precision::Float, &reason);
  const auto shown = network();
  const std::uint64_t vertices = shown ? shown->countVertices() : 0;
  if (read && read->count() != vertices) {
    // The view shows and lays out nothing while its positions and network
    // disagree: such a file is refused and the layout kept.
    reason =
        ReadError{path.string(), 0,
                  "holds " + std::to_string(read->count()) + " positions, but the network has " +
                      std::to_string(vertices) + " vertices"};
  }
  if (!read || !reason.message.empty()) {
    if (error) *error = reason;
    return false;
  }
  setPositions(read);
  return true;
}

// --- Network exports ---

void VXLController::exportNetworkToPajekFormat() {
  FilePanelRequest request;
  request.title = "Export Pajek";
  request.folder = currentFolder();
  request.extension = "net";
  request.typeName = "Pajek network";
  request.proposedName = proposedFileName(shownName(*this), "net");
  runSavePanel(request, [this](const fs::path& path, std::string* error) {
    return exportNetworkToPajekFormat(path, error);
  });
}

void VXLController::exportNetworkToEdges() {
  FilePanelRequest request;
  request.title = "Export Edge List";
  request.folder = currentFolder();
  request.extension = "edges";
  request.typeName = "Edge list";
  request.proposedName = proposedFileName(shownName(*this), "edges");
  runSavePanel(request, [this](const fs::path& path, std::string* error) {
    return exportNetworkToEdges(path, error);
  });
}

void VXLController::exportNetworkToGexf() {
  FilePanelRequest request;
  request.title = "Export GEXF";
  request.folder = currentFolder();
  request.extension = "gexf";
  request.typeName = "GEXF network";
  request.proposedName = proposedFileName(shownName(*this), "gexf");
  runSavePanel(request, [this](const fs::path& path, std::string* error) {
    return exportNetworkToGexf(path, error);
  });
}

void VXLController::exportNetworkToGml() {
  FilePanelRequest request;
  request.title = "Export GML";
  request.folder = currentFolder();
  request.extension = "gml";
  request.typeName = "GML network";
  request.proposedName = proposedFileName(shownName(*this), "gml");
  runSavePanel(request, [this](const fs::path& path, std::string* error) {
    return exportNetworkToGml(path, error);
  });
}

bool VXLController::exportNetworkToGexf(const fs::path& path, std::string* error) {
  const auto shown = network();
  if (!shown) {
    if (error) *error = path.string() + ": there is no network to export";
    return false;
  }
  const std::string text = plexora::gexfText(*shown, positions(), view_->colors());
  return quillo::writeWholeFile(standardized(path), text, WriteMode::Atomic, error);
}

bool VXLController::exportNetworkToGml(const fs::path& path, std::string* error) {
  const auto shown = network();
  if (!shown) {
    if (error) *error = path.string() + ": there is no network to export";
    return false;
  }
  const std::string text = plexora::gmlText(*shown, positions());
  return quillo::writeWholeFile(standardized(path), text, WriteMode::Atomic, error);
}

bool VXLController::exportNetworkToPajekFormat(const fs::path& path, std::string* error) {
  const auto shown = network();
  if (!shown) {
    if (error) *error = path.string() + ": there is no network to export";
    return false;
  }
  // The vertices' coordinates in the file are the layout as it is now; the
  // network itself (and so the document) is left as it is.
  const std::string text = plexora::pajekText(*shown, positions());
  return quillo::writeWholeFile(standardized(path), text, WriteMode::Atomic, error);
}

bool VXLController::exportNetworkToEdges(const fs::path& path, std::string* error) {
  const auto shown = network();
  if (!shown) {
    if (error) *error = path.string() + ": there is no network to export";
    return false;
  }
  return shown->writeToEdgesURL(standardized(path), WriteMode::Atomic, error);
}
