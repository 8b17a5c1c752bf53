#pragma once
// The multilevel start in the window: run on a worker thread behind a
// progress dialog that can cancel it, offered from the Layout menu and panel,
// and done by itself when a window opens a network above 50,000 vertices
// unless the preference turns it off.
#include <cstdint>

class QMenu;
class QWidget;
class VXLController;

namespace ui {

inline constexpr std::uint64_t kMultilevelOnOpenVertices = 50000;

// The preference (QSettings key "layout/multilevelStartOnOpen"), on by default.
bool multilevelStartOnOpen();
void setMultilevelStartOnOpen(bool on);

// Pauses the layout, runs the start with a window-modal progress dialog
// (Cancel leaves the positions as they were) and resumes the layout if it ran.
// Answers whether positions were placed.
bool runMultilevelStart(QWidget* parent, VXLController& controller);

// Adds "Multilevel Start" and the preference's check item to `menu`.
void addMultilevelActions(QMenu* menu, QWidget* parent, VXLController& controller);

}  // namespace ui
