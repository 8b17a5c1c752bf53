#include "bindings/numpy_conversion.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

namespace py = pybind11;

namespace plexview {
namespace {

template <class T>
using Contiguous = py::array_t<T, py::array::c_style | py::array::forcecast>;

std::string dtypeName(const py::array& array) {
  return py::str(array.dtype()).cast<std::string>();
}

template <class T>
QLONumberArray::Ptr copyNumbers(const py::array& input, NumberType type) {
  auto values = Contiguous<T>::ensure(input);
  if (!values) throw py::error_already_set();
  auto result = QLONumberArray::initWithCount(static_cast<std::uint64_t>(values.size()), type);
  if (values.size() > 0) {
    std::memcpy(result->QLO_dataPointer(), values.data(),
                static_cast<std::size_t>(values.size()) * sizeof(T));
  }
  return result;
}

QLONumberArray::Ptr copyUnsigned64(const py::array& input) {
  auto values = Contiguous<std::uint64_t>::ensure(input);
  if (!values) throw py::error_already_set();
  const std::uint64_t* begin = values.data();
  const std::uint64_t* end = begin + values.size();
  constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (std::any_of(begin, end, [](std::uint64_t v) { return v > kLargest; })) {
    PyErr_SetString(PyExc_OverflowError, "a uint64 value does not fit in int64");
    throw py::error_already_set();
  }
  return copyNumbers<std::int64_t>(input.attr("astype")("int64"), NumberType::Int64);
}

template <class T>
QLOVector3dArray::Ptr copyVectors(const py::array& input, Precision precision) {
  auto values = Contiguous<T>::ensure(input);
  if (!values) throw py::error_already_set();
  auto table = values.template unchecked<2>();
  const auto count = static_cast<std::uint64_t>(table.shape(0));
  auto result = QLOVector3dArray::initWithSize(count, precision);
  T* planes[3];
  if constexpr (std::is_same_v<T, float>) {
    planes[0] = result->pointerForX();
    planes[1] = result->pointerForY();
    planes[2] = result->pointerForZ();
  } else {
    planes[0] = result->doublePointerForX();
    planes[1] = result->doublePointerForY();
    planes[2] = result->doublePointerForZ();
  }
  for (py::ssize_t i = 0; i < table.shape(0); ++i) {
    for (py::ssize_t axis = 0; axis < 3; ++axis) planes[axis][i] = table(i, axis);
  }
  return result;
}

}  // namespace

py::array asNumpy(const py::handle& object) {
  py::module_ numpy = py::module_::import("numpy");
  try {
    return numpy.attr("asarray")(object);
  } catch (py::error_already_set& failure) {
    throw py::type_error("cannot make an array of a " +
                         py::str(py::type::of(object).attr("__name__")).cast<std::string>() + ": " +
                         failure.what());
  }
}

QLONumberArray::Ptr numberArrayFromNumpy(const py::handle& object) {
  py::array input = asNumpy(object);
  if (input.ndim() != 1) {
    throw py::value_error("expected a 1-D array, got " + std::to_string(input.ndim()) +
                          " dimensions");
  }
  const char kind = input.dtype().kind();
  const py::ssize_t size = input.dtype().itemsize();
  if (kind == 'b') return copyNumbers<bool>(input, NumberType::Bool);
  if (kind == 'f' && size <= 4) return copyNumbers<float>(input, NumberType::Float);
  if (kind == 'f' && size == 8) return copyNumbers<double>(input, NumberType::Double);
  if (kind == 'i' && size == 4) return copyNumbers<std::int32_t>(input, NumberType::Int32);
  if (kind == 'u' && size == 8) return copyUnsigned64(input);
  if (kind == 'i' || kind == 'u') return copyNumbers<std::int64_t>(input, NumberType::Int64);
  throw py::type_error("cannot make a number array of dtype " + dtypeName(input));
}

QLOVector3dArray::Ptr vectorArrayFromNumpy(const py::handle& object) {
  py::array input = asNumpy(object);
  if (input.ndim() != 2 || input.shape(1) != 3) {
    throw py::value_error("expected an array of shape (N, 3)");
  }
  const char kind = input.dtype().kind();
  if (kind == 'f' && input.dtype().itemsize() <= 4)
    return copyVectors<float>(input, Precision::Float);
  if (kind == 'f' || kind == 'i' || kind == 'u' || kind == 'b') {
    return copyVectors<double>(input, Precision::Double);
  }
  throw py::type_error("cannot make a vector array of dtype " + dtypeName(input));
}

}  // namespace plexview
