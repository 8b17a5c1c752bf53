#pragma once
// The 3D export sheet's two tables as Qt item models over the controller's
// export table: column 0 is "name", column 1 of the colours table is
// "function" (the transform function code, edited with a pop-up of the
// function names).
#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "app/VXLExport3DTableController.h"

namespace ui {

class Export3DTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using Table = VXLExport3DTableController::Table;

  Export3DTableModel(VXLExport3DTableController& source, Table table, QObject* parent = nullptr);

  // The rows as the source now has them.
  void reload();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  // Display: the name, or "code (function name)"; edit: the name or the code.
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  static std::string_view columnIdentifier(int column);

  VXLExport3DTableController& source_;
  Table table_;
};

// Edits a function code with a pop-up listing the functions by name.
class FunctionCodeDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
};

}  // namespace ui
