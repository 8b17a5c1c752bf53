#pragma once
// What the window tests share: one QApplication and one document controller
// (with the real windows, panels and alerts) for the whole program, and a
// wait that processes events until a condition holds.
#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <chrono>

#include "app/QLODocumentController.h"
#include "ui/documentui.h"

namespace uitest {

inline void ensureApplication() {
  static int argc = 1;
  static char name[] = "ui_gl_tests";
  static char* argv[] = {name, nullptr};
  static QApplication* application = [] {
    auto* made = new QApplication(argc, argv);
    // Recent files and autosaves stay out of the user's own folders.
    QStandardPaths::setTestModeEnabled(true);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QStringLiteral(PLEXVIEW_TEST_OUTPUT "/settings"));
    return made;
  }();
  (void)application;
}

// The program's document controller, as the plexview program sets it up.
inline QLODocumentController& documents() {
  ensureApplication();
  static QLODocumentController* controller = [] {
    auto* made = new QLODocumentController;
    ui::installDocumentUi(*made);
    return made;
  }();
  return *controller;
}

// Processes events until `done()` holds, giving up after `limit` (a bound on
// a hang, not a speed requirement); answers done().
template <typename Done>
bool processEventsUntil(Done done, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
  QElapsedTimer clock;
  clock.start();
  while (!done() && clock.elapsed() < limit.count()) QTest::qWait(20);
  return done();
}

// Chooses `path` in a file dialog as a user does: types it into the name
// field and presses the default button. (QFileDialog::selectFile leaves the
// field alone while it has the keyboard focus, which depends on timing.)
inline void chooseInFileDialog(QFileDialog* dialog, const QString& path) {
  if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    name->setText(path);
  } else {
    dialog->selectFile(path);
  }
  static_cast<QDialog*>(dialog)->accept();
}

}  // namespace uitest
