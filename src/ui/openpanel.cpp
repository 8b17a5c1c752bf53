#include "ui/openpanel.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>

#include "ui/lastfolder.h"

namespace ui {

QStringList networkFileFilters() {
  return {QStringLiteral("Networks (*.graphml *.xml *.net *.paj *.gml *.gexf *.csv *.tsv *.edges "
                         "*.txt *.gz)"),
          QStringLiteral("All files (*)")};
}

QFileDialog* makeOpenPanel(QWidget* parent, bool checkboxOn) {
  auto* panel = new QFileDialog(parent, QObject::tr("Open"));
  panel->setObjectName(QStringLiteral("openPanel"));
  // Qt's own dialog, so that the check box can be placed in it.
  panel->setOption(QFileDialog::DontUseNativeDialog);
  panel->setAcceptMode(QFileDialog::AcceptOpen);
  panel->setFileMode(QFileDialog::ExistingFiles);
  panel->setNameFilters(networkFileFilters());
  panel->setWindowModality(Qt::WindowModal);
  rememberFolder(panel);

  auto* checkBox = new QCheckBox(QObject::tr("Load only the major connected component."), panel);
  checkBox->setObjectName(QStringLiteral("majorComponentCheckBox"));
  checkBox->setToolTip(
      QObject::tr("If selected, only the major connected component is loaded from the network"));
  checkBox->setChecked(checkboxOn);
  checkBox->adjustSize();
  checkBox->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // The non-native dialog lays itself out in a grid: the check box takes a
  // row of its own below everything else.
  if (auto* grid = qobject_cast<QGridLayout*>(panel->layout())) {
    grid->addWidget(checkBox, grid->rowCount(), 0, 1, grid->columnCount());
  }
  return panel;
}

QCheckBox* openPanelCheckBox(const QFileDialog& panel) {
  return panel.findChild<QCheckBox*>(QStringLiteral("majorComponentCheckBox"));
}

QLODocumentController::OpenPanel openPanelRunner(std::function<QWidget*()> parent) {
  return [parent = std::move(parent)](
             const std::vector<std::string>& /*types*/, bool checkboxOn,
             std::function<void(const QLODocumentController::OpenPanelResult&)> completion) {
    // The filters already name the types' extensions.
    QFileDialog* panel = makeOpenPanel(parent ? parent() : nullptr, checkboxOn);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(panel, &QDialog::finished, panel,
                     [panel, completion = std::move(completion)](int result) {
                       QLODocumentController::OpenPanelResult answer;
                       answer.result = result == QDialog::Accepted ? QLODocumentController::kOK : 0;
                       answer.checkboxOn = openPanelCheckBox(*panel)->isChecked();
                       if (answer.result == QLODocumentController::kOK) {
                         for (const QString& file : panel->selectedFiles()) {
                           answer.files.emplace_back(file.toStdString());
                         }
                       }
                       if (completion) completion(answer);
                     });
    panel->open();
  };
}

}  // namespace ui
