// Reads a GEXF document (1.1 to 1.3, as networkx and desktop tools write it)
// into a network: static node attributes become vertex properties, labels
// "Name", viz positions "Position" and viz colours "Color". Edge attributes
// other than the weight and dynamic data are not kept.
#include <pugixml.hpp>

#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/graphml_xml.h"
#include "plexora/read_columns.h"
#include "plexora/vertex_ids.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

using graphml::firstElement;
using graphml::isElement;
using graphml::lineAtOffset;
using graphml::localName;
using graphml::sameName;
using graphml::trimmed;

constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                   pugi::parse_wconv_attribute | pugi::parse_embed_pcdata;

enum class AttributeKind { Number, Boolean, Text };

struct Attribute {
  std::string title;
  AttributeKind kind = AttributeKind::Text;
  const char* defaultValue = nullptr;
  pugi::xml_node element;
};

AttributeKind kindOf(std::string_view type) {
  if (type == "integer" || type == "long" || type == "float" || type == "double" ||
      type == "short" || type == "byte") {
    return AttributeKind::Number;
  }
  if (type == "boolean") return AttributeKind::Boolean;
  return AttributeKind::Text;
}

// An attribute of an element by its local name (so "viz:x" and "x" match).
const char* attributeValue(const pugi::xml_node& element, const char* local) {
  for (pugi::xml_attribute a = element.first_attribute(); a; a = a.next_attribute()) {
    if (sameName(localName(a.name()), local)) return a.value();
  }
  return nullptr;
}

class GexfReader {
 public:
  GexfReader(std::string_view text, const std::string& name, ReadError* error)
      : text_(text), failure_(name, error) {}

  QLONetwork::Ptr read() {
    const pugi::xml_parse_result result =
        document_.load_buffer(text_.data(), text_.size(), kParseOptions);
    if (!result) return fail(lineAtOffset(text_, result.offset), result.description());
    const pugi::xml_node root = document_.document_element();
    if (!isElement(root, "gexf")) return fail(line(root), "the document is not GEXF");
    const pugi::xml_node graph = firstElement(root, "graph");
    if (!graph) return fail(line(root), "the document has no <graph> element");
    const char* edgeType = attributeValue(graph, "defaultedgetype");
    NetworkData data;
    data.directed = edgeType && std::strcmp(edgeType, "directed") == 0;
    for (pugi::xml_node child = graph.first_child(); child; child = child.next_sibling()) {
      if (!isElement(child, "attributes")) continue;
      const char* which = attributeValue(child, "class");
      if (which && std::strcmp(which, "node") == 0 && !readAttributes(child)) return nullptr;
    }
    for (pugi::xml_node child = graph.first_child(); child; child = child.next_sibling()) {
      if (isElement(child, "nodes") && !readNodes(child)) return nullptr;
    }
    data.verticesCount = columns_.names.size();
    for (pugi::xml_node child = graph.first_child(); child; child = child.next_sibling()) {
      if (isElement(child, "edges") && !readEdges(child, data)) return nullptr;
    }
    if (!applyDefaults(data.verticesCount)) return nullptr;
    columns_.finish(data);
    return failure_.make(std::move(data));
  }

 private:
  std::nullptr_t fail(std::uint64_t line, std::string_view message) {
    return failure_.fail(line, message);
  }
  std::uint64_t line(const pugi::xml_node& node) const {
    return lineAtOffset(text_, node.offset_debug());
  }

  bool readAttributes(const pugi::xml_node& list) {
    for (pugi::xml_node a = list.first_child(); a; a = a.next_sibling()) {
      if (!isElement(a, "attribute")) continue;
      const char* id = attributeValue(a, "id");
      if (!id) return fail(line(a), "an <attribute> has no id"), false;
      Attribute attribute;
      const char* title = attributeValue(a, "title");
      attribute.title = title ? title : id;
      const char* type = attributeValue(a, "type");
      attribute.kind = kindOf(type ? type : "string");
      if (const pugi::xml_node d = firstElement(a, "default"))
        attribute.defaultValue = d.text().get();
      attribute.element = a;
      columns_.column(attribute.title);
      attributes_.push_back(std::move(attribute));
      attributeIds_.emplace(id, attributes_.size() - 1);
    }
    return true;
  }

  bool setValue(const Attribute& attribute, std::uint64_t vertex, const char* text,
                const pugi::xml_node& at) {
    auto& column = columns_.column(attribute.title);
    const std::string_view value = trimmed(text);
    switch (attribute.kind) {
      case AttributeKind::Number: {
        const auto number = quillo::parseDouble(value);
        if (!number) {
          return fail(line(at), "the value " + quillo::quoted(value) + " of " +
                                    quillo::quoted(attribute.title) + " is not a number"),
                 false;
        }
        column.setNumber(vertex, *number);
        return true;
      }
      case AttributeKind::Boolean:
        if (value == "true" || value == "1") {
          column.setNumber(vertex, 1.0);
        } else if (value == "false" || value == "0") {
          column.setNumber(vertex, 0.0);
        } else {
          return fail(line(at), "the value " + quillo::quoted(value) + " of " +
                                    quillo::quoted(attribute.title) + " is not a boolean"),
                 false;
        }
        return true;
      case AttributeKind::Text:
        column.setText(vertex, std::string(text));
        return true;
    }
    return true;
  }

  bool readVector(const pugi::xml_node& element, const char* const (&names)[3], float scale,
                  std::array<float, 3>& out) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const char* text = attributeValue(element, names[axis]);
      if (!text) continue;
      const auto value = quillo::parseFloat(trimmed(text));
      if (!value || !std::isfinite(*value)) {
        return fail(line(element), "the " + std::string(localName(element.name())) + " value " +
                                       quillo::quoted(text) + " of " + quillo::quoted(names[axis]) +
                                       " is not a finite number"),
               false;
      }
      out[axis] = *value / scale;
    }
    return true;
  }

  bool readNodes(const pugi::xml_node& list) {
    static const char* const kXyz[3] = {"x", "y", "z"};
    static const char* const kRgb[3] = {"r", "g", "b"};
    for (pugi::xml_node node = list.first_child(); node; node = node.next_sibling()) {
      if (!isElement(node, "node")) continue;
      const char* id = attributeValue(node, "id");
      if (!id) return fail(line(node), "a <node> has no id"), false;
      const std::uint64_t vertex = columns_.names.size();
      if (vertex >= maxReadVertices()) {
        return fail(line(node), "more than " + std::to_string(maxReadVertices()) + " vertices"),
               false;
      }
      if (!ids_.insert(id, vertex).second) {
        return fail(line(node), "the node id " + quillo::quoted(id) + " appears twice"), false;
      }
      const char* label = attributeValue(node, "label");
      columns_.names.emplace_back(label ? label : id);
      if (given_.size() <= vertex) given_.resize(vertex + 1);
      given_[vertex].assign(attributes_.size(), false);
      for (pugi::xml_node part = node.first_child(); part; part = part.next_sibling()) {
        if (isElement(part, "attvalues")) {
          for (pugi::xml_node v = part.first_child(); v; v = v.next_sibling()) {
            if (!isElement(v, "attvalue")) continue;
            const char* key = attributeValue(v, "for");
            if (!key) key = attributeValue(v, "id");
            const auto found = key ? attributeIds_.find(key) : attributeIds_.end();
            if (found == attributeIds_.end()) {
              return fail(line(v), "an <attvalue> names no declared attribute"), false;
            }
            const char* value = attributeValue(v, "value");
            if (!value) return fail(line(v), "an <attvalue> has no value"), false;
            if (!setValue(attributes_[found->second], vertex, value, v)) return false;
            given_[vertex][found->second] = true;
          }
        } else if (isElement(part, "position")) {
          std::array<float, 3> position{0.0f, 0.0f, 0.0f};
          if (!readVector(part, kXyz, 1.0f, position)) return false;
          columns_.position.set(vertex, position);
        } else if (isElement(part, "color")) {
          std::array<float, 3> colour{0.0f, 0.0f, 0.0f};
          if (!readVector(part, kRgb, 255.0f, colour)) return false;
          columns_.color.set(vertex, colour);
        }
      }
    }
    return true;
  }

  bool applyDefaults(std::uint64_t vertices) {
    for (std::size_t a = 0; a < attributes_.size(); ++a) {
      const Attribute& attribute = attributes_[a];
      if (!attribute.defaultValue) continue;
      for (std::uint64_t v = 0; v < vertices; ++v) {
        if (!given_[v][a] && !setValue(attribute, v, attribute.defaultValue, attribute.element)) {
          return false;
        }
      }
    }
    return true;
  }

  bool readEdges(const pugi::xml_node& list, NetworkData& data) {
    for (pugi::xml_node edge = list.first_child(); edge; edge = edge.next_sibling()) {
      if (!isElement(edge, "edge")) continue;
      const char* ends[2] = {attributeValue(edge, "source"), attributeValue(edge, "target")};
      std::uint64_t vertices[2] = {0, 0};
      for (int e = 0; e < 2; ++e) {
        if (!ends[e]) return fail(line(edge), "an <edge> lacks its source or target"), false;
        const auto found = ids_.find(ends[e]);
        if (!found) {
          return fail(line(edge), "the edge names node " + quillo::quoted(ends[e]) +
                                      ", which the document does not define"),
                 false;
        }
        vertices[e] = *found;
      }
      data.from.push_back(vertices[0]);
      data.to.push_back(vertices[1]);
      float weight = 1.0f;
      if (const char* text = attributeValue(edge, "weight")) {
        const auto value = quillo::parseFloat(trimmed(text));
        if (!value) {
          return fail(line(edge), "the weight " + quillo::quoted(text) + " is not a number"), false;
        }
        weight = *value;
        if (!data.edgeWeighted) {
          data.weights.assign(data.from.size() - 1, 1.0f);
          data.edgeWeighted = true;
        }
      }
      if (data.edgeWeighted) data.weights.push_back(weight);
    }
    return true;
  }

  std::string_view text_;
  detail::ReadFailure failure_;
  pugi::xml_document document_;
  detail::VertexIds ids_{text_.size() / 8 + 16};
  std::unordered_map<std::string_view, std::size_t> attributeIds_;
  std::vector<Attribute> attributes_;
  std::vector<std::vector<bool>> given_;
  detail::VertexColumns columns_;
};

}  // namespace

std::shared_ptr<QLONetwork> readGexf(std::string_view text, const std::string& name,
                                     ReadError* error) {
  return GexfReader(text, name, error).read();
}

}  // namespace plexora
