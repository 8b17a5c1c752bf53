// Writes a network as a Pajek file, or as a plain edge list.
//
// The Pajek text is kept to the part every Pajek reader agrees on: one
// `*Vertices` section with a quoted label per vertex (and the coordinates of a
// "Position" property), then one `*Arcs` or `*Edges` section in edge order.
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

// A label between double quotes. Pajek has no escapes: a quote inside the
// label would end it, and a line break or tab would split the line or the
// field, so those become a single quote and spaces.
void appendLabel(std::string& out, const std::string& label) {
  out += '"';
  for (char c : label) {
    if (c == '"') {
      out += '\'';
    } else if (c == '\r' || c == '\n' || c == '\t') {
      out += ' ';
    } else {
      out += c;
    }
  }
  out += '"';
}

// The network's "Name" texts when it has them (what vertexName answers).
std::shared_ptr<TextList> namesOf(const QLONetwork& network) {
  PropertyValue names = network.propertyForKey("Name");
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&names)) return *texts;
  return nullptr;
}

std::shared_ptr<QLOVector3dArray> positionsOf(const QLONetwork& network) {
  PropertyValue positions = network.propertyForKey("Position");
  if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&positions)) return *vectors;
  return nullptr;
}

void appendEdge(std::string& out, std::uint64_t from, std::uint64_t to) {
  quillo::appendNumber(out, from);
  out += ' ';
  quillo::appendNumber(out, to);
}

}  // namespace

std::string pajekText(const QLONetwork& network, std::shared_ptr<QLOVector3dArray> layout) {
  const std::uint64_t V = network.verticesCount;
  const std::uint64_t E = network.edgesCount;
  const auto names = namesOf(network);
  const auto positions = layout && layout->count() == V ? layout : positionsOf(network);
  std::vector<float> xs, ys, zs;
  if (positions) {
    xs = positions->xfv();
    ys = positions->yfv();
    zs = positions->zfv();
  }

  std::string out;
  out.reserve(static_cast<std::size_t>(V * (positions ? 40 : 16) + E * 24 + 32));
  if (!network.title().empty()) {
    out += "*Network ";
    for (char c : network.title()) out += c == '\r' || c == '\n' ? ' ' : c;
    out += '\n';
  }
  out += "*Vertices ";
  quillo::appendNumber(out, V);
  out += '\n';
  for (std::uint64_t v = 0; v < V; ++v) {
    quillo::appendNumber(out, v + 1);
    out += ' ';
    if (names && v < names->size()) {
      appendLabel(out, (*names)[v]);
    } else {
      appendLabel(out, std::to_string(v));
    }
    if (positions) {
      for (float coordinate : {xs[v], ys[v], zs[v]}) {
        out += ' ';
        quillo::appendNumber(out, coordinate);
      }
    }
    out += '\n';
  }

  out += network.isDirected() ? "*Arcs\n" : "*Edges\n";
  const bool weighted = network.isEdgeWeighted();
  for (std::uint64_t k = 0; k < E; ++k) {
    appendEdge(out, network.edgeFromList[k] + 1, network.edgeToList[k] + 1);
    if (weighted) {
      out += ' ';
      quillo::appendNumber(out, network.edgesWeights[k]);
    }
    out += '\n';
  }
  return out;
}

std::string edgesText(const QLONetwork& network) {
  const std::uint64_t E = network.edgesCount;
  const bool weighted = network.isEdgeWeighted();
  std::string out;
  out.reserve(static_cast<std::size_t>(E * (weighted ? 24 : 14)));
  for (std::uint64_t k = 0; k < E; ++k) {
    appendEdge(out, network.edgeFromList[k], network.edgeToList[k]);
    if (weighted) {
      out += ' ';
      quillo::appendNumber(out, network.edgesWeights[k]);
    }
    out += '\n';
  }
  return out;
}

}  // namespace plexora

bool QLONetwork::writeToPajekURL(const std::filesystem::path& file, WriteMode mode,
                                 std::string* error) const {
  return quillo::writeWholeFile(file, plexora::pajekText(*this), mode, error);
}

bool QLONetwork::writeToEdgesURL(const std::filesystem::path& file, WriteMode mode,
                                 std::string* error) const {
  return quillo::writeWholeFile(file, plexora::edgesText(*this), mode, error);
}
