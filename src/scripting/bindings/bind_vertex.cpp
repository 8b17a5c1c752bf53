#include <string>

#include "bindings/bind_parts.h"
#include "bindings/property_conversion.h"
#include "plexora/QLONetwork.h"
#include "plexora/QLOVertex.h"

namespace py = pybind11;

namespace plexview {
namespace {

py::dict propertiesOf(const QLOVertex& vertex) {
  py::dict entries;
  for (const auto& [name, entry] : vertex.properties())
    entries[py::str(name)] = entryToPython(entry);
  return entries;
}

std::string repr(const QLOVertex& vertex) {
  std::string text = "<QLOVertex ";
  text += std::to_string(vertex.identification());
  text += " name=";
  text += py::repr(py::str(vertex.name())).cast<std::string>();
  text += " edges=";
  text += std::to_string(vertex.countEdges());
  text += '>';
  return text;
}

}  // namespace

void bindVertex(py::module_& m) {
  // Held by value: a vertex is an index and a shared pointer to its network,
  // which it keeps alive.
  py::class_<QLOVertex>(m, "QLOVertex", "One vertex of a network; keeps the network alive.")
      .def("identification", &QLOVertex::identification, "The vertex number, from 0.")
      .def("name", &QLOVertex::name, "The \"Name\" text of the vertex, or its number.")
      .def("countEdges", &QLOVertex::countEdges, "Edge ends at this vertex (a self-loop counts 2).")
      .def("properties", &propertiesOf,
           "This vertex's entry of every property by name: numbers as float, vectors as "
           "3-tuples, texts as str.")
      // Every network is created non-const; Python has no const, so the vertex
      // hands back the same object the network's methods work on.
      .def("network",
           [](const QLOVertex& vertex) {
             return std::const_pointer_cast<QLONetwork>(vertex.network());
           })
      .def("__repr__", &repr);
}

}  // namespace plexview
