// The script console with a stand-in interpreter and file panel.
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QDir>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUrl>
#include <deque>
#include <memory>

#include "application.h"
#include "ui/PathControl.h"
#include "ui/ScriptConsoleWindow.h"

namespace {

namespace fs = std::filesystem;
using Panel = VXLPythonController::PanelKind;
using uitest::contentsOf;

void writeFile(const fs::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

// Receives the file manager's requests in place of the desktop.
class Revealed : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> urls;
 public slots:
  void open(const QUrl& url) { urls << url; }
};

class ScriptConsole : public ::testing::Test {
 protected:
  void SetUp() override {
    uitest::ensureApplication();
    ASSERT_TRUE(work_.isValid() && other_.isValid());
    previousFolder_ = QDir::currentPath();
    QDir::setCurrent(work_.path());
    console_ = std::make_unique<ui::ScriptConsoleWindow>(fakeInterpreter());
    controller().setFilePanel([this](const VXLPythonController::PanelRequest& request,
                                     VXLPythonController::PanelCompletion completion) {
      requests_.push_back(request);
      ASSERT_FALSE(answers_.empty()) << "a panel ran without an answer";
      const auto [result, chosen] = answers_.front();
      answers_.pop_front();
      completion(result, chosen);
    });
  }
  void TearDown() override {
    console_.reset();
    QDir::setCurrent(previousFolder_);
  }

  VXLPythonController::Interpreter fakeInterpreter() {
    return {
        [this](const std::string& source) {
          ran_.push_back(source);
          return "ran " + std::to_string(source.size()) + " characters\n";
        },
        [this] { ++resets_; },
        [this](const std::string& line) {
          evaluated_.push_back(line);
          return ">>> " + line + "\n";
        },
    };
  }

  VXLPythonController& controller() { return console_->controller(); }
  QString editorText() { return controller().textScript->toPlainText(); }
  fs::path inWork(const char* name) const { return fs::path(work_.path().toStdString()) / name; }
  fs::path inOther(const char* name) const { return fs::path(other_.path().toStdString()) / name; }
  void answer(int result, const fs::path& chosen) {
    answers_.emplace_back(result, QString::fromStdString(chosen.string()));
  }

  QTemporaryDir work_, other_;
  QString previousFolder_;
  std::unique_ptr<ui::ScriptConsoleWindow> console_;
  std::vector<std::string> ran_, evaluated_;
  int resets_ = 0;
  std::vector<VXLPythonController::PanelRequest> requests_;
  std::deque<std::pair<int, QString>> answers_;
};

TEST_F(ScriptConsole, TheScriptTheLineAndTheButtonsReachTheInterpreter) {
  controller().textScript->setPlainText(QStringLiteral("x = 1\nprint(x)\n"));
  controller().execute();
  controller().textScript->clear();
  controller().execute();  // an empty editor runs an empty program
  ASSERT_EQ(ran_, (std::vector<std::string>{"x = 1\nprint(x)\n", ""}));
  // Output accumulates, the latest at the end.
  EXPECT_EQ(controller().resultText->toPlainText(),
            QStringLiteral("ran 15 characters\nran 0 characters\n"));

  // The evaluation field: Return sends its line and empties it.
  controller().textEvaluate->setText(QStringLiteral("1 + 2"));
  QTest::keyClick(controller().textEvaluate, Qt::Key_Return);
  EXPECT_EQ(evaluated_, std::vector<std::string>{"1 + 2"});
  EXPECT_TRUE(controller().textEvaluate->text().isEmpty());

  // Ctrl+Return runs without typing a line; the buttons run and reset.
  console_->show();
  console_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(console_.get()));
  controller().textScript->setPlainText(QStringLiteral("pass"));
  controller().textScript->setFocus();
  QTest::keyClick(controller().textScript, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(ran_.back(), "pass");
  console_->findChild<QPushButton*>(QStringLiteral("execute"))->click();
  console_->findChild<QPushButton*>(QStringLiteral("reset"))->click();
  EXPECT_EQ(ran_.size(), 4u);
  EXPECT_EQ(resets_, 1);
}

TEST_F(ScriptConsole, OpeningReadsTheChosenFileWhereverItIs) {
  // Two files of the same name: the one chosen in `other` is read, not the
  // one in the working folder.
  writeFile(inWork("job.py"), "print('working folder')\n");
  writeFile(inOther("job.py"), "print('chosen folder')\n");
  answer(VXLPythonController::kOK, inOther("job.py"));
  controller().openFile();

  ASSERT_EQ(requests_.size(), 1u);
  EXPECT_EQ(requests_[0].startFolder, QDir::homePath() + QLatin1Char('/')) << "first panel";
  EXPECT_EQ(editorText(), QStringLiteral("print('chosen folder')\n"));
  const QString chosen = QString::fromStdString(inOther("job.py").string());
  EXPECT_EQ(controller().pathControl->path(), chosen);

  // The next panel starts in the chosen folder, proposing the file; a
  // cancel changes nothing.
  answer(0, inWork("job.py"));
  controller().openFile();
  ASSERT_EQ(requests_.size(), 2u);
  EXPECT_EQ(requests_[1].startFolder, other_.path());
  EXPECT_EQ(requests_[1].proposedFile, chosen);
  EXPECT_EQ(editorText(), QStringLiteral("print('chosen folder')\n"));

  // A file that cannot be read is reported and keeps the editor and the
  // current file; a folder under ~ starts the panel in the home folder.
  controller().setCurrentFolder(std::string("~/scripts"));
  answer(VXLPythonController::kOK, inOther("missing.py"));
  controller().openFile();
  ASSERT_EQ(requests_.size(), 3u);
  EXPECT_EQ(requests_[2].startFolder, QDir::homePath() + QStringLiteral("/scripts"));
  EXPECT_EQ(editorText(), QStringLiteral("print('chosen folder')\n"));
  EXPECT_TRUE(controller().resultText->toPlainText().contains(QStringLiteral("missing.py")));
  EXPECT_EQ(controller().currentFile(), chosen.toStdString());
}

TEST_F(ScriptConsole, SavingWritesUtf8ToTheChosenFile) {
  const QString text = QStringLiteral("# gr\u00FC\u00DFe \u2192 \u03B1\nprint(1)\n");
  controller().textScript->setPlainText(text);
  controller().setCurrentFile(std::string("draft.py"));
  answer(VXLPythonController::kOK, inOther("saved.py"));
  controller().saveFile();

  ASSERT_EQ(requests_.size(), 1u);
  EXPECT_EQ(requests_[0].kind, Panel::Save);
  EXPECT_EQ(requests_[0].proposedFile, QStringLiteral("draft.py"));
  EXPECT_EQ(contentsOf(inOther("saved.py")), text.toStdString());
  EXPECT_FALSE(fs::exists(inWork("saved.py"))) << "the working folder is not written";

  // A cancelled panel writes nothing; a save that fails is reported and
  // keeps the current file.
  controller().textScript->setPlainText(QStringLiteral("not written"));
  answer(0, inOther("saved.py"));
  controller().saveFile();
  answer(VXLPythonController::kOK, inOther("no-folder") / "x.py");
  controller().saveFile();
  EXPECT_EQ(contentsOf(inOther("saved.py")), text.toStdString());
  EXPECT_TRUE(controller().resultText->toPlainText().contains(QStringLiteral("x.py")));
  EXPECT_EQ(controller().currentFile(), inOther("saved.py").string());
}

TEST_F(ScriptConsole, PathComponentsRevealTheirFolder) {
  EXPECT_EQ(ui::pathComponents(QStringLiteral("/a//b/")), (QStringList{"/", "/a", "/a/b"}));
  EXPECT_TRUE(ui::pathComponents(QString()).isEmpty());

  Revealed revealed;
  QDesktopServices::setUrlHandler(QStringLiteral("file"), &revealed, "open");
  ui::PathControl* path = controller().pathControl;
  path->setPath(QStringLiteral("/srv/scripts/job.py"));
  EXPECT_EQ(path->findChildren<QToolButton*>().size(), 4);
  path->clickComponent(3);  // the file: its folder opens
  path->clickComponent(1);  // a folder: the folder holding it
  path->clickComponent(0);  // the root: itself
  console_->findChild<QPushButton*>(QStringLiteral("reveal"))->click();
  QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
  EXPECT_EQ(revealed.urls,
            (QList<QUrl>{QUrl::fromLocalFile("/srv/scripts"), QUrl::fromLocalFile("/"),
                         QUrl::fromLocalFile("/"), QUrl::fromLocalFile("/srv/scripts")}));
}

TEST_F(ScriptConsole, TheWindowMenuShowsTheProgramsConsole) {
  ASSERT_EQ(ui::ScriptConsoleWindow::shared(), console_.get());
  const auto document = uitest::documents().newDocument();
  ui::DocumentWindow* window = ui::DocumentWindow::windowFor(document.get());
  ASSERT_TRUE(window);
  QAction* item =
      uitest::findAction(uitest::findMenu(window->menuBar(), "Window"), "Script Console");
  ASSERT_TRUE(item);
  item->trigger();
  EXPECT_TRUE(console_->isVisible());
  window->close();
  uitest::processEventsUntil([] { return uitest::documents().documents().empty(); });

  console_.reset();
  EXPECT_EQ(ui::ScriptConsoleWindow::shared(), nullptr);
  EXPECT_FALSE(ui::ScriptConsoleWindow::showShared());
}

}  // namespace

#include "ScriptConsoleTest.moc"
