#include "ui/lastfolder.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

namespace ui {
namespace {

const QString kKey = QStringLiteral("fileDialogs/lastFolder");

}  // namespace

QString lastFolder() {
  const QString folder = QSettings().value(kKey).toString();
  return !folder.isEmpty() && QDir(folder).exists() ? folder : QString();
}

void rememberFolder(QFileDialog* dialog, const QString& preferred) {
  const QString folder = preferred.isEmpty() ? lastFolder() : preferred;
  if (!folder.isEmpty()) dialog->setDirectory(folder);
  QObject::connect(dialog, &QFileDialog::accepted, dialog, [dialog] {
    const QStringList files = dialog->selectedFiles();
    if (files.isEmpty()) return;
    const QFileInfo chosen(files.first());
    QSettings().setValue(kKey, chosen.isDir() && dialog->fileMode() == QFileDialog::Directory
                                   ? chosen.absoluteFilePath()
                                   : chosen.absolutePath());
  });
}

}  // namespace ui
