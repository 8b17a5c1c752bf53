#pragma once
// The side panel beside the 3-D view: the network information, generator,
// layout, view, filter and colour panels and the vertices table of one window, each
// showing and changing its controller's settings.
#include <QWidget>
#include <cstdint>
#include <memory>

#include "app/VXLController.h"

namespace ui {

class SidePanel : public QWidget {
  Q_OBJECT

 public:
  explicit SidePanel(std::shared_ptr<VXLController> controller, QWidget* parent = nullptr);
  ~SidePanel() override;

  // Shows the controller's state again in one panel; the window passes the
  // controller's refresh requests here.
  void refresh(VXLController::Panel panel);
  void refreshAll();

 private:
  struct Panels;
  std::unique_ptr<Panels> panels_;
  std::shared_ptr<VXLController> controller_;
  std::uint64_t shownSelection_ = 0;  // the view's selection count the table shows
};

}  // namespace ui
