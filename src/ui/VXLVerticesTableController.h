#pragma once
// The vertices table: one row per vertex of the controller's network, with
// the columns "icon" (a dot in the vertex's shown colour), "name", "number"
// (the vertex index) and "degree". Cells are made when the table asks for
// them, so a network of millions of vertices costs nothing until rows are
// shown. The table shows the rows through a sort and search proxy: columns
// sort by a click on their header, and the search field keeps the rows whose
// name contains its text. Selecting rows selects those vertices in the view
// (the last one's details are shown); a selection made in the view selects
// the rows.
#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <array>
#include <memory>

class QItemSelection;
class QLineEdit;
class QLONetwork;
class QSortFilterProxyModel;
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

  // Feeds `table` through the sort and search proxy and follows its
  // selection; `search` (optional) filters the rows by name.
  void setTable(QTableView* table, QLineEdit* search = nullptr);
  QTableView* table() const { return table_; }
  QSortFilterProxyModel* proxy() const { return proxy_; }

  // The value of a cell by its column's identifier: the icon, the vertex's
  // name, the vertex index, or the vertex's edge count; nothing for any
  // other identifier or a row past the end.
  QVariant objectValue(const QString& identifier, int row) const;

  // Shows the controller's network as it is now.
  void reloadTable();
  // The vertices' colours changed: the dots are drawn again.
  void reloadColours();
  // Selects in the view exactly the vertices of the selected rows.
  void tableViewSelectionDidChange();
  // Selects the rows of the vertices selected in the view.
  void showViewSelection();
  // Nothing to do when a row is activated.
  void tableViewSelected() {}

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  QIcon dot(std::uint64_t vertex) const;

  std::shared_ptr<VXLController> mainController_;
  std::shared_ptr<QLONetwork> network_;  // the network the rows show
  QSortFilterProxyModel* proxy_ = nullptr;
  QTableView* table_ = nullptr;
  bool showingViewSelection_ = false;
  mutable QHash<QRgb, QIcon> dots_;
};

}  // namespace ui
