#include "ui/VXLVerticesTableController.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <algorithm>
#include <limits>

#include "app/VXLController.h"
#include "render/scenecolours.h"

namespace ui {
namespace {

constexpr int kNameColumn = 1;

QIcon dotIcon(const QColor& colour) {
  QPixmap pixmap(12, 12);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(colour);
  painter.setPen(QColor(0, 0, 0, 60));
  painter.drawEllipse(QRectF(1, 1, 10, 10));
  return QIcon(pixmap);
}

float unit(double value) {
  return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

}  // namespace

VXLVerticesTableController::VXLVerticesTableController(
    std::shared_ptr<VXLController> mainController, QObject* parent)
    : QAbstractTableModel(parent),
      mainController_(std::move(mainController)),
      network_(mainController_->network()) {}

void VXLVerticesTableController::setTable(QTableView* table, QLineEdit* search) {
  table_ = table;
  proxy_ = new QSortFilterProxyModel(this);
  proxy_->setSourceModel(this);
  proxy_->setFilterKeyColumn(kNameColumn);
  proxy_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  proxy_->setSortRole(Qt::UserRole);
  table->setModel(proxy_);
  // Rows start in vertex order, unsorted: sorting a large network waits for
  // a click on a header.
  table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  table->setSortingEnabled(true);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::ExtendedSelection);
  // Fixed row heights and no row header: the table never measures its rows.
  table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table->verticalHeader()->hide();
  table->horizontalHeader()->setStretchLastSection(true);
  table->setColumnWidth(0, 28);
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { tableViewSelectionDidChange(); });
  connect(table, &QTableView::activated, this, [this] { tableViewSelected(); });
  if (search) {
    connect(search, &QLineEdit::textChanged, proxy_,
            [this](const QString& text) { proxy_->setFilterFixedString(text); });
  }
}

void VXLVerticesTableController::reloadTable() {
  beginResetModel();
  network_ = mainController_->network();
  endResetModel();
  showViewSelection();
}

void VXLVerticesTableController::reloadColours() {
  if (rowCount() == 0) return;
  emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

void VXLVerticesTableController::tableViewSelectionDidChange() {
  if (!table_ || showingViewSelection_) return;
  std::vector<std::uint64_t> vertices;
  for (const QModelIndex& row : table_->selectionModel()->selectedRows()) {
    vertices.push_back(static_cast<std::uint64_t>(proxy_->mapToSource(row).row()));
  }
  std::ranges::sort(vertices);
  mainController_->setSelectedVertices(vertices);
  VXLNetworkView& view = *mainController_->networkView();
  // The details follow the row clicked last.
  const QModelIndex current = table_->selectionModel()->currentIndex();
  if (current.isValid() && table_->selectionModel()->isRowSelected(current.row())) {
    view.updateVertexInfoWithVertex(static_cast<std::uint64_t>(proxy_->mapToSource(current).row()));
  }
}

void VXLVerticesTableController::showViewSelection() {
  if (!table_) return;
  const std::vector<std::uint64_t> selected = mainController_->networkView()->selectedIndices();
  QItemSelection rows;
  const int count = rowCount();
  // Runs of consecutive vertices make one range each.
  for (std::size_t i = 0; i < selected.size();) {
    std::size_t j = i;
    while (j + 1 < selected.size() && selected[j + 1] == selected[j] + 1) ++j;
    if (selected[i] < static_cast<std::uint64_t>(count)) {
      const int last = static_cast<int>(std::min<std::uint64_t>(selected[j], count - 1));
      rows.select(index(static_cast<int>(selected[i]), 0), index(last, columnCount() - 1));
    }
    i = j + 1;
  }
  showingViewSelection_ = true;
  table_->selectionModel()->select(proxy_->mapSelectionFromSource(rows),
                                   QItemSelectionModel::ClearAndSelect);
  showingViewSelection_ = false;
}

int VXLVerticesTableController::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || !network_) return 0;
  // A table view counts rows in int.
  return static_cast<int>(
      std::min<std::uint64_t>(network_->countVertices(), std::numeric_limits<int>::max()));
}

int VXLVerticesTableController::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumnIdentifiers.size());
}

QIcon VXLVerticesTableController::dot(std::uint64_t vertex) const {
  scene::Rgb c = scene::kDefaultVertexColour;
  const auto colours = mainController_->networkView()->colors();
  if (colours && vertex < colours->count()) {
    const auto rgb = colours->vectorAtIndex(vertex);
    c = {unit(rgb[0]), unit(rgb[1]), unit(rgb[2])};
  }
  const QColor colour = QColor::fromRgbF(c.r, c.g, c.b);
  auto found = dots_.find(colour.rgb());
  if (found == dots_.end()) found = dots_.insert(colour.rgb(), dotIcon(colour));
  return *found;
}

QVariant VXLVerticesTableController::objectValue(const QString& identifier, int row) const {
  if (!network_ || row < 0 || static_cast<std::uint64_t>(row) >= network_->countVertices()) {
    return {};
  }
  const auto index = static_cast<std::uint64_t>(row);
  if (identifier == "icon") return dot(index);
  if (identifier == "name") return QString::fromStdString(network_->vertexName(index));
  if (identifier == "number") return QVariant::fromValue<qulonglong>(index);
  if (identifier == "degree")
    return QVariant::fromValue<qulonglong>(network_->degreeOfVertex(index));
  return {};
}

QVariant VXLVerticesTableController::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.column() >= columnCount()) return {};
  const QString identifier = kColumnIdentifiers[static_cast<std::size_t>(index.column())];
  const bool icon = identifier == "icon";
  if ((icon && role == Qt::DecorationRole) || (!icon && role == Qt::DisplayRole)) {
    return objectValue(identifier, index.row());
  }
  // Sorting: numbers as numbers, names as text, the dots by vertex index.
  if (role == Qt::UserRole) {
    return icon ? objectValue(QStringLiteral("number"), index.row())
                : objectValue(identifier, index.row());
  }
  return {};
}

QVariant VXLVerticesTableController::headerData(int section, Qt::Orientation orientation,
                                                int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const QString identifier = kColumnIdentifiers[static_cast<std::size_t>(section)];
  if (role == Qt::UserRole) return identifier;
  if (role != Qt::DisplayRole || identifier == "icon") return {};
  return QString(identifier.at(0).toUpper()) + identifier.mid(1);
}

}  // namespace ui
