// Writes a network as GML in the form networkx and igraph read: one node list
// per vertex (id, label, graphics with the position, then the properties) and
// one edge list per edge. Reals always carry a decimal point (networkx reads
// "1e-45" as an integer followed by a key), special values are written
// NAN, +INF and -INF, and strings carry non-ASCII characters, quotes and
// ampersands as &#N; references.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <string>
#include <unordered_set>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_escape.h"
#include "plexora/write_columns.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

void appendReal(std::string& out, double value) {
  if (std::isnan(value)) {
    out += "NAN";
    return;
  }
  if (std::isinf(value)) {
    out += value > 0 ? "+INF" : "-INF";
    return;
  }
  const std::string written = quillo::numberText(value);
  const std::size_t exponent = written.find('e');
  if (written.find('.') != std::string::npos) {
    out += written;
  } else if (exponent == std::string::npos) {
    out += written;
    out += ".0";
  } else {
    out.append(written, 0, exponent);
    out += ".0";
    out.append(written, exponent);
  }
}

void appendString(std::string& out, std::string_view text) {
  out += '"';
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c < 0x80 && c != '"' && c != '&') {
      out += static_cast<char>(c);
      ++i;
      continue;
    }
    std::uint32_t code = c;
    std::size_t length = 1;
    if (c >= 0x80) {
      length = graphml::detail::utf8SequenceLength(text, i);
      if (length == 0) {
        code = 0xFFFD;
        length = 1;
      } else {
        code = c & (0xFFu >> (length + 1));
        for (std::size_t k = 1; k < length; ++k) {
          code = (code << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3Fu);
        }
      }
    }
    out += "&#";
    quillo::appendNumber(out, static_cast<std::uint64_t>(code));
    out += ';';
    i += length;
  }
  out += '"';
}

// A GML key is a letter followed by letters, digits and underscores; other
// characters become '_' and a name that does not start with a letter gets
// "p" in front. A name taken already gets "_2", "_3", ...
std::vector<std::string> keysFor(const detail::WrittenColumns& columns) {
  std::unordered_set<std::string> taken{"id", "label", "graphics", "node", "edge"};
  std::vector<std::string> keys;
  for (const auto& column : columns.columns) {
    std::string key;
    for (char c : column.name) {
      key += std::isalnum(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 0x80
                 ? c
                 : '_';
    }
    if (key.empty() || !std::isalpha(static_cast<unsigned char>(key[0]))) {
      std::string prefixed(1, 'p');
      prefixed += key;
      key = std::move(prefixed);
    }
    const std::string base = key;
    for (int n = 2; taken.count(key) != 0; ++n) key = base + "_" + std::to_string(n);
    taken.insert(key);
    keys.push_back(std::move(key));
  }
  return keys;
}

// Whether two edges join the same vertices (in either order when undirected):
// networkx then needs "multigraph 1" to read the file.
bool hasParallelEdges(const QLONetwork& network) {
  std::vector<std::pair<std::uint64_t, std::uint64_t>> pairs(network.edgesCount);
  for (std::uint64_t k = 0; k < network.edgesCount; ++k) {
    std::uint64_t a = network.edgeFromList[k], b = network.edgeToList[k];
    if (!network.isDirected() && b < a) std::swap(a, b);
    pairs[k] = {a, b};
  }
  std::sort(pairs.begin(), pairs.end());
  return std::adjacent_find(pairs.begin(), pairs.end()) != pairs.end();
}

}  // namespace

std::string gmlText(const QLONetwork& network, std::shared_ptr<QLOVector3dArray> layout) {
  const std::uint64_t V = network.verticesCount;
  const std::uint64_t E = network.edgesCount;
  const auto columns = detail::writtenColumns(network, layout, nullptr);
  const auto keys = keysFor(columns);
  std::string out;
  out.reserve(static_cast<std::size_t>(V * (columns.position ? 120 : 40) + E * 56 + 128));
  out += "graph [\n  directed ";
  out += network.isDirected() ? '1' : '0';
  out += '\n';
  if (hasParallelEdges(network)) out += "  multigraph 1\n";
  const std::vector<float>&px = columns.px, &py = columns.py, &pz = columns.pz;
  for (std::uint64_t v = 0; v < V; ++v) {
    out += "  node [\n    id ";
    quillo::appendNumber(out, v);
    out += "\n    label ";
    appendString(out, columns.label(v));
    out += '\n';
    if (columns.position) {
      out += "    graphics [\n      x ";
      appendReal(out, px[v]);
      out += "\n      y ";
      appendReal(out, py[v]);
      out += "\n      z ";
      appendReal(out, pz[v]);
      out += "\n    ]\n";
    }
    for (std::size_t c = 0; c < columns.columns.size(); ++c) {
      const auto& column = columns.columns[c];
      out += "    ";
      out += keys[c];
      out += ' ';
      if (column.texts) {
        appendString(out, v < column.texts->size() ? (*column.texts)[v] : "");
      } else {
        appendReal(out, columns.number(column, v));
      }
      out += '\n';
    }
    out += "  ]\n";
  }
  const bool weighted = network.isEdgeWeighted();
  for (std::uint64_t k = 0; k < E; ++k) {
    out += "  edge [\n    source ";
    quillo::appendNumber(out, network.edgeFromList[k]);
    out += "\n    target ";
    quillo::appendNumber(out, network.edgeToList[k]);
    if (weighted) {
      out += "\n    weight ";
      appendReal(out, static_cast<double>(network.edgesWeights[k]));
    }
    out += "\n  ]\n";
  }
  out += "]\n";
  return out;
}

}  // namespace plexora

bool QLONetwork::writeToGmlURL(const std::filesystem::path& file, WriteMode mode,
                               std::string* error) const {
  return quillo::writeWholeFile(file, plexora::gmlText(*this), mode, error);
}
