#pragma once
// File dialogs open where the last one ended: the folder of the last file
// chosen in any of them, kept in QSettings ("fileDialogs/lastFolder").
#include <QString>

class QFileDialog;

namespace ui {

// The folder the last file dialog ended in, or empty.
QString lastFolder();
// Opens `dialog` in `preferred` when not empty, else in the last folder, and
// records the chosen file's folder when the dialog is accepted.
void rememberFolder(QFileDialog* dialog, const QString& preferred = {});

}  // namespace ui
