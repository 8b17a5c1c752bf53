#include "quillo/QLONumberArray.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <vector>

#include "quillo/fileio.h"
#include "quillo/numbertext.h"
#include "quillo/utf8.h"

namespace {

// Calls fn with a typed pointer to the array's elements.
template <class Fn>
decltype(auto) visitElements(NumberType type, const void* data, Fn&& fn) {
  switch (type) {
    case NumberType::Bool:
      return fn(static_cast<const std::uint8_t*>(data));
    case NumberType::Int32:
      return fn(static_cast<const std::int32_t*>(data));
    case NumberType::Int64:
      return fn(static_cast<const std::int64_t*>(data));
    case NumberType::Float:
      return fn(static_cast<const float*>(data));
    case NumberType::Double:
      break;
  }
  return fn(static_cast<const double*>(data));
}

// Converts a double to the element type: booleans are "not zero" (NaN counts
// as true), integers are truncated and clamped, NaN becomes integer 0.
template <class T>
T convertTo(double value) {
  if constexpr (std::is_same_v<T, std::uint8_t>) {
    return value != 0.0 ? 1 : 0;
  } else if constexpr (std::is_integral_v<T>) {
    if (std::isnan(value)) return 0;
    constexpr double lo = static_cast<double>(std::numeric_limits<T>::min());
    constexpr double hi = static_cast<double>(std::numeric_limits<T>::max());
    if (value <= lo) return std::numeric_limits<T>::min();
    if (value >= hi) return std::numeric_limits<T>::max();
    return static_cast<T>(value);
  } else {
    return static_cast<T>(value);
  }
}

template <class Fn>
void visitMutable(NumberType type, void* data, Fn&& fn) {
  switch (type) {
    case NumberType::Bool:
      return fn(static_cast<std::uint8_t*>(data));
    case NumberType::Int32:
      return fn(static_cast<std::int32_t*>(data));
    case NumberType::Int64:
      return fn(static_cast<std::int64_t*>(data));
    case NumberType::Float:
      return fn(static_cast<float*>(data));
    case NumberType::Double:
      return fn(static_cast<double*>(data));
  }
}

}  // namespace

std::size_t numberTypeSize(NumberType type) {
  switch (type) {
    case NumberType::Bool:
      return 1;
    case NumberType::Int32:
      return 4;
    case NumberType::Int64:
      return 8;
    case NumberType::Float:
      return 4;
    case NumberType::Double:
      return 8;
  }
  return 0;
}

bool isKnownNumberType(std::uint32_t code) {
  return numberTypeSize(static_cast<NumberType>(code)) != 0;
}

QLONumberArray::QLONumberArray(std::uint64_t count, NumberType type)
    : count_(count),
      type_(type),
      data_(new unsigned char[std::max<std::size_t>(1, count * numberTypeSize(type))]()) {}

QLONumberArray::Ptr QLONumberArray::initWithCount(std::uint64_t count, NumberType type) {
  if (numberTypeSize(type) == 0) return nullptr;
  return Ptr(new QLONumberArray(count, type));
}

QLONumberArray::Ptr QLONumberArray::initWithBoolScalar(bool value, std::uint64_t count) {
  auto array = initWithCount(count, NumberType::Bool);
  if (value) std::memset(array->data_.get(), 1, count);
  return array;
}

QLONumberArray::Ptr QLONumberArray::floatArrayWithScalar(float value, std::uint64_t count) {
  auto array = initWithCount(count, NumberType::Float);
  std::fill_n(array->data<float>(), count, value);
  return array;
}

QLONumberArray::Ptr QLONumberArray::initWithFloats(std::span<const float> values) {
  auto array = initWithCount(values.size(), NumberType::Float);
  std::copy(values.begin(), values.end(), array->data<float>());
  return array;
}

QLONumberArray::Ptr QLONumberArray::initWithDoubles(std::span<const double> values) {
  auto array = initWithCount(values.size(), NumberType::Double);
  std::copy(values.begin(), values.end(), array->data<double>());
  return array;
}

QLONumberArray::Ptr QLONumberArray::initWithNumberArray(const QLONumberArray& source,
                                                        NumberRange range, NumberType type) {
  if (range.location > source.count_ || range.length > source.count_ - range.location) {
    return nullptr;
  }
  auto array = initWithCount(range.length, type);
  if (!array) return nullptr;
  visitElements(source.type_, source.QLO_dataPointer(), [&](const auto* in) {
    in += range.location;
    visitMutable(type, array->QLO_dataPointer(), [&](auto* out) {
      using Out = std::remove_pointer_t<decltype(out)>;
      using In = std::remove_cv_t<std::remove_pointer_t<decltype(in)>>;
      for (std::uint64_t i = 0; i < range.length; ++i) {
        if constexpr (std::is_same_v<In, Out>) {
          out[i] = in[i];
        } else {
          out[i] = convertTo<Out>(static_cast<double>(in[i]));
        }
      }
    });
  });
  return array;
}

QLONumberArray::Ptr QLONumberArray::initWithContentsOfURL(const std::filesystem::path& file,
                                                          NumberType type, ReadError* error) {
  std::string text;
  if (!quillo::readWholeFile(file, text, error)) return nullptr;
  return initWithText(text, type, file.string(), error);
}

QLONumberArray::Ptr QLONumberArray::initWithText(std::string_view text, NumberType type,
                                                 const std::string& name, ReadError* error) {
  if (numberTypeSize(type) == 0) {
    if (error) *error = ReadError{name, 0, "unknown number type"};
    return nullptr;
  }
  // Integer types read integer text exactly (a double would lose digits above
  // 2^53); anything else, and non-integer text, goes through double.
  const bool integral = type == NumberType::Int32 || type == NumberType::Int64;
  std::string converted;
  std::string encodingProblem;
  if (!quillo::textAsUtf8(text, converted, text, encodingProblem)) {
    if (error) *error = ReadError{name, 0, encodingProblem};
    return nullptr;
  }
  std::vector<double> values;
  std::vector<std::int64_t> integers;
  const bool read = quillo::forEachLine(text, [&](std::uint64_t lineNumber, std::string_view line) {
    std::string_view field;
    int fields = 0;
    quillo::forEachField(line, [&](std::string_view f) {
      if (fields++ == 0) field = f;
    });
    if (fields == 0) return true;
    auto fail = [&](const std::string& why) {
      if (error) *error = ReadError{name, lineNumber, why};
      return false;
    };
    if (fields > 1) return fail("expected one number, found " + std::to_string(fields) + " fields");
    if (integral) {
      if (auto exact = quillo::parseInt64(field)) {
        integers.push_back(*exact);
        return true;
      }
    }
    auto value = quillo::parseDouble(field);
    if (!value) return fail(quillo::quoted(field) + " is not a number");
    // A finite value beyond the float range would silently become infinite.
    if (type == NumberType::Float && std::isfinite(*value) &&
        quillo::parseFiniteFloat(field).problem == quillo::FloatProblem::OutOfRange) {
      return fail(quillo::floatProblemText(field, quillo::FloatProblem::OutOfRange));
    }
    if (integral) {
      integers.push_back(convertTo<std::int64_t>(*value));
    } else {
      values.push_back(*value);
    }
    return true;
  });
  if (!read) return nullptr;
  auto array = initWithCount(integral ? integers.size() : values.size(), type);
  visitMutable(type, array->QLO_dataPointer(), [&](auto* out) {
    using Out = std::remove_pointer_t<decltype(out)>;
    if constexpr (std::is_integral_v<Out> && !std::is_same_v<Out, std::uint8_t>) {
      for (std::size_t i = 0; i < integers.size(); ++i) {
        out[i] = static_cast<Out>(std::clamp<std::int64_t>(
            integers[i], std::numeric_limits<Out>::min(), std::numeric_limits<Out>::max()));
      }
    } else {
      for (std::size_t i = 0; i < values.size(); ++i) out[i] = convertTo<Out>(values[i]);
    }
  });
  return array;
}

bool QLONumberArray::boolValueAtIndex(std::uint64_t index) const {
  return doubleValueAtIndex(index) != 0.0;
}

void QLONumberArray::setBoolValue(bool value, std::uint64_t index) {
  setDoubleValue(value ? 1.0 : 0.0, index);
}

double QLONumberArray::doubleValueAtIndex(std::uint64_t index) const {
  if (index >= count_) throw std::out_of_range("QLONumberArray index out of range");
  return visitElements(type_, QLO_dataPointer(),
                       [&](const auto* in) { return static_cast<double>(in[index]); });
}

void QLONumberArray::setDoubleValue(double value, std::uint64_t index) {
  if (index >= count_) throw std::out_of_range("QLONumberArray index out of range");
  visitMutable(type_, QLO_dataPointer(), [&](auto* out) {
    out[index] = convertTo<std::remove_pointer_t<decltype(out)>>(value);
  });
}

void QLONumberArray::getFloatValues(float* out) const {
  getFloatValues(out, count_);
}

void QLONumberArray::getFloatValues(float* out, std::uint64_t n) const {
  n = std::min(n, count_);
  visitElements(type_, QLO_dataPointer(), [&](const auto* in) {
    for (std::uint64_t i = 0; i < n; ++i) out[i] = static_cast<float>(in[i]);
  });
}

std::string QLONumberArray::textAtIndex(std::uint64_t index) const {
  if (index >= count_) throw std::out_of_range("QLONumberArray index out of range");
  std::string out;
  visitElements(type_, QLO_dataPointer(), [&](const auto* in) {
    using In = std::remove_cv_t<std::remove_pointer_t<decltype(in)>>;
    if constexpr (std::is_floating_point_v<In>) {
      quillo::appendNumber(out, in[index]);
    } else {
      quillo::appendNumber(out, static_cast<std::int64_t>(in[index]));
    }
  });
  return out;
}

std::string QLONumberArray::text() const {
  std::string out;
  out.reserve(count_ * 10);
  visitElements(type_, QLO_dataPointer(), [&](const auto* in) {
    using In = std::remove_cv_t<std::remove_pointer_t<decltype(in)>>;
    for (std::uint64_t i = 0; i < count_; ++i) {
      if constexpr (std::is_floating_point_v<In>) {
        quillo::appendNumber(out, in[i]);
      } else {
        quillo::appendNumber(out, static_cast<std::int64_t>(in[i]));
      }
      out += '\n';
    }
  });
  return out;
}

bool QLONumberArray::writeToFile(const std::filesystem::path& file, WriteMode mode,
                                 std::string* error) const {
  return quillo::writeWholeFile(file, text(), mode, error);
}
