#pragma once
// What the vertex lines of a Pajek file say about the vertices: labels,
// coordinates and drawing attributes, gathered straight into the property
// arrays the network will hold.
//
// A vertex line reads `id label [x y [z]] [attributes...]`. The attributes are
// shape words and keyword/value pairs; those this reader knows are listed in
// kVertexAttributes, anything else on the line is passed over.
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
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

class VertexTable {
 public:
  // Called before the first vertex line with the number of vertices.
  void start(std::uint64_t count) {
    count_ = count;
    labels_ = std::make_shared<TextList>(count);
  }
  bool started() const { return labels_ != nullptr; }

  // Takes in the fields of vertex `v`'s line that follow its number. A later
  // line for the same vertex replaces everything an earlier one gave it.
  void read(std::uint64_t v, FieldCursor& fields) {
    clear(v);
    std::string_view field;
    if (!fields.next(field)) return;
    assignAsUtf8((*labels_)[v], field);

    bool more = fields.next(field);
    if (more) {
      if (const auto x = parseReal(field)) {
        more = fields.next(field);
        if (more) {
          if (const auto y = parseReal(field)) {
            float z = 0.0f;
            more = fields.next(field);
            if (more) {
              if (const auto given = parseReal(field)) {
                z = *given;
                more = fields.next(field);
              }
            }
            place(v, *x, *y, z);
          }
        }
      }
    }
    while (more) more = readAttribute(v, field, fields);
  }

  // Adds "Name", then "Position" when the coordinates carry a layout, then
  // the attributes in the order they first appeared.
  void moveInto(PropertyTable& properties) {
    if (!started()) return;
    properties.emplace_back("Name", std::move(labels_));
    if (positions_ && !allPlacedAlike()) properties.emplace_back("Position", std::move(positions_));
    for (Column& column : columns_) properties.emplace_back(std::string(column.name), column.value);
    columns_.clear();
  }

 private:
  struct Column {
    std::string_view name;
    AttributeKind kind;
    PropertyValue value;
  };

  // Reads the attribute starting at `field`; answers whether `field` now
  // holds a further field to look at.
  bool readAttribute(std::uint64_t v, std::string_view& field, FieldCursor& fields) {
    for (std::string_view shape : kShapeWords) {
      if (equalsWord(field, shape)) {
        setText(column(kShapeProperty, AttributeKind::Text), v, shape);
        return fields.next(field);
      }
    }
    for (const VertexAttribute& attribute : kVertexAttributes) {
      if (!equalsWord(field, attribute.keyword)) continue;
      if (!fields.next(field)) return false;
      if (attribute.kind == AttributeKind::Text) {
        std::string text;
        assignAsUtf8(text, field);
        setText(column(attribute.keyword, attribute.kind), v, text);
        return fields.next(field);
      }
      // A keyword without a number after it is passed over; the field after
      // it is looked at afresh.
      const auto number = quillo::parseDouble(field);
      if (!number) return true;
      auto& numbers =
          std::get<std::shared_ptr<QLONumberArray>>(column(attribute.keyword, attribute.kind));
      numbers->setDoubleValue(*number, v);
      return fields.next(field);
    }
    return fields.next(field);
  }

  PropertyValue& column(std::string_view name, AttributeKind kind) {
    for (Column& existing : columns_) {
      if (existing.name == name) return existing.value;
    }
    PropertyValue value;
    if (kind == AttributeKind::Text) {
      value = std::make_shared<TextList>(count_);
    } else {
      auto numbers = QLONumberArray::initWithCount(count_, NumberType::Double);
      double* data = numbers->data<double>();
      for (std::uint64_t i = 0; i < count_; ++i) data[i] = std::numeric_limits<double>::quiet_NaN();
      value = std::move(numbers);
    }
    columns_.push_back(Column{name, kind, std::move(value)});
    return columns_.back().value;
  }

  static void setText(PropertyValue& value, std::uint64_t v, std::string_view text) {
    (*std::get<std::shared_ptr<TextList>>(value))[v].assign(text);
  }

  void place(std::uint64_t v, float x, float y, float z) {
    if (!positions_) {
      positions_ = QLOVector3dArray::initWithSize(count_, Precision::Float);
      placed_.assign(count_, false);
    }
    positions_->pointerForX()[v] = x;
    positions_->pointerForY()[v] = y;
    positions_->pointerForZ()[v] = z;
    placed_[v] = true;
  }

  void clear(std::uint64_t v) {
    (*labels_)[v].clear();
    if (positions_) {
      positions_->pointerForX()[v] = 0.0f;
      positions_->pointerForY()[v] = 0.0f;
      positions_->pointerForZ()[v] = 0.0f;
      placed_[v] = false;
    }
    for (Column& existing : columns_) {
      if (existing.kind == AttributeKind::Text) {
        setText(existing.value, v, {});
      } else {
        std::get<std::shared_ptr<QLONumberArray>>(existing.value)
            ->setDoubleValue(std::numeric_limits<double>::quiet_NaN(), v);
      }
    }
  }

  // True when every vertex with coordinates has the same ones: such a file
  // (every vertex at 0 0, say) carries no layout.
  bool allPlacedAlike() const {
    const float* xs = positions_->pointerForX();
    const float* ys = positions_->pointerForY();
    const float* zs = positions_->pointerForZ();
    bool first = true;
    float x0 = 0, y0 = 0, z0 = 0;
    for (std::uint64_t v = 0; v < count_; ++v) {
      if (!placed_[v]) continue;
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

  std::uint64_t count_ = 0;
  std::shared_ptr<TextList> labels_;
  std::shared_ptr<QLOVector3dArray> positions_;
  std::vector<bool> placed_;  // vertices whose line gave coordinates
  std::vector<Column> columns_;
};

}  // namespace plexora::pajek
