#pragma once
// What the GEXF and GML writers take from a network: labels, the positions
// and colours to write, and the properties written as node attributes.
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "plexora/QLONetwork.h"

namespace plexora::detail {

struct WrittenColumns {
  std::shared_ptr<TextList> names;
  std::shared_ptr<QLOVector3dArray> position;
  std::shared_ptr<QLOVector3dArray> color;
  // Every other property: numbers, texts, and vectors as three number columns
  // named "P.x", "P.y", "P.z".
  struct Column {
    std::string name;
    std::shared_ptr<QLONumberArray> numbers;
    std::shared_ptr<TextList> texts;
    std::shared_ptr<QLOVector3dArray> vector;
    int axis = 0;
  };
  std::vector<Column> columns;

  // The layout as float planes (empty without one), read once per write.
  std::vector<float> px, py, pz;

  // Vertex v's label: its name, else its number.
  std::string label(std::uint64_t v) const {
    return names && v < names->size() ? (*names)[v] : std::to_string(v);
  }

  double number(const Column& c, std::uint64_t v) const {
    return c.numbers ? c.numbers->doubleValueAtIndex(v)
                     : c.vector->vectorAtIndex(v)[static_cast<std::size_t>(c.axis)];
  }
};

inline WrittenColumns writtenColumns(const QLONetwork& network,
                                     std::shared_ptr<QLOVector3dArray> layout,
                                     std::shared_ptr<QLOVector3dArray> colors) {
  const std::uint64_t V = network.verticesCount;
  WrittenColumns out;
  for (const auto& [name, value] : network.propertiesOfVertices()) {
    if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
      if (name == "Name" && !out.names) {
        out.names = *texts;
      } else {
        out.columns.push_back({name, nullptr, *texts, nullptr, 0});
      }
    } else if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
      out.columns.push_back({name, *numbers, nullptr, nullptr, 0});
    } else if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
      if (name == "Position") {
        out.position = *vectors;
      } else if (name == "Color") {
        out.color = *vectors;
      } else {
        const char* letters = "xyz";
        for (int axis = 0; axis < 3; ++axis) {
          out.columns.push_back({name + "." + letters[axis], nullptr, nullptr, *vectors, axis});
        }
      }
    }
  }
  if (layout && layout->count() == V) out.position = layout;
  if (colors && colors->count() == V) out.color = colors;
  if (out.position) {
    out.px = out.position->xfv();
    out.py = out.position->yfv();
    out.pz = out.position->zfv();
  }
  return out;
}

}  // namespace plexora::detail
