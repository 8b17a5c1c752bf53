// plexview.colour, categories: the colouring order, the categorical colours
// with their legend, the palette and key files, and colour files.
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "bindings/bind_parts.h"
#include "bindings/errors.h"
#include "bindings/property_conversion.h"
#include "colour/categorycolours.h"
#include "colour/colorfile.h"
#include "plexora/QLONetwork.h"
#include "quillo/resources.h"

namespace py = pybind11;

namespace plexview {
namespace {

using namespace colour;
using Path = std::optional<std::filesystem::path>;

// Category values from any iterable: texts as they are, anything else as its
// str() (so NumPy integers 3 and Python 3 are both "3").
std::vector<std::string> categoryTexts(const py::iterable& values) {
  std::vector<std::string> texts;
  if (py::hasattr(values, "__len__")) texts.reserve(py::len(values));
  for (const py::handle item : values) {
    texts.push_back(py::isinstance<py::str>(item) ? item.cast<std::string>()
                                                  : py::str(item).cast<std::string>());
  }
  return texts;
}

py::array_t<float> colourRows(const std::vector<Rgba>& colours) {
  py::array_t<float> out({static_cast<py::ssize_t>(colours.size()), py::ssize_t{3}});
  auto cells = out.mutable_unchecked<2>();
  for (py::ssize_t i = 0; i < cells.shape(0); ++i) {
    const Rgba& c = colours[static_cast<std::size_t>(i)];
    cells(i, 0) = c.r;
    cells(i, 1) = c.g;
    cells(i, 2) = c.b;
  }
  return out;
}

py::array_t<float> colourRows(const QLOVector3dArray& colours) {
  const auto n = static_cast<py::ssize_t>(colours.count());
  py::array_t<float> out({n, py::ssize_t{3}});
  auto cells = out.mutable_unchecked<2>();
  const float* planes[3] = {colours.pointerForX(), colours.pointerForY(), colours.pointerForZ()};
  for (py::ssize_t i = 0; i < n; ++i) {
    for (py::ssize_t axis = 0; axis < 3; ++axis) cells(i, axis) = planes[axis][i];
  }
  return out;
}

CategorySources sourcesFrom(const Path& resources, const Path& networkFile) {
  return {resources.value_or(quillo::resourceFolder()), networkFile.value_or("")};
}

std::uint64_t vertexCountFrom(std::optional<std::uint64_t> count, std::size_t values) {
  return count.value_or(values);
}

void bindOrder(py::module_& m) {
  py::enum_<SortOrder>(m, "SortOrder",
                       "The sort direction switch (see sortedArrayWithColorsArray).")
      .value("Descending", SortOrder::Descending)
      .value("Ascending", SortOrder::Ascending);
  py::enum_<SortMode>(m, "SortMode", "Numeric sort keys: total or average over a category.")
      .value("TotalSum", SortMode::TotalSum)
      .value("Average", SortMode::Average);
  py::enum_<HideOthers>(m, "HideOthers", "Categories past the limit: \"Others\" or hidden.")
      .value("Off", HideOthers::Off)
      .value("On", HideOthers::On);

  py::class_<QLOCompareStub>(m, "QLOCompareStub", "A category and the key it is sorted by.")
      .def_property_readonly("theObject", &QLOCompareStub::theObject)
      .def_property_readonly("sortObject",
                             [](const QLOCompareStub& stub) { return stub.sortObject(); })
      .def("compare", &QLOCompareStub::compare, py::arg("other"))
      .def("compareInverse", &QLOCompareStub::compareInverse, py::arg("other"))
      .def("__repr__", [](const QLOCompareStub& stub) {
        return "QLOCompareStub(" + py::repr(py::str(stub.theObject())).cast<std::string>() + ", " +
               py::repr(py::cast(stub.sortObject())).cast<std::string>() + ")";
      });

  m.def(
      "sortedArrayWithColorsArray",
      [](const py::iterable& values, const std::string& sortTitle, SortOrder order, SortMode mode,
         const QLONetwork* network) {
        return sortedArrayWithColorsArray(categoryTexts(values), {sortTitle, order, mode}, network);
      },
      py::arg("values"), py::arg("sortTitle") = std::string(kSortByFrequency),
      py::arg("order") = SortOrder::Descending, py::arg("mode") = SortMode::TotalSum,
      py::arg("network") = nullptr,
      "One QLOCompareStub per distinct value, in colouring order; sortTitle is \"Frequency\", "
      "\"Alphabetical\" or a measure (\"Node Degree\", ..., or a number property of network).");
}

void bindColouring(py::module_& m) {
  py::class_<CategoryColouring>(m, "CategoryColouring",
                                "Per-vertex colours, the hidden mask and the legend entries.")
      .def_property_readonly(
          "colors", [](const CategoryColouring& c) { return colourRows(*c.colors); },
          "(N, 3) float32 red, green, blue per vertex.")
      .def_property_readonly(
          "hidden",
          [](const CategoryColouring& c) -> py::object {
            if (!c.hidden) return py::none();
            const auto* flags = c.hidden->data<std::uint8_t>();
            py::array_t<bool> out(static_cast<py::ssize_t>(c.hidden->count()));
            auto cells = out.mutable_unchecked<1>();
            for (py::ssize_t i = 0; i < cells.shape(0); ++i) cells(i) = flags[i] != 0;
            return out;
          },
          "Bool per vertex (True: hidden), or None when nothing is hidden.")
      .def_readonly("legendLabels", &CategoryColouring::legendLabels)
      .def_property_readonly(
          "legendColors", [](const CategoryColouring& c) { return colourRows(c.legendColors); },
          "(M, 3) float32, one row per legend label.");

  m.def(
      "categoricalColouring",
      [](const py::iterable& values, const std::string& sortTitle, SortOrder order, SortMode mode,
         const QLONetwork* network, std::int64_t limit, HideOthers hide, const Path& networkFile,
         const Path& resources, std::optional<std::uint64_t> vertexCount) {
        const std::vector<std::string> texts = categoryTexts(values);
        return categoricalColouring(texts, vertexCountFrom(vertexCount, texts.size()),
                                    {sortTitle, order, mode}, network, {limit, hide},
                                    sourcesFrom(resources, networkFile));
      },
      py::arg("values"), py::arg("sortTitle") = std::string(kSortByFrequency),
      py::arg("order") = SortOrder::Descending, py::arg("mode") = SortMode::TotalSum,
      py::arg("network") = nullptr, py::arg("limit") = 0, py::arg("hide") = HideOthers::Off,
      py::arg("networkFile") = py::none(), py::arg("resources") = py::none(),
      py::arg("vertexCount") = py::none(),
      "Colours the vertices by category: palette files from `resources` (default: the "
      "resource folder), the key file beside `networkFile`, spare colours drawn from the "
      "shared random source. vertexCount defaults to len(values).");
  m.def(
      "colorsForCategories",
      [](const py::iterable& values, const std::string& sortTitle, SortOrder order, SortMode mode,
         const QLONetwork* network, const Path& networkFile, const Path& resources,
         std::optional<std::uint64_t> vertexCount) {
        const std::vector<std::string> texts = categoryTexts(values);
        return colourRows(*colorsForCategories(texts, vertexCountFrom(vertexCount, texts.size()),
                                               {sortTitle, order, mode}, network,
                                               sourcesFrom(resources, networkFile)));
      },
      py::arg("values"), py::arg("sortTitle") = std::string(kSortByFrequency),
      py::arg("order") = SortOrder::Descending, py::arg("mode") = SortMode::TotalSum,
      py::arg("network") = nullptr, py::arg("networkFile") = py::none(),
      py::arg("resources") = py::none(), py::arg("vertexCount") = py::none(),
      "The colours alone, every category its own (no limit, no hiding): (N, 3) float32.");
}

void bindFiles(py::module_& m) {
  m.def("resourceFolder", &quillo::resourceFolder, "The folder of the palette files.");
  m.def(
      "loadCategoryPalette",
      [](const Path& folder) {
        const CategoryPalette palette =
            loadCategoryPalette(folder.value_or(quillo::resourceFolder()));
        std::vector<std::string> keys;
        std::vector<Rgba> named;
        for (const NamedColor& entry : palette.named.entries()) {
          keys.push_back(entry.key);
          named.push_back(entry.color);
        }
        return std::make_tuple(colourRows(palette.ordered), colourRows(palette.spare), keys,
                               colourRows(named));
      },
      py::arg("folder") = py::none(),
      "(ordered, spare, keys, colours): the ordered palette and the spare pool as (K, 3) "
      "float32 arrays, and the named list's keys with their colours.");
  m.def("keyFileForNetworkFile", &keyFileForNetworkFile, py::arg("networkFile"));
  m.def("readKeyFile", &readKeyFile, py::arg("path"),
        "The key file's category -> colour key entries (empty when missing or malformed).");

  py::enum_<ColorFileKind>(m, "ColorFileKind", "What a colour file holds.")
      .value("Colors", ColorFileKind::Colors)
      .value("Numbers", ColorFileKind::Numbers)
      .value("Categories", ColorFileKind::Categories);
  m.def(
      "classifyColorFile", [](const std::string& text) { return classifyColorFile(text); },
      py::arg("text"), "The kind of colour file the first line of `text` makes.");
  m.def(
      "readColorFile",
      [](const std::filesystem::path& path) {
        ColorFile file;
        {
          py::gil_scoped_release release;
          file = readColorFile(path);
        }
        if (file.status != ColorFile::Status::Read) throw ReadFailure(file.error);
        return std::make_pair(file.name, propertyToPython(file.value));
      },
      py::arg("path"),
      "(name, property): a QLOVector3dArray, a QLONumberArray or a list of str, named after "
      "the file. Raises ReadError when the file cannot be read or its numbers are bad.");
}

}  // namespace

void bindCategories(py::module_& colourModule) {
  bindOrder(colourModule);
  bindColouring(colourModule);
  bindFiles(colourModule);
}

}  // namespace plexview
