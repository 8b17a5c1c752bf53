// Python access to the web bundle export: the 3D export table (rows, function
// codes, selection) and exportWebToFile, which raises OSError naming every
// file it could not write.
#include "bindings/bind_controller_web.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <string>

#include "bindings/errors.h"

namespace py = pybind11;

namespace plexview {

void bindControllerWeb(py::class_<VXLController, std::shared_ptr<VXLController>>& cls) {
  using T = VXLExport3DTableController;
  py::class_<T> table(cls, "Export3DTableController",
                      "The 3D export sheet's tables: the colour properties offered for a web "
                      "bundle with their transform function codes (1 is \"Exponential\"), the "
                      "network's vertex properties, and the rows picked in each.");
  py::enum_<T::Table>(table, "Table")
      .value("Colors", T::Table::Colors)
      .value("Properties", T::Table::Properties);
  table.def_static("colorFunctionForCode", &T::colorFunctionForCode, py::arg("code"),
                   "The function's name for a code; unknown codes give \"Linear\".");
  table.def("numberOfRowsInTableView", &T::numberOfRowsInTableView, py::arg("table"));
  table.def("tableView",
            py::overload_cast<T::Table, std::string_view, std::size_t>(&T::tableView, py::const_),
            py::arg("table"), py::arg("column"), py::arg("row"),
            "A cell: a name in column \"name\", a code in column \"function\", or None.");
  table.def("tableView",
            py::overload_cast<T::Table, std::int64_t, std::string_view, std::size_t>(&T::tableView),
            py::arg("table"), py::arg("value"), py::arg("column"), py::arg("row"),
            "Stores a function code (column \"function\" of the colours table only).");
  table.def("reloadTable", &T::reloadTable,
            "Takes the rows afresh, every code 1, every row selected.");
  table.def("selectedRows", &T::selectedRows, py::arg("table"));
  table.def("setSelectedRows", &T::setSelectedRows, py::arg("table"), py::arg("rows"));
  table.def("selectedKeysForColors", &T::selectedKeysForColors);
  table.def("selectedKeysForProperties", &T::selectedKeysForProperties);
  table.def("colorsFunctionsDictionary", &T::colorsFunctionsDictionary,
            "Name to function code; None before the first reload.");
  table.def("setColorsFunctionsDictionary", &T::setColorsFunctionsDictionary,
            py::arg("dictionary"));

  cls.def("export3DTableController", py::overload_cast<>(&VXLController::export3DTableController),
          py::return_value_policy::reference_internal);
  cls.def(
      "exportWebToFile",
      [](const VXLController& c, const std::filesystem::path& folder) {
        // The colouring reads the controller, so the interpreter stays locked.
        std::string error;
        if (!c.exportWebToFile(folder, &error)) throw WriteFailure(error);
      },
      py::arg("folder"),
      "Writes the web bundle into the folder (made when missing) with the export table's "
      "choices; raises OSError naming each file that could not be written.");
  cls.def("exportTo3D", &VXLController::exportTo3D,
          "Reloads the export table and shows the sheet; False without a window.");
}

}  // namespace plexview
