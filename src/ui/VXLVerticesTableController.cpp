#include "ui/VXLVerticesTableController.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPainter>
#include <QPixmap>
#include <QTableView>
#include <algorithm>
#include <limits>

#include "app/VXLController.h"
#include "render/scenecolours.h"

namespace ui {
namespace {

// The application's icon, or a small dot in the default vertex colour when
// the application has none.
QIcon rowIcon() {
  const QIcon application = QApplication::windowIcon();
  if (!application.isNull()) return application;
  QPixmap dot(12, 12);
  dot.fill(Qt::transparent);
  QPainter painter(&dot);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr scene::Rgb c = scene::kDefaultVertexColour;
  painter.setBrush(QColor::fromRgbF(c.r, c.g, c.b));
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(QRectF(1, 1, 10, 10));
  return QIcon(dot);
}

}  // namespace

VXLVerticesTableController::VXLVerticesTableController(
    std::shared_ptr<VXLController> mainController, QObject* parent)
    : QAbstractTableModel(parent),
      mainController_(std::move(mainController)),
      network_(mainController_->network()),
      icon_(rowIcon()) {}

void VXLVerticesTableController::setTable(QTableView* table) {
  table_ = table;
  table->setModel(this);
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
}

void VXLVerticesTableController::reloadTable() {
  beginResetModel();
  network_ = mainController_->network();
  endResetModel();
}

void VXLVerticesTableController::tableViewSelectionDidChange() {
  if (!table_) return;
  mainController_->resetSelection();
  for (const QItemSelectionRange& range : table_->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      mainController_->addToSelectionVertexWithIndex(static_cast<std::uint64_t>(row));
    }
  }
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

QVariant VXLVerticesTableController::objectValue(const QString& identifier, int row) const {
  if (!network_ || row < 0 || static_cast<std::uint64_t>(row) >= network_->countVertices()) {
    return {};
  }
  const auto index = static_cast<std::uint64_t>(row);
  if (identifier == "icon") return icon_;
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
