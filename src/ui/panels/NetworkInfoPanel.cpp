#include "ui/panels/NetworkInfoPanel.h"

#include <QFormLayout>
#include <QLabel>
#include <QStringList>
#include <variant>

#include "app/VXLController.h"

namespace ui {
namespace {

QString kindOf(const PropertyValue& value) {
  if (std::holds_alternative<std::shared_ptr<QLONumberArray>>(value)) return "numbers";
  if (std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(value)) return "vectors";
  if (std::holds_alternative<std::shared_ptr<TextList>>(value)) return "texts";
  return "none";
}

QString yesNo(bool value) {
  return value ? "Yes" : "No";
}

}  // namespace

NetworkInfoPanel::NetworkInfoPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), controller_(std::move(controller)) {
  new QFormLayout(this);
  name_ = addRow("Name:", "networkName");
  vertices_ = addRow("Vertices:", "vertexCount");
  edges_ = addRow("Edges:", "edgeCount");
  directed_ = addRow("Directed:", "directed");
  vertexWeighted_ = addRow("Vertex-weighted:", "vertexWeighted");
  edgeWeighted_ = addRow("Edge-weighted:", "edgeWeighted");
  properties_ = addRow("Properties:", "propertyList");
  name_->setWordWrap(true);
  properties_->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

QLabel* NetworkInfoPanel::addRow(const QString& title, const QString& name) {
  auto* value = new QLabel(this);
  value->setObjectName(name);
  static_cast<QFormLayout*>(layout())->addRow(title, value);
  return value;
}

void NetworkInfoPanel::refresh() {
  name_->setText(QString::fromStdString(controller_->networkName()));
  const auto network = controller_->network();
  if (!network) {
    for (QLabel* label :
         {vertices_, edges_, directed_, vertexWeighted_, edgeWeighted_, properties_}) {
      label->clear();
    }
    return;
  }
  vertices_->setText(QString::number(network->countVertices()));
  edges_->setText(QString::number(network->countEdges()));
  directed_->setText(yesNo(network->isDirected()));
  vertexWeighted_->setText(yesNo(network->isVertexWeighted()));
  edgeWeighted_->setText(yesNo(network->isEdgeWeighted()));
  QStringList lines;
  for (const auto& [name, value] : network->propertiesOfVertices()) {
    lines << QString("%1 (%2)").arg(QString::fromStdString(name), kindOf(value));
  }
  properties_->setText(lines.isEmpty() ? "none" : lines.join('\n'));
}

}  // namespace ui
