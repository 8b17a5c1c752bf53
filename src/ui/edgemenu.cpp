#include "ui/edgemenu.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include "app/VXLController.h"

namespace ui {

void addEdgeStyleItems(QMenu* menu, std::shared_ptr<VXLController> controller) {
  using edge_style::ColourMode;
  QAction* arrows = menu->addAction(QObject::tr("Show &Arrows"));
  arrows->setObjectName("showArrowsAction");
  arrows->setCheckable(true);
  QObject::connect(arrows, &QAction::triggered, menu,
                   [controller](bool on) { controller->setShowArrows(on); });
  QAction* widths = menu->addAction(QObject::tr("Edge &Width by Weight"));
  widths->setObjectName("edgeWidthByWeightAction");
  widths->setCheckable(true);
  QObject::connect(widths, &QAction::triggered, menu,
                   [controller](bool on) { controller->setEdgeWidthByWeight(on); });

  QMenu* colours = menu->addMenu(QObject::tr("Edge &Colours"));
  auto* group = new QActionGroup(colours);
  for (const auto& [text, mode] : {std::pair{QObject::tr("&Endpoints"), ColourMode::Endpoints},
                                   {QObject::tr("&Weight"), ColourMode::Weight},
                                   {QObject::tr("&Single Colour"), ColourMode::Single}}) {
    QAction* item = colours->addAction(text);
    item->setCheckable(true);
    item->setData(static_cast<int>(mode));
    group->addAction(item);
    QObject::connect(item, &QAction::triggered, menu,
                     [controller, m = mode] { controller->setEdgeColorMode(m); });
  }
  QObject::connect(menu, &QMenu::aboutToShow, menu, [=] {
    arrows->setChecked(controller->showArrows());
    widths->setChecked(controller->edgeWidthByWeight());
    const int mode = static_cast<int>(controller->edgeColorMode());
    for (QAction* item : group->actions()) item->setChecked(item->data().toInt() == mode);
  });
}

}  // namespace ui
