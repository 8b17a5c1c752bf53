// The web bundle: file texts, whole bundles, the 3D export table, failures.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "../colour/scratch.h"
#include "../support/files.h"
#include "app/VXLController.h"
#include "io/webtexts.h"

namespace {

namespace fs = std::filesystem;
using Table = VXLExport3DTableController::Table;
using Cell = VXLExport3DTableController::CellValue;
using testing_support::contentsOf;

std::set<std::string> filesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

std::shared_ptr<TextList> texts(TextList values) {
  return std::make_shared<TextList>(std::move(values));
}

// Triangle 0-1-2 with a tail 2-3, weights 1 to 4, named vertices and a text
// property whose name has a blank and whose values have a line break.
std::shared_ptr<QLONetwork> townsNetwork() {
  NetworkData data;
  data.verticesCount = 4;
  data.from = {0, 1, 2, 2};
  data.to = {1, 2, 0, 3};
  data.weights = {1, 2, 3, 4};
  data.edgeWeighted = true;
  data.properties = {{"Name", texts({"alpha", "beta", "gamma", "delta"})},
                     {"Home town", texts({"Rome", "Paris\nFrance", "Rome", "Oslo"})}};
  auto network = QLONetwork::make(std::move(data));
  EXPECT_TRUE(network);
  return network;
}

// A path 0-1-2, unweighted, without names.
std::shared_ptr<QLONetwork> bareNetwork(PropertyTable properties = {}) {
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1};
  data.to = {1, 2};
  data.properties = std::move(properties);
  return QLONetwork::make(std::move(data));
}

VXLController::Ptr controllerFor(std::shared_ptr<QLONetwork> network) {
  auto controller = VXLController::init();
  controller->awakeFromNib();
  controller->setNetwork(std::move(network));
  return controller;
}

TEST(WebTexts, StemsDegreeNamesAndOneEntryPerLine) {
  EXPECT_EQ(io::webStem(" a  b "), "_a__b_");
  EXPECT_TRUE(io::isDegreeName("node DEGREE"));
  EXPECT_FALSE(io::isDegreeName("Node Degree "));

  // Every kind of line break becomes one blank; numbers and vectors keep
  // their own precision's shortest text.
  const std::vector<std::pair<PropertyValue, std::string>> cases = {
      {texts({"a\nb", "c\r\nd", "e\u2028f\u2029g\u0085h", "\tkept\t"}),
       "a b\nc  d\ne f g h\n\tkept\t\n"},
      {QLONumberArray::initWithFloats(std::vector<float>{0.1f, -2.0f, 1e20f}), "0.1\n-2\n1e+20\n"},
      {PropertyValue{}, ""},
  };
  for (const auto& [property, expected] : cases) {
    EXPECT_EQ(io::propertyText(property, propertyCount(property)), expected);
  }
}

TEST(WebExport, BundleOfAWeightedNamedNetwork) {
  auto controller = controllerFor(townsNetwork());
  auto& table = controller->export3DTableController();
  table.reloadTable();
  // Every offered name starts selected ("None", the last key, is not
  // offered). Three are kept; the degree goes linear, the others keep code 1.
  ASSERT_EQ(table.selectedKeysForColors(),
            (std::vector<std::string>{"Home town", "Node Degree", "Node InDegree",
                                      "Node InStrength", "Node Strength"}));
  table.setSelectedRows(Table::Colors, {4, 0, 1});
  table.tableView(Table::Colors, 0, "function", 1);

  const ScratchFolder scratch;
  const fs::path folder = scratch.path() / "nested" / "bundle";
  fs::create_directories(folder);
  std::ofstream(folder / "edges.dat") << "stale";
  std::string error;
  ASSERT_TRUE(controller->exportWebToFile(folder, &error)) << error;

  EXPECT_EQ(filesIn(folder), (std::set<std::string>{
                                 "edges.dat", "positions.dat", "names.dat", "degree.property",
                                 "degree.colors", "Node_Strength.property", "Node_Strength.colors",
                                 "Home_town.property", "Home_town.colors", "properties.json"}));
  EXPECT_EQ(contentsOf(folder / "edges.dat"), "0 1\n1 2\n2 0\n2 3\n");
  EXPECT_EQ(contentsOf(folder / "names.dat"), "alpha\nbeta\ngamma\ndelta");
  EXPECT_EQ(contentsOf(folder / "degree.property"), "2\n2\n3\n1\n");
  EXPECT_EQ(contentsOf(folder / "Home_town.property"), "Rome\nParis France\nRome\nOslo\n");
  EXPECT_EQ(contentsOf(folder / "positions.dat"), controller->positions()->text());
  EXPECT_EQ(contentsOf(folder / "properties.json"),
            "{\n"
            "\t\"degree\" : \"Node Degree\",\n"
            "\t\"Home_town\" : \"Home town\",\n"
            "\t\"Node_Strength\" : \"Node Strength\",\n"
            "\t\"ORDER\" : [\"degree\", \"Home_town\", \"Node_Strength\"]\n"
            "}\n");

  // Each property's colours under its own function.
  const auto colours = [&](const char* name, const char* function) {
    return controller->colorsForProperty(name, function)->text();
  };
  EXPECT_NE(colours("Node Degree", "Linear"), colours("Node Degree", "Exponential"));
  EXPECT_EQ(contentsOf(folder / "degree.colors"), colours("Node Degree", "Linear"));
  EXPECT_EQ(contentsOf(folder / "Node_Strength.colors"), colours("Node Strength", "Exponential"));
  // A colour file reads back as one colour per vertex.
  EXPECT_EQ(QLOVector3dArray::initWithContentsOfURL(folder / "Home_town.colors", Precision::Float)
                ->count(),
            4u);
}

TEST(WebExport, TheTableRowsCodesAndSelection) {
  // "zone" sorts after "None", so "None" is offered and "zone" is not.
  auto controller = controllerFor(
      bareNetwork({{"zone", texts({"n", "s", "n"})},
                   {"Age", QLONumberArray::initWithFloats(std::vector<float>{30, 40, 50})}}));
  VXLExport3DTableController& table = controller->export3DTableController();
  table.reloadTable();
  const std::vector<std::string> offered{"Age", "Node Degree", "Node InDegree", "None"};
  ASSERT_EQ(table.numberOfRowsInTableView(Table::Colors), offered.size());
  for (std::size_t row = 0; row < offered.size(); ++row) {
    EXPECT_EQ(table.tableView(Table::Colors, "name", row), Cell(offered[row]));
  }
  EXPECT_EQ(table.tableView(Table::Colors, "function", 3), Cell());  // "None" has no code

  // Edits go to the function column of the colours table only.
  table.tableView(Table::Colors, 5, "function", 0);
  table.tableView(Table::Colors, 3, "name", 1);
  EXPECT_EQ(table.tableView(Table::Colors, "function", 0), Cell(std::int64_t{5}));
  EXPECT_EQ(table.tableView(Table::Colors, "function", 1), Cell(std::int64_t{1}));

  // The selection keeps row order and drops rows beyond the table.
  table.setSelectedRows(Table::Colors, {3, 9, 0, 3});
  EXPECT_EQ(table.selectedRows(Table::Colors), (std::vector<std::size_t>{0, 3}));
  EXPECT_EQ(table.selectedKeysForColors(), (std::vector<std::string>{"Age", "None"}));

  // "None" gives no colours, so no files but its index entry; "Age" has its
  // values and its colours under "Power".
  const ScratchFolder scratch;
  const fs::path folder = scratch.path() / "table";
  ASSERT_TRUE(controller->exportWebToFile(folder));
  EXPECT_FALSE(fs::exists(folder / "None.colors"));
  EXPECT_FALSE(fs::exists(folder / "None.property"));
  EXPECT_EQ(contentsOf(folder / "Age.property"), "30\n40\n50\n");
  EXPECT_EQ(contentsOf(folder / "Age.colors"),
            controller->colorsForProperty("Age", "Power")->text());
}

TEST(WebExport, FunctionCodesOutsideTheListAreLinear) {
  EXPECT_EQ(VXLExport3DTableController::colorFunctionForCode(4), "Logarithmic");
  EXPECT_EQ(VXLExport3DTableController::colorFunctionForCode(6), "Linear");
  EXPECT_EQ(VXLExport3DTableController::colorFunctionForCode(-1), "Linear");
}

TEST(WebExport, AFileThatCannotBeWrittenIsReportedAndTheRestIsWritten) {
  auto controller = controllerFor(townsNetwork());
  controller->export3DTableController().reloadTable();
  const ScratchFolder scratch;
  const fs::path folder = scratch.path() / "blocked";
  fs::create_directories(folder / "names.dat");  // a folder where the file goes
  std::string error;
  EXPECT_FALSE(controller->exportWebToFile(folder, &error));
  EXPECT_NE(error.find((folder / "names.dat").string()), std::string::npos) << error;
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;  // one file failed
  EXPECT_EQ(contentsOf(folder / "edges.dat"), "0 1\n1 2\n2 0\n2 3\n");
  EXPECT_TRUE(fs::exists(folder / "properties.json"));
  for (const std::string& name : filesIn(folder)) {
    EXPECT_EQ(name.find(".tmp"), std::string::npos) << name;
  }

  // A folder that cannot be made: nothing is written and the reason is said.
  std::ofstream(folder / "plain") << "x";
  EXPECT_FALSE(controller->exportWebToFile(folder / "plain" / "bundle", &error));
  EXPECT_NE(error.find("plain"), std::string::npos) << error;
}

}  // namespace
