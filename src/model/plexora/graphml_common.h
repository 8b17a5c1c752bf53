#pragma once
// Names the GraphML reader and writer agree on: the graph keys that mark our
// own documents, and how a vector property is spread over three number keys.
#include <string>
#include <string_view>

namespace plexora::graphml {

// The attr.type of a key; a missing or unknown type reads as text.
enum class ValueKind { Bool, Int32, Int64, Float, Double, Text };

// The attr.type text of a kind, as written and as named in error messages.
inline const char* attrTypeName(ValueKind kind) {
  switch (kind) {
    case ValueKind::Bool:
      return "boolean";
    case ValueKind::Int32:
      return "int";
    case ValueKind::Int64:
      return "long";
    case ValueKind::Float:
      return "float";
    case ValueKind::Double:
      return "double";
    case ValueKind::Text:
      break;
  }
  return "string";
}

inline constexpr std::string_view kNamespace = "http://graphml.graphdrawing.org/xmlns";

// Plexview's own marker: the root of every document its writer makes declares
// this namespace and carries the attribute "document" in it. Other tools
// ignore attributes of namespaces they do not know. A key the writer renamed
// carries the name of the property it holds in the attribute "property".
inline constexpr std::string_view kPlexviewNamespace = "urn:x-plexview:graphml";
inline constexpr std::string_view kPlexviewPrefix = "plexview";
inline constexpr std::string_view kDocumentMarker = "document";
inline constexpr std::string_view kPropertyMarker = "property";
// A graph key holding one of Plexview's own settings carries its name in the
// attribute "setting"; its value is the graph's <data> for the key.
inline constexpr std::string_view kSettingMarker = "setting";

// Graph-level boolean keys. Older documents of ours carry them without the
// marker, so they still make the reader map keys to properties by name.
inline constexpr std::string_view kEdgeWeightedName = "edgeWeighted";
inline constexpr std::string_view kVertexWeightedName = "vertexWeighted";

inline constexpr std::string_view kWeightName = "weight";
inline constexpr std::string_view kPositionName = "Position";
inline constexpr std::string_view kColorName = "Color";

// A vector component key carries <desc>vector NAME LETTER</desc>, so the
// reader rebuilds the vector under its exact name whatever the keys are called.
inline constexpr std::string_view kVectorDescPrefix = "vector ";

// The letters naming the three components of a vector property's keys.
inline std::string_view componentLetters(std::string_view property) {
  return property == kColorName ? "rgb" : "xyz";
}

// attr.name of one component key: "x" for Position, "r" for Color, "P.x" for
// any other vector property P.
inline std::string componentKeyName(std::string_view property, int axis) {
  const char letter = componentLetters(property)[static_cast<std::size_t>(axis)];
  std::string name;
  if (property != kPositionName && property != kColorName) {
    name.append(property);
    name += '.';
  }
  name += letter;
  return name;
}

// The axis a component letter stands for (x or r 0, y or g 1, z or b 2), -1
// for any other letter.
inline int componentAxis(std::string_view letter) {
  if (letter == "x" || letter == "r") return 0;
  if (letter == "y" || letter == "g") return 1;
  if (letter == "z" || letter == "b") return 2;
  return -1;
}

}  // namespace plexora::graphml
