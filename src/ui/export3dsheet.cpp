#include "ui/export3dsheet.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"
#include "ui/export3dtablemodel.h"
#include "ui/lastfolder.h"

namespace ui {

namespace {

using Table = VXLExport3DTableController::Table;

QString proposedName(const VXLController& controller) {
  if (const QLOComplexNetwork* document = controller.currentDocument()) {
    return QString::fromStdString(document->displayName());
  }
  return QString::fromStdString(QLOComplexNetwork::defaultDraftName());
}

void showFailure(QWidget* parent, const QString& folder, const std::string& reasons) {
  auto* box = new QMessageBox(QMessageBox::Warning, QObject::tr("Plexview"),
                              QObject::tr("The web bundle \u201C%1\u201D could not be written.")
                                  .arg(QFileInfo(folder).fileName()),
                              QMessageBox::Ok, parent);
  box->setObjectName(QStringLiteral("webBundleFailedAlert"));
  box->setInformativeText(QString::fromStdString(reasons));
  box->setWindowModality(Qt::WindowModal);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace

Export3DSheet::Export3DSheet(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QDialog(parent), controller_(std::move(controller)) {
  setObjectName(QStringLiteral("export3DSheet"));
  setWindowTitle(tr("3D Export"));
  setWindowModality(Qt::WindowModal);
  auto& source = controller_->export3DTableController();
  colorsModel_ = new Export3DTableModel(source, Table::Colors, this);
  propertiesModel_ = new Export3DTableModel(source, Table::Properties, this);
  colorsTable_ = makeTable(colorsModel_, "export3DColorsListTable");
  colorsTable_->setItemDelegateForColumn(1, new FunctionCodeDelegate(colorsTable_));
  propertiesTable_ = makeTable(propertiesModel_, "export3DPropertiesListTable");

  webViewer_ = new QCheckBox(tr("Web viewer"), this);
  webViewer_->setObjectName(QStringLiteral("export3DWebViewer"));
  webViewer_->setChecked(true);
  webSite_ = new QCheckBox(tr("Web site"), this);
  webSite_->setObjectName(QStringLiteral("export3DWebSite"));
  connect(webViewer_, &QCheckBox::toggled, this, &Export3DSheet::export3DCheckUpdated);
  export3DCheckUpdated();

  auto* buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(QDialogButtonBox::Ok);
  ok_->setObjectName(QStringLiteral("export3DOKButton"));
  cancel_ = buttons->addButton(QDialogButtonBox::Cancel);
  cancel_->setObjectName(QStringLiteral("export3DCancelButton"));
  connect(ok_, &QPushButton::clicked, this, [this] { finishedExporting3D(Sender::OK); });
  connect(cancel_, &QPushButton::clicked, this, [this] { finishedExporting3D(Sender::Cancel); });

  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(tr("Colours:"), this), 0, 0);
  grid->addWidget(new QLabel(tr("Properties:"), this), 0, 1);
  grid->addWidget(colorsTable_, 1, 0);
  grid->addWidget(propertiesTable_, 1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(webViewer_);
  layout->addWidget(webSite_);
  layout->addWidget(buttons);
  resize(560, 380);
}

QTableView* Export3DSheet::makeTable(Export3DTableModel* model, const char* name) {
  auto* table = new QTableView(this);
  table->setObjectName(QString::fromLatin1(name));
  table->setModel(model);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::MultiSelection);
  table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  table->verticalHeader()->hide();
  table->horizontalHeader()->setStretchLastSection(true);
  const Table which = model == colorsModel_ ? Table::Colors : Table::Properties;
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this, table, which] {
            std::vector<std::size_t> rows;
            for (const QModelIndex& index : table->selectionModel()->selectedRows()) {
              rows.push_back(static_cast<std::size_t>(index.row()));
            }
            controller_->export3DTableController().setSelectedRows(which, std::move(rows));
          });
  return table;
}

void Export3DSheet::showSelection(QTableView* table) {
  const Table which = table == colorsTable_ ? Table::Colors : Table::Properties;
  const auto& rows = controller_->export3DTableController().selectedRows(which);
  QItemSelection selection;
  const int lastColumn = table->model()->columnCount() - 1;
  for (std::size_t row : rows) {
    const int r = static_cast<int>(row);
    selection.select(table->model()->index(r, 0), table->model()->index(r, lastColumn));
  }
  table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void Export3DSheet::present() {
  colorsModel_->reload();
  propertiesModel_->reload();
  showSelection(colorsTable_);
  showSelection(propertiesTable_);
  open();
}

void Export3DSheet::export3DCheckUpdated() {
  webSite_->setEnabled(webViewer_->isChecked());
}

void Export3DSheet::finishedExporting3D(Sender sender) {
  if (sender == Sender::OK) {
    accept();
    runWebBundleSavePanel(parentWidget(), controller_);
  } else {
    reject();
  }
}

void runWebBundleSavePanel(QWidget* parent, const std::shared_ptr<VXLController>& controller) {
  const std::filesystem::path folder = controller->currentFolder();
  auto* panel = new QFileDialog(parent, QObject::tr("Export Web Bundle"));
  const QString remembered = lastFolder();
  rememberFolder(panel, !folder.empty()        ? QString::fromStdString(folder.string())
                        : remembered.isEmpty() ? QDir::homePath()
                                               : remembered);
  panel->setObjectName(QStringLiteral("webBundleSavePanel"));
  panel->setOption(QFileDialog::DontUseNativeDialog);
  panel->setAcceptMode(QFileDialog::AcceptSave);
  panel->setFileMode(QFileDialog::AnyFile);  // the bundle's folder, made if new
  panel->selectFile(proposedName(*controller));
  panel->setWindowModality(Qt::WindowModal);
  panel->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(panel, &QFileDialog::fileSelected, panel,
                   [parent, controller](const QString& file) {
                     const QString chosen = QDir::cleanPath(QFileInfo(file).absoluteFilePath());
                     std::string reasons;
                     if (!controller->exportWebToFile(chosen.toStdString(), &reasons)) {
                       showFailure(parent, chosen, reasons);
                     }
                   });
  panel->open();
}

}  // namespace ui
