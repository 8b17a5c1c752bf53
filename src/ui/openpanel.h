#pragma once
// The open dialog: a window-modal, non-native file dialog for network files
// with a check box below the file list that asks for the major connected
// component only. Several files may be chosen at once.
#include <QStringList>
#include <functional>

#include "app/QLODocumentController.h"

class QCheckBox;
class QFileDialog;
class QWidget;

namespace ui {

// The name filters offered, networks first.
QStringList networkFileFilters();

// The dialog, not yet shown, with its check box (object name
// "majorComponentCheckBox") checked as `checkboxOn`.
QFileDialog* makeOpenPanel(QWidget* parent, bool checkboxOn);
QCheckBox* openPanelCheckBox(const QFileDialog& panel);

// The document controller's open panel: the dialog, sheet-like over the
// window `parent` answers when the panel is asked for; it reports OK with the
// files and the check box when accepted, and a cancel otherwise.
QLODocumentController::OpenPanel openPanelRunner(std::function<QWidget*()> parent);

}  // namespace ui
