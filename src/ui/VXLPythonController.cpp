#include "ui/VXLPythonController.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QUrl>

#include "quillo/fileio.h"
#include "ui/PathControl.h"

namespace {

QString expandHome(const std::string& folder) {
  QString expanded = QString::fromStdString(folder);
  if (expanded == QLatin1String("~") || expanded.startsWith(QLatin1String("~/"))) {
    expanded.replace(0, 1, QDir::homePath());
  }
  return expanded;
}

// A window-modal, non-native file dialog on `parent`.
void runFileDialog(QWidget* parent, const VXLPythonController::PanelRequest& request,
                   VXLPythonController::PanelCompletion completion) {
  auto* dialog = new QFileDialog(parent);
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setDirectory(request.startFolder);
  if (request.kind == VXLPythonController::PanelKind::Open) {
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(QObject::tr("Scripts (*.py *.txt *.TEXT)"));
  } else {
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
  }
  if (!request.proposedFile.isEmpty()) dialog->selectFile(request.proposedFile);
  QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, completion](int result) {
    const QStringList chosen = dialog->selectedFiles();
    const bool ok = result == QDialog::Accepted && !chosen.isEmpty();
    completion(ok ? VXLPythonController::kOK : 0, ok ? chosen.first() : QString());
  });
  dialog->open();
}

}  // namespace

void VXLPythonController::showResult(const std::string& text) {
  if (!resultText || text.empty()) return;
  resultText->moveCursor(QTextCursor::End);
  resultText->insertPlainText(QString::fromStdString(text));
  resultText->moveCursor(QTextCursor::End);
}

void VXLPythonController::execute() {
  if (!pyInterpreter.runCode || !textScript) return;
  showResult(pyInterpreter.runCode(textScript->toPlainText().toStdString()));
}

void VXLPythonController::reset() {
  if (pyInterpreter.resetBuffer) pyInterpreter.resetBuffer();
}

void VXLPythonController::evaluate() {
  if (!pyInterpreter.evaluate || !textEvaluate) return;
  const std::string line = textEvaluate->text().toStdString();
  textEvaluate->clear();
  showResult(pyInterpreter.evaluate(line));
}

VXLPythonController::PanelRequest VXLPythonController::panelRequest(PanelKind kind) {
  if (!currentFolder_) currentFolder_ = kHomeFolder;
  PanelRequest request;
  request.kind = kind;
  request.startFolder = expandHome(*currentFolder_);
  request.proposedFile = QString::fromStdString(currentFile_.value_or(std::string()));
  return request;
}

void VXLPythonController::runPanel(const PanelRequest& request, PanelCompletion completion) {
  if (filePanel_) {
    filePanel_(request, std::move(completion));
  } else {
    runFileDialog(window, request, std::move(completion));
  }
}

void VXLPythonController::takeChosenFile(const QString& chosen) {
  const QFileInfo info(chosen);
  currentFile_ = info.absoluteFilePath().toStdString();
  currentFolder_ = info.absolutePath().toStdString();
  if (pathControl) pathControl->setPath(info.absoluteFilePath());
}

void VXLPythonController::openFile() {
  runPanel(panelRequest(PanelKind::Open), [this](int result, const QString& chosen) {
    if (result != kOK) return;
    QFile file(chosen);
    if (!file.open(QIODevice::ReadOnly)) {
      showResult("Could not open " + chosen.toStdString() + ": " +
                 file.errorString().toStdString() + "\n");
      return;
    }
    if (textScript) textScript->setPlainText(QString::fromUtf8(file.readAll()));
    takeChosenFile(chosen);
  });
}

void VXLPythonController::saveFile() {
  runPanel(panelRequest(PanelKind::Save), [this](int result, const QString& chosen) {
    if (result != kOK || !textScript) return;
    // Through a temporary file renamed over the target: a failed save keeps
    // the earlier file whole.
    std::string error;
    const std::string text = textScript->toPlainText().toUtf8().toStdString();
    if (!quillo::writeWholeFile(chosen.toStdString(), text, WriteMode::Atomic, &error)) {
      showResult("Could not save " + chosen.toStdString() + ": " + error + "\n");
      return;
    }
    takeChosenFile(chosen);
  });
}

void VXLPythonController::openInFinder() {
  if (pathControl && !pathControl->clickedPath().isEmpty()) {
    ui::revealInFileManager(pathControl->clickedPath());
  }
}

namespace ui {

void revealInFileManager(const QString& path) {
  const QFileInfo info(path);
  const QString folder = info.isRoot() ? info.absoluteFilePath() : info.absolutePath();
  QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

}  // namespace ui
