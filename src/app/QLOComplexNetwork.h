#pragma once
// The document of one window: the network read from a file until the window's
// controller installs it, the file's location, name and type, whether the
// window's content differs from what was last saved, saving as GraphML and
// autosaving.
//
// A document may be read (readFromURL) on a worker thread before anyone else
// sees it; everything else runs on the main thread.
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/VXLController.h"
#include "plexora/QLONetwork.h"
#include "quillo/ReadError.h"

class QLockFile;
class QTimer;

// The error handed to a caller that asked for one.
struct DocumentError {
  std::string domain;
  int code = 0;
  ReadError reason;  // the reader's account: file, line and what was wrong
};
inline constexpr std::string_view kOSStatusErrorDomain = "NSOSStatusErrorDomain";

// What an export action answers: done, or a message saying why not.
struct ExportResult {
  bool done = false;
  std::string message;
};

class QLOComplexNetwork {
 public:
  using Ptr = std::shared_ptr<QLOComplexNetwork>;
  enum class Change { Done, Cleared };

  QLOComplexNetwork();
  ~QLOComplexNetwork();
  QLOComplexNetwork(const QLOComplexNetwork&) = delete;
  QLOComplexNetwork& operator=(const QLOComplexNetwork&) = delete;

  // --- Fields ---
  VXLController* networkController() const { return networkController_; }
  void setNetworkController(VXLController* controller) { networkController_ = controller; }
  QLONetwork::Ptr networkToBeOppened() const { return networkToBeOppened_.load(); }
  void setNetworkToBeOppened(QLONetwork::Ptr network) {
    networkToBeOppened_.store(std::move(network));
  }
  bool isMajorComponentOnlySelected() const { return isMajorComponentOnlySelected_; }
  void setIsMajorComponentOnlySelected(bool value) { isMajorComponentOnlySelected_ = value; }

  // --- Reading and installing ---
  static std::string windowNibName() { return "QLOComplexNetwork"; }
  // The window (its controller connected) has been built: install what was
  // read, and from now on count the window's changes as edits.
  void windowControllerDidLoadNib();
  // Reads the network of `url` with the reader of `type`. Without `error`
  // this answers true whatever happened; with it, false (domain
  // kOSStatusErrorDomain, code -4, and the reader's reason) when nothing was
  // read; readError() says why too. A GraphML file that Plexview did not
  // save as its document, like a Pajek file, opens untitled and named after
  // the file, so that saving (and autosaving) never writes over it.
  bool readFromURL(const std::filesystem::path& url, std::string_view type, DocumentError* error);
  const ReadError& readError() const { return readError_; }
  void loadOpennedNetwork();
  // True while the window shows the network it generated at start-up.
  bool isDefaultNetwork() const { return networkToBeOppened() == nullptr; }
  static std::string defaultDraftName() { return "Random Network"; }
  static bool autosavesInPlace() { return true; }
  bool shouldRunSavePanelWithAccessoryView() const { return false; }

  // --- Closing and menu items ---
  // Stops the window's controller (and so its layout) and forgets the
  // untitled autosave; later calls do nothing.
  void close();
  bool isClosed() const { return closed_; }
  // Whether a menu item of this action is enabled; `usual` is what the
  // window would decide on its own.
  bool validateUserInterfaceItem(std::string_view action, bool usual) const;
  ExportResult exportToPDF();
  ExportResult exportTo3D();
  ExportResult exportNetworkToPajekFormat();
  ExportResult exportNetworkToEdgesFormat();
  ExportResult exportNetworkToGexfFormat();
  ExportResult exportNetworkToGmlFormat();

  // --- Location, name, type ---
  const std::filesystem::path& fileURL() const { return fileURL_; }
  void setFileURL(const std::filesystem::path& url);
  // The name set, else the file name, else defaultDraftName().
  std::string displayName() const;
  void setDisplayName(const std::string& name);
  const std::string& fileType() const { return fileType_; }
  void setFileType(const std::string& type) { fileType_ = type; }

  // --- Edits ---
  void updateChangeCount(Change change);
  int changeCount() const { return changeCount_; }
  // The window's layout has moved the vertices.
  void noteLayoutRan();
  // The controller asked for a panel refresh; a settings change (or a
  // network installed) once the window has loaded is an edit.
  void controllerDidRefresh(VXLController::Panel panel);
  // Changed since the last save; never for an untouched start-up window.
  bool isDocumentEdited() const;
  // Called when the name, location or edited state may have changed.
  void setStateListener(std::function<void()> listener) { stateListener_ = std::move(listener); }
  // Called once by close().
  void setCloseListener(std::function<void()> listener) { closeListener_ = std::move(listener); }

  // Leaves the document without a location, named after `url` and of the
  // native type: its first save asks where.
  void becomeUntitledCopyOf(const std::filesystem::path& url);
  // Whether a file read as `network` of `type` may be saved back in place:
  // only Plexview's own uncompressed GraphML documents are. A Pajek file,
  // another tool's GraphML file or a compressed file is never written over.
  static bool savesInPlace(const std::filesystem::path& url, std::string_view type,
                           const QLONetwork& network);

  // --- Saving ---
  // Writes the shown network (its "Position" updated from the layout) as
  // GraphML through a temporary file renamed over `url`: on failure the old
  // file stays and the reason is in `error`. On success the document is at
  // `url`, of the native type and not edited.
  bool saveToURL(const std::filesystem::path& url, std::string* error);
  // Saves an edited document now: in place when it has a location (only
  // documents Plexview saved have one), else to autosavedContentsFileURL()
  // in the recovery folder. True when nothing needed saving.
  bool autosave(std::string* error = nullptr);
  void setAutosaveInterval(std::chrono::milliseconds interval);
  // Where an untitled document's autosave is; empty until the first one.
  const std::filesystem::path& autosavedContentsFileURL() const { return autosaveURL_; }
  static std::filesystem::path autosaveFolder();
  // Takes over an autosave left by an earlier run (and its lock) as this
  // untitled document's own.
  void adoptAutosave(const std::filesystem::path& file, std::unique_ptr<QLockFile> lock);

 private:
  QLONetwork::Ptr shownNetwork() const;
  bool writeNetwork(const std::filesystem::path& url, std::string* error);
  void removeAutosave();
  void notifyState();

  VXLController* networkController_ = nullptr;
  std::atomic<QLONetwork::Ptr> networkToBeOppened_;
  bool isMajorComponentOnlySelected_ = false;
  ReadError readError_;

  std::filesystem::path fileURL_;
  std::string displayName_;
  std::string fileType_;
  int changeCount_ = 0;
  bool layoutRan_ = false;
  bool loaded_ = false;
  bool installing_ = false;
  bool closed_ = false;
  std::function<void()> stateListener_;
  std::function<void()> closeListener_;

  std::unique_ptr<QTimer> autosaveTimer_;
  std::chrono::milliseconds autosaveInterval_{60000};
  std::filesystem::path autosaveURL_;
  std::unique_ptr<QLockFile> autosaveLock_;
};
