#include "quillo/QLOVector3dArray.h"

#include <atomic>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <vector>

#include "quillo/QLONumberArray.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"
#include "quillo/utf8.h"

namespace {

constexpr std::size_t kAlignment = 64;

// Elements are read and written as relaxed atomics: a layout thread updates
// the positions of a shown network while the main thread reads them, and a
// plain access on both sides would be a data race. On x86 these are ordinary
// moves.
template <class T>
T loadRelaxed(const T* element) {
  return std::atomic_ref<T>(*const_cast<T*>(element)).load(std::memory_order_relaxed);
}
template <class T>
void storeRelaxed(T* element, T value) {
  std::atomic_ref<T>(*element).store(value, std::memory_order_relaxed);
}

std::size_t elementSize(Precision precision) {
  return precision == Precision::Double ? sizeof(double) : sizeof(float);
}

bool isKnownPrecision(Precision precision) {
  return precision == Precision::Float || precision == Precision::Double;
}

}  // namespace

QLOVector3dArray::QLOVector3dArray(std::uint64_t count, Precision precision)
    : count_(count), precision_(precision) {
  // Each plane starts on a 64-byte boundary: round its length up.
  const std::uint64_t perLine = kAlignment / elementSize(precision);
  stride_ = (count + perLine - 1) / perLine * perLine;
  const std::size_t bytes = std::max<std::size_t>(kAlignment, 3 * stride_ * elementSize(precision));
  storage_ = ::operator new(bytes, std::align_val_t(kAlignment));
  std::memset(storage_, 0, bytes);
}

QLOVector3dArray::~QLOVector3dArray() {
  ::operator delete(storage_, std::align_val_t(kAlignment));
}

float* QLOVector3dArray::floatPlane(int axis) const {
  if (precision_ != Precision::Float) return nullptr;
  return static_cast<float*>(storage_) + static_cast<std::uint64_t>(axis) * stride_;
}

double* QLOVector3dArray::doublePlane(int axis) const {
  if (precision_ != Precision::Double) return nullptr;
  return static_cast<double*>(storage_) + static_cast<std::uint64_t>(axis) * stride_;
}

double QLOVector3dArray::component(int axis, std::uint64_t index) const {
  if (precision_ == Precision::Float) {
    return static_cast<double>(loadRelaxed(floatPlane(axis) + index));
  }
  return loadRelaxed(doublePlane(axis) + index);
}

std::vector<float> QLOVector3dArray::planeAsFloats(int axis) const {
  std::vector<float> out(count_);
  for (std::uint64_t i = 0; i < count_; ++i) out[i] = static_cast<float>(component(axis, i));
  return out;
}

QLOVector3dArray::Ptr QLOVector3dArray::initWithSize(std::uint64_t count, Precision precision) {
  if (!isKnownPrecision(precision)) return nullptr;
  return Ptr(new QLOVector3dArray(count, precision));
}

QLOVector3dArray::Ptr QLOVector3dArray::initWithX(const QLONumberArray& x, const QLONumberArray& y,
                                                  const QLONumberArray& z, Precision precision) {
  if (x.count() != y.count() || x.count() != z.count()) return nullptr;
  auto array = initWithSize(x.count(), precision);
  if (!array) return nullptr;
  const QLONumberArray* sources[3] = {&x, &y, &z};
  for (int axis = 0; axis < 3; ++axis) {
    const QLONumberArray& source = *sources[axis];
    if (precision == Precision::Float) {
      source.getFloatValues(array->floatPlane(axis));
    } else {
      double* plane = array->doublePlane(axis);
      for (std::uint64_t i = 0; i < source.count(); ++i) plane[i] = source.doubleValueAtIndex(i);
    }
  }
  return array;
}

QLOVector3dArray::Ptr QLOVector3dArray::initWithVector3dArray(const QLOVector3dArray& other,
                                                              Precision precision) {
  auto array = initWithSize(other.count_, precision);
  if (!array) return nullptr;
  for (int axis = 0; axis < 3; ++axis) {
    for (std::uint64_t i = 0; i < other.count_; ++i) {
      if (precision == Precision::Float) {
        array->floatPlane(axis)[i] = static_cast<float>(other.component(axis, i));
      } else {
        array->doublePlane(axis)[i] = other.component(axis, i);
      }
    }
  }
  return array;
}

QLOVector3dArray::Ptr QLOVector3dArray::initWithContentsOfURL(const std::filesystem::path& file,
                                                              Precision precision,
                                                              ReadError* error) {
  std::string text;
  if (!quillo::readWholeFile(file, text, error)) return nullptr;
  return initWithText(text, precision, file.string(), error);
}

QLOVector3dArray::Ptr QLOVector3dArray::initWithText(std::string_view text, Precision precision,
                                                     const std::string& name, ReadError* error) {
  if (!isKnownPrecision(precision)) {
    if (error) *error = ReadError{name, 0, "unknown precision"};
    return nullptr;
  }
  std::string converted;
  std::string encodingProblem;
  if (!quillo::textAsUtf8(text, converted, text, encodingProblem)) {
    if (error) *error = ReadError{name, 0, encodingProblem};
    return nullptr;
  }
  std::vector<double> values;  // x0 y0 z0 x1 ...
  const bool read = quillo::forEachLine(text, [&](std::uint64_t lineNumber, std::string_view line) {
    std::string_view fields[3];
    int found = 0;
    quillo::forEachField(line, [&](std::string_view f) {
      if (found < 3) fields[found] = f;
      ++found;
    });
    if (found == 0) return true;
    auto fail = [&](const std::string& why) {
      if (error) *error = ReadError{name, lineNumber, why};
      return false;
    };
    if (found != 3) {
      return fail("expected three numbers (x y z), found " + std::to_string(found) + " fields");
    }
    // Positions and colours must be finite: a NaN position would stay in the
    // layout for ever.
    for (const auto& field : fields) {
      if (precision == Precision::Float) {
        const quillo::FiniteFloat value = quillo::parseFiniteFloat(field);
        if (value.problem != quillo::FloatProblem::None) {
          return fail(quillo::floatProblemText(field, value.problem));
        }
        values.push_back(value.value);
      } else {
        auto value = quillo::parseDouble(field);
        if (!value) return fail(quillo::quoted(field) + " is not a number");
        if (!std::isfinite(*value)) {
          return fail(quillo::floatProblemText(field, quillo::FloatProblem::NotFinite));
        }
        values.push_back(*value);
      }
    }
    return true;
  });
  if (!read) return nullptr;
  const std::uint64_t count = values.size() / 3;
  auto array = initWithSize(count, precision);
  for (std::uint64_t i = 0; i < count; ++i) {
    array->setVector({values[3 * i], values[3 * i + 1], values[3 * i + 2]}, i);
  }
  return array;
}

std::array<double, 3> QLOVector3dArray::vectorAtIndex(std::uint64_t index) const {
  if (index >= count_) throw std::out_of_range("QLOVector3dArray index out of range");
  return {component(0, index), component(1, index), component(2, index)};
}

void QLOVector3dArray::setVector(const std::array<double, 3>& value, std::uint64_t index) {
  if (index >= count_) throw std::out_of_range("QLOVector3dArray index out of range");
  for (int axis = 0; axis < 3; ++axis) {
    const double v = value[static_cast<std::size_t>(axis)];
    if (precision_ == Precision::Float) {
      storeRelaxed(floatPlane(axis) + index, static_cast<float>(v));
    } else {
      storeRelaxed(doublePlane(axis) + index, v);
    }
  }
}

std::string QLOVector3dArray::text() const {
  std::string out;
  out.reserve(count_ * 30);
  for (std::uint64_t i = 0; i < count_; ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      if (axis > 0) out += ' ';
      if (precision_ == Precision::Float) {
        quillo::appendNumber(out, loadRelaxed(floatPlane(axis) + i));
      } else {
        quillo::appendNumber(out, loadRelaxed(doublePlane(axis) + i));
      }
    }
    out += '\n';
  }
  return out;
}

// The precision is settled once per plane, so each loop is a plain run of
// relaxed loads or stores.
void QLOVector3dArray::copyPlanesTo(float* x, float* y, float* z) const {
  float* out[3] = {x, y, z};
  for (int axis = 0; axis < 3; ++axis) {
    float* to = out[axis];
    if (precision_ == Precision::Float) {
      const float* plane = floatPlane(axis);
      for (std::uint64_t i = 0; i < count_; ++i) to[i] = loadRelaxed(plane + i);
    } else {
      const double* plane = doublePlane(axis);
      for (std::uint64_t i = 0; i < count_; ++i) to[i] = static_cast<float>(loadRelaxed(plane + i));
    }
  }
}

void QLOVector3dArray::copyPlanesFrom(const float* x, const float* y, const float* z) {
  const float* in[3] = {x, y, z};
  for (int axis = 0; axis < 3; ++axis) {
    const float* from = in[axis];
    if (precision_ == Precision::Float) {
      float* plane = floatPlane(axis);
      for (std::uint64_t i = 0; i < count_; ++i) storeRelaxed(plane + i, from[i]);
    } else {
      double* plane = doublePlane(axis);
      for (std::uint64_t i = 0; i < count_; ++i) {
        storeRelaxed(plane + i, static_cast<double>(from[i]));
      }
    }
  }
}

bool QLOVector3dArray::writeToURL(const std::filesystem::path& file, WriteMode mode,
                                  std::string* error) const {
  return quillo::writeWholeFile(file, text(), mode, error);
}
