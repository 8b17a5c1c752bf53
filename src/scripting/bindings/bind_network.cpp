#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <string>

#include "bindings/arguments.h"
#include "bindings/bind_parts.h"
#include "bindings/edge_lists.h"
#include "bindings/errors.h"
#include "bindings/property_conversion.h"
#include "bindings/views.h"
#include "plexora/QLONetwork.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Ptr = QLONetwork::Ptr;
using Reader = Ptr (*)(const std::filesystem::path&, ReadError*);
using Writer = bool (QLONetwork::*)(const std::filesystem::path&, WriteMode, std::string*) const;

template <Reader read>
Ptr readNetwork(const std::filesystem::path& file) {
  ReadError error;
  Ptr network;
  {
    py::gil_scoped_release release;
    network = read(file, &error);
  }
  if (!network) throw ReadFailure(error);
  return network;
}

template <Writer write>
void writeNetwork(const QLONetwork& network, const std::filesystem::path& file, bool atomically) {
  std::string error;
  bool written;
  {
    py::gil_scoped_release release;
    written = (network.*write)(file, writeModeFor(atomically), &error);
  }
  if (!written) throw WriteFailure(error);
}

Ptr fromEdges(std::uint64_t verticesCount, const py::handle& sources, const py::handle& targets,
              const py::handle& weights, bool directed, bool vertexWeighted) {
  NetworkData data =
      networkDataFrom(verticesCount, sources, targets, weights,
                      directed ? EdgeDirection::Directed : EdgeDirection::Undirected,
                      vertexWeighted ? VertexWeights::Present : VertexWeights::Absent);
  std::string error;
  Ptr network = QLONetwork::make(std::move(data), &error);
  if (!network) throw py::value_error(error);
  return network;
}

Ptr randomNetwork(std::uint64_t vertices, double degree) {
  py::gil_scoped_release release;
  return QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree);
}

Ptr barabasiNetwork(std::uint64_t vertices, std::uint64_t approximateDegree) {
  py::gil_scoped_release release;
  return QLONetwork::initBarabasiNetworkWitNumberOfVertices(vertices, approximateDegree);
}

py::dict propertiesOf(const QLONetwork& network) {
  py::dict table;  // keeps the table's order
  for (const auto& [name, value] : network.propertiesOfVertices()) {
    table[py::str(name)] = propertyToPython(value);
  }
  return table;
}

void setProperty(QLONetwork& network, const py::handle& value, const std::string& name) {
  const PropertyValue property = propertyFromPython(value);
  if (!network.setPropertiesOfVertices(property, name)) {
    throw py::value_error("property \"" + name + "\" has " +
                          std::to_string(propertyCount(property)) + " entries for " +
                          std::to_string(network.countVertices()) + " vertices");
  }
}

std::string repr(const QLONetwork& network) {
  std::string text = "<QLONetwork vertices=" + std::to_string(network.countVertices());
  text += " edges=";
  text += std::to_string(network.countEdges());
  text += network.isDirected() ? " directed" : " undirected";
  if (network.isEdgeWeighted()) text += " edge-weighted";
  if (network.isVertexWeighted()) text += " vertex-weighted";
  text += '>';
  return text;
}

}  // namespace

void bindNetwork(py::module_& m) {
  const char* writeAtomicDoc =
      " With atomically=True (the default) the file is written beside the target and renamed "
      "over it. Raises OSError with the reason on failure.";
  py::class_<QLONetwork, Ptr>(m, "QLONetwork",
                              "A network: vertices 0..V-1, edges as three parallel arrays "
                              "(read-only NumPy views), three flags and vertex properties.")
      .def_static("initWithContentsOfURL", &readNetwork<&QLONetwork::initWithContentsOfURL>,
                  py::arg("path"),
                  "Reads a network file (GraphML, Pajek, GML, GEXF or an edge list, by the "
                  "extension or else the content); raises ReadError on failure.")
      .def_static("initWithContentsOfPajekURL",
                  &readNetwork<&QLONetwork::initWithContentsOfPajekURL>, py::arg("path"),
                  "Reads a Pajek file; raises ReadError on failure.")
      .def_static("initRandomNetworkWithNumberOfVertices", &randomNetwork, py::arg("vertices"),
                  py::arg("degree"), "A random network with the given expected average degree.")
      .def_static("initBarabasiNetworkWitNumberOfVertices", &barabasiNetwork, py::arg("vertices"),
                  py::arg("approximateDegree"),
                  "A preferential-attachment network with about the given average degree.")
      .def_static("initWithEdges", &fromEdges, py::arg("verticesCount"), py::arg("sources"),
                  py::arg("targets"), py::arg("weights") = py::none(), py::arg("directed") = false,
                  py::arg("vertexWeighted") = false,
                  "A network from edge lists; edge-weighted exactly when weights are given. "
                  "Raises ValueError on invalid input.")
      .def("countVertices", &QLONetwork::countVertices)
      .def("countEdges", &QLONetwork::countEdges)
      .def("isDirected", &QLONetwork::isDirected)
      .def("isEdgeWeighted", &QLONetwork::isEdgeWeighted)
      .def("isVertexWeighted", &QLONetwork::isVertexWeighted)
      .def("title", &QLONetwork::title,
           "The name the file gave the network (a Pajek file's *Network NAME), or ''.")
      .def_property_readonly(
          "edgeFromList",
          [](const Ptr& n) {
            return vectorView(n->edgeFromList, n->edgesCount, n, ViewAccess::ReadOnly);
          },
          "Read-only uint64 view of the edges' first ends.")
      .def_property_readonly(
          "edgeToList",
          [](const Ptr& n) {
            return vectorView(n->edgeToList, n->edgesCount, n, ViewAccess::ReadOnly);
          },
          "Read-only uint64 view of the edges' second ends.")
      .def_property_readonly(
          "edgesWeights",
          [](const Ptr& n) {
            return vectorView(n->edgesWeights, n->edgesCount, n, ViewAccess::ReadOnly);
          },
          "Read-only float32 view of the edge weights (1 when not edge-weighted).")
      .def("calcDegrees", &QLONetwork::calcDegrees)
      .def("calcInDegrees", &QLONetwork::calcInDegrees)
      .def("calcStrengths", &QLONetwork::calcStrengths)
      .def("calcInStrengths", &QLONetwork::calcInStrengths)
      .def(
          "degreeOfVertex",
          [](const QLONetwork& n, std::int64_t i) {
            return n.degreeOfVertex(checkedIndex(i, n.countVertices()));
          },
          py::arg("index"))
      .def("propertiesOfVertices", &propertiesOf,
           "Every vertex property by name, in the table's order: QLONumberArray, "
           "QLOVector3dArray (both shared with the network) or a list of str.")
      .def("keysForPropertiesOfVertices", &QLONetwork::keysForPropertiesOfVertices)
      .def(
          "propertyForKey",
          [](const QLONetwork& n, const std::string& name) {
            return propertyToPython(n.propertyForKey(name));
          },
          py::arg("name"), "The property called name, or None.")
      .def("setPropertiesOfVertices", &setProperty, py::arg("value"), py::arg("key"),
           "Stores a property; raises ValueError unless it has one entry per vertex.")
      .def(
          "vertexAtIndex",
          [](const QLONetwork& n, std::int64_t i) {
            return n.vertexAtIndex(checkedIndex(i, n.countVertices()));
          },
          py::arg("index"))
      .def("vertices", &QLONetwork::vertices)
      .def(
          "vertexName",
          [](const QLONetwork& n, std::int64_t i) {
            return n.vertexName(checkedIndex(i, n.countVertices()));
          },
          py::arg("index"))
      .def("largestConnectedSubNetwork", &QLONetwork::largestConnectedSubNetwork,
           "The largest weakly connected component as a network of its own.")
      .def("isPlexviewDocument", &QLONetwork::isPlexviewDocument,
           "True when the network was read from a GraphML document Plexview's own writer made.")
      .def("writeToURL", &writeNetwork<&QLONetwork::writeToURL>, py::arg("path"),
           py::arg("atomically") = true,
           (std::string("Writes a GraphML document.") + writeAtomicDoc).c_str())
      .def("writeToPajekURL", &writeNetwork<&QLONetwork::writeToPajekURL>, py::arg("path"),
           py::arg("atomically") = true,
           (std::string("Writes a Pajek file.") + writeAtomicDoc).c_str())
      .def("writeToEdgesURL", &writeNetwork<&QLONetwork::writeToEdgesURL>, py::arg("path"),
           py::arg("atomically") = true,
           (std::string("Writes one \"from to [weight]\" line per edge.") + writeAtomicDoc).c_str())
      .def("writeToGexfURL", &writeNetwork<&QLONetwork::writeToGexfURL>, py::arg("path"),
           py::arg("atomically") = true,
           (std::string("Writes a GEXF 1.3 document (positions and colours as viz elements).") +
            writeAtomicDoc)
               .c_str())
      .def("writeToGmlURL", &writeNetwork<&QLONetwork::writeToGmlURL>, py::arg("path"),
           py::arg("atomically") = true,
           (std::string("Writes a GML file.") + writeAtomicDoc).c_str())
      .def("__repr__", &repr);
}

}  // namespace plexview
