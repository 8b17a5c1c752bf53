#pragma once
// The <key> declarations of a GraphML document: what each key is called, what
// its values are, which elements it applies to, and whether it carries our
// marker for a vector component.
#include <pugixml.hpp>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/graphml_common.h"
#include "plexora/graphml_xml.h"

namespace plexora::graphml {

// Numbers proper, for the rules that look for coordinates, colours and
// weights (booleans do not count).
inline bool isNumeric(ValueKind kind) {
  return kind == ValueKind::Int32 || kind == ValueKind::Int64 || kind == ValueKind::Float ||
         kind == ValueKind::Double;
}

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

inline ValueKind valueKindNamed(std::string_view type) {
  if (equalsIgnoringCase(type, "boolean")) return ValueKind::Bool;
  if (equalsIgnoringCase(type, "int")) return ValueKind::Int32;
  if (equalsIgnoringCase(type, "long")) return ValueKind::Int64;
  if (equalsIgnoringCase(type, "float")) return ValueKind::Float;
  if (equalsIgnoringCase(type, "double")) return ValueKind::Double;
  return ValueKind::Text;
}

// graph-tool's vector types ("vector_float", "vector_double", "vector_int",
// ...): the values are numbers separated by commas or blanks.
inline bool isVectorType(std::string_view type) {
  return type.size() > 7 && equalsIgnoringCase(type.substr(0, 7), "vector_");
}

struct Key {
  std::string_view id;  // points into the document
  std::string name;     // attr.name
  // The property our writer stored under this key when its name differs from
  // attr.name (a label key holding "Name"); empty otherwise.
  std::string property;
  ValueKind kind = ValueKind::Text;
  // A vector type: read as text, and as a vector property when every value
  // holds three numbers.
  bool vectorText = false;
  bool vectorDouble = false;  // vector_double, or integers beyond float's range
  bool forNode = false;
  bool forEdge = false;
  bool forGraph = false;
  pugi::xml_node element;
  pugi::xml_node defaultElement;  // the <default> child, empty when there is none
  // Set when the key's <desc> reads "vector NAME LETTER".
  std::string vectorName;
  int axis = -1;
  // Ids of later keys declaring the same attribute (see mergeRepeatedKeys).
  std::vector<std::string_view> aliasIds;
};

// The type that holds the values of two keys of one attribute.
inline ValueKind widerKind(ValueKind a, ValueKind b) {
  if (a == b) return a;
  if (a == ValueKind::Text || b == ValueKind::Text) return ValueKind::Text;
  auto integral = [](ValueKind k) { return k == ValueKind::Int32 || k == ValueKind::Int64; };
  if (integral(a) && integral(b)) return ValueKind::Int64;
  return ValueKind::Double;
}

// The property a plain key's values become in our own documents.
inline const std::string& propertyNameOf(const Key& key) {
  return key.property.empty() ? key.name : key.property;
}

// Reads "vector NAME LETTER" into the key's vector name and axis.
inline void readVectorMarker(Key& key, std::string_view desc) {
  if (!isNumeric(key.kind) || !desc.starts_with(kVectorDescPrefix)) return;
  desc.remove_prefix(kVectorDescPrefix.size());
  const std::size_t space = desc.rfind(' ');
  if (space == std::string_view::npos) return;
  const int axis = componentAxis(desc.substr(space + 1));
  if (axis < 0) return;
  key.vectorName.assign(desc.substr(0, space));
  key.axis = axis;
}

// Every usable key in declaration order. Keys without an id or an attr.name
// (such as an editor's private graphics keys) are left out, as are keys for
// elements other than nodes, edges and graphs. `propertyMarker` is the
// qualified name of our renaming attribute ("" when the document has none).
inline std::vector<Key> readKeys(const pugi::xml_node& root, const std::string& propertyMarker) {
  std::vector<Key> keys;
  std::string scratch;
  for (pugi::xml_node element = root.first_child(); element; element = element.next_sibling()) {
    if (!isElement(element, "key")) continue;
    const pugi::xml_attribute id = element.attribute("id");
    const pugi::xml_attribute name = element.attribute("attr.name");
    if (!id || !name) continue;
    Key key;
    key.id = id.value();
    key.name = name.value();
    if (!propertyMarker.empty()) key.property = element.attribute(propertyMarker.c_str()).value();
    const std::string_view type = element.attribute("attr.type").value();
    key.kind = valueKindNamed(type);
    key.vectorText = isVectorType(type);
    key.vectorDouble = key.vectorText && !equalsIgnoringCase(type, "vector_float");
    const pugi::xml_attribute domain = element.attribute("for");
    const std::string_view target = domain ? domain.value() : "all";
    const bool all = target == "all";
    key.forNode = all || target == "node";
    key.forEdge = all || target == "edge";
    key.forGraph = all || target == "graph";
    if (!key.forNode && !key.forEdge && !key.forGraph) continue;
    key.element = element;
    key.defaultElement = firstElement(element, "default");
    if (pugi::xml_node desc = firstElement(element, "desc")) {
      readVectorMarker(key, elementText(desc, scratch));
    }
    keys.push_back(std::move(key));
  }
  return keys;
}

}  // namespace plexora::graphml
