#pragma once
// The values of one node key, one entry per vertex, parsed from <data> text
// into the array type the key's attr.type asks for.
#include <algorithm>
#include <array>
#include <cfloat>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>

#include "plexora/PropertyValue.h"
#include "plexora/graphml_keys.h"
#include "plexora/graphml_xml.h"
#include "quillo/numbertext.h"

namespace plexora::graphml {

// "true"/"false" in any case, or "1"/"0" (XML Schema's boolean forms).
inline std::optional<bool> parseBoolean(std::string_view text) {
  if (text == "1" || equalsIgnoringCase(text, "true")) return true;
  if (text == "0" || equalsIgnoringCase(text, "false")) return false;
  return std::nullopt;
}

// A double narrowed to float, overflowing to an infinity rather than to
// undefined behaviour.
inline float narrowToFloat(double value) {
  if (value > static_cast<double>(FLT_MAX)) return std::numeric_limits<float>::infinity();
  if (value < -static_cast<double>(FLT_MAX)) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

// An edge weight given as a number of `kind` (white space around it allowed).
inline std::optional<float> parseWeight(ValueKind kind, std::string_view raw) {
  const std::string_view text = trimmed(raw);
  switch (kind) {
    case ValueKind::Float:
      return quillo::parseFloat(text);
    case ValueKind::Double:
      if (auto value = quillo::parseDouble(text)) return narrowToFloat(*value);
      break;
    case ValueKind::Int32:
    case ValueKind::Int64:
      if (auto value = quillo::parseInt64(text)) return static_cast<float>(*value);
      break;
    case ValueKind::Bool:
    case ValueKind::Text:
      break;
  }
  return std::nullopt;
}

inline NumberType numberTypeOf(ValueKind kind) {
  switch (kind) {
    case ValueKind::Bool:
      return NumberType::Bool;
    case ValueKind::Int32:
      return NumberType::Int32;
    case ValueKind::Int64:
      return NumberType::Int64;
    case ValueKind::Float:
      return NumberType::Float;
    default:
      return NumberType::Double;
  }
}

// Memory one entry of a column takes, for the reader's size check.
inline std::uint64_t entryBytes(ValueKind kind) {
  return kind == ValueKind::Text ? sizeof(std::string) : numberTypeSize(numberTypeOf(kind));
}

class Column {
 public:
  // Numbers start as NaN (integers 0, booleans false), texts as "".
  Column(ValueKind kind, std::uint64_t count) : kind_(kind) {
    if (kind == ValueKind::Text) {
      texts_ = std::make_shared<TextList>(count);
      return;
    }
    numbers_ = QLONumberArray::initWithCount(count, numberTypeOf(kind));
    if (kind == ValueKind::Float) {
      std::fill_n(numbers_->data<float>(), count, std::numeric_limits<float>::quiet_NaN());
    } else if (kind == ValueKind::Double) {
      std::fill_n(numbers_->data<double>(), count, std::numeric_limits<double>::quiet_NaN());
    }
  }

  ValueKind kind() const { return kind_; }

  // Sets every entry (a key's <default>); false when the text does not parse.
  bool fill(std::string_view text) {
    if (texts_) {
      for (std::string& entry : *texts_) entry.assign(text);
      return true;
    }
    return storeNumber(text, 0, numbers_->count());
  }

  // Sets one entry; false when the text does not parse. Blank text leaves a
  // number entry at its default.
  bool assign(std::uint64_t index, std::string_view text) {
    if (texts_) {
      (*texts_)[index].assign(text);
      return true;
    }
    return storeNumber(text, index, index + 1);
  }

  // A number entry as a double (0 for a text column).
  double number(std::uint64_t index) const {
    return numbers_ ? numbers_->doubleValueAtIndex(index) : 0.0;
  }

  PropertyValue value() const {
    if (texts_) return texts_;
    return numbers_;
  }

 private:
  // Parses a number and stores it in entries [first, last); blank text
  // changes nothing.
  bool storeNumber(std::string_view text, std::uint64_t first, std::uint64_t last) {
    unsigned char cell[8];
    switch (parseCell(text, cell)) {
      case Cell::Bad:
        return false;
      case Cell::Empty:
        return true;
      case Cell::Value:
        break;
    }
    const std::size_t size = numberTypeSize(numbers_->numberArrayType());
    auto* data = static_cast<unsigned char*>(numbers_->QLO_dataPointer());
    for (std::uint64_t i = first; i < last; ++i) std::memcpy(data + i * size, cell, size);
    return true;
  }

  enum class Cell { Value, Empty, Bad };

  // Parses a number of this column's kind into the bytes of its element type.
  Cell parseCell(std::string_view raw, unsigned char (&cell)[8]) const {
    const std::string_view text = trimmed(raw);
    if (text.empty()) return Cell::Empty;
    auto store = [&](auto value) {
      static_assert(sizeof value <= sizeof cell);
      std::memcpy(cell, &value, sizeof value);
      return Cell::Value;
    };
    switch (kind_) {
      case ValueKind::Bool:
        if (auto value = parseBoolean(text)) return store(static_cast<std::uint8_t>(*value));
        break;
      case ValueKind::Int32:
        if (auto value = quillo::parseInt64(text)) {
          if (*value >= std::numeric_limits<std::int32_t>::min() &&
              *value <= std::numeric_limits<std::int32_t>::max()) {
            return store(static_cast<std::int32_t>(*value));
          }
        }
        break;
      case ValueKind::Int64:
        if (auto value = quillo::parseInt64(text)) return store(*value);
        break;
      case ValueKind::Float:
        if (auto value = quillo::parseFloat(text)) return store(*value);
        break;
      case ValueKind::Double:
        if (auto value = quillo::parseDouble(text)) return store(*value);
        break;
      case ValueKind::Text:
        break;
    }
    return Cell::Bad;
  }

  ValueKind kind_;
  std::shared_ptr<QLONumberArray> numbers_;
  std::shared_ptr<TextList> texts_;
};

enum class ColorScale { Keep, Detect };

// A vector property from up to three number columns (a missing one reads as
// zeros). Precision 2 when a component holds doubles or 64-bit integers,
// precision 1 otherwise. With ColorScale::Detect the values are divided by 255
// when a component is an integer key or any value exceeds 1, as tools that
// write colours as bytes do.
inline std::shared_ptr<QLOVector3dArray> buildVector(const Column* const (&parts)[3],
                                                     std::uint64_t count, ColorScale scale) {
  Precision precision = Precision::Float;
  bool integral = false;
  for (const Column* part : parts) {
    if (!part) continue;
    const ValueKind kind = part->kind();
    if (kind == ValueKind::Double || kind == ValueKind::Int64) precision = Precision::Double;
    if (kind == ValueKind::Int32 || kind == ValueKind::Int64) integral = true;
  }
  double divisor = 1.0;
  if (scale == ColorScale::Detect) {
    bool bytes = integral;
    for (std::uint64_t v = 0; v < count && !bytes; ++v) {
      for (const Column* part : parts) bytes = bytes || (part && part->number(v) > 1.0);
    }
    if (bytes) divisor = 255.0;
  }
  auto vectors = QLOVector3dArray::initWithSize(count, precision);
  for (std::uint64_t v = 0; v < count; ++v) {
    std::array<double, 3> value{0.0, 0.0, 0.0};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (parts[axis]) value[axis] = parts[axis]->number(v) / divisor;
    }
    vectors->setVector(value, v);
  }
  return vectors;
}

}  // namespace plexora::graphml
