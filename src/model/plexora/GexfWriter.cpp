// Writes a network as a GEXF 1.3 document: "Name" as node labels, "Position"
// and "Color" as viz elements, other properties as static node attributes
// (numbers as double, texts as string, vectors as three doubles).
#include <algorithm>
#include <cmath>
#include <string>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_escape.h"
#include "plexora/write_columns.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

using graphml::appendAttribute;

void appendNumberAttribute(std::string& out, std::string_view name, double value) {
  out += ' ';
  out += name;
  out += "=\"";
  quillo::appendNumber(out, value);
  out += '"';
}

void appendColour(std::string& out, const std::array<double, 3>& rgb) {
  out += "<viz:color";
  const char* names[3] = {"r", "g", "b"};
  for (std::size_t c = 0; c < 3; ++c) {
    const double value = std::isfinite(rgb[c]) ? std::clamp(rgb[c], 0.0, 1.0) : 0.0;
    out += ' ';
    out += names[c];
    out += "=\"";
    quillo::appendNumber(out, static_cast<std::int64_t>(std::lround(value * 255.0)));
    out += '"';
  }
  out += "/>";
}

}  // namespace

std::string gexfText(const QLONetwork& network, std::shared_ptr<QLOVector3dArray> layout,
                     std::shared_ptr<QLOVector3dArray> colors) {
  const std::uint64_t V = network.verticesCount;
  const std::uint64_t E = network.edgesCount;
  const auto columns = detail::writtenColumns(network, layout, colors);
  std::string out;
  out.reserve(static_cast<std::size_t>(V * (columns.position ? 110 : 40) + E * 64 + 512));
  out +=
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<gexf xmlns=\"http://gexf.net/1.3\" xmlns:viz=\"http://gexf.net/1.3/viz\" "
      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "xsi:schemaLocation=\"http://gexf.net/1.3 http://gexf.net/1.3/gexf.xsd\" version=\"1.3\">\n"
      "  <meta>\n    <creator>Plexview</creator>\n  </meta>\n";
  out += "  <graph defaultedgetype=\"";
  out += network.isDirected() ? "directed" : "undirected";
  out += "\" mode=\"static\">\n";
  if (!columns.columns.empty()) {
    out += "    <attributes class=\"node\" mode=\"static\">\n";
    for (std::size_t c = 0; c < columns.columns.size(); ++c) {
      out += "      <attribute";
      appendAttribute(out, "id", std::to_string(c));
      appendAttribute(out, "title", columns.columns[c].name);
      appendAttribute(out, "type", columns.columns[c].texts ? "string" : "double");
      out += "/>\n";
    }
    out += "    </attributes>\n";
  }
  out += "    <nodes>\n";
  const std::vector<float>&px = columns.px, &py = columns.py, &pz = columns.pz;
  for (std::uint64_t v = 0; v < V; ++v) {
    out += "      <node id=\"";
    quillo::appendNumber(out, v);
    out += '"';
    appendAttribute(out, "label", columns.label(v));
    out += '>';
    if (!columns.columns.empty()) {
      out += "<attvalues>";
      for (std::size_t c = 0; c < columns.columns.size(); ++c) {
        const auto& column = columns.columns[c];
        if (column.texts) {
          out += "<attvalue for=\"";
          quillo::appendNumber(out, static_cast<std::uint64_t>(c));
          out += '"';
          appendAttribute(out, "value", v < column.texts->size() ? (*column.texts)[v] : "");
          out += "/>";
          continue;
        }
        const double value = columns.number(column, v);
        if (std::isnan(value)) continue;  // no value for this vertex
        out += "<attvalue for=\"";
        quillo::appendNumber(out, static_cast<std::uint64_t>(c));
        out += '"';
        appendNumberAttribute(out, "value", value);
        out += "/>";
      }
      out += "</attvalues>";
    }
    if (columns.position) {
      out += "<viz:position";
      // Non-finite coordinates have no place in a layout other tools read.
      auto finite = [](float f) { return std::isfinite(f) ? static_cast<double>(f) : 0.0; };
      appendNumberAttribute(out, "x", finite(px[v]));
      appendNumberAttribute(out, "y", finite(py[v]));
      appendNumberAttribute(out, "z", finite(pz[v]));
      out += "/>";
    }
    if (columns.color) appendColour(out, columns.color->vectorAtIndex(v));
    out += "</node>\n";
  }
  out += "    </nodes>\n    <edges>\n";
  const bool weighted = network.isEdgeWeighted();
  for (std::uint64_t k = 0; k < E; ++k) {
    out += "      <edge id=\"";
    quillo::appendNumber(out, k);
    out += "\" source=\"";
    quillo::appendNumber(out, network.edgeFromList[k]);
    out += "\" target=\"";
    quillo::appendNumber(out, network.edgeToList[k]);
    out += '"';
    if (weighted) {
      out += " weight=\"";
      quillo::appendNumber(out, network.edgesWeights[k]);
      out += '"';
    }
    out += "/>\n";
  }
  out += "    </edges>\n  </graph>\n</gexf>\n";
  return out;
}

}  // namespace plexora

bool QLONetwork::writeToGexfURL(const std::filesystem::path& file, WriteMode mode,
                                std::string* error) const {
  return quillo::writeWholeFile(file, plexora::gexfText(*this), mode, error);
}
