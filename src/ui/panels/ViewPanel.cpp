#include "ui/panels/ViewPanel.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "app/VXLController.h"

namespace ui {
namespace {

using C = VXLController;

struct SwitchRow {
  const char* label;
  const char* name;
  bool (C::*get)() const;
  void (C::*set)(bool);
};

// Every drawing and overlay switch the controller has. The camera overlay's
// setter deliberately keeps the controller's own copy and leaves the view
// alone; its box shows the view's state at the next refresh.
constexpr SwitchRow kSwitches[] = {
    {"Show nodes", "showNodes", &C::showNodes, &C::setShowNodes},
    {"Show edges", "showEdges", &C::showEdges, &C::setShowEdges},
    {"Show arrows", "showArrows", &C::showArrows, &C::setShowArrows},
    {"Width by weight", "edgeWidthByWeight", &C::edgeWidthByWeight, &C::setEdgeWidthByWeight},
    {"Blend lines", "blendLines", &C::blendLines, &C::setBlendLines},
    {"Edges depth test", "edgesDepthTest", &C::edgesDepthTest, &C::setEdgesDepthTest},
    {"Vertices depth test", "verticesDepthTest", &C::verticesDepthTest, &C::setVerticesDepthTest},
    {"Simple shapes", "simpleShapes", &C::simpleShapes, &C::setSimpleShapes},
    {"Motion blur", "shader", &C::shader, &C::setShader},
    {"Limit nodes", "limitNodes", &C::limitNodes, &C::setLimitNodes},
    {"Limit edges", "limitEdges", &C::limitEdges, &C::setLimitEdges},
    {"Show legends", "showLegends", &C::showLegends, &C::setShowLegends},
    {"Black background", "blackBackground", &C::blackBackground, &C::setBlackBackground},
    {"General info", "generalInfo", &C::generalInfo, &C::setGeneralInfo},
    {"Camera info", "cameraInfo", &C::cameraInfo, &C::setCameraInfo},
    {"Vertex info", "vertexInfo", &C::vertexInfo, &C::setVertexInfo},
};

struct NumberRow {
  const char* label;
  const char* name;
  double minimum, maximum, step;
  int decimals;
};

QDoubleSpinBox* numberBox(const NumberRow& row, QWidget* parent) {
  auto* box = new QDoubleSpinBox(parent);
  box->setObjectName(row.name);
  box->setRange(row.minimum, row.maximum);
  box->setSingleStep(row.step);
  box->setDecimals(row.decimals);
  box->setKeyboardTracking(false);
  return box;
}

// The size transforms as the panel names them, in the order offered.
struct TransformRow {
  const char* label;
  vertex_sizes::Transform transform;
};
constexpr TransformRow kTransforms[] = {
    {"Linear", vertex_sizes::Transform::Linear},
    {"Square root", vertex_sizes::Transform::SquareRoot},
    {"Logarithm", vertex_sizes::Transform::Log},
};

}  // namespace

ViewPanel::ViewPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), controller_(std::move(controller)) {
  new QFormLayout(this);
  addSwitches();
  addEdgeColours();
  addNumbers();
  addLabels();
  addSizes();
}

void ViewPanel::addSwitches() {
  auto* grid = new QGridLayout;
  int k = 0;
  const auto add = [&](const char* label, const char* name, std::function<bool()> get,
                       std::function<void(bool)> set) {
    auto* box = new QCheckBox(label, this);
    box->setObjectName(name);
    connect(box, &QCheckBox::toggled, this, std::move(set));
    grid->addWidget(box, k / 2, k % 2);
    ++k;
    switches_.push_back({box, std::move(get)});
  };
  for (const SwitchRow& row : kSwitches) {
    add(
        row.label, row.name, [this, get = row.get] { return ((*controller_).*get)(); },
        [this, set = row.set](bool on) { ((*controller_).*set)(on); });
  }
  // The capability report is the view's own switch.
  add(
      "Graphics report", "drawCaps", [this] { return controller_->networkView()->fDrawCaps(); },
      [this](bool on) { controller_->networkView()->setFDrawCaps(on); });
  static_cast<QFormLayout*>(layout())->addRow(grid);
}

void ViewPanel::addEdgeColours() {
  using edge_style::ColourMode;
  edgeColourMode_ = new QComboBox(this);
  edgeColourMode_->setObjectName("edgeColorMode");
  for (const auto& [label, mode] : {std::pair{tr("Endpoints"), ColourMode::Endpoints},
                                    {tr("Weight"), ColourMode::Weight},
                                    {tr("Single colour"), ColourMode::Single}}) {
    edgeColourMode_->addItem(label, static_cast<int>(mode));
  }
  connect(edgeColourMode_, &QComboBox::activated, this, [this](int index) {
    const auto mode = static_cast<ColourMode>(edgeColourMode_->itemData(index).toInt());
    controller_->setEdgeColorMode(mode);
  });
  edgeColour_ = new QPushButton(this);
  edgeColour_->setObjectName("edgeColor");
  edgeColour_->setToolTip(tr("The colour of every edge in single colour mode"));
  connect(edgeColour_, &QPushButton::clicked, this, [this] {
    const scene::Rgb held = controller_->edgeColor();
    const QColor chosen =
        QColorDialog::getColor(QColor::fromRgbF(held.r, held.g, held.b), this, tr("Edge Colour"));
    if (!chosen.isValid()) return;
    controller_->setEdgeColor({chosen.redF(), chosen.greenF(), chosen.blueF()});
    controller_->setEdgeColorMode(ColourMode::Single);
    refresh();
  });
  auto* row = new QHBoxLayout;
  row->addWidget(edgeColourMode_, 1);
  row->addWidget(edgeColour_);
  static_cast<QFormLayout*>(layout())->addRow(tr("Edge colours:"), row);
}

void ViewPanel::showEdgeColour() {
  const scene::Rgb c = controller_->edgeColor();
  QPixmap swatch(16, 16);
  swatch.fill(QColor::fromRgbF(c.r, c.g, c.b));
  edgeColour_->setIcon(QIcon(swatch));
}

void ViewPanel::addNumbers() {
  auto* form = static_cast<QFormLayout*>(layout());
  const auto add = [&](const NumberRow& row, std::function<double()> get,
                       std::function<void(double)> set) {
    QDoubleSpinBox* box = numberBox(row, this);
    connect(box, &QDoubleSpinBox::valueChanged, this, std::move(set));
    form->addRow(row.label, box);
    numbers_.push_back({box, std::move(get)});
  };
  auto& c = *controller_;
  const auto f = [](double v) { return static_cast<float>(v); };
  add(
      {"Edges intensity:", "edgesIntensity", 0, 1, 0.05, 2}, [&c] { return c.edgesIntensity(); },
      [&c, f](double v) { c.setEdgesIntensity(f(v)); });
  add(
      {"Vertices intensity:", "verticesIntensity", 0, 1, 0.05, 2},
      [&c] { return c.verticesIntensity(); }, [&c, f](double v) { c.setVerticesIntensity(f(v)); });
  add(
      {"Scale:", "scale", 0.01, 100, 0.1, 2}, [&c] { return c.networkView()->scale(); },
      [&c, f](double v) { c.networkView()->setScale(f(v)); });
  // The view loads a changed projection only when a slider action of its own
  // marks it stale: that action goes first, the controller then sets the
  // exact value.
  add(
      {"Near:", "nearClipDistance", 0.01, 1e5, 0.5, 2}, [&c] { return c.nearClipDistance(); },
      [&c, f](double v) {
        if (v > 0) c.networkView()->updateNear(std::log(v) / std::log(4.0));
        c.setNearClipDistance(f(v));
      });
  add(
      {"Far:", "farClipDistance", 1, 1e7, 100, 0}, [&c] { return c.farClipDistance(); },
      [&c, f](double v) {
        if (v > 0) c.networkView()->updateFar(std::log(v / 2000.0) / std::log(4.0));
        c.setFarClipDistance(f(v));
      });
  add(
      {"Line width:", "viewLineWidth", 0.1, 20, 0.5, 1}, [&c] { return c.viewLineWidth(); },
      [&c, f](double v) { c.setViewLineWidth(f(v)); });
  add(
      {"Legend size:", "viewLegendSize", 0.1, 10, 0.1, 2}, [&c] { return c.viewLegendSize(); },
      [&c, f](double v) { c.setViewLegendSize(f(v)); });
}

void ViewPanel::addLabels() {
  labels_ = new QComboBox(this);
  labels_->setObjectName(QStringLiteral("showLabels"));
  // In LabelMode's order: an item's index is its mode.
  labels_->addItems({tr("None"), tr("Selected"), tr("All")});
  connect(labels_, &QComboBox::currentIndexChanged, this,
          [this](int index) { controller_->setShowLabels(static_cast<LabelMode>(index)); });
  static_cast<QFormLayout*>(layout())->addRow(tr("Labels:"), labels_);
}

void ViewPanel::addSizes() {
  auto* form = static_cast<QFormLayout*>(layout());
  auto& c = *controller_;
  sizeProperty_ = new QComboBox(this);
  sizeProperty_->setObjectName("sizeProperty");
  sizeProperty_->setToolTip("The vertex property that sets each vertex's size");
  form->addRow("Size by:", sizeProperty_);
  connect(sizeProperty_, &QComboBox::activated, this, [this, &c](int index) {
    c.setSizeProperty(sizeProperty_->itemText(index).toStdString());
  });
  sizeTransform_ = new QComboBox(this);
  sizeTransform_->setObjectName("sizeTransform");
  for (const TransformRow& row : kTransforms) sizeTransform_->addItem(row.label);
  form->addRow("Size transform:", sizeTransform_);
  connect(sizeTransform_, &QComboBox::activated, this, [&c](int index) {
    c.setSizeTransform(kTransforms[static_cast<std::size_t>(index)].transform);
  });
  // Sizes are multiples of the standard vertex size; moving one bound past
  // the other takes the other along.
  const auto add = [&](const NumberRow& row, std::function<double()> get,
                       std::function<void(double)> set) {
    QDoubleSpinBox* box = numberBox(row, this);
    box->setSuffix("x");
    connect(box, &QDoubleSpinBox::valueChanged, this, std::move(set));
    form->addRow(row.label, box);
    numbers_.push_back({box, std::move(get)});
  };
  const double largest = vertex_sizes::kLargestSize;
  add(
      {"Smallest size:", "sizeMinimum", 0.05, largest, 0.1, 2},
      [&c] { return c.sizeRange().minimum; },
      [&c](double v) {
        const auto low = static_cast<float>(v);
        c.setSizeRange({low, std::max(low, c.sizeRange().maximum)});
      });
  add(
      {"Largest size:", "sizeMaximum", 0.05, largest, 0.1, 2},
      [&c] { return c.sizeRange().maximum; },
      [&c](double v) {
        const auto high = static_cast<float>(v);
        c.setSizeRange({std::min(high, c.sizeRange().minimum), high});
      });
}

void ViewPanel::refreshSizes() {
  const QSignalBlocker blockProperty(sizeProperty_);
  QStringList titles{QString::fromUtf8(vertex_sizes::kNoProperty.data(),
                                       static_cast<int>(vertex_sizes::kNoProperty.size()))};
  for (const std::string& title : controller_->filterPropertyTitles()) {
    titles << QString::fromStdString(title);
  }
  // A property the network lacks (a script's choice, a document's) stays
  // shown as chosen.
  const QString chosen = QString::fromStdString(controller_->sizeProperty());
  if (!titles.contains(chosen)) titles << chosen;
  QStringList shown;
  for (int i = 0; i < sizeProperty_->count(); ++i) shown << sizeProperty_->itemText(i);
  if (shown != titles) {
    sizeProperty_->clear();
    sizeProperty_->addItems(titles);
  }
  sizeProperty_->setCurrentText(chosen);
  const QSignalBlocker blockTransform(sizeTransform_);
  for (std::size_t i = 0; i < std::size(kTransforms); ++i) {
    if (kTransforms[i].transform == controller_->sizeTransform()) {
      sizeTransform_->setCurrentIndex(static_cast<int>(i));
    }
  }
}

void ViewPanel::refresh() {
  {
    const QSignalBlocker block(labels_);
    labels_->setCurrentIndex(static_cast<int>(controller_->showLabels()));
  }
  refreshSizes();
  for (const auto& [box, get] : switches_) {
    const QSignalBlocker block(box);
    box->setChecked(get());
  }
  for (const auto& [box, get] : numbers_) {
    const QSignalBlocker block(box);
    box->setValue(get());
  }
  {
    const QSignalBlocker block(edgeColourMode_);
    edgeColourMode_->setCurrentIndex(
        edgeColourMode_->findData(static_cast<int>(controller_->edgeColorMode())));
  }
  showEdgeColour();
}

}  // namespace ui
