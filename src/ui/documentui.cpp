#include "ui/documentui.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

#include "app/QLODocumentController.h"
#include "ui/DocumentWindow.h"
#include "ui/openpanel.h"

namespace ui {

namespace {

// Shown only when reading takes longer than this.
constexpr int kProgressDelayMilliseconds = 300;

// A busy indicator over the front window; the window stays usable. The
// window may close (and take the dialog with it) before the read ends.
class OpeningProgress : public QLODocumentController::Progress {
 public:
  OpeningProgress(QWidget* parent, const std::string& fileName)
      : dialog_(new QProgressDialog(parent)) {
    dialog_->setObjectName(QStringLiteral("openingProgress"));
    dialog_->setWindowModality(Qt::NonModal);
    dialog_->setLabelText(QObject::tr("Opening %1\u2026").arg(QString::fromStdString(fileName)));
    dialog_->setCancelButton(nullptr);
    dialog_->setRange(0, 0);
    dialog_->setMinimumDuration(kProgressDelayMilliseconds);
    dialog_->setValue(0);
  }
  ~OpeningProgress() override { delete dialog_.data(); }

 private:
  QPointer<QProgressDialog> dialog_;
};

// The window of the current document, else the active window (null when
// there is neither).
QWidget* frontWindow(const QLODocumentController& documents) {
  const auto current = documents.currentDocument();
  if (QWidget* window = current ? DocumentWindow::windowFor(current.get()) : nullptr) {
    return window;
  }
  return QApplication::activeWindow();
}

// Lists the documents an earlier run left unsaved and asks whether to reopen
// them now. Either answer keeps the autosaves: "Not Now" offers them again at
// the next start.
void showRecoveryPanel(QWidget* parent, const std::vector<app::RecoverableDocument>& found,
                       const std::function<void(bool)>& answer) {
  auto* box = new QMessageBox(parent);
  box->setObjectName(QStringLiteral("recoveryPanel"));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setIcon(QMessageBox::Information);
  box->setWindowTitle(QStringLiteral("Plexview"));
  box->setText(QObject::tr("Plexview quit unexpectedly. %n unsaved document(s) can be reopened.",
                           nullptr, static_cast<int>(found.size())));
  QStringList names;
  for (const auto& document : found) names << QString::fromStdString(document.displayName);
  box->setInformativeText(names.join(QStringLiteral("\n")));
  QPushButton* reopen = box->addButton(QObject::tr("Reopen"), QMessageBox::AcceptRole);
  box->addButton(QObject::tr("Not Now"), QMessageBox::RejectRole);
  box->setDefaultButton(reopen);
  QObject::connect(box, &QMessageBox::finished, box,
                   [box, reopen, answer](int) { answer(box->clickedButton() == reopen); });
  box->open();
}

}  // namespace

void installDocumentUi(QLODocumentController& documents) {
  documents.setWindowFactory(
      [&documents](const QLOComplexNetwork::Ptr& document, QLODocumentController::Display display) {
        auto* window = new DocumentWindow(document, documents);
        window->setAttribute(Qt::WA_DeleteOnClose);
        if (display == QLODocumentController::Display::Show) window->show();
      });
  documents.setWindowPresenter([](const QLOComplexNetwork& document) {
    if (DocumentWindow* window = DocumentWindow::windowFor(&document)) {
      window->show();
      window->raise();
      window->activateWindow();
    }
  });
  documents.setOpenPanel(openPanelRunner([&documents] { return frontWindow(documents); }));
  documents.setAlert([&documents](const std::string& message, const std::string& detail) {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Plexview"),
                    QString::fromStdString(message), QMessageBox::Ok, frontWindow(documents));
    box.setObjectName(QStringLiteral("openFailedAlert"));
    box.setInformativeText(QString::fromStdString(detail));
    box.exec();
  });
  documents.setProgressFactory([&documents](const std::string& fileName) {
    return std::make_unique<OpeningProgress>(frontWindow(documents), fileName);
  });
  documents.setRecoveryPanel([&documents](const std::vector<app::RecoverableDocument>& found,
                                          std::function<void(bool)> answer) {
    showRecoveryPanel(frontWindow(documents), found, answer);
  });
  // Once the event loop runs (the first window is up), autosaves an earlier
  // run left behind are offered back.
  QTimer::singleShot(0, [&documents] { documents.offerRecovery(); });
}

}  // namespace ui
