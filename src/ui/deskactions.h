#pragma once
// The window's desk tools in its menus: framing in the View menu, the Edit
// menu's find and selection items, and the find bar.
#include <QToolBar>
#include <functional>

class QLineEdit;
class VXLController;
class QMainWindow;
class QMenu;

namespace ui {

class NetworkViewWidget;

// View > Fit All (Home, F) and Frame Selection (Shift+F).
void addFramingActions(QMenu* view, NetworkViewWidget* widget);

// View > Labels: None, Selected or All, one checked (the view's mode each
// time the menu opens).
void addLabelsMenu(QMenu* view, NetworkViewWidget* widget, VXLController& controller);

// A bar with a text field: Return selects the vertices whose name or a text
// property contains the text and frames them; Escape hides the bar.
class FindBar : public QToolBar {
  Q_OBJECT

 public:
  FindBar(NetworkViewWidget* widget, VXLController& controller, QWidget* parent = nullptr);
  QLineEdit* field() const { return field_; }
  // Shows the bar and puts the focus in the field.
  void present();
  // Selects and frames the matches of the field's text; answers their count.
  std::size_t findNow();

 signals:
  // After a search changed the selection: the count of matches.
  void found(std::size_t count);

 private:
  NetworkViewWidget* widget_;
  VXLController& controller_;
  QLineEdit* field_;
};

// Edit > Undo (Ctrl+Z), Redo (Ctrl+Shift+Z), Find (Ctrl+F), Select All
// (Ctrl+A), Invert Selection (Ctrl+Shift+I) and Select Neighbours (Ctrl+E).
// `selectionChanged` runs after each selection item, undo and redo.
QMenu* addEditMenu(QMainWindow* window, NetworkViewWidget* widget, VXLController& controller,
                   FindBar* findBar, const std::function<void()>& selectionChanged);

// Window: below the menu's own items, the open document windows (filled
// each time the menu opens; the current one is checked).
void addWindowList(QMenu* windowMenu);

// Help > Keyboard Shortcuts (F1: every menu item with a shortcut, read from
// the window's menus) and About Plexview.
QMenu* addHelpMenu(QMainWindow* window);

// Network files dropped on the window are handed to `open`, one by one.
void acceptNetworkDrops(QMainWindow* window, std::function<void(const QString& file)> open);

}  // namespace ui
