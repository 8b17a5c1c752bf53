// Writes a network as a GraphML document: the flags as graph data, every
// vertex property as node keys, the edges in order with their weights. The
// text is built by hand in one reserved buffer; no document tree is needed,
// which keeps writing millions of edges fast.
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_common.h"
#include "plexora/graphml_escape.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

using graphml::XmlPlace;

// The element type of a node key's values is its attr.type.
using Source = graphml::ValueKind;

// Where the values of one node key come from.
struct NodeColumn {
  std::string open;  // <data key="dK">
  Source source;
  const void* values;  // the array of `source`'s element type, or a TextList
};

Source sourceOf(NumberType type) {
  switch (type) {
    case NumberType::Bool:
      return Source::Bool;
    case NumberType::Int32:
      return Source::Int32;
    case NumberType::Int64:
      return Source::Int64;
    case NumberType::Float:
      return Source::Float;
    case NumberType::Double:
      break;
  }
  return Source::Double;
}

void appendValue(std::string& out, Source source, const void* values, std::uint64_t v) {
  switch (source) {
    case Source::Bool:
      out += static_cast<const std::uint8_t*>(values)[v] != 0 ? "true" : "false";
      break;
    case Source::Int32:
      quillo::appendNumber(out, std::int64_t{static_cast<const std::int32_t*>(values)[v]});
      break;
    case Source::Int64:
      quillo::appendNumber(out, static_cast<const std::int64_t*>(values)[v]);
      break;
    case Source::Float:
      quillo::appendNumber(out, static_cast<const float*>(values)[v]);
      break;
    case Source::Double:
      quillo::appendNumber(out, static_cast<const double*>(values)[v]);
      break;
    case Source::Text:
      graphml::appendEscaped(out, (*static_cast<const TextList*>(values))[v], XmlPlace::Content);
      break;
  }
}

// A property without an array (only a network without vertices can hold one)
// has nothing to write.
bool isMissing(const PropertyValue& value) {
  return std::visit(
      [](const auto& held) {
        if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
          return true;
        } else {
          return held == nullptr;
        }
      },
      value);
}

class DocumentWriter {
 public:
  explicit DocumentWriter(const QLONetwork& network)
      : network_(network), properties_(network.propertiesOfVertices()) {}

  std::string text() {
    reserve();
    out_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<graphml xmlns=\"";
    out_ += graphml::kNamespace;
    out_ +=
        "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns "
        "http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\">\n";
    const std::string edgeWeightedKey =
        declareKey("graph", graphml::kEdgeWeightedName, "boolean", {});
    const std::string vertexWeightedKey =
        declareKey("graph", graphml::kVertexWeightedName, "boolean", {});
    declareVertexKeys();
    if (network_.isEdgeWeighted()) {
      weightOpen_ = dataOpen(declareKey("edge", graphml::kWeightName, "float", {}));
    }
    out_ += "  <graph id=\"G\" edgedefault=\"";
    out_ += network_.isDirected() ? "directed" : "undirected";
    out_ += "\">\n";
    appendFlag(edgeWeightedKey, network_.isEdgeWeighted());
    appendFlag(vertexWeightedKey, network_.isVertexWeighted());
    writeNodes();
    writeEdges();
    out_ += "  </graph>\n</graphml>\n";
    return std::move(out_);
  }

 private:
  static std::string dataOpen(const std::string& key) {
    std::string open = "<data key=\"";
    open += key;
    open += "\">";
    return open;
  }

  // Declares a key and answers its id (d0, d1, ... in declaration order).
  std::string declareKey(std::string_view domain, std::string_view name, std::string_view type,
                         std::string_view desc) {
    std::string id = "d";
    quillo::appendNumber(id, std::uint64_t{nextKey_++});
    out_ += "  <key id=\"";
    out_ += id;
    out_ += "\" for=\"";
    out_ += domain;
    out_ += "\" attr.name=\"";
    graphml::appendEscaped(out_, name, XmlPlace::Attribute);
    out_ += "\" attr.type=\"";
    out_ += type;
    if (desc.empty()) {
      out_ += "\"/>\n";
    } else {
      out_ += "\"><desc>";
      graphml::appendEscaped(out_, desc, XmlPlace::Content);
      out_ += "</desc></key>\n";
    }
    return id;
  }

  void addColumn(std::string_view name, Source source, const void* values, std::string_view desc) {
    const std::string key = declareKey("node", name, graphml::attrTypeName(source), desc);
    columns_.push_back({dataOpen(key), source, values});
  }

  void declareVertexKeys() {
    for (const auto& [name, value] : properties_) {
      if (isMissing(value)) continue;
      if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
        const QLONumberArray& array = **numbers;
        addColumn(name, sourceOf(array.numberArrayType()), array.QLO_dataPointer(), {});
      } else if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
        declareVectorKeys(name, **vectors);
      } else if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
        addColumn(name, Source::Text, texts->get(), {});
      }
    }
  }

  void declareVectorKeys(const std::string& name, QLOVector3dArray& vectors) {
    const bool single = vectors.precision() == Precision::Float;
    const void* planes[3];
    if (single) {
      planes[0] = vectors.pointerForX();
      planes[1] = vectors.pointerForY();
      planes[2] = vectors.pointerForZ();
    } else {
      planes[0] = vectors.doublePointerForX();
      planes[1] = vectors.doublePointerForY();
      planes[2] = vectors.doublePointerForZ();
    }
    const std::string_view letters = graphml::componentLetters(name);
    for (int axis = 0; axis < 3; ++axis) {
      std::string desc(graphml::kVectorDescPrefix);
      desc += name;
      desc += ' ';
      desc += letters[static_cast<std::size_t>(axis)];
      addColumn(graphml::componentKeyName(name, axis), single ? Source::Float : Source::Double,
                planes[axis], desc);
    }
  }

  void appendFlag(const std::string& key, bool value) {
    out_ += "    ";
    out_ += dataOpen(key);
    out_ += value ? "true" : "false";
    out_ += "</data>\n";
  }

  void writeNodes() {
    const std::uint64_t V = network_.countVertices();
    for (std::uint64_t v = 0; v < V; ++v) {
      out_ += "    <node id=\"n";
      quillo::appendNumber(out_, v);
      if (columns_.empty()) {
        out_ += "\"/>\n";
        continue;
      }
      out_ += "\">";
      for (const NodeColumn& column : columns_) {
        out_ += column.open;
        appendValue(out_, column.source, column.values, v);
        out_ += "</data>";
      }
      out_ += "</node>\n";
    }
  }

  void writeEdges() {
    const std::uint64_t E = network_.countEdges();
    const bool weighted = !weightOpen_.empty();
    for (std::uint64_t k = 0; k < E; ++k) {
      out_ += "    <edge source=\"n";
      quillo::appendNumber(out_, network_.edgeFromList[k]);
      out_ += "\" target=\"n";
      quillo::appendNumber(out_, network_.edgeToList[k]);
      if (!weighted) {
        out_ += "\"/>\n";
        continue;
      }
      out_ += "\">";
      out_ += weightOpen_;
      quillo::appendNumber(out_, network_.edgesWeights[k]);
      out_ += "</data></edge>\n";
    }
  }

  // A generous guess of the final size, so the buffer rarely grows.
  void reserve() {
    std::uint64_t perNode = 32;
    for (const auto& entry : properties_) {
      perNode += entry.second.index() == 2 ? 3 * 48 : 48;
    }
    const std::uint64_t perEdge = network_.isEdgeWeighted() ? 80 : 48;
    out_.reserve(4096 + network_.countVertices() * perNode + network_.countEdges() * perEdge);
  }

  const QLONetwork& network_;
  PropertyTable properties_;  // a snapshot that keeps the arrays alive while writing
  std::string out_;
  unsigned nextKey_ = 0;
  std::vector<NodeColumn> columns_;
  std::string weightOpen_;
};

}  // namespace

std::string graphmlText(const QLONetwork& network) {
  return DocumentWriter(network).text();
}

}  // namespace plexora

bool QLONetwork::writeToURL(const std::filesystem::path& file, WriteMode mode,
                            std::string* error) const {
  return quillo::writeWholeFile(file, plexora::graphmlText(*this), mode, error);
}
