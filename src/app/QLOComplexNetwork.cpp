#include "app/QLOComplexNetwork.h"

#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>
#include <system_error>

#include "app/QLODocumentController.h"
#include "app/doctypes.h"
#include "app/recovery.h"
#include "app/sizesettings.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"
#include "quillo/log.h"

namespace fs = std::filesystem;

QLOComplexNetwork::QLOComplexNetwork() : fileType_(app::kComplexNetworkType) {}

QLOComplexNetwork::~QLOComplexNetwork() = default;

void QLOComplexNetwork::windowControllerDidLoadNib() {
  loadOpennedNetwork();
  loaded_ = true;
  autosaveTimer_ = std::make_unique<QTimer>();
  autosaveTimer_->setInterval(autosaveInterval_);
  QObject::connect(autosaveTimer_.get(), &QTimer::timeout, [this] {
    std::string reason;
    if (!autosave(&reason)) quillo::logLine("Autosave failed: " + reason);
  });
  autosaveTimer_->start();
}

bool QLOComplexNetwork::readFromURL(const fs::path& url, std::string_view type,
                                    DocumentError* error) {
  const QLODocumentController* controller = QLODocumentController::sharedDocumentController();
  isMajorComponentOnlySelected_ = controller && controller->isMajorComponentOnlySelected();
  quillo::logLine("Opening: URL: " + url.string());
  readError_ = ReadError{};
  if (app::typeConformsTo(type, app::kComplexNetworkType)) {
    setNetworkToBeOppened(QLONetwork::initWithContentsOfURL(url, &readError_));
  } else if (app::typeConformsTo(type, app::kPajekNetworkType)) {
    setNetworkToBeOppened(QLONetwork::initWithContentsOfPajekURL(url, &readError_));
  } else if (app::isImportedNetworkType(type)) {
    setNetworkToBeOppened(QLONetwork::initWithContentsOfURL(url, &readError_));
  } else {
    readError_ = ReadError{url.string(), 0, "not a network file"};
  }
  if (const QLONetwork::Ptr read = networkToBeOppened(); read && !savesInPlace(url, type, *read)) {
    becomeUntitledCopyOf(url);
  }
  // A caller that asks for no error is told the read went well, whatever
  // happened; that is how callers without an error have always been served.
  if (!error) return true;
  if (networkToBeOppened()) return true;
  *error = DocumentError{std::string(kOSStatusErrorDomain), -4, readError_};
  return false;
}

void QLOComplexNetwork::becomeUntitledCopyOf(const fs::path& url) {
  setFileURL({});
  // "karate.net.gz" is named "karate", like "karate.net".
  const fs::path name = url.extension() == ".gz" ? url.stem() : url;
  setDisplayName(name.stem().string());
  setFileType(std::string(app::kComplexNetworkType));
}

bool QLOComplexNetwork::savesInPlace(const fs::path& url, std::string_view type,
                                     const QLONetwork& network) {
  return app::typeConformsTo(type, app::kComplexNetworkType) && url.extension() != ".gz" &&
         network.isPlexviewDocument();
}

void QLOComplexNetwork::loadOpennedNetwork() {
  const QLONetwork::Ptr network = networkToBeOppened();
  if (!network) return;  // the controller keeps the network it generated
  // The information panel names the network after its document, not after
  // the generator's last network.
  if (networkController_) networkController_->setNetworkName(displayName());
  installing_ = true;
  if (networkController_ && network->graphmlExtras()) {
    app::applySizeSettings(*networkController_, network->graphmlExtras()->settings);
  }
  if (!isMajorComponentOnlySelected_) {
    if (networkController_) networkController_->setNetwork(network);
    installing_ = false;
    return;
  }
  if (networkController_) networkController_->setMajorConnectedNetwork(network);
  installing_ = false;
  // Saving the component writes beside the opened file, not over it.
  if (!fileURL_.empty()) {
    fs::path major = fileURL_.parent_path() / (fileURL_.stem().string() + "-major");
    major += fileURL_.extension();
    setFileURL(major);
  }
}

void QLOComplexNetwork::close() {
  if (closed_) return;
  if (networkController_) {
    quillo::logLine("Closing");
    networkController_->cleanup();
  }
  closed_ = true;
  autosaveTimer_.reset();
  removeAutosave();
  // The listener may drop the last reference to this document: it runs last,
  // from a copy of its own.
  const std::function<void()> listener = std::move(closeListener_);
  if (listener) listener();
}

bool QLOComplexNetwork::validateUserInterfaceItem(std::string_view action, bool usual) const {
  quillo::logLine(action);
  if (action == "exportToPDF") return true;
  return usual;
}

// The controller reloads its export table and its window shows the sheet.
ExportResult QLOComplexNetwork::exportTo3D() {
  if (networkController_ && networkController_->exportTo3D()) return {true, {}};
  return {false, "3D export needs the document's window."};
}

// The controller has its window show the image export sheet.
ExportResult QLOComplexNetwork::exportToPDF() {
  if (networkController_ && networkController_->exportToPDF()) return {true, {}};
  return {false, "Image export needs the document's window."};
}

// The controller runs the save panel; what happens next (the write, or an
// alert when it fails) is up to the panel's answer.
ExportResult QLOComplexNetwork::exportNetworkToPajekFormat() {
  if (!networkController_) return {false, "There is no window to export from."};
  networkController_->exportNetworkToPajekFormat();
  return {true, {}};
}

// The menu command's name and the controller's differ on purpose.
ExportResult QLOComplexNetwork::exportNetworkToEdgesFormat() {
  if (!networkController_) return {false, "There is no window to export from."};
  networkController_->exportNetworkToEdges();
  return {true, {}};
}

ExportResult QLOComplexNetwork::exportNetworkToGexfFormat() {
  if (!networkController_) return {false, "There is no window to export from."};
  networkController_->exportNetworkToGexf();
  return {true, {}};
}

ExportResult QLOComplexNetwork::exportNetworkToGmlFormat() {
  if (!networkController_) return {false, "There is no window to export from."};
  networkController_->exportNetworkToGml();
  return {true, {}};
}

void QLOComplexNetwork::setFileURL(const fs::path& url) {
  fileURL_ = url;
  notifyState();
}

std::string QLOComplexNetwork::displayName() const {
  if (!displayName_.empty()) return displayName_;
  if (!fileURL_.empty()) return fileURL_.filename().string();
  return defaultDraftName();
}

void QLOComplexNetwork::setDisplayName(const std::string& name) {
  displayName_ = name;
  notifyState();
}

void QLOComplexNetwork::updateChangeCount(Change change) {
  const bool before = isDocumentEdited();
  if (change == Change::Done) {
    ++changeCount_;
  } else {
    changeCount_ = 0;
    layoutRan_ = false;
  }
  if (before != isDocumentEdited()) notifyState();
}

void QLOComplexNetwork::noteLayoutRan() {
  if (layoutRan_) return;
  const bool before = isDocumentEdited();
  layoutRan_ = true;
  if (before != isDocumentEdited()) notifyState();
}

void QLOComplexNetwork::controllerDidRefresh(VXLController::Panel panel) {
  // Every setting and every installation refreshes the properties panel.
  if (!loaded_ || installing_ || closed_ || panel != VXLController::Panel::Properties) return;
  updateChangeCount(Change::Done);
}

bool QLOComplexNetwork::isDocumentEdited() const {
  const bool untouchedStartUp = isDefaultNetwork() && changeCount_ == 0 && fileURL_.empty();
  if (untouchedStartUp) return false;
  return changeCount_ > 0 || layoutRan_;
}

QLONetwork::Ptr QLOComplexNetwork::shownNetwork() const {
  if (networkController_) {
    if (auto shown = networkController_->network()) return shown;
  }
  return networkToBeOppened();
}

bool QLOComplexNetwork::writeNetwork(const fs::path& url, std::string* error) {
  const QLONetwork::Ptr network = shownNetwork();
  if (!network) {
    if (error) *error = url.string() + ": there is no network to save";
    return false;
  }
  // "Position" is to hold the layout as it is shown now, and the document
  // the window's settings; a network not shown keeps those it was read with.
  std::vector<plexora::DocumentSetting> settings;
  const bool shown = networkController_ && networkController_->network() == network;
  if (shown) {
    networkController_->setPositions(networkController_->positions());
    settings = app::sizeSettings(*networkController_);
  }
  return quillo::writeWholeFile(url, plexora::graphmlText(*network, shown ? &settings : nullptr),
                                WriteMode::Atomic, error);
}

bool QLOComplexNetwork::saveToURL(const fs::path& url, std::string* error) {
  if (!writeNetwork(url, error)) return false;
  fileURL_ = url;
  displayName_.clear();
  fileType_ = app::kComplexNetworkType;
  removeAutosave();
  changeCount_ = 0;
  layoutRan_ = false;
  notifyState();
  return true;
}

bool QLOComplexNetwork::autosave(std::string* error) {
  if (closed_ || !isDocumentEdited()) return true;
  if (!fileURL_.empty()) return saveToURL(fileURL_, error);
  if (autosaveURL_.empty()) {
    std::error_code ignored;
    fs::create_directories(autosaveFolder(), ignored);
    autosaveURL_ = autosaveFolder() / (VXLController::UUIDString() + ".graphml");
    autosaveLock_ = app::claimAutosave(autosaveURL_);
  }
  if (!writeNetwork(autosaveURL_, error)) return false;
  app::writeRecoveryName(autosaveURL_, displayName());
  return true;
}

void QLOComplexNetwork::adoptAutosave(const fs::path& file, std::unique_ptr<QLockFile> lock) {
  removeAutosave();
  autosaveURL_ = file;
  autosaveLock_ = std::move(lock);
}

void QLOComplexNetwork::setAutosaveInterval(std::chrono::milliseconds interval) {
  autosaveInterval_ = interval;
  if (autosaveTimer_) autosaveTimer_->setInterval(interval);
}

fs::path QLOComplexNetwork::autosaveFolder() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  return fs::path(data.toStdString()) / "autosave";
}

void QLOComplexNetwork::removeAutosave() {
  if (autosaveURL_.empty()) return;
  app::removeAutosave(autosaveURL_, autosaveLock_);
  autosaveURL_.clear();
}

void QLOComplexNetwork::notifyState() {
  if (stateListener_) stateListener_();
}
