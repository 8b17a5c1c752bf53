// Writes a network as a GraphML document: the flags as graph data, every
// vertex property as node keys, the edges in order with their weights, and
// whatever the document it was read from held beyond the model (its
// GraphmlExtras) back in its place. The text is built by hand in one reserved
// buffer; no document tree is needed, which keeps writing millions of edges
// fast.
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <variant>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_common.h"
#include "plexora/graphml_escape.h"
#include "plexora/graphml_keys.h"
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
  // A vector property written under a key of a vector type, as its first
  // `components` numbers joined by ", " (values is then unused).
  const QLOVector3dArray* vectors = nullptr;
  int components = 0;
  // An empty text reads back as "" without <data> when the key has no
  // default: such values are left out, as other tools leave them out.
  bool skipsEmptyText = false;
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

// "x, y, z" (or "x, y"), each in the shortest form of the array's precision.
void appendVectorValue(std::string& out, const QLOVector3dArray& vectors, int components,
                       std::uint64_t v) {
  const auto value = vectors.vectorAtIndex(v);
  for (int axis = 0; axis < components; ++axis) {
    if (axis > 0) out += ", ";
    const double component = value[static_cast<std::size_t>(axis)];
    if (vectors.precision() == Precision::Float) {
      quillo::appendNumber(out, static_cast<float>(component));
    } else {
      quillo::appendNumber(out, component);
    }
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

// The per-vertex or per-edge entries of `list` when it has one for each of
// `count`, else null.
const std::vector<std::string>* entries(const std::vector<std::string>& list, std::uint64_t count) {
  return list.size() == count && count > 0 ? &list : nullptr;
}

class DocumentWriter {
 public:
  DocumentWriter(const QLONetwork& network, const std::vector<DocumentSetting>* settings)
      : network_(network), properties_(network.propertiesOfVertices()) {
    static const GraphmlExtras none;
    extras_ = network.graphmlExtras() ? network.graphmlExtras().get() : &none;
    settings_ = settings ? settings : &extras_->settings;
    usedIds_.insert(extras_->keyIds.begin(), extras_->keyIds.end());
    nodeIds_ = entries(extras_->nodeIds, network.countVertices());
    // The ids of the keys declared again are taken before any new key is made.
    for (const auto& [name, value] : properties_) {
      if (const GraphmlExtras::SourceKey* key = sourceKeyFor(name, value)) usedIds_.insert(key->id);
    }
    if (weightSourceKey()) usedIds_.insert(extras_->weightKey.id);
  }

  std::string text() {
    reserve();
    out_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<graphml xmlns=\"";
    out_ += graphml::kNamespace;
    out_ +=
        "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns "
        "http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\" xmlns:";
    out_ += graphml::kPlexviewPrefix;
    out_ += "=\"";
    out_ += graphml::kPlexviewNamespace;
    out_ += "\" ";
    out_ += graphml::kPlexviewPrefix;
    out_ += ':';
    out_ += graphml::kDocumentMarker;
    out_ += "=\"1\"";
    out_ += extras_->rootAttributes;
    out_ += ">\n";
    appendLines(extras_->rootBefore);
    const std::string edgeWeightedKey =
        declareKey("graph", graphml::kEdgeWeightedName, "boolean", {});
    const std::string vertexWeightedKey =
        declareKey("graph", graphml::kVertexWeightedName, "boolean", {});
    // The weight key comes before any other key a reader could take for the
    // weights, unless it also holds a vertex property: then it keeps its
    // place among the properties, whose order follows their keys.
    if (network_.isEdgeWeighted()) {
      const GraphmlExtras::SourceKey* source = weightSourceKey();
      if (!source) {
        weightOpen_ = dataOpen(declareKey("edge", graphml::kWeightName, "float", {}));
      } else {
        weightOpen_ = dataOpen(source->id);
        if (!holdsProperty(*source)) declareSourceKey(*source, source->name);
      }
    }
    declareVertexKeys();
    std::vector<std::string> settingKeys;
    for (const DocumentSetting& setting : *settings_)
      settingKeys.push_back(declareSetting(setting));
    appendLines(extras_->keys);
    out_ += "  <graph edgedefault=\"";
    out_ += network_.isDirected() ? "directed" : "undirected";
    out_ += '"';
    out_ += network_.graphmlExtras() ? extras_->graphAttributes : std::string(" id=\"G\"");
    out_ += ">\n";
    appendLines(extras_->graphChildren, "    ");
    appendFlag(edgeWeightedKey, network_.isEdgeWeighted());
    appendFlag(vertexWeightedKey, network_.isVertexWeighted());
    for (std::size_t i = 0; i < settingKeys.size(); ++i) {
      out_ += "    ";
      out_ += dataOpen(settingKeys[i]);
      graphml::appendEscaped(out_, (*settings_)[i].value, XmlPlace::Content);
      out_ += "</data>\n";
    }
    writeNodes();
    writeEdges();
    out_ += "  </graph>\n";
    appendLines(extras_->rootAfter);
    out_ += "</graphml>\n";
    return std::move(out_);
  }

 private:
  static std::string dataOpen(const std::string& key) {
    std::string open = "<data key=\"";
    open += key;
    open += "\">";
    return open;
  }

  // Kept XML text on a line of its own.
  void appendLines(const std::string& text, std::string_view indent = "  ") {
    if (text.empty()) return;
    out_ += indent;
    out_ += text;
    out_ += '\n';
  }

  // An id the document does not use yet: d0, d1, ...
  std::string freshId() {
    for (;;) {
      std::string id = "d";
      quillo::appendNumber(id, std::uint64_t{nextKey_++});
      if (usedIds_.insert(id).second) return id;
    }
  }

  // Declares a key again as the document read had it (with our renaming mark
  // when it holds a property of another name) and answers its id.
  std::string declareSourceKey(const GraphmlExtras::SourceKey& source, std::string_view property) {
    // One key may hold both a property and the weights (a key for all).
    if (!declaredSources_.insert(source.id).second) return source.id;
    out_ += "  <key";
    out_ += source.attributes;
    if (property != source.name) {
      std::string marker(graphml::kPlexviewPrefix);
      marker += ':';
      marker += graphml::kPropertyMarker;
      graphml::appendAttribute(out_, marker, property);
    }
    if (source.children.empty()) {
      out_ += "/>\n";
    } else {
      out_ += '>';
      out_ += source.children;
      out_ += "</key>\n";
    }
    return source.id;
  }

  // Declares a key and answers its id.
  std::string declareKey(std::string_view domain, std::string_view name, std::string_view type,
                         std::string_view desc) {
    std::string id = freshId();
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

  // A graph key for one of our settings, marked as such; answers its id.
  std::string declareSetting(const DocumentSetting& setting) {
    std::string id = freshId();
    out_ += "  <key id=\"";
    out_ += id;
    out_ += "\" for=\"graph\" attr.name=\"";
    graphml::appendEscaped(out_, setting.name, XmlPlace::Attribute);
    out_ += "\" attr.type=\"";
    graphml::appendEscaped(out_, setting.type, XmlPlace::Attribute);
    out_ += "\" ";
    out_ += graphml::kPlexviewPrefix;
    out_ += ':';
    out_ += graphml::kSettingMarker;
    out_ += "=\"";
    graphml::appendEscaped(out_, setting.name, XmlPlace::Attribute);
    out_ += "\"/>\n";
    return id;
  }

  void addColumn(std::string_view name, Source source, const void* values, std::string_view desc) {
    const std::string key = declareKey("node", name, graphml::attrTypeName(source), desc);
    columns_.push_back({dataOpen(key), source, values, nullptr, 0, source == Source::Text});
  }

  // The key a plain property was read from, while the property still holds
  // values of that key's type; null otherwise.
  const GraphmlExtras::SourceKey* sourceKeyFor(const std::string& name,
                                               const PropertyValue& value) const {
    if (std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(value)) {
      for (const GraphmlExtras::SourceKey& key : extras_->propertyKeys) {
        if (key.property == name) return key.vectorComponents > 0 ? &key : nullptr;
      }
      return nullptr;
    }
    Source source = Source::Text;
    if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
      if (!*numbers) return nullptr;
      source = sourceOf((*numbers)->numberArrayType());
    } else if (!std::holds_alternative<std::shared_ptr<TextList>>(value)) {
      return nullptr;
    }
    for (const GraphmlExtras::SourceKey& key : extras_->propertyKeys) {
      if (key.property == name) return graphml::valueKindNamed(key.type) == source ? &key : nullptr;
    }
    return nullptr;
  }

  // The weights (floats) go under the key they were read from when that key
  // is of a floating-point type.
  const GraphmlExtras::SourceKey* weightSourceKey() const {
    const GraphmlExtras::SourceKey& key = extras_->weightKey;
    const graphml::ValueKind kind = graphml::valueKindNamed(key.type);
    const bool floating = kind == graphml::ValueKind::Float || kind == graphml::ValueKind::Double;
    return network_.isEdgeWeighted() && extras_->hasWeightKey && floating ? &key : nullptr;
  }

  bool holdsProperty(const GraphmlExtras::SourceKey& key) const {
    for (const auto& [name, value] : properties_) {
      const GraphmlExtras::SourceKey* source = sourceKeyFor(name, value);
      if (source && source->id == key.id) return true;
    }
    return false;
  }

  void addPropertyColumn(const std::string& name, const PropertyValue& value, Source source,
                         const void* values) {
    if (const GraphmlExtras::SourceKey* key = sourceKeyFor(name, value)) {
      const bool skipsEmptyText = source == Source::Text && !key->hasDefault;
      columns_.push_back(
          {dataOpen(declareSourceKey(*key, name)), source, values, nullptr, 0, skipsEmptyText});
    } else {
      addColumn(name, source, values, {});
    }
  }

  void declareVertexKeys() {
    for (const auto& [name, value] : properties_) {
      if (isMissing(value)) continue;
      if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
        const QLONumberArray& array = **numbers;
        addPropertyColumn(name, value, sourceOf(array.numberArrayType()), array.QLO_dataPointer());
      } else if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
        if (const GraphmlExtras::SourceKey* key = sourceKeyFor(name, value)) {
          columns_.push_back({dataOpen(declareSourceKey(*key, name)), Source::Text, nullptr,
                              vectors->get(), key->vectorComponents, false});
        } else {
          declareVectorKeys(name, **vectors);
        }
      } else if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
        addPropertyColumn(name, value, Source::Text, texts->get());
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

  // A node's id: the one it was read with, else n0, n1, ...
  void appendNodeId(std::uint64_t v) {
    if (nodeIds_) {
      graphml::appendEscaped(out_, (*nodeIds_)[v], XmlPlace::Attribute);
    } else {
      out_ += 'n';
      quillo::appendNumber(out_, v);
    }
  }

  void writeNodes() {
    const std::uint64_t V = network_.countVertices();
    const auto* attributes = entries(extras_->nodeAttributes, V);
    const auto* children = entries(extras_->nodeChildren, V);
    for (std::uint64_t v = 0; v < V; ++v) {
      out_ += "    <node id=\"";
      appendNodeId(v);
      out_ += '"';
      if (attributes) out_ += (*attributes)[v];
      if (columns_.empty() && (!children || (*children)[v].empty())) {
        out_ += "/>\n";
        continue;
      }
      out_ += '>';
      for (const NodeColumn& column : columns_) {
        if (column.skipsEmptyText && (*static_cast<const TextList*>(column.values))[v].empty()) {
          continue;
        }
        out_ += column.open;
        if (column.vectors) {
          appendVectorValue(out_, *column.vectors, column.components, v);
        } else {
          appendValue(out_, column.source, column.values, v);
        }
        out_ += "</data>";
      }
      if (children) out_ += (*children)[v];
      out_ += "</node>\n";
    }
  }

  void writeEdges() {
    const std::uint64_t E = network_.countEdges();
    const bool weighted = !weightOpen_.empty();
    const auto* attributes = entries(extras_->edgeAttributes, E);
    const auto* children = entries(extras_->edgeChildren, E);
    for (std::uint64_t k = 0; k < E; ++k) {
      out_ += "    <edge source=\"";
      appendNodeId(network_.edgeFromList[k]);
      out_ += "\" target=\"";
      appendNodeId(network_.edgeToList[k]);
      out_ += '"';
      if (attributes) out_ += (*attributes)[k];
      const bool more = children && !(*children)[k].empty();
      if (!weighted && !more) {
        out_ += "/>\n";
        continue;
      }
      out_ += '>';
      if (weighted) {
        out_ += weightOpen_;
        quillo::appendNumber(out_, network_.edgesWeights[k]);
        out_ += "</data>";
      }
      if (more) out_ += (*children)[k];
      out_ += "</edge>\n";
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
  const GraphmlExtras* extras_;
  const std::vector<DocumentSetting>* settings_;
  std::unordered_set<std::string> usedIds_;
  std::unordered_set<std::string> declaredSources_;
  const std::vector<std::string>* nodeIds_;
};

}  // namespace

std::string graphmlText(const QLONetwork& network, const std::vector<DocumentSetting>* settings) {
  return DocumentWriter(network, settings).text();
}

}  // namespace plexora

bool QLONetwork::writeToURL(const std::filesystem::path& file, WriteMode mode,
                            std::string* error) const {
  return quillo::writeWholeFile(file, plexora::graphmlText(*this), mode, error);
}
