#pragma once
// What the vertex lines of a Pajek file say about the vertices: labels,
// coordinates and drawing attributes, gathered straight into the property
// arrays the network will hold.
//
// A vertex line reads `id label [x y [z]] [attributes...]`. The attributes are
// shape words and keyword/value pairs; those this reader knows are listed in
// kVertexAttributes, anything else on the line is passed over.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/PropertyValue.h"
#include "plexora/pajek_encoding.h"
#include "plexora/pajek_lines.h"
#include "quillo/numbertext.h"

namespace plexora::pajek {

enum class AttributeKind { Text, Number };

struct VertexAttribute {
  std::string_view keyword;  // also the property name
  AttributeKind kind;
};

// Keywords followed by a value: colours as text, sizes and angles as numbers.
inline constexpr std::array<VertexAttribute, 13> kVertexAttributes{{
    {"ic", AttributeKind::Text},        // inner colour
    {"bc", AttributeKind::Text},        // border colour
    {"lc", AttributeKind::Text},        // label colour
    {"x_fact", AttributeKind::Number},  // horizontal size factor
    {"y_fact", AttributeKind::Number},  // vertical size factor
    {"phi", AttributeKind::Number},     // rotation
    {"r", AttributeKind::Number},       // corner radius
    {"q", AttributeKind::Number},       // diamond ratio
    {"lr", AttributeKind::Number},      // label radius
    {"lphi", AttributeKind::Number},    // label angle
    {"bw", AttributeKind::Number},      // border width
    {"fos", AttributeKind::Number},     // font size
    {"s_size", AttributeKind::Number},  // symbol size
}};

// Shape words stand alone; they are kept in the text property "shape".
inline constexpr std::array<std::string_view, 8> kShapeWords{
    "ellipse", "box", "diamond", "triangle", "cross", "empty", "man", "woman"};
inline constexpr std::string_view kShapeProperty = "shape";

// Vertex lines are kept as read (memory in proportion to the file) and laid
// out for every vertex only when the network is built, once the caller has
// checked bytesPerVertex() against its budget.
class VertexTable {
 public:
  bool empty() const { return lines_.empty(); }

  // Takes in the fields of vertex `v`'s line that follow its number. A later
  // line for the same vertex replaces everything an earlier one gave it.
  // Answers why the line is refused (coordinates that are not finite), or
  // nothing.
  std::string read(std::uint64_t v, FieldCursor& fields) {
    Line line{v, {}, false, 0.0f, 0.0f, 0.0f, {}};
    std::string_view field;
    bool more = fields.next(field);
    if (more) {
      assignAsUtf8(line.label, field);
      more = fields.next(field);
    }
    // Two or three numbers after the label are coordinates.
    float xyz[3] = {0.0f, 0.0f, 0.0f};
    int given = 0;
    std::string_view pending = field;
    FieldCursor after = fields;
    while (more && given < 3) {
      const quillo::FiniteFloat number = quillo::parseFiniteFloat(field);
      if (number.problem == quillo::FloatProblem::NotANumber) break;
      if (number.problem != quillo::FloatProblem::None) {
        return "coordinate " + quillo::floatProblemText(field, number.problem);
      }
      xyz[given++] = number.value;
      more = fields.next(field);
    }
    if (given == 1) {  // a single number is not a coordinate: look at it afresh
      field = pending;
      fields = after;
      more = true;
    } else if (given >= 2) {
      line.placed = true;
      line.x = xyz[0];
      line.y = xyz[1];
      line.z = xyz[2];
    }
    while (more) more = readAttribute(line, field, fields);
    lines_.push_back(std::move(line));
    placedAny_ = placedAny_ || lines_.back().placed;
    return {};
  }

  // The memory every vertex takes once the properties are laid out.
  std::uint64_t bytesPerVertex() const {
    if (empty()) return 0;
    std::uint64_t bytes = sizeof(std::string);  // "Name"
    if (placedAny_) bytes += 3 * sizeof(float) + 1;
    for (const Column& column : columns_) {
      bytes += column.kind == AttributeKind::Text ? sizeof(std::string) : sizeof(double);
    }
    return bytes;
  }

  // Adds "Name", then "Position" when the coordinates carry a layout, then
  // the attributes in the order they first appeared, each with `count`
  // entries.
  void moveInto(std::uint64_t count, PropertyTable& properties) {
    if (empty()) return;
    auto labels = std::make_shared<TextList>(count);
    std::vector<PropertyValue> values;
    for (const Column& column : columns_) values.push_back(emptyColumn(column.kind, count));
    std::vector<bool> placed(placedAny_ ? count : 0, false);
    auto positions = placedAny_ ? QLOVector3dArray::initWithSize(count, Precision::Float) : nullptr;
    for (Line& line : lines_) {
      const std::uint64_t v = line.v;
      (*labels)[v] = std::move(line.label);
      if (positions) {
        placed[v] = line.placed;
        positions->pointerForX()[v] = line.x;
        positions->pointerForY()[v] = line.y;
        positions->pointerForZ()[v] = line.z;
      }
      for (std::size_t c = 0; c < columns_.size(); ++c) setEntry(values[c], v, Entry{});
      for (Entry& entry : line.entries) setEntry(values[entry.column], v, std::move(entry));
    }
    lines_.clear();
    properties.emplace_back("Name", std::move(labels));
    if (positions && !allPlacedAlike(*positions, placed)) {
      properties.emplace_back("Position", std::move(positions));
    }
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      properties.emplace_back(std::string(columns_[c].name), std::move(values[c]));
    }
    columns_.clear();
  }

 private:
  struct Column {
    std::string_view name;
    AttributeKind kind;
  };
  // One attribute of one line; an Entry{} resets the vertex's value.
  struct Entry {
    std::size_t column = 0;
    std::string text;
    double number = std::numeric_limits<double>::quiet_NaN();
  };
  struct Line {
    std::uint64_t v;
    std::string label;
    bool placed;
    float x, y, z;
    std::vector<Entry> entries;
  };

  // Reads the attribute starting at `field`; answers whether `field` now
  // holds a further field to look at.
  bool readAttribute(Line& line, std::string_view& field, FieldCursor& fields) {
    for (std::string_view shape : kShapeWords) {
      if (equalsWord(field, shape)) {
        line.entries.push_back(
            Entry{column(kShapeProperty, AttributeKind::Text), std::string(shape), 0.0});
        return fields.next(field);
      }
    }
    for (const VertexAttribute& attribute : kVertexAttributes) {
      if (!equalsWord(field, attribute.keyword)) continue;
      if (!fields.next(field)) return false;
      if (attribute.kind == AttributeKind::Text) {
        Entry entry{column(attribute.keyword, attribute.kind), {}, 0.0};
        assignAsUtf8(entry.text, field);
        line.entries.push_back(std::move(entry));
        return fields.next(field);
      }
      // A keyword without a number after it is passed over; the field after
      // it is looked at afresh.
      const auto number = quillo::parseDouble(field);
      if (!number) return true;
      line.entries.push_back(Entry{column(attribute.keyword, attribute.kind), {}, *number});
      return fields.next(field);
    }
    return fields.next(field);
  }

  std::size_t column(std::string_view name, AttributeKind kind) {
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      if (columns_[c].name == name) return c;
    }
    columns_.push_back(Column{name, kind});
    return columns_.size() - 1;
  }

  static PropertyValue emptyColumn(AttributeKind kind, std::uint64_t count) {
    if (kind == AttributeKind::Text) return std::make_shared<TextList>(count);
    auto numbers = QLONumberArray::initWithCount(count, NumberType::Double);
    double* data = numbers->data<double>();
    std::fill(data, data + count, std::numeric_limits<double>::quiet_NaN());
    return numbers;
  }

  static void setEntry(PropertyValue& value, std::uint64_t v, Entry&& entry) {
    if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
      (**texts)[v] = std::move(entry.text);
    } else {
      std::get<std::shared_ptr<QLONumberArray>>(value)->data<double>()[v] = entry.number;
    }
  }

  // True when every vertex with coordinates has the same ones: such a file
  // (every vertex at 0 0, say) carries no layout.
  static bool allPlacedAlike(const QLOVector3dArray& positions, const std::vector<bool>& placed) {
    const float* xs = positions.pointerForX();
    const float* ys = positions.pointerForY();
    const float* zs = positions.pointerForZ();
    bool first = true;
    float x0 = 0, y0 = 0, z0 = 0;
    for (std::uint64_t v = 0; v < placed.size(); ++v) {
      if (!placed[v]) continue;
      if (first) {
        x0 = xs[v];
        y0 = ys[v];
        z0 = zs[v];
        first = false;
      } else if (xs[v] != x0 || ys[v] != y0 || zs[v] != z0) {
        return false;
      }
    }
    return true;
  }

  std::vector<Line> lines_;
  std::vector<Column> columns_;
  bool placedAny_ = false;
};

}  // namespace plexora::pajek
