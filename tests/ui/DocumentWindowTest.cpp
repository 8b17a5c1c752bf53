// Document windows from the program's document controller.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QSplitter>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "../support/networks.h"
#include "application.h"
#include "ui/NetworkViewWidget.h"
#include "ui/multilevelstart.h"
#include "ui/openpanel.h"

namespace {

namespace fs = std::filesystem;
using Display = QLODocumentController::Display;
using namespace uitest;

const fs::path kData = fs::path(PLEXVIEW_TEST_DATA) / "documents";
const fs::path kOutput = PLEXVIEW_TEST_OUTPUT;

class DocumentWindows : public ::testing::Test {
 protected:
  void SetUp() override { documents(); }
  void TearDown() override { closeAllDocuments(); }

  // A new start-up window, shown and exposed.
  ui::DocumentWindow* startUpWindow() {
    ui::DocumentWindow* window = ui::DocumentWindow::windowFor(documents().newDocument().get());
    EXPECT_TRUE(window && QTest::qWaitForWindowExposed(window));
    return window;
  }

  ui::DocumentWindow* openSynchronously(const fs::path& file) {
    const auto document = documents().openDocumentWithContentsOfURL(file, Display::Show, nullptr);
    ui::DocumentWindow* window = document ? ui::DocumentWindow::windowFor(document.get()) : nullptr;
    EXPECT_TRUE(window && QTest::qWaitForWindowExposed(window)) << file;
    return window;
  }
};

TEST_F(DocumentWindows, APajekFileOpensIntoTheStartUpWindowWithItsNameAndPicture) {
  ui::DocumentWindow* window = startUpWindow();
  ASSERT_TRUE(window);
  QLOComplexNetwork::Ptr opened;
  bool done = false;
  documents().openDocumentInBackground(kData / "two-parts.net", Display::Show,
                                       [&](const auto& document) {
                                         opened = document;
                                         done = true;
                                       });
  // The progress exists at once and shows itself only if reading is slow.
  const auto progress = window->findChildren<QProgressDialog*>(QStringLiteral("openingProgress"));
  const bool modeless = progress.size() == 1 && progress[0]->windowModality() == Qt::NonModal;
  ASSERT_TRUE(processEventsUntil([&] { return done; }));
  EXPECT_EQ(progress.size(), 1);
  EXPECT_TRUE(modeless);
  EXPECT_TRUE(window->findChildren<QProgressDialog*>().isEmpty()) << "gone when read";
  ASSERT_EQ(opened, window->document());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("two-parts[*]"));

  // Once started, the layout moves the network, so the document soon
  // differs from the file: the title's marker follows.
  EXPECT_FALSE(window->isWindowModified());
  window->networkView()->start();
  EXPECT_TRUE(processEventsUntil([&] { return window->isWindowModified(); }));
}

TEST_F(DocumentWindows, ALargeNetworkOpensWithTheMultilevelStartUnlessTurnedOff) {
  // A ring just above the size that calls for it. The multilevel start
  // spreads it over hundreds of units; the random start stays within 30.
  constexpr int kVertices = static_cast<int>(ui::kMultilevelOnOpenVertices) + 1;
  const fs::path file = kOutput / "large-ring.net";
  {
    std::ofstream out(file);
    out << "*Vertices " << kVertices << "\n*Edges\n";
    for (int v = 1; v <= kVertices; ++v) out << v << ' ' << v % kVertices + 1 << '\n';
  }
  const auto widest = [](ui::DocumentWindow* window) {
    double largest = 0;
    for (const auto& p : testing_support::vectorsOf(*window->controller().positions())) {
      largest = std::max({largest, std::abs(p[0]), std::abs(p[1]), std::abs(p[2])});
    }
    return largest;
  };
  for (const bool on : {false, true}) {
    ui::setMultilevelStartOnOpen(on);
    ui::DocumentWindow* window = openSynchronously(file);
    ASSERT_TRUE(window);
    window->networkView()->view().pause();
    if (on) {
      EXPECT_TRUE(processEventsUntil([&] { return widest(window) > 200; }));
    } else {
      QTest::qWait(300);  // long enough for a start that would run
      EXPECT_LT(widest(window), 200);
    }
    closeAllDocuments();
  }
  ui::setMultilevelStartOnOpen(true);
}

TEST_F(DocumentWindows, ClosingWhileTheLayoutRunsStopsItFirst) {
  const fs::path file = kOutput / "closing.graphml";
  fs::copy_file(kData / "two-parts.graphml", file, fs::copy_options::overwrite_existing);
  // The untouched start-up window closes without a question; a file's
  // window that has moved is answered Don't Save.
  for (const bool startUp : {true, false}) {
    SCOPED_TRACE(startUp ? "start-up" : "a file");
    ui::DocumentWindow* window = startUp ? startUpWindow() : openSynchronously(file);
    ASSERT_TRUE(window);
    const auto document = window->document();
    VXLController& controller = window->controller();
    const std::string uuid = controller.uuid();
    VXLNetworkView& view = *controller.networkView();
    view.setIterations(500);  // long batches: closing meets one under way
    window->networkView()->start();
    ASSERT_TRUE(processEventsUntil([&] { return view.iterating(); }));
    if (!startUp) {
      ASSERT_TRUE(processEventsUntil([&] { return document->isDocumentEdited(); }));
      whenShown<QMessageBox>(QStringLiteral("saveChangesQuestion"),
                             [](QMessageBox* box) { box->button(QMessageBox::Discard)->click(); });
    }
    QPointer<ui::DocumentWindow> guard(window);
    const std::string before = contentsOf(file);
    ASSERT_TRUE(window->close());
    EXPECT_FALSE(view.iterating()) << "the batch has ended before the window goes";
    EXPECT_FALSE(view.fAnimate());
    EXPECT_EQ(contentsOf(file), before);
    ASSERT_TRUE(processEventsUntil([&] { return guard.isNull(); }));
    EXPECT_EQ(VXLController::controllerWithUUID(uuid).get(), &controller);
  }
}

TEST_F(DocumentWindows, AWindowClosedWhileAFileIsReadIntoItDropsTheFile) {
  ui::DocumentWindow* window = startUpWindow();
  ASSERT_TRUE(window);
  QPointer<ui::DocumentWindow> guard(window);
  bool done = false;
  QLOComplexNetwork::Ptr result = window->document();
  documents().openDocumentInBackground(kData / "two-parts.net", Display::Show,
                                       [&](const auto& document) {
                                         result = document;
                                         done = true;
                                       });
  // Closed and gone before the read can be handed back.
  ASSERT_TRUE(window->close());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(guard.isNull());
  ASSERT_TRUE(processEventsUntil([&] { return done && guard.isNull(); }));
  EXPECT_FALSE(result);
  EXPECT_TRUE(documents().documents().empty());
}

TEST_F(DocumentWindows, UnsavedChangesAreAskedAboutOnClose) {
  struct Case {
    const char* name;
    fs::path source;
    QMessageBox::StandardButton answer;
    bool closes;
  };
  const Case cases[] = {
      {"cancel", kData / "two-parts.graphml", QMessageBox::Cancel, false},
      {"save in place", kData / "two-parts.graphml", QMessageBox::Save, true},
      {"save untitled", kData / "two-parts.net", QMessageBox::Save, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const bool native = c.source.extension() == ".graphml";
    const fs::path file = native ? kOutput / "question.graphml" : c.source;
    if (native) fs::copy_file(c.source, file, fs::copy_options::overwrite_existing);
    const fs::path savedAs = kOutput / "question-untitled.graphml";
    fs::remove(savedAs);

    ui::DocumentWindow* window = openSynchronously(file);
    ASSERT_TRUE(window);
    window->networkView()->pause();
    window->controller().setShowEdges(false);
    ASSERT_TRUE(window->isWindowModified());
    const std::string before = contentsOf(file);

    QString question;
    whenShown<QMessageBox>(QStringLiteral("saveChangesQuestion"), [&](QMessageBox* box) {
      question = box->text();
      if (!native) {
        whenShown<QFileDialog>(QStringLiteral("savePanel"), [&](QFileDialog* panel) {
          EXPECT_EQ(panel->acceptMode(), QFileDialog::AcceptSave);
          uitest::chooseInFileDialog(panel, QString::fromStdString(savedAs.string()));
        });
      }
      box->button(c.answer)->click();
    });
    QPointer<ui::DocumentWindow> guard(window);
    EXPECT_EQ(window->close(), c.closes);
    EXPECT_TRUE(question.contains(native ? QStringLiteral("question.graphml")
                                         : QStringLiteral("two-parts")));
    if (!c.closes) {
      EXPECT_FALSE(window->document()->isClosed());
      continue;
    }
    ASSERT_TRUE(processEventsUntil([&] { return guard.isNull(); }));
    if (native) {
      EXPECT_NE(contentsOf(file), before);
    }
    const auto back = QLONetwork::initWithContentsOfURL(native ? file : savedAs);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->countVertices(), native ? 6u : 5u);
  }
}

TEST_F(DocumentWindows, PajekExportRunsItsDialogAndWritesOrExplains) {
  ui::DocumentWindow* window = startUpWindow();
  ASSERT_TRUE(window);
  QMenu* file = findMenu(window->menuBar(), QStringLiteral("File"));
  QAction* pajek =
      findAction(findAction(file, QStringLiteral("Export"))->menu(), QStringLiteral("Pajek\u2026"));
  ASSERT_TRUE(pajek && pajek->isEnabled());

  const fs::path written = kOutput / "window-export.net";
  fs::remove(written);
  QString proposed;
  bool sheetLike = false;
  auto answerWith = [&](const QString& path) {
    whenShown<QFileDialog>(QStringLiteral("filePanel"), [&, path](QFileDialog* panel) {
      auto* name = panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      ASSERT_TRUE(name);
      proposed = name->text();
      sheetLike = panel->windowModality() == Qt::WindowModal && panel->parentWidget() == window;
      name->setText(path);
      // Never answer an overwrite question for another file.
      EXPECT_EQ(panel->selectedFiles(), QStringList{path});
      panel->selectedFiles() == QStringList{path} ? static_cast<QDialog*>(panel)->accept()
                                                  : panel->reject();
    });
  };
  answerWith(QString::fromStdString(written.string()));
  pajek->trigger();
  ASSERT_TRUE(processEventsUntil([&] { return fs::exists(written); }));
  EXPECT_EQ(proposed, QStringLiteral("Random Network.net"));
  EXPECT_TRUE(sheetLike);  // what the file holds is checked by the controller tests

  // The longest name a folder allows: the temporary file written first
  // cannot be made beside it, and the failure shows over the window.
  const QString longest = QString(251, QLatin1Char('x')) + QStringLiteral(".net");
  answerWith(QString::fromStdString(kOutput.string()) + QLatin1Char('/') + longest);
  pajek->trigger();
  QMessageBox* alert = nullptr;
  ASSERT_TRUE(
      processEventsUntil([&] { return (alert = visible<QMessageBox>("fileAlert")) != nullptr; }));
  EXPECT_TRUE(alert->informativeText().contains(longest));
  EXPECT_FALSE(fs::exists(kOutput / longest.toStdString()));
  alert->accept();
}

TEST_F(DocumentWindows, TheOpenPanelSetsTheChoiceAndAFailedFileIsExplained) {
  ui::DocumentWindow* window = startUpWindow();
  ASSERT_TRUE(window);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  ASSERT_FALSE(documents().isMajorComponentOnlySelected());

  // OK with the box ticked on a broken file: the choice is kept, the alert
  // names the file and the reader's reason, and the window stays as it was.
  QString alertText, alertDetail;
  whenShown<QFileDialog>(QStringLiteral("openPanel"), [&](QFileDialog* panel) {
    EXPECT_EQ(panel->fileMode(), QFileDialog::ExistingFiles);
    QCheckBox* box = ui::openPanelCheckBox(*panel);
    ASSERT_TRUE(box);
    EXPECT_GE(box->width(), box->sizeHint().width());
    EXPECT_FALSE(box->isChecked());
    box->setChecked(true);
    whenShown<QMessageBox>(QStringLiteral("openFailedAlert"), [&](QMessageBox* alert) {
      alertText = alert->text();
      alertDetail = alert->informativeText();
      alert->accept();
    });
    uitest::chooseInFileDialog(panel, QString::fromStdString((kData / "broken.net").string()));
  });
  documents().openDocument();
  ASSERT_TRUE(processEventsUntil([&] { return !alertText.isEmpty(); }));
  EXPECT_TRUE(documents().isMajorComponentOnlySelected());
  EXPECT_TRUE(alertText.contains(QStringLiteral("broken.net"))) << alertText.toStdString();
  EXPECT_TRUE(alertDetail.contains(QStringLiteral("line 5"))) << alertDetail.toStdString();
  EXPECT_TRUE(window->document()->isDefaultNetwork());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Random Network[*]"));

  documents().newDocument();
}

TEST_F(DocumentWindows, AutosavesLeftByACrashAreOfferedInAPanel) {
  const fs::path left = QLOComplexNetwork::autosaveFolder() / "left.graphml";
  fs::create_directories(left.parent_path());
  fs::copy_file(kData / "two-parts.graphml", left, fs::copy_options::overwrite_existing);
  app::writeRecoveryName(left, "Before the crash");
  const std::size_t before = documents().documents().size();
  for (const QString& answer : {QStringLiteral("Not Now"), QStringLiteral("Reopen")}) {
    QString listed;
    whenShown<QMessageBox>(QStringLiteral("recoveryPanel"), [&](QMessageBox* panel) {
      listed = panel->informativeText();
      for (QAbstractButton* button : panel->buttons()) {
        if (button->text() == answer) button->click();
      }
    });
    ASSERT_EQ(documents().offerRecovery(), 1u);
    ASSERT_TRUE(processEventsUntil([&] { return !listed.isEmpty(); }));
    EXPECT_EQ(listed, QStringLiteral("Before the crash"));
    EXPECT_TRUE(fs::exists(left)) << answer.toStdString();
  }
  ASSERT_TRUE(processEventsUntil([&] { return documents().documents().size() == before + 1; }));
  ui::DocumentWindow* window = ui::DocumentWindow::windowFor(documents().documents().back().get());
  ASSERT_TRUE(window);
  EXPECT_TRUE(window->isWindowModified());
}

}  // namespace
