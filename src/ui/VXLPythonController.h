#pragma once
// The script console's controller: runs the editor's script in the
// interpreter and shows what it printed, resets the interpreter's input
// buffer, evaluates single lines, opens and saves script files, and reveals
// a component of the path control in the file manager.
//
// Opening and saving read and write the file chosen in the panel, wherever
// it is; the next panel starts in its folder. A file that cannot be read or
// written is reported in the result area, and the editor keeps its text.
#include <QString>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace ui {
class PathControl;
}

class VXLPythonController {
 public:
  // The Python-side interpreter object as the console uses it.
  struct Interpreter {
    std::function<std::string(const std::string& source)> runCode;  // what the run printed
    std::function<void()> resetBuffer;
    std::function<std::string(const std::string& line)> evaluate;  // the echoed line and output
  };

  // An open or save panel, run as a sheet on the console; it ends with
  // kOK and the chosen file, or any other result.
  static constexpr int kOK = 1;
  enum class PanelKind { Open, Save };
  struct PanelRequest {
    PanelKind kind = PanelKind::Open;
    QString startFolder;   // "~" already expanded
    QString proposedFile;  // currentFile, possibly empty
  };
  using PanelCompletion = std::function<void(int result, const QString& chosen)>;
  using FilePanel = std::function<void(const PanelRequest&, PanelCompletion)>;

  // The folder the panels start in when none has been set.
  static constexpr const char* kHomeFolder = "~/";

  // --- Outlets, connected by the console window ---
  Interpreter pyInterpreter;
  QPlainTextEdit* textScript = nullptr;
  QPlainTextEdit* resultText = nullptr;
  QLineEdit* textEvaluate = nullptr;
  ui::PathControl* pathControl = nullptr;
  QWidget* window = nullptr;  // the panels' parent

  // Without a panel set, window-modal file dialogs on `window`.
  void setFilePanel(FilePanel panel) { filePanel_ = std::move(panel); }

  // --- Actions ---
  void execute();  // runs the whole editor text
  void reset();
  void evaluate();  // runs the evaluation field's line and empties the field
  void openFile();
  void saveFile();
  void openInFinder();  // reveals the path control's clicked component

  // --- Accessors (unset: no panel has run yet) ---
  const std::optional<std::string>& currentFolder() const { return currentFolder_; }
  void setCurrentFolder(std::optional<std::string> folder) { currentFolder_ = std::move(folder); }
  const std::optional<std::string>& currentFile() const { return currentFile_; }
  void setCurrentFile(std::optional<std::string> file) { currentFile_ = std::move(file); }

 private:
  void showResult(const std::string& text);
  PanelRequest panelRequest(PanelKind kind);
  void runPanel(const PanelRequest& request, PanelCompletion completion);
  // After a panel ended with OK: the chosen file becomes the current file.
  void takeChosenFile(const QString& chosen);

  FilePanel filePanel_;
  std::optional<std::string> currentFolder_;
  std::optional<std::string> currentFile_;
};

namespace ui {

// Opens the folder holding `path` in the file manager.
void revealInFileManager(const QString& path);

}  // namespace ui
