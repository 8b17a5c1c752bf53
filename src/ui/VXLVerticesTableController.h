#pragma once
// The vertices table: one row per vertex of the controller's network, with
// the columns "icon", "name", "number" (the row) and "degree". Cells are made
// when the table asks for them, so a network of millions of vertices costs
// nothing until rows are shown. Selecting rows selects those vertices in the
// view; a selection made in the view does not change the table.
#include <QAbstractTableModel>
#include <QIcon>
#include <array>
#include <memory>

class QItemSelection;
class QLONetwork;
class QTableView;
class VXLController;

namespace ui {

class VXLVerticesTableController : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr std::array<const char*, 4> kColumnIdentifiers = {"icon", "name", "number",
                                                                    "degree"};

  explicit VXLVerticesTableController(std::shared_ptr<VXLController> mainController,
                                      QObject* parent = nullptr);

  // Feeds `table` and follows its selection.
  void setTable(QTableView* table);
  QTableView* table() const { return table_; }

  // The value of a cell by its column's identifier: the icon, the vertex's
  // name, the row index, or the vertex's edge count; nothing for any other
  // identifier or a row past the end.
  QVariant objectValue(const QString& identifier, int row) const;

  // Shows the controller's network as it is now.
  void reloadTable();
  // Selects in the view exactly the vertices of the selected rows.
  void tableViewSelectionDidChange();
  // Nothing to do when a row is activated.
  void tableViewSelected() {}

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  std::shared_ptr<VXLController> mainController_;
  std::shared_ptr<QLONetwork> network_;  // the network the rows show
  QTableView* table_ = nullptr;
  QIcon icon_;
};

}  // namespace ui
