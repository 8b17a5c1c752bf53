#pragma once
// A flat, typed array of numbers: masks (type 1, one byte per entry), floats
// (type 14) and the other element types a file or a script may bring.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "quillo/ReadError.h"

// Element type codes. Bool and Float are the ones the application works with;
// the integer and double codes keep values read from documents exact.
enum class NumberType : std::uint32_t {
  Bool = 1,    // uint8_t, 0 or 1
  Int32 = 8,   // int32_t
  Int64 = 10,  // int64_t
  Float = 14,  // float
  Double = 15  // double
};

// Size in bytes of one element; 0 for a code that is not a NumberType.
std::size_t numberTypeSize(NumberType type);
bool isKnownNumberType(std::uint32_t code);

struct NumberRange {
  std::uint64_t location = 0;
  std::uint64_t length = 0;
};

class QLONumberArray {
 public:
  using Ptr = std::shared_ptr<QLONumberArray>;

  // Every entry zero.
  static Ptr initWithCount(std::uint64_t count, NumberType type);
  static Ptr initWithBoolScalar(bool value, std::uint64_t count);
  static Ptr floatArrayWithScalar(float value, std::uint64_t count);
  static Ptr initWithFloats(std::span<const float> values);
  static Ptr initWithDoubles(std::span<const double> values);
  // A copy of `range` of `source` converted to `type`; null when the range
  // does not lie within the source.
  static Ptr initWithNumberArray(const QLONumberArray& source, NumberRange range, NumberType type);
  // Reads one number per line (blank lines ignored). Null on failure, with the
  // line and reason in `error` when given.
  static Ptr initWithContentsOfURL(const std::filesystem::path& file, NumberType type,
                                   ReadError* error = nullptr);
  // The same, from text in memory; `name` is used in error messages.
  static Ptr initWithText(std::string_view text, NumberType type, const std::string& name,
                          ReadError* error = nullptr);

  QLONumberArray(const QLONumberArray&) = delete;
  QLONumberArray& operator=(const QLONumberArray&) = delete;

  std::uint64_t count() const { return count_; }
  NumberType numberArrayType() const { return type_; }

  void* QLO_dataPointer() { return data_.get(); }
  const void* QLO_dataPointer() const { return data_.get(); }
  // Typed access; T must match the element type (checked in debug builds).
  template <class T>
  T* data() {
    return static_cast<T*>(QLO_dataPointer());
  }
  template <class T>
  const T* data() const {
    return static_cast<const T*>(QLO_dataPointer());
  }

  bool boolValueAtIndex(std::uint64_t index) const;
  void setBoolValue(bool value, std::uint64_t index);
  double doubleValueAtIndex(std::uint64_t index) const;
  void setDoubleValue(double value, std::uint64_t index);

  // Writes all (or the first n) entries converted to 32-bit floats.
  void getFloatValues(float* out) const;
  void getFloatValues(float* out, std::uint64_t n) const;

  // The shortest text of one entry that reads back to the same value.
  std::string textAtIndex(std::uint64_t index) const;
  // One number per line, the form initWithContentsOfURL reads.
  std::string text() const;
  bool writeToFile(const std::filesystem::path& file, WriteMode mode,
                   std::string* error = nullptr) const;

 private:
  QLONumberArray(std::uint64_t count, NumberType type);

  std::uint64_t count_;
  NumberType type_;
  std::unique_ptr<unsigned char[]> data_;
};
