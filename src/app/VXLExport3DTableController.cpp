#include "app/VXLExport3DTableController.h"

#include <algorithm>

#include "app/VXLController.h"
#include "app/colourselectors.h"

std::string VXLExport3DTableController::colorFunctionForCode(std::int64_t code) {
  const auto& names = VXLController::colorFunctionTitles();
  if (code < 0 || static_cast<std::uint64_t>(code) >= names.size()) return names.front();
  return names[static_cast<std::size_t>(code)];
}

std::size_t VXLExport3DTableController::numberOfRowsInTableView(Table table) const {
  return rows(table).size();
}

VXLExport3DTableController::CellValue VXLExport3DTableController::tableView(Table table,
                                                                            std::string_view column,
                                                                            std::size_t row) const {
  const auto& names = rows(table);
  if (row >= names.size()) return {};
  if (column == kNameColumn) return names[row];
  if (table != Table::Colors || column != kFunctionColumn) return {};
  if (!colorsFunctionsDictionary_) return std::int64_t{1};
  const auto found = colorsFunctionsDictionary_->find(names[row]);
  if (found == colorsFunctionsDictionary_->end()) return {};
  return found->second;
}

void VXLExport3DTableController::tableView(Table table, std::int64_t value, std::string_view column,
                                           std::size_t row) {
  if (table != Table::Colors || column != kFunctionColumn || !colorsFunctionsDictionary_) return;
  if (row >= colorKeys_.size()) return;
  (*colorsFunctionsDictionary_)[colorKeys_[row]] = value;
}

void VXLExport3DTableController::reloadTable() {
  std::vector<std::string> keys;
  propertyKeys_.clear();
  if (mainController_) {
    keys = mainController_->colorPropertyKeys();
    if (const auto network = mainController_->network()) {
      propertyKeys_ = network->keysForPropertiesOfVertices();
    }
  }
  colorsFunctionsDictionary_.emplace();
  for (const std::string& key : keys) {
    if (!app::isNoColourTitle(key)) (*colorsFunctionsDictionary_)[key] = 1;
  }
  // The last key is never offered.
  if (!keys.empty()) keys.pop_back();
  colorKeys_ = std::move(keys);

  const auto all = [](std::size_t count) {
    std::vector<std::size_t> rows(count);
    for (std::size_t i = 0; i < count; ++i) rows[i] = i;
    return rows;
  };
  selectedColors_ = all(colorKeys_.size());
  selectedProperties_ = all(propertyKeys_.size());
}

const std::vector<std::size_t>& VXLExport3DTableController::selectedRows(Table table) const {
  return table == Table::Colors ? selectedColors_ : selectedProperties_;
}

void VXLExport3DTableController::setSelectedRows(Table table, std::vector<std::size_t> selected) {
  const std::size_t count = rows(table).size();
  std::erase_if(selected, [count](std::size_t row) { return row >= count; });
  std::sort(selected.begin(), selected.end());
  selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
  (table == Table::Colors ? selectedColors_ : selectedProperties_) = std::move(selected);
}

std::vector<std::string> VXLExport3DTableController::selectedKeysForColors() const {
  std::vector<std::string> names;
  for (std::size_t row : selectedColors_) names.push_back(colorKeys_[row]);
  return names;
}

std::vector<std::string> VXLExport3DTableController::selectedKeysForProperties() const {
  std::vector<std::string> names;
  for (std::size_t row : selectedColors_) {
    names.push_back(std::get<std::string>(tableView(Table::Colors, kNameColumn, row)));
  }
  return names;
}
