#include "ui/SidePanel.h"

#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "ui/VXLVerticesTableController.h"
#include "ui/panels/CollapsibleSection.h"
#include "ui/panels/ColourPanel.h"
#include "ui/panels/FilterPanel.h"
#include "ui/panels/GeneratorPanel.h"
#include "ui/panels/LayoutPanel.h"
#include "ui/panels/NetworkInfoPanel.h"
#include "ui/panels/ViewPanel.h"
#include "ui/wheelguard.h"

namespace ui {

struct SidePanel::Panels {
  NetworkInfoPanel* network;
  GeneratorPanel* generator;
  LayoutPanel* layout;
  ViewPanel* view;
  FilterPanel* filter;
  ColourPanel* colour;
  VXLVerticesTableController* vertices;
  QTimer* follow;
};

SidePanel::SidePanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), panels_(std::make_unique<Panels>()), controller_(std::move(controller)) {
  Panels& p = *panels_;
  p.network = new NetworkInfoPanel(controller_);
  p.generator = new GeneratorPanel(controller_);
  p.layout = new LayoutPanel(controller_);
  p.view = new ViewPanel(controller_);
  p.filter = new FilterPanel(controller_);
  p.colour = new ColourPanel(controller_);
  p.vertices = new VXLVerticesTableController(controller_, this);
  auto* table = new QTableView;
  table->setObjectName("verticesTable");
  table->setMinimumHeight(220);
  auto* search = new QLineEdit;
  search->setObjectName("verticesSearch");
  search->setPlaceholderText(tr("Search names"));
  search->setClearButtonEnabled(true);
  p.vertices->setTable(table, search);
  auto* verticesBox = new QWidget;
  auto* verticesColumn = new QVBoxLayout(verticesBox);
  verticesColumn->setContentsMargins(0, 0, 0, 0);
  verticesColumn->addWidget(search);
  verticesColumn->addWidget(table);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(new CollapsibleSection("Network", p.network, this));
  column->addWidget(new CollapsibleSection("Generator", p.generator, this));
  column->addWidget(new CollapsibleSection("Layout", p.layout, this));
  column->addWidget(new CollapsibleSection("View", p.view, this));
  column->addWidget(new CollapsibleSection("Filter", p.filter, this));
  column->addWidget(new CollapsibleSection("Colour", p.colour, this));
  column->addWidget(new CollapsibleSection("Vertices", verticesBox, this));
  column->addStretch(1);

  // The view changes some of what the panels show on its own: Space starts
  // and pauses the layout, and a frame resets the filter range to the values
  // after the network or the filter property changed.
  p.follow = new QTimer(this);
  p.follow->setInterval(250);
  connect(p.follow, &QTimer::timeout, this, [this] {
    if (!isVisible()) return;
    panels_->layout->showRunning();
    panels_->filter->showValues();
    // Clicks in the view and scripts change the selection: the rows follow.
    const std::uint64_t selection = controller_->networkView()->selectionChangeCount();
    if (selection != shownSelection_) {
      shownSelection_ = selection;
      panels_->vertices->showViewSelection();
    }
  });
  p.follow->start();

  refreshAll();
  guardWheelOnInputs(this);
}

SidePanel::~SidePanel() {
  // The controller outlives its window (scripts still find it): it must not
  // call back into panels that are gone.
  controller_->setRefreshListener(nullptr);
}

void SidePanel::refresh(VXLController::Panel panel) {
  using Panel = VXLController::Panel;
  Panels& p = *panels_;
  switch (panel) {
    case Panel::NetworkInfo:
      p.network->refresh();
      break;
    case Panel::Generator:
      p.generator->refresh();
      break;
    case Panel::Properties:
      p.layout->refresh();
      p.view->refresh();
      p.filter->refresh();
      break;
    case Panel::Nodes:
      p.vertices->reloadTable();
      break;
    case Panel::Colour:
      p.colour->refresh();
      p.vertices->reloadColours();
      break;
    case Panel::NodesSelected:
      shownSelection_ = controller_->networkView()->selectionChangeCount();
      p.vertices->showViewSelection();
      break;
  }
}

void SidePanel::refreshAll() {
  using Panel = VXLController::Panel;
  for (Panel panel :
       {Panel::NetworkInfo, Panel::Generator, Panel::Properties, Panel::Nodes, Panel::Colour}) {
    refresh(panel);
  }
}

}  // namespace ui
