#pragma once
// Test support shared by the reader and writer tests.
#include <string>

#include "plexora/QLONetwork.h"
#include "quillo/numbertext.h"

namespace testing_support {

// Everything a network holds on one line: vertex count, flags, edges (with
// weights when weighted), then each property with its element type and
// values. Numbers are in shortest round-trip form of their own type, so equal
// lines mean equal types and bits.
inline std::string describe(const QLONetwork& network) {
  std::string out = std::to_string(network.countVertices());
  out += network.isDirected() ? " directed" : " undirected";
  if (network.isEdgeWeighted()) out += " weighted";
  if (network.isVertexWeighted()) out += " vertex-weighted";
  out += " |";
  for (std::uint64_t k = 0; k < network.countEdges(); ++k) {
    out +=
        ' ' + std::to_string(network.edgeFromList[k]) + '-' + std::to_string(network.edgeToList[k]);
    if (network.isEdgeWeighted()) out += ':' + quillo::numberText(network.edgesWeights[k]);
  }
  for (const auto& [name, value] : network.propertiesOfVertices()) {
    out += " | " + name;
    std::string values;
    if (const auto* array = std::get_if<std::shared_ptr<QLONumberArray>>(&value); array && *array) {
      const NumberType type = (*array)->numberArrayType();
      out += type == NumberType::Bool    ? ":bool="
             : type == NumberType::Int32 ? ":int="
             : type == NumberType::Int64 ? ":long="
             : type == NumberType::Float ? ":float="
                                         : ":double=";
      values = (*array)->text();
    } else if (const auto* vector = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value);
               vector && *vector) {
      out += (*vector)->precision() == Precision::Float ? ":float3=" : ":double3=";
      values = (*vector)->text();
    } else if (const auto* list = std::get_if<std::shared_ptr<TextList>>(&value); list && *list) {
      out += '=';
      for (const std::string& text : **list) out += '"' + text + '"';
    }
    std::replace(values.begin(), values.end(), '\n', ',');
    out += values;
  }
  return out;
}

}  // namespace testing_support
