#pragma once
// The script console: a window with the script editor, the result area, a
// one-line evaluation field, the script file's path control and the
// Execute (Ctrl+Return), Reset, Open, Save and Reveal buttons, all handled
// by its VXLPythonController. The program makes one (hidden) when it has an
// interpreter; the Window menu's "Script Console" item shows it.
#include <QWidget>

#include "ui/VXLPythonController.h"

namespace ui {

class ScriptConsoleWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ScriptConsoleWindow(VXLPythonController::Interpreter interpreter,
                               QWidget* parent = nullptr);
  ~ScriptConsoleWindow() override;

  // The console the program made, or null (no interpreter: no console).
  static ScriptConsoleWindow* shared();
  // Shows and raises the shared console; false when there is none.
  static bool showShared();

  VXLPythonController& controller() { return controller_; }

 private:
  VXLPythonController controller_;
};

}  // namespace ui
