#include "ui/SidePanel.h"

namespace ui {

struct SidePanel::Panels {};

SidePanel::SidePanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), panels_(std::make_unique<Panels>()), controller_(std::move(controller)) {}

SidePanel::~SidePanel() = default;

void SidePanel::refresh(VXLController::Panel /*panel*/) {}

void SidePanel::refreshAll() {}

}  // namespace ui
