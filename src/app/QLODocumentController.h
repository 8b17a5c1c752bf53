#pragma once
// The program's document controller: the open documents and the front one,
// the open panel's "major connected component" choice, opening files (into
// the untouched start-up window when there is one, else into a new window),
// new documents and the recent files.
//
// Windows, the open panel, alerts and the progress shown while a large file
// is read are made by the window layer, which hands them in as functions;
// without them the controller still keeps its documents (tests use fakes).
#include <QObject>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/QLOComplexNetwork.h"
#include "app/recovery.h"

class QLODocumentController {
 public:
  enum class Display { Show, DontShow };
  // The open panel's answer: kOK or anything else, the accessory check
  // box's state and the chosen files.
  static constexpr int kOK = 1;
  struct OpenPanelResult {
    int result = 0;
    bool checkboxOn = false;
    std::vector<std::filesystem::path> files;
  };
  using OpenPanel = std::function<void(const std::vector<std::string>& types, bool checkboxOn,
                                       std::function<void(const OpenPanelResult&)> completion)>;
  // Builds and shows (or not) the window of a document.
  using WindowFactory = std::function<void(const QLOComplexNetwork::Ptr&, Display)>;
  // Brings the window of an open document to the front.
  using WindowPresenter = std::function<void(const QLOComplexNetwork&)>;
  // A modal alert: the message and the detail below it.
  using Alert = std::function<void(const std::string& message, const std::string& detail)>;
  // Something shown while a file is read; it goes away when destroyed.
  class Progress {
   public:
    virtual ~Progress() = default;
  };
  using ProgressFactory = std::function<std::unique_ptr<Progress>(const std::string& fileName)>;
  // Called with the document a background open ended in, null on failure.
  using OpenCompletion = std::function<void(const QLOComplexNetwork::Ptr&)>;

  // Offers autosaves left by an earlier run; calls back with true to reopen
  // them (false leaves them where they are).
  using RecoveryPanel = std::function<void(const std::vector<app::RecoverableDocument>&,
                                           std::function<void(bool reopen)>)>;

  static constexpr std::size_t kMaxRecentDocuments = 10;

  // The first controller made in the process becomes the shared one.
  QLODocumentController();
  ~QLODocumentController();
  QLODocumentController(const QLODocumentController&) = delete;
  QLODocumentController& operator=(const QLODocumentController&) = delete;
  static QLODocumentController* sharedDocumentController();

  void setWindowFactory(WindowFactory factory) { windowFactory_ = std::move(factory); }
  void setOpenPanel(OpenPanel panel) { openPanel_ = std::move(panel); }
  void setAlert(Alert alert) { alert_ = std::move(alert); }
  void setWindowPresenter(WindowPresenter presenter) { presenter_ = std::move(presenter); }
  void setProgressFactory(ProgressFactory factory) { progressFactory_ = std::move(factory); }
  void setRecoveryPanel(RecoveryPanel panel) { recoveryPanel_ = std::move(panel); }

  bool isMajorComponentOnlySelected() const { return openMajorComponent_.load(); }

  // An untitled document in a new window; the check box choice goes back
  // to off.
  QLOComplexNetwork::Ptr newDocument();
  // Runs the open panel; each file chosen opens in the background.
  void openDocument();
  // Runs the open panel with the check box; OK records the check box's
  // state as the major-component choice, any other result keeps it.
  void beginOpenPanel(
      const std::vector<std::string>& types,
      std::function<void(int result, const std::vector<std::filesystem::path>& files)> completion);
  // Opens `url` now, on the calling thread: into the current document when
  // it still shows its start-up network, else into a new document and
  // window. A file that cannot be read raises an alert naming it and the
  // reason, changes nothing and answers null (with `error`, when given,
  // domain kOSStatusErrorDomain, code -4 and the reader's reason). Another
  // tool's GraphML file, like a Pajek file, opens untitled. A file an open
  // document already shows is not read again (two windows would save over
  // each other): that document comes to the front and is answered.
  QLOComplexNetwork::Ptr openDocumentWithContentsOfURL(const std::filesystem::path& url,
                                                       Display display, DocumentError* error);
  // The same, with the file read on a worker thread while the progress is
  // shown; the rest happens on the main thread when the read is done.
  void openDocumentInBackground(const std::filesystem::path& url, Display display,
                                OpenCompletion completion = {});
  // --- Recovery after a crash ---
  // Autosaves in the recovery folder that no running program holds.
  std::vector<app::RecoverableDocument> recoverableDocuments() const;
  // Opens one of them as an untitled, edited document under its old name;
  // the autosave becomes the new document's own. Null (with the reason in
  // `error`, and an alert) when it cannot be read or another program holds it.
  QLOComplexNetwork::Ptr reopenRecoveredDocument(const std::filesystem::path& file, Display display,
                                                 DocumentError* error);
  // When there are recoverable autosaves, shows the recovery panel and
  // reopens them if the user says so. Answers how many were offered.
  std::size_t offerRecovery();

  // Background opens not yet finished.
  int pendingOpens() const { return pendingOpens_; }

  // --- Documents ---
  const std::vector<QLOComplexNetwork::Ptr>& documents() const { return documents_; }
  QLOComplexNetwork::Ptr currentDocument() const;
  void setCurrentDocument(const QLOComplexNetwork* document);
  // Added documents become current; a closed document removes itself.
  void addDocument(const QLOComplexNetwork::Ptr& document);
  void removeDocument(const QLOComplexNetwork* document);

  // --- Recent files (kept in QSettings), newest first ---
  std::vector<std::filesystem::path> recentDocumentURLs() const;
  void noteNewRecentDocumentURL(const std::filesystem::path& url);
  void clearRecentDocuments();

 private:
  struct FileRead;
  static FileRead readForCurrentWindow(const std::filesystem::path& url);
  QLOComplexNetwork::Ptr loadIntoWindow(const QLOComplexNetwork::Ptr& document,
                                        const std::filesystem::path& url, const FileRead& read,
                                        DocumentError* error);
  static bool readNewDocument(QLOComplexNetwork& document, const std::filesystem::path& url,
                              ReadError& reason);
  QLOComplexNetwork::Ptr finishNewDocument(const QLOComplexNetwork::Ptr& document,
                                           const std::filesystem::path& url, Display display,
                                           bool read, const ReadError& reason,
                                           DocumentError* error);
  bool mayLoadIntoCurrent(const QLOComplexNetwork::Ptr& current) const;
  void showReadFailure(const std::filesystem::path& url, const ReadError& reason) const;

  std::atomic<bool> openMajorComponent_{false};
  std::vector<QLOComplexNetwork::Ptr> documents_;
  const QLOComplexNetwork* current_ = nullptr;
  // Documents a background open will load into: no second open goes there.
  std::vector<const QLOComplexNetwork*> loadingInto_;
  int pendingOpens_ = 0;

  WindowFactory windowFactory_;
  WindowPresenter presenter_;
  // The open document saved as `url` (the same file, however named), or null.
  QLOComplexNetwork::Ptr documentShowing(const std::filesystem::path& url) const;
  // Makes it current and brings its window to the front.
  void present(const QLOComplexNetwork::Ptr& document);
  OpenPanel openPanel_;
  Alert alert_;
  ProgressFactory progressFactory_;
  RecoveryPanel recoveryPanel_;
  // Parent of the watchers that hand background reads back to this thread.
  std::unique_ptr<QObject> context_;
};
