#pragma once
// What the 3D export sheet's two tables show and what the user picked in
// them: the colour properties offered (one per row, with the transform
// function code chosen for each) and the network's vertex property keys.
// The sheet's table views show these rows and report their selection here;
// the web bundle export reads the chosen names and codes back.
//
// The rows are taken from the main controller at every reloadTable(), so the
// tables do not change under the user while the sheet is open.
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class VXLController;

class VXLExport3DTableController {
 public:
  enum class Table { Colors, Properties };
  // Column identifiers.
  static constexpr std::string_view kNameColumn = "name";
  static constexpr std::string_view kFunctionColumn = "function";
  // Property name to transform function code (the index in
  // VXLController::colorFunctionTitles(): 1 is "Exponential").
  using FunctionsDictionary = std::map<std::string, std::int64_t>;
  // A cell: nothing, a name or a function code.
  using CellValue = std::variant<std::monostate, std::string, std::int64_t>;

  explicit VXLExport3DTableController(const VXLController* mainController = nullptr)
      : mainController_(mainController) {}

  const VXLController* mainController() const { return mainController_; }
  void setMainController(const VXLController* controller) { mainController_ = controller; }

  // The function's name for a code; codes outside the list give "Linear".
  static std::string colorFunctionForCode(std::int64_t code);

  // Colours table: the controller's colour property keys but the last one;
  // properties table: the network's vertex property keys.
  std::size_t numberOfRowsInTableView(Table table) const;
  // The cell of a row: a name in column "name"; in column "function" of the
  // colours table the name's code (1 before the first reload, nothing for a
  // name without a code).
  CellValue tableView(Table table, std::string_view column, std::size_t row) const;
  // Stores a code, only in column "function" of the colours table and only
  // once the dictionary exists.
  void tableView(Table table, std::int64_t value, std::string_view column, std::size_t row);

  // Takes the rows afresh, gives every colour property but "None" the code 1
  // and selects every row of both tables.
  void reloadTable();

  // The selected rows of a table, ascending; rows beyond the table are dropped.
  const std::vector<std::size_t>& selectedRows(Table table) const;
  void setSelectedRows(Table table, std::vector<std::size_t> rows);

  // The names of the selected colour rows, in row order.
  std::vector<std::string> selectedKeysForColors() const;
  // The "name" cells of the selected colour rows (the properties table's own
  // selection is not consulted).
  std::vector<std::string> selectedKeysForProperties() const;

  // None until the first reload.
  const std::optional<FunctionsDictionary>& colorsFunctionsDictionary() const {
    return colorsFunctionsDictionary_;
  }
  void setColorsFunctionsDictionary(std::optional<FunctionsDictionary> dictionary) {
    colorsFunctionsDictionary_ = std::move(dictionary);
  }

 private:
  const std::vector<std::string>& rows(Table table) const {
    return table == Table::Colors ? colorKeys_ : propertyKeys_;
  }

  const VXLController* mainController_;
  std::vector<std::string> colorKeys_;
  std::vector<std::string> propertyKeys_;
  std::vector<std::size_t> selectedColors_;
  std::vector<std::size_t> selectedProperties_;
  std::optional<FunctionsDictionary> colorsFunctionsDictionary_;
};
