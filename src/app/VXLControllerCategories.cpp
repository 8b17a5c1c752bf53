// The controller's categorical colouring and colour files: the category
// order, limit and hiding the panel chose, the palette from the resource
// folder and the key file beside the document's file.
#include "app/VXLController.h"
#include "colour/categorycolours.h"
#include "colour/colorfile.h"
#include "quillo/log.h"
#include "quillo/resources.h"
#include "render/VXLLegends.h"

colour::CategorySort VXLController::categorySort() const {
  return {colour_.sortTitle,
          colour_.isSortAscending ? colour::SortOrder::Ascending : colour::SortOrder::Descending,
          colour_.isSortModeAverage ? colour::SortMode::Average : colour::SortMode::TotalSum};
}

colour::CategorySources VXLController::categorySources() const {
  return {quillo::resourceFolder(), currentFile()};
}

void VXLController::colourByCategories(const TextList& values) {
  const auto network = view_->network();
  const HideSwitch hide = colour_.hideNonIndexItems ? HideSwitch::On : HideSwitch::Off;
  colour::CategoryColouring result =
      colour::categoricalColouring(values, network->countVertices(), categorySort(), network.get(),
                                   {colour_.indexedColorLimit, hide}, categorySources());
  showColours(std::move(result.colors));
  view_->setHideSpecialVertices(hide == HideSwitch::On);
  if (hide == HideSwitch::On) view_->setHiddenVertices(std::move(result.hidden));
  auto legend =
      VXLLegends::initWithTitle("", std::move(result.legendLabels), std::move(result.legendColors),
                                LegendKind::Categorical, background());
  legend->setReadable(colour_.propertyTitle, {});
  view_->setLegends(std::move(legend));
}

std::shared_ptr<QLOVector3dArray> VXLController::categoryColours(const TextList& values) const {
  const auto network = view_->network();
  return colour::colorsForCategories(values, network->countVertices(), categorySort(),
                                     network.get(), categorySources());
}

bool VXLController::openColorsFromURL(const std::filesystem::path& file) {
  colour::ColorFile read = colour::readColorFile(file);
  switch (read.status) {
    case colour::ColorFile::Status::Unreachable:
      if (alert_) {
        alert_(read.error.describe());
      } else {
        quillo::logLine(read.error.describe());
      }
      return false;
    case colour::ColorFile::Status::Unreadable:
      quillo::logLine(read.error.describe());
      return false;
    case colour::ColorFile::Status::Read:
      break;
  }
  // A property shorter than the network is refused here, and the selection
  // then stays as it was.
  addColorProperty(read.value, read.name);
  selectColorProperty(read.name);
  return true;
}
