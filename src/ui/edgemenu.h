#pragma once
// The View menu's edge items: Show Arrows, Edge Width by Weight and the Edge
// Colours submenu (Endpoints, Weight, Single Colour). They act through the
// controller and show its state each time the menu opens.
#include <memory>

class QMenu;
class VXLController;

namespace ui {

void addEdgeStyleItems(QMenu* menu, std::shared_ptr<VXLController> controller);

}  // namespace ui
