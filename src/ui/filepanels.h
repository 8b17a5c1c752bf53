#pragma once
// The dialogs of the controller's file commands: Qt's own (non-native) file
// dialog, window-modal over the document's window, which may make new
// folders and starts in the request's folder with its type and proposed
// name; and the alert a failed file command raises.
#include "app/VXLController.h"

class QFileDialog;
class QWidget;

namespace ui {

// The dialog for `request` (object name "filePanel"), not yet shown.
QFileDialog* makeFilePanel(QWidget* parent, const VXLController::FilePanelRequest& request);

// The controller's file panel: the dialog over `parent`, answering the chosen
// file when accepted and nothing otherwise.
VXLController::FilePanel filePanelRunner(QWidget* parent);

// The controller's alert: a window-modal warning over `parent` (object name
// "fileAlert") with the detail below the message.
VXLController::FileAlert fileAlertRunner(QWidget* parent);

}  // namespace ui
