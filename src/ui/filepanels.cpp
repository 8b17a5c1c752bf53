#include "ui/filepanels.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include "ui/lastfolder.h"

namespace ui {

namespace {

QString toQString(const std::string& text) {
  return QString::fromStdString(text);
}

}  // namespace

QFileDialog* makeFilePanel(QWidget* parent, const VXLController::FilePanelRequest& request) {
  auto* panel = new QFileDialog(parent, toQString(request.title));
  panel->setObjectName(QStringLiteral("filePanel"));
  panel->setOption(QFileDialog::DontUseNativeDialog);
  panel->setWindowModality(Qt::WindowModal);
  const bool saving = request.mode == VXLController::FilePanelRequest::Mode::Save;
  panel->setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  // Saving may name a new file; opening takes one existing file, no folder.
  panel->setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  // A dialog that is not read-only offers to make new folders.
  panel->setOption(QFileDialog::ReadOnly, false);
  rememberFolder(panel, request.folder.empty() ? QString() : toQString(request.folder.string()));
  if (!request.extension.empty()) {
    const QString extension = toQString(request.extension);
    panel->setNameFilter(QStringLiteral("%1 (*.%2)").arg(toQString(request.typeName), extension));
    panel->setDefaultSuffix(extension);
  }
  if (saving && !request.proposedName.empty()) panel->selectFile(toQString(request.proposedName));
  return panel;
}

VXLController::FilePanel filePanelRunner(QWidget* parent) {
  return [owner = QPointer<QWidget>(parent)](const VXLController::FilePanelRequest& request,
                                             VXLController::FilePanelCompletion done) {
    QFileDialog* panel = makeFilePanel(owner.data(), request);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(panel, &QDialog::finished, panel, [panel, done = std::move(done)](int result) {
      std::optional<std::filesystem::path> chosen;
      const QStringList files = panel->selectedFiles();
      if (result == QDialog::Accepted && !files.isEmpty()) {
        chosen = std::filesystem::path(files.first().toStdString());
      }
      if (done) done(chosen);
    });
    panel->open();
  };
}

VXLController::FileAlert fileAlertRunner(QWidget* parent) {
  return
      [owner = QPointer<QWidget>(parent)](const std::string& message, const std::string& detail) {
        auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Plexview"),
                                    toQString(message), QMessageBox::Ok, owner.data());
        box->setObjectName(QStringLiteral("fileAlert"));
        box->setInformativeText(toQString(detail));
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setWindowModality(Qt::WindowModal);
        box->open();
      };
}

}  // namespace ui
