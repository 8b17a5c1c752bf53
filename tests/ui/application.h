#pragma once
// What the window tests share: one QApplication and one document controller
// (with the real windows, panels and alerts) for the whole program, waits on
// events and dialogs, menu look-ups and file contents.
#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "../support/events.h"
#include "../support/files.h"
#include "app/QLODocumentController.h"
#include "ui/DocumentWindow.h"
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

using testing_support::processEventsUntil;

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

// How many pixels of `image` within `area` (all of it if empty) pass `test`.
template <class Test>
int countPixels(const QImage& image, Test test, QRect area = {}) {
  if (area.isEmpty()) area = image.rect();
  int n = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) n += test(image.pixel(x, y)) ? 1 : 0;
  }
  return n;
}

using testing_support::contentsOf;

// The visible top-level widget of this type and object name, or null.
template <class T>
T* visible(const QString& name) {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* found = qobject_cast<T*>(widget);
    if (found && found->isVisible() && found->objectName() == name) return found;
  }
  return nullptr;
}

// Runs `answer` on the dialog once it shows (from inside its own event loop
// when it runs modally).
template <class T>
void whenShown(const QString& name, std::function<void(T*)> answer) {
  auto* timer = new QTimer;
  timer->setInterval(20);
  QObject::connect(timer, &QTimer::timeout, [timer, name, answer] {
    if (T* dialog = visible<T>(name)) {
      timer->stop();
      timer->deleteLater();
      answer(dialog);
    }
  });
  timer->start();
}

// The item of this text (without its '&') in `menu`, or null.
inline QAction* findAction(const QMenu* menu, const QString& text) {
  for (QAction* action : menu->actions()) {
    if (action->text().remove('&') == text) return action;
  }
  return nullptr;
}

// The menu of this title in `bar`, or null.
inline QMenu* findMenu(const QMenuBar* bar, const QString& title) {
  for (QAction* action : bar->actions()) {
    if (action->menu() && action->text().remove('&') == title) return action->menu();
  }
  return nullptr;
}

// Closes every document window without a question, whatever its state.
inline void closeAllDocuments() {
  for (const auto& document : std::vector(documents().documents())) {
    document->updateChangeCount(QLOComplexNetwork::Change::Cleared);
    if (auto* window = ui::DocumentWindow::windowFor(document.get())) {
      window->document()->setAutosaveInterval(std::chrono::hours(1));
      window->close();
    }
  }
  processEventsUntil([] { return documents().documents().empty(); });
}

}  // namespace uitest
