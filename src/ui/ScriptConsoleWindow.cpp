#include "ui/ScriptConsoleWindow.h"

#include <QFont>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include "ui/PathControl.h"

namespace ui {

namespace {

ScriptConsoleWindow* sharedConsole = nullptr;

QFont scriptFont() {
  QFont font(QStringLiteral("Monaco"));
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  return font;
}

QPushButton* addButton(QHBoxLayout* row, const QString& text, const char* name,
                       const QString& toolTip) {
  auto* button = new QPushButton(text);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(toolTip);
  row->addWidget(button);
  return button;
}

}  // namespace

ScriptConsoleWindow::ScriptConsoleWindow(VXLPythonController::Interpreter interpreter,
                                         QWidget* parent)
    : QWidget(parent, Qt::Window) {
  setWindowTitle(tr("Script Console"));
  setObjectName(QStringLiteral("scriptConsole"));
  // A panel beside the documents: closing the last document still ends the program.
  setAttribute(Qt::WA_QuitOnClose, false);
  auto& c = controller_;
  c.pyInterpreter = std::move(interpreter);
  c.window = this;

  c.textScript = new QPlainTextEdit;
  c.textScript->setObjectName(QStringLiteral("textScript"));
  c.textScript->setFont(scriptFont());
  c.textScript->setLineWrapMode(QPlainTextEdit::NoWrap);
  c.textScript->setPlaceholderText(tr("Python script; Ctrl+Return runs it"));
  c.resultText = new QPlainTextEdit;
  c.resultText->setObjectName(QStringLiteral("resultText"));
  c.resultText->setFont(scriptFont());
  c.resultText->setReadOnly(true);
  c.textEvaluate = new QLineEdit;
  c.textEvaluate->setObjectName(QStringLiteral("textEvaluate"));
  c.textEvaluate->setFont(scriptFont());
  c.textEvaluate->setPlaceholderText(tr(">>> a line to evaluate"));
  c.pathControl = new PathControl;
  c.pathControl->setObjectName(QStringLiteral("pathControl"));

  auto* buttons = new QHBoxLayout;
  QPushButton* execute =
      addButton(buttons, tr("Execute"), "execute", tr("Run the script (Ctrl+Return)"));
  QPushButton* reset =
      addButton(buttons, tr("Reset"), "reset", tr("Reset the interpreter's input buffer"));
  QPushButton* open = addButton(buttons, tr("Open\u2026"), "open", tr("Open a script file"));
  QPushButton* save = addButton(buttons, tr("Save\u2026"), "save", tr("Save the script"));
  QPushButton* reveal =
      addButton(buttons, tr("Reveal"), "reveal", tr("Show the script file's folder"));
  buttons->addStretch(1);

  auto* splitter = new QSplitter(Qt::Vertical);
  splitter->addWidget(c.textScript);
  splitter->addWidget(c.resultText);
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 2);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(buttons);
  layout->addWidget(c.pathControl);
  layout->addWidget(splitter, 1);
  layout->addWidget(c.textEvaluate);

  connect(execute, &QPushButton::clicked, this, [&c] { c.execute(); });
  connect(reset, &QPushButton::clicked, this, [&c] { c.reset(); });
  connect(open, &QPushButton::clicked, this, [&c] { c.openFile(); });
  connect(save, &QPushButton::clicked, this, [&c] { c.saveFile(); });
  connect(reveal, &QPushButton::clicked, this, [&c] {
    if (!c.pathControl->path().isEmpty()) revealInFileManager(c.pathControl->path());
  });
  connect(c.pathControl, &PathControl::componentClicked, this, [&c] { c.openInFinder(); });
  connect(c.textEvaluate, &QLineEdit::returnPressed, this, [&c] { c.evaluate(); });
  for (const QKeySequence& keys :
       {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)}) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WindowShortcut);
    connect(shortcut, &QShortcut::activated, this, [&c] { c.execute(); });
  }
  resize(720, 560);
  if (!sharedConsole) sharedConsole = this;
}

ScriptConsoleWindow::~ScriptConsoleWindow() {
  if (sharedConsole == this) sharedConsole = nullptr;
}

ScriptConsoleWindow* ScriptConsoleWindow::shared() {
  return sharedConsole;
}

bool ScriptConsoleWindow::showShared() {
  if (!sharedConsole) return false;
  sharedConsole->show();
  sharedConsole->raise();
  sharedConsole->activateWindow();
  return true;
}

}  // namespace ui
