// Reads a GraphML document into a network. Our own documents come back
// exactly as written; documents from other tools open with their node
// attributes as vertex properties (see graphml_plan.h for the renaming rules).
// Whatever the network does not hold (edge and graph attributes, ids,
// descriptions, other tools' keys) is kept in the network's GraphmlExtras for
// the writer.
#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_column.h"
#include "plexora/graphml_common.h"
#include "plexora/graphml_ids.h"
#include "plexora/graphml_keys.h"
#include "plexora/graphml_plan.h"
#include "plexora/graphml_raw.h"
#include "plexora/graphml_vectors.h"
#include "plexora/graphml_xml.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

using namespace graphml;
using SourceKey = GraphmlExtras::SourceKey;

// What the reader needs from pugixml: entities, CDATA, line-end and attribute
// white-space normalisation as XML prescribes, and white-space-only text when
// it is a <data> element's whole content. An element's leading text is kept in
// the element itself, which saves a node per <data>. Comments, processing
// instructions and the declaration are skipped.
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                   pugi::parse_wconv_attribute | pugi::parse_ws_pcdata_single |
                                   pugi::parse_embed_pcdata;

// Vertex properties may take at most this much memory plus a multiple of the
// document's size: keys with defaults could otherwise make a small file ask
// for gigabytes.
constexpr std::uint64_t kPropertyMemoryBase = std::uint64_t{256} << 20;
constexpr std::uint64_t kPropertyMemoryPerByte = 64;

// The parts of a message joined (built with += to stay clear of a GCC 12
// false -Wrestrict warning on "literal" + std::string).
template <class... Parts>
std::string joined(const Parts&... parts) {
  std::string message;
  (message += ... += parts);
  return message;
}

std::string badValueMessage(std::string_view text, const Key& key) {
  return joined("the value ", quillo::quoted(trimmed(text)), " of key ", quillo::quoted(key.name),
                " is not a valid ", attrTypeName(key.kind));
}

std::string nonFiniteMessage(std::string_view text, const Key& key) {
  return joined("the coordinate ", quillo::quoted(trimmed(text)), " of key ",
                quillo::quoted(key.name), " is not finite");
}

class DocumentReader {
 public:
  DocumentReader(std::string_view text, const std::string& name, ReadError* error)
      : text_(text), name_(name), error_(error) {}

  QLONetwork::Ptr read() {
    if (!parse() || !collectGraphChildren() || !identifyNodes()) return nullptr;
    classifyKeys();
    NetworkData data;
    data.verticesCount = nodes_.size();
    if (!readGraphData(data) || !readEdges(data) || !readProperties(data)) return nullptr;
    keepDocumentExtras();
    data.graphml = std::move(extras_);
    std::string why;
    QLONetwork::Ptr network = QLONetwork::make(std::move(data), &why);
    if (!network) fail(0, why);
    return network;
  }

  bool fail(std::uint64_t line, std::string message) {
    if (error_) *error_ = ReadError{name_, line, std::move(message)};
    return false;
  }

 private:
  std::uint64_t lineOf(const pugi::xml_node& node) const {
    return lineAtOffset(text_, node.offset_debug());
  }
  bool fail(const pugi::xml_node& at, std::string message) {
    return fail(lineOf(at), std::move(message));
  }

  bool parse() {
    const pugi::xml_parse_result result =
        document_.load_buffer(text_.data(), text_.size(), kParseOptions);
    if (!result) {
      return fail(lineAtOffset(text_, result.offset),
                  joined("not a well-formed XML document: ", result.description()));
    }
    root_ = document_.document_element();
    if (!isElement(root_, "graphml")) {
      return fail(root_,
                  joined("not a GraphML document: the root element is <", root_.name(), ">"));
    }
    graph_ = firstElement(root_, "graph");
    if (!graph_) return fail(root_, "the document has no <graph> element");
    plexviewPrefix_ = plexviewPrefixOf(root_, kPlexviewNamespace);
    if (!plexviewPrefix_.empty()) {
      propertyMarker_ = plexviewPrefix_ + std::string(kPropertyMarker);
      settingMarker_ = plexviewPrefix_ + std::string(kSettingMarker);
      const std::string marker = plexviewPrefix_ + std::string(kDocumentMarker);
      extras_->plexviewDocument = !root_.attribute(marker.c_str()).empty();
    }
    return true;
  }

  bool collectGraphChildren() {
    const std::uint64_t limit = maxReadVertices();
    for (pugi::xml_node child = graph_.first_child(); child; child = child.next_sibling()) {
      if (child.type() != pugi::node_element) continue;
      const char* local = localName(child.name());
      if (sameName(local, "edge")) {
        edges_.push_back(child);
      } else if (sameName(local, "node")) {
        if (nodes_.size() >= limit) {
          return fail(child, joined("more than ", std::to_string(limit), " vertices"));
        }
        nodes_.push_back(child);
      } else if (sameName(local, "data")) {
        graphData_.push_back(child);
      } else {
        appendLine(extras_->graphChildren, child, "\n    ");
      }
    }
    return true;
  }

  bool identifyNodes() {
    const NodeIds::Outcome outcome = ids_.index(nodes_);
    switch (outcome.problem) {
      case NodeIds::Problem::None:
        return true;
      case NodeIds::Problem::MissingId:
        return fail(nodes_[outcome.node], "a <node> has no id");
      case NodeIds::Problem::DuplicateId:
        break;
    }
    return fail(nodes_[outcome.node],
                joined("duplicate node id ", quillo::quoted(ids_.ids()[outcome.node])));
  }

  void classifyKeys() {
    keys_ = readKeys(root_, propertyMarker_);
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      const Key& key = keys_[i];
      // A repeated key id: the first declaration counts.
      if (!keyIndex_.emplace(key.id, i).second) continue;
      if (mergeRepeatedKey(i)) continue;
      if (key.forGraph && !edgeWeightedKey_ && key.name == kEdgeWeightedName) {
        edgeWeightedKey_ = &key;
      }
      if (key.forGraph && !vertexWeightedKey_ && key.name == kVertexWeightedName) {
        vertexWeightedKey_ = &key;
      }
      if (key.forEdge && !weightKey_ && isNumeric(key.kind) &&
          equalsIgnoringCase(key.name, kWeightName)) {
        weightKey_ = &key;
      }
      if (key.forNode) nodeKeys_.push_back(&key);
    }
    // Failing a weight key, a numeric edge key named "value" holds the weights.
    for (std::size_t i = 0; i < keys_.size() && !weightKey_; ++i) {
      const Key& key = keys_[i];
      if (keyIndex_.at(key.id) == i && !aliasTarget_.contains(key.id) && key.forEdge &&
          isNumeric(key.kind) && equalsIgnoringCase(key.name, "value")) {
        weightKey_ = &key;
      }
    }
    const bool ours = extras_->plexviewDocument || edgeWeightedKey_ || vertexWeightedKey_;
    origin_ = ours ? Origin::Ours : Origin::Foreign;
    for (const Key* flag : {edgeWeightedKey_, vertexWeightedKey_}) {
      if (flag) consume(*flag);
    }
  }

  // Another tool may declare one attribute under several keys (networkx does
  // when its values mix integers and floats). A later key with the same name,
  // domain and no vector marker, of the same type or both numeric, becomes an
  // alias of the first, whose type widens to hold both. Other clashes leave
  // the first key in charge. Answers true when key `i` became an alias.
  bool mergeRepeatedKey(std::size_t i) {
    Key& key = keys_[i];
    if (key.axis >= 0) return false;
    std::string signature = key.name;
    signature += '\0';
    signature += key.forNode ? 'n' : '-';
    signature += key.forEdge ? 'e' : '-';
    signature += key.forGraph ? 'g' : '-';
    auto [found, inserted] = firstKeyNamed_.emplace(std::move(signature), i);
    if (inserted) return false;
    Key& first = keys_[found->second];
    if (first.kind != key.kind && !(isNumeric(first.kind) && isNumeric(key.kind))) return false;
    first.aliasIds.push_back(key.id);
    aliasTarget_.emplace(key.id, &first);
    first.kind = widerKind(first.kind, key.kind);
    return true;
  }

  // The key a <data> element refers to, when it is declared for `use`.
  const Key* keyOf(const pugi::xml_node& data, bool Key::*use) const {
    auto found = keyIndex_.find(data.attribute("key").value());
    if (found == keyIndex_.end()) return nullptr;
    const Key* key = &keys_[found->second];
    if (auto alias = aliasTarget_.find(key->id); alias != aliasTarget_.end()) key = alias->second;
    return key->*use ? key : nullptr;
  }

  // A flag from the graph's <data>: the key's default, else false.
  bool readFlag(const Key* key, bool& flag) {
    flag = false;
    if (!key) return true;
    auto parseInto = [&](const pugi::xml_node& element) {
      const std::string_view text = trimmed(elementText(element, scratch_));
      if (text.empty()) return true;
      auto value = parseBoolean(text);
      if (!value) return fail(element, badValueMessage(text, *key));
      flag = *value;
      return true;
    };
    if (key->defaultElement && !parseInto(key->defaultElement)) return false;
    for (const pugi::xml_node& data : graphData_) {
      if (keyOf(data, &Key::forGraph) == key && !parseInto(data)) return false;
    }
    return true;
  }

  // The graph's <data> other than the flags and our settings, kept as they
  // are.
  void keepGraphData() {
    for (const pugi::xml_node& data : graphData_) {
      const Key* key = keyOf(data, &Key::forGraph);
      const char* setting = key && !settingMarker_.empty()
                                ? key->element.attribute(settingMarker_.c_str()).value()
                                : "";
      if (*setting) {
        extras_->settings.push_back({setting, key->element.attribute("attr.type").value(),
                                     std::string(elementText(data, scratch_))});
        consume(*key);
        continue;
      }
      if (!key || (key != edgeWeightedKey_ && key != vertexWeightedKey_)) {
        appendLine(extras_->graphChildren, data, "\n    ");
        noteReference(data);
      }
    }
  }

  bool readGraphData(NetworkData& data) {
    // GraphML's default edge direction is directed.
    data.directed = std::strcmp(graph_.attribute("edgedefault").value(), "undirected") != 0;
    bool edgeWeighted = false;
    bool vertexWeighted = false;
    if (!readFlag(edgeWeightedKey_, edgeWeighted) ||
        !readFlag(vertexWeightedKey_, vertexWeighted)) {
      return false;
    }
    keepGraphData();
    if (origin_ == Origin::Ours) {
      data.edgeWeighted = edgeWeighted;
      data.vertexWeighted = vertexWeighted;
    } else {
      data.edgeWeighted = weightKey_ != nullptr;
    }
    return true;
  }

  bool readEdges(NetworkData& data) {
    data.from.reserve(edges_.size());
    data.to.reserve(edges_.size());
    float defaultWeight = 1.0f;
    if (weightKey_) {
      consume(*weightKey_);
      extras_->hasWeightKey = true;
      extras_->weightKey = sourceKey(*weightKey_, {});
      weightIds_.push_back(weightKey_->element.attribute("id").value());
      for (std::string_view alias : weightKey_->aliasIds) weightIds_.push_back(alias.data());
      data.weights.reserve(edges_.size());
      if (const pugi::xml_node element = weightKey_->defaultElement) {
        const std::string_view text = elementText(element, scratch_);
        if (!trimmed(text).empty()) {
          auto value = parseWeight(weightKey_->kind, text);
          if (!value) return fail(element, badValueMessage(text, *weightKey_));
          defaultWeight = *value;
        }
      }
    }
    for (std::size_t k = 0; k < edges_.size(); ++k) {
      const pugi::xml_node& edge = edges_[k];
      std::uint64_t ends[2];
      const char* roles[2] = {"source", "target"};
      for (int end = 0; end < 2; ++end) {
        const pugi::xml_attribute id = edge.attribute(roles[end]);
        if (!id) return fail(edge, joined("an <edge> has no ", roles[end]));
        auto vertex = ids_.vertexOf(id.value());
        if (!vertex) {
          return fail(edge, joined("an <edge> names an unknown node ", quillo::quoted(id.value())));
        }
        ends[end] = *vertex;
      }
      data.from.push_back(ends[0]);
      data.to.push_back(ends[1]);
      float weight = defaultWeight;
      if (!readEdgeChildren(edge, k, weight)) return false;
      if (weightKey_) data.weights.push_back(weight);
      keepAttributes(edge, {"source", "target"}, extras_->edgeAttributes, k, edges_.size());
    }
    return true;
  }

  // Reads the weight; every other child is kept.
  bool readEdgeChildren(const pugi::xml_node& edge, std::size_t k, float& weight) {
    for (pugi::xml_node child = edge.first_child(); child; child = child.next_sibling()) {
      if (child.type() != pugi::node_element) continue;
      if (!weightKey_ || !isElement(child, "data") ||
          !isWeightData(child.attribute("key").value())) {
        appendXml(entryOf(extras_->edgeChildren, k, edges_.size()), child);
        noteReference(child);
        continue;
      }
      const std::string_view text = elementText(child, scratch_);
      if (trimmed(text).empty()) continue;
      auto value = parseWeight(weightKey_->kind, text);
      if (!value) return fail(child, badValueMessage(text, *weightKey_));
      weight = *value;
    }
    return true;
  }

  bool isWeightData(const char* key) const {
    for (const char* id : weightIds_) {
      if (sameName(key, id)) return true;
    }
    return false;
  }

  bool readProperties(NetworkData& data) {
    const std::vector<PlannedProperty> plan = planProperties(nodeKeys_, origin_);
    bool hasName = false;
    std::vector<bool> used(nodeKeys_.size(), false);
    for (const PlannedProperty& property : plan) {
      hasName = hasName || property.name == "Name";
      if (property.column >= 0) used[static_cast<std::size_t>(property.column)] = true;
      for (int component : property.components) {
        if (component >= 0) used[static_cast<std::size_t>(component)] = true;
      }
    }
    // Another tool's ids name the vertices unless they are just n0, n1, ...
    const bool namesFromIds = origin_ == Origin::Foreign && !ids_.canonical() && !hasName;
    // Ids are written back as they were, unless one holds a character XML
    // cannot carry: its replacement could make two ids one.
    if (!ids_.canonical() && std::all_of(ids_.ids().begin(), ids_.ids().end(),
                                         [](const char* id) { return carriesAsIs(id); })) {
      extras_->nodeIds.assign(ids_.ids().begin(), ids_.ids().end());
    }
    if (!checkPropertyMemory(used, namesFromIds)) return false;
    // Coordinates of another tool's layout must be finite numbers. (Our own
    // documents keep what was saved, so that they always open again.)
    std::vector<bool> coordinate(nodeKeys_.size(), false);
    for (const PlannedProperty& property : plan) {
      if (origin_ == Origin::Ours || !property.isVector || property.name != kPositionName) {
        continue;
      }
      for (int component : property.components) {
        if (component >= 0) coordinate[static_cast<std::size_t>(component)] = true;
      }
    }
    std::vector<std::optional<Column>> columns(nodeKeys_.size());
    if (!createColumns(used, coordinate, columns) || !readNodeData(coordinate, columns)) {
      return false;
    }

    if (namesFromIds) {
      auto names = std::make_shared<TextList>(ids_.ids().begin(), ids_.ids().end());
      data.properties.emplace_back("Name", std::move(names));
    }
    for (const PlannedProperty& property : plan) {
      if (!property.isVector) {
        const Key& key = *nodeKeys_[static_cast<std::size_t>(property.column)];
        SourceKey source = sourceKey(key, property.name);
        PropertyValue value = columns[static_cast<std::size_t>(property.column)]->value();
        if (property.vectorText && !vectorFromText(property.name, key, value, source)) {
          return false;
        }
        extras_->propertyKeys.push_back(std::move(source));
        data.properties.emplace_back(property.name, std::move(value));
      } else {
        const Column* parts[3] = {nullptr, nullptr, nullptr};
        for (std::size_t axis = 0; axis < 3; ++axis) {
          const int index = property.components[axis];
          if (index >= 0) parts[axis] = &*columns[static_cast<std::size_t>(index)];
        }
        const ColorScale scale = property.colorScale ? ColorScale::Detect : ColorScale::Keep;
        auto vectors = buildVector(parts, nodes_.size(), scale);
        // A node without a coordinate is placed at 0 (the values given were
        // checked to be finite).
        if (origin_ == Origin::Foreign && property.name == kPositionName) zeroNonFinite(*vectors);
        data.properties.emplace_back(property.name, std::move(vectors));
      }
    }
    return true;
  }

  static void zeroNonFinite(QLOVector3dArray& vectors) {
    for (std::uint64_t v = 0; v < vectors.count(); ++v) {
      auto value = vectors.vectorAtIndex(v);
      if (std::isfinite(value[0]) && std::isfinite(value[1]) && std::isfinite(value[2])) continue;
      for (double& component : value) component = std::isfinite(component) ? component : 0.0;
      vectors.setVector(value, v);
    }
  }

  // Texts of a vector key become a vector property when every value holds
  // three numbers (two or three for a layout); the key remembers how many,
  // so the writer puts them back as they were. A layout must be finite.
  bool vectorFromText(const std::string& name, const Key& key, PropertyValue& value,
                      SourceKey& source) {
    const auto* texts = std::get_if<std::shared_ptr<TextList>>(&value);
    if (!texts || !*texts) return true;
    const Precision precision = key.vectorDouble ? Precision::Double : Precision::Float;
    const bool layout = name == kPositionName;
    for (int components : {3, 2}) {
      if (components == 2 && !layout) break;
      auto vectors = textVectors(**texts, components, precision);
      if (!vectors) continue;
      if (layout && origin_ == Origin::Foreign) {
        if (const std::int64_t v = firstNonFinite(*vectors); v >= 0) {
          return fail(
              nodes_[static_cast<std::size_t>(v)],
              joined("the position ", quillo::quoted((**texts)[static_cast<std::size_t>(v)]),
                     " of key ", quillo::quoted(key.name), " is not finite"));
        }
      }
      source.vectorComponents = components;
      value = std::move(vectors);
      return true;
    }
    return true;
  }

  bool checkPropertyMemory(const std::vector<bool>& used, bool namesFromIds) {
    const std::uint64_t V = nodes_.size();
    const std::uint64_t limit = kPropertyMemoryBase + kPropertyMemoryPerByte * text_.size();
    std::uint64_t bytes = namesFromIds ? V * sizeof(std::string) : 0;
    for (std::size_t i = 0; i < nodeKeys_.size() && bytes <= limit; ++i) {
      if (used[i]) bytes += V * entryBytes(nodeKeys_[i]->kind);
    }
    if (bytes <= limit) return true;
    return fail(graph_, "the vertex properties would take more memory than the document justifies");
  }

  bool createColumns(const std::vector<bool>& used, const std::vector<bool>& coordinate,
                     std::vector<std::optional<Column>>& columns) {
    for (std::size_t i = 0; i < nodeKeys_.size(); ++i) {
      if (!used[i]) continue;
      const Key& key = *nodeKeys_[i];
      Column& column = columns[i].emplace(key.kind, nodes_.size());
      consume(key);
      columnOfKey_.emplace(key.id, i);
      for (std::string_view alias : key.aliasIds) columnOfKey_.emplace(alias, i);
      if (key.defaultElement) {
        const std::string_view text = elementText(key.defaultElement, scratch_);
        if (!column.fill(text)) return fail(key.defaultElement, badValueMessage(text, key));
        if (coordinate[i] && !trimmed(text).empty() && !std::isfinite(column.number(0))) {
          return fail(key.defaultElement, nonFiniteMessage(text, key));
        }
      }
    }
    return true;
  }

  // Fills the columns; every other child and attribute of a node is kept.
  bool readNodeData(const std::vector<bool>& coordinate,
                    std::vector<std::optional<Column>>& columns) {
    const std::size_t V = nodes_.size();
    for (std::uint64_t v = 0; v < V; ++v) {
      keepAttributes(nodes_[v], {"id", "id"}, extras_->nodeAttributes, v, V);
      for (pugi::xml_node child = nodes_[v].first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_element) continue;
        auto found = isElement(child, "data") ? columnOfKey_.find(child.attribute("key").value())
                                              : columnOfKey_.end();
        if (found == columnOfKey_.end()) {
          appendXml(entryOf(extras_->nodeChildren, v, V), child);
          noteReference(child);
          continue;
        }
        const std::string_view text = elementText(child, scratch_);
        if (!columns[found->second]->assign(v, text)) {
          return fail(child, badValueMessage(text, *nodeKeys_[found->second]));
        }
        if (coordinate[found->second] && !trimmed(text).empty() &&
            !std::isfinite(columns[found->second]->number(v))) {
          return fail(child, nonFiniteMessage(text, *nodeKeys_[found->second]));
        }
      }
    }
    return true;
  }

  // Appends `element` to `kept`, after `separator` unless it is the first.
  static void appendLine(std::string& kept, const pugi::xml_node& element,
                         std::string_view separator) {
    if (!kept.empty()) kept += separator;
    appendXml(kept, element);
  }

  // A kept <data> names a key (declared or not) that the writer's own keys
  // must not be called.
  void noteReference(const pugi::xml_node& element) {
    if (isElement(element, "data")) referenced_.insert(element.attribute("key").value());
  }

  // The entry `i` of a per-vertex or per-edge list of `count`, made on first use.
  static std::string& entryOf(std::vector<std::string>& list, std::size_t i, std::size_t count) {
    if (list.empty()) list.resize(count);
    return list[i];
  }

  // Keeps the attributes of `element` other than the two named ones.
  static void keepAttributes(const pugi::xml_node& element, std::array<const char*, 2> skipped,
                             std::vector<std::string>& list, std::size_t i, std::size_t count) {
    for (const pugi::xml_attribute& attribute : element.attributes()) {
      if (sameName(attribute.name(), skipped[0]) || sameName(attribute.name(), skipped[1])) {
        continue;
      }
      appendAttribute(entryOf(list, i, count), attribute.name(), attribute.value());
    }
  }

  // The key's data has been taken into the network: its declaration is not
  // kept as it stands (the writer declares what the network holds).
  void consume(const Key& key) {
    consumed_.insert(key.id);
    for (std::string_view alias : key.aliasIds) consumed_.insert(alias);
  }

  SourceKey sourceKey(const Key& key, const std::string& property) const {
    SourceKey source;
    source.property = property;
    source.id = key.id;
    source.name = key.name;
    source.type = key.element.attribute("attr.type").value();
    source.hasDefault = !key.defaultElement.empty();
    for (const pugi::xml_attribute& attribute : key.element.attributes()) {
      if (propertyMarker_.empty() || !sameName(attribute.name(), propertyMarker_.c_str())) {
        appendAttribute(source.attributes, attribute.name(), attribute.value());
      }
    }
    for (pugi::xml_node child = key.element.first_child(); child; child = child.next_sibling()) {
      if (child.type() == pugi::node_element) appendXml(source.children, child);
    }
    return source;
  }

  // The document's root attributes, the keys that were not consumed, and the
  // root's other children; the graph's own attributes.
  void keepDocumentExtras() {
    // The writer declares these itself (a schema location under any prefix:
    // two would be one attribute twice).
    constexpr std::string_view written[] = {"xmlns", "xmlns:xsi", "xmlns:plexview"};
    for (const pugi::xml_attribute& attribute : root_.attributes()) {
      const std::string_view name = attribute.name();
      const bool ours = !plexviewPrefix_.empty() &&
                        (name.starts_with(plexviewPrefix_) ||
                         (name.starts_with("xmlns:") && attribute.value() == kPlexviewNamespace));
      if (ours || name == "schemaLocation" || name.ends_with(":schemaLocation") ||
          std::find(std::begin(written), std::end(written), name) != std::end(written)) {
        continue;
      }
      appendAttribute(extras_->rootAttributes, name, attribute.value());
    }
    bool afterGraph = false;
    for (pugi::xml_node child = root_.first_child(); child; child = child.next_sibling()) {
      if (child.type() != pugi::node_element) continue;
      if (child == graph_) {
        afterGraph = true;
      } else if (isElement(child, "key")) {
        const char* id = child.attribute("id").value();
        if (consumed_.contains(id)) continue;
        appendLine(extras_->keys, child, "\n  ");
        extras_->keyIds.emplace_back(id);
        referenced_.erase(id);
      } else {
        appendLine(afterGraph ? extras_->rootAfter : extras_->rootBefore, child, "\n  ");
      }
    }
    extras_->keyIds.insert(extras_->keyIds.end(), referenced_.begin(), referenced_.end());
    for (const pugi::xml_attribute& attribute : graph_.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "edgedefault" || name.starts_with("parse.")) continue;
      appendAttribute(extras_->graphAttributes, name, attribute.value());
    }
  }

  std::string_view text_;
  const std::string& name_;
  ReadError* error_;
  std::string scratch_;

  pugi::xml_document document_;
  pugi::xml_node root_;
  pugi::xml_node graph_;
  std::vector<pugi::xml_node> nodes_;
  std::vector<pugi::xml_node> edges_;
  std::vector<pugi::xml_node> graphData_;

  NodeIds ids_;

  std::vector<Key> keys_;
  std::unordered_map<std::string_view, std::size_t> keyIndex_;
  std::vector<const Key*> nodeKeys_;
  std::unordered_map<std::string_view, std::size_t> columnOfKey_;  // key id -> column
  const Key* edgeWeightedKey_ = nullptr;
  const Key* vertexWeightedKey_ = nullptr;
  const Key* weightKey_ = nullptr;
  std::vector<const char*> weightIds_;  // the weight key's id and aliases, NUL-terminated
  std::unordered_map<std::string, std::size_t> firstKeyNamed_;  // name and domain -> key
  std::unordered_map<std::string_view, const Key*> aliasTarget_;
  Origin origin_ = Origin::Foreign;

  // "prefix:" and "prefix:property" when the document declares our namespace.
  std::string plexviewPrefix_;
  std::string propertyMarker_;
  std::string settingMarker_;
  std::unordered_set<std::string_view> consumed_;
  std::unordered_set<std::string_view>
      referenced_;  // keys named by kept <data>  // ids of keys taken into the network
  std::shared_ptr<GraphmlExtras> extras_ = std::make_shared<GraphmlExtras>();
};

}  // namespace

std::shared_ptr<QLONetwork> readGraphml(std::string_view text, const std::string& name,
                                        ReadError* error) {
  DocumentReader reader(text, name, error);
  try {
    return reader.read();
  } catch (const std::bad_alloc&) {
    reader.fail(0, "not enough memory to read the document");
    return nullptr;
  }
}

}  // namespace plexora
