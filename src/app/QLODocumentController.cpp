#include "app/QLODocumentController.h"

#include <QFutureWatcher>
#include <QSettings>
#include <QStringList>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <optional>

#include "app/doctypes.h"
#include "quillo/log.h"

namespace fs = std::filesystem;

namespace {

std::atomic<QLODocumentController*> sharedController{nullptr};

const QString kRecentKey = QStringLiteral("recentDocuments");

DocumentError readFailure(const ReadError& reason) {
  return DocumentError{std::string(kOSStatusErrorDomain), -4, reason};
}

// What reading a file for a new document came to.
struct NewRead {
  bool ok = false;
  ReadError reason;
};

}  // namespace

// A file read for the current window: its type (when it could be told) and
// the network read with the reader of that type.
struct QLODocumentController::FileRead {
  std::optional<std::string> type;
  QLONetwork::Ptr network;
  ReadError error;
};

QLODocumentController::QLODocumentController() {
  QLODocumentController* none = nullptr;
  sharedController.compare_exchange_strong(none, this);
}

QLODocumentController::~QLODocumentController() {
  QLODocumentController* self = this;
  sharedController.compare_exchange_strong(self, nullptr);
  for (const auto& document : documents_) document->setCloseListener(nullptr);
}

QLODocumentController* QLODocumentController::sharedDocumentController() {
  return sharedController.load();
}

QLOComplexNetwork::Ptr QLODocumentController::newDocument() {
  openMajorComponent_ = false;
  auto document = std::make_shared<QLOComplexNetwork>();
  addDocument(document);
  if (windowFactory_) windowFactory_(document, Display::Show);
  return document;
}

void QLODocumentController::openDocument() {
  const std::vector<std::string> types{
      std::string(app::kComplexNetworkType), std::string(app::kPajekNetworkType),
      std::string(app::kGmlNetworkType), std::string(app::kGexfNetworkType),
      std::string(app::kEdgeListType)};
  beginOpenPanel(types, [this](int result, const std::vector<fs::path>& files) {
    if (result != kOK) return;
    for (const fs::path& file : files) openDocumentInBackground(file, Display::Show);
  });
}

void QLODocumentController::beginOpenPanel(
    const std::vector<std::string>& types,
    std::function<void(int, const std::vector<fs::path>&)> completion) {
  if (!openPanel_) {
    if (completion) completion(0, {});
    return;
  }
  openPanel_(types, isMajorComponentOnlySelected(),
             [this, completion = std::move(completion)](const OpenPanelResult& answer) {
               if (answer.result == kOK) openMajorComponent_ = answer.checkboxOn;
               if (completion) completion(answer.result, answer.files);
             });
}

QLODocumentController::FileRead QLODocumentController::readForCurrentWindow(const fs::path& url) {
  FileRead read;
  ReadError typeError;
  read.type = app::typeOfFile(url, typeError);
  if (!read.type) {
    // The type cannot be told when the file cannot be read at all.
    quillo::logLine("ERROR: " + typeError.describe());
    read.error = typeError;
    return read;
  }
  const std::string& type = *read.type;
  if (app::typeConformsTo(type, app::kComplexNetworkType) || app::isImportedNetworkType(type)) {
    read.network = QLONetwork::initWithContentsOfURL(url, &read.error);
  } else if (app::typeConformsTo(type, app::kPajekNetworkType)) {
    read.network = QLONetwork::initWithContentsOfPajekURL(url, &read.error);
  } else {
    read.error = ReadError{url.string(), 0, "not a network file"};
  }
  return read;
}

QLOComplexNetwork::Ptr QLODocumentController::loadIntoWindow(const QLOComplexNetwork::Ptr& document,
                                                             const fs::path& url,
                                                             const FileRead& read,
                                                             DocumentError* error) {
  if (!read.network || !read.type) {
    showReadFailure(url, read.error);
    if (error) *error = readFailure(read.error);
    return nullptr;
  }
  document->setFileType(*read.type);
  document->setNetworkToBeOppened(read.network);
  document->setIsMajorComponentOnlySelected(isMajorComponentOnlySelected());
  if (QLOComplexNetwork::savesInPlace(url, document->fileType(), *read.network)) {
    document->setFileURL(url);
  } else {
    // Untitled, named after the file: saving never writes over a Pajek file,
    // another tool's GraphML file or a compressed file.
    document->becomeUntitledCopyOf(url);
  }
  document->loadOpennedNetwork();
  // The window now shows the file as it is on disk.
  document->updateChangeCount(QLOComplexNetwork::Change::Cleared);
  noteNewRecentDocumentURL(url);
  return document;
}

bool QLODocumentController::readNewDocument(QLOComplexNetwork& document, const fs::path& url,
                                            ReadError& reason) {
  const auto type = app::typeOfFile(url, reason);
  if (!type) return false;
  document.setFileURL(url);
  document.setFileType(*type);
  DocumentError error;
  if (document.readFromURL(url, *type, &error)) return true;
  reason = document.readError();
  return false;
}

QLOComplexNetwork::Ptr QLODocumentController::finishNewDocument(
    const QLOComplexNetwork::Ptr& document, const fs::path& url, Display display, bool read,
    const ReadError& reason, DocumentError* error) {
  if (!read) {
    showReadFailure(url, reason);
    if (error) *error = readFailure(reason);
    return nullptr;
  }
  addDocument(document);
  noteNewRecentDocumentURL(url);
  if (windowFactory_) windowFactory_(document, display);
  return document;
}

bool QLODocumentController::mayLoadIntoCurrent(const QLOComplexNetwork::Ptr& current) const {
  return current && !current->isClosed() && current->isDefaultNetwork() &&
         std::find(loadingInto_.begin(), loadingInto_.end(), current.get()) == loadingInto_.end();
}

void QLODocumentController::showReadFailure(const fs::path& url, const ReadError& reason) const {
  const std::string message =
      "The file \u201C" + url.filename().string() + "\u201D could not be opened.";
  quillo::logLine(message + " " + reason.describe());
  if (alert_) alert_(message, reason.describe());
}

QLOComplexNetwork::Ptr QLODocumentController::documentShowing(const fs::path& url) const {
  for (const QLOComplexNetwork::Ptr& document : documents_) {
    std::error_code error;
    if (!document->fileURL().empty() && fs::equivalent(document->fileURL(), url, error)) {
      return document;
    }
  }
  return nullptr;
}

void QLODocumentController::present(const QLOComplexNetwork::Ptr& document) {
  setCurrentDocument(document.get());
  if (presenter_) presenter_(*document);
}

QLOComplexNetwork::Ptr QLODocumentController::openDocumentWithContentsOfURL(const fs::path& url,
                                                                            Display display,
                                                                            DocumentError* error) {
  if (auto open = documentShowing(url)) {
    present(open);
    return open;
  }
  const QLOComplexNetwork::Ptr current = currentDocument();
  if (mayLoadIntoCurrent(current)) {
    return loadIntoWindow(current, url, readForCurrentWindow(url), error);
  }
  auto document = std::make_shared<QLOComplexNetwork>();
  ReadError reason;
  const bool read = readNewDocument(*document, url, reason);
  return finishNewDocument(document, url, display, read, reason, error);
}

void QLODocumentController::openDocumentInBackground(const fs::path& url, Display display,
                                                     OpenCompletion completion) {
  if (auto open = documentShowing(url)) {
    present(open);
    if (completion) completion(open);
    return;
  }
  if (!context_) context_ = std::make_unique<QObject>();
  // Shared so that the hand-back can end the progress before an alert shows.
  auto progress = std::make_shared<std::unique_ptr<Progress>>(
      progressFactory_ ? progressFactory_(url.filename().string()) : nullptr);
  ++pendingOpens_;

  const QLOComplexNetwork::Ptr current = currentDocument();
  if (mayLoadIntoCurrent(current)) {
    loadingInto_.push_back(current.get());
    auto* watcher = new QFutureWatcher<FileRead>(context_.get());
    QObject::connect(watcher, &QFutureWatcherBase::finished, context_.get(), [=, this] {
      const FileRead read = watcher->result();
      watcher->deleteLater();
      progress->reset();
      --pendingOpens_;
      std::erase(loadingInto_, current.get());
      // The window may have closed while the file was read.
      const bool open =
          std::find(documents_.begin(), documents_.end(), current) != documents_.end();
      const auto result = open ? loadIntoWindow(current, url, read, nullptr) : nullptr;
      if (completion) completion(result);
    });
    watcher->setFuture(QtConcurrent::run([url] { return readForCurrentWindow(url); }));
    return;
  }

  auto document = std::make_shared<QLOComplexNetwork>();
  auto* watcher = new QFutureWatcher<NewRead>(context_.get());
  QObject::connect(watcher, &QFutureWatcherBase::finished, context_.get(), [=, this] {
    const NewRead read = watcher->result();
    watcher->deleteLater();
    progress->reset();
    --pendingOpens_;
    const auto result = finishNewDocument(document, url, display, read.ok, read.reason, nullptr);
    if (completion) completion(result);
  });
  // Nobody else sees the new document until it is handed back.
  watcher->setFuture(QtConcurrent::run([document, url] {
    NewRead read;
    read.ok = readNewDocument(*document, url, read.reason);
    return read;
  }));
}

std::vector<app::RecoverableDocument> QLODocumentController::recoverableDocuments() const {
  return app::recoverableDocuments(QLOComplexNetwork::autosaveFolder());
}

QLOComplexNetwork::Ptr QLODocumentController::reopenRecoveredDocument(const fs::path& file,
                                                                      Display display,
                                                                      DocumentError* error) {
  ReadError reason{file.string(), 0, "another running Plexview holds this autosave"};
  std::unique_ptr<QLockFile> lock = app::claimAutosave(file);
  QLONetwork::Ptr network = lock ? QLONetwork::initWithContentsOfURL(file, &reason) : nullptr;
  if (!network) {
    showReadFailure(file, reason);
    if (error) *error = readFailure(reason);
    return nullptr;
  }
  auto document = std::make_shared<QLOComplexNetwork>();
  document->setNetworkToBeOppened(network);
  document->setDisplayName(app::readRecoveryName(file));
  document->adoptAutosave(file, std::move(lock));
  addDocument(document);
  if (windowFactory_) windowFactory_(document, display);
  // Nothing of it is saved anywhere but in the recovery folder.
  document->updateChangeCount(QLOComplexNetwork::Change::Done);
  return document;
}

std::size_t QLODocumentController::offerRecovery() {
  const std::vector<app::RecoverableDocument> found = recoverableDocuments();
  if (found.empty() || !recoveryPanel_) return 0;
  recoveryPanel_(found, [this, found](bool reopen) {
    if (!reopen) return;
    for (const auto& document : found)
      reopenRecoveredDocument(document.file, Display::Show, nullptr);
  });
  return found.size();
}

QLOComplexNetwork::Ptr QLODocumentController::currentDocument() const {
  for (const auto& document : documents_) {
    if (document.get() == current_) return document;
  }
  return nullptr;
}

void QLODocumentController::setCurrentDocument(const QLOComplexNetwork* document) {
  const bool known = std::any_of(documents_.begin(), documents_.end(),
                                 [document](const auto& d) { return d.get() == document; });
  if (known) current_ = document;
}

void QLODocumentController::addDocument(const QLOComplexNetwork::Ptr& document) {
  if (!document) return;
  documents_.push_back(document);
  current_ = document.get();
  document->setCloseListener([this, raw = document.get()] { removeDocument(raw); });
}

void QLODocumentController::removeDocument(const QLOComplexNetwork* document) {
  std::erase_if(documents_, [document](const auto& d) { return d.get() == document; });
  if (current_ == document) current_ = documents_.empty() ? nullptr : documents_.back().get();
}

std::vector<fs::path> QLODocumentController::recentDocumentURLs() const {
  std::vector<fs::path> urls;
  for (const QString& path : QSettings().value(kRecentKey).toStringList()) {
    urls.emplace_back(path.toStdString());
  }
  return urls;
}

void QLODocumentController::noteNewRecentDocumentURL(const fs::path& url) {
  std::error_code ignored;
  const fs::path absolute = fs::absolute(url, ignored);
  const QString path = QString::fromStdString((absolute.empty() ? url : absolute).string());
  QSettings settings;
  QStringList recent = settings.value(kRecentKey).toStringList();
  recent.removeAll(path);
  recent.prepend(path);
  while (recent.size() > static_cast<qsizetype>(kMaxRecentDocuments)) recent.removeLast();
  settings.setValue(kRecentKey, recent);
}

void QLODocumentController::clearRecentDocuments() {
  QSettings().remove(kRecentKey);
}
