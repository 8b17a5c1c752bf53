#include "ui/export3dtablemodel.h"

#include <QComboBox>

#include "app/VXLController.h"

namespace ui {

namespace {
using Source = VXLExport3DTableController;
}  // namespace

Export3DTableModel::Export3DTableModel(Source& source, Table table, QObject* parent)
    : QAbstractTableModel(parent), source_(source), table_(table) {}

void Export3DTableModel::reload() {
  beginResetModel();
  endResetModel();
}

std::string_view Export3DTableModel::columnIdentifier(int column) {
  return column == 0 ? Source::kNameColumn : Source::kFunctionColumn;
}

int Export3DTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(source_.numberOfRowsInTableView(table_));
}

int Export3DTableModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return table_ == Table::Colors ? 2 : 1;
}

QVariant Export3DTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  const Source::CellValue cell = source_.tableView(table_, columnIdentifier(index.column()),
                                                   static_cast<std::size_t>(index.row()));
  if (const auto* name = std::get_if<std::string>(&cell)) return QString::fromStdString(*name);
  if (const auto* code = std::get_if<std::int64_t>(&cell)) {
    if (role == Qt::EditRole) return QVariant::fromValue<qlonglong>(*code);
    return QStringLiteral("%1 (%2)").arg(*code).arg(
        QString::fromStdString(Source::colorFunctionForCode(*code)));
  }
  return {};
}

bool Export3DTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole || index.column() != 1) return false;
  bool isNumber = false;
  const qlonglong code = value.toLongLong(&isNumber);
  if (!isNumber) return false;
  source_.tableView(table_, static_cast<std::int64_t>(code), Source::kFunctionColumn,
                    static_cast<std::size_t>(index.row()));
  emit dataChanged(index, index);
  return true;
}

Qt::ItemFlags Export3DTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.isValid() && index.column() == 1) flags |= Qt::ItemIsEditable;
  return flags;
}

QVariant Export3DTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == 0 ? tr("Name") : tr("Function");
}

QWidget* FunctionCodeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                            const QModelIndex&) const {
  auto* menu = new QComboBox(parent);
  const auto& names = VXLController::colorFunctionTitles();
  for (std::size_t code = 0; code < names.size(); ++code) {
    menu->addItem(QString::fromStdString(names[code]),
                  QVariant::fromValue<qlonglong>(static_cast<qlonglong>(code)));
  }
  return menu;
}

void FunctionCodeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* menu = static_cast<QComboBox*>(editor);
  menu->setCurrentIndex(std::max(0, menu->findData(index.data(Qt::EditRole))));
}

void FunctionCodeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                        const QModelIndex& index) const {
  model->setData(index, static_cast<QComboBox*>(editor)->currentData(), Qt::EditRole);
}

}  // namespace ui
