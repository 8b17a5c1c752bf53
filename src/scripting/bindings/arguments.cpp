#include "bindings/arguments.h"

#include <string>

namespace py = pybind11;

namespace plexview {
namespace {

// The int value of an enum member or a Python int (bool excluded: True is not
// a type code).
std::int64_t codeOf(const py::handle& value, const char* what) {
  if (PyBool_Check(value.ptr()) || !PyIndex_Check(value.ptr())) {
    throw py::type_error(std::string(what) + " must be a plexview." + what + " or an int");
  }
  return py::int_(value.attr("__index__")()).cast<std::int64_t>();
}

}  // namespace

NumberType numberTypeFrom(const py::handle& value) {
  const std::int64_t code = codeOf(value, "NumberType");
  if (code < 0 || code > 0xffffffff || !isKnownNumberType(static_cast<std::uint32_t>(code))) {
    throw py::value_error("unknown number type " + std::to_string(code));
  }
  return static_cast<NumberType>(code);
}

Precision precisionFrom(const py::handle& value) {
  const std::int64_t code = codeOf(value, "Precision");
  if (code != static_cast<std::int64_t>(Precision::Float) &&
      code != static_cast<std::int64_t>(Precision::Double)) {
    throw py::value_error("unknown precision " + std::to_string(code));
  }
  return static_cast<Precision>(code);
}

std::uint64_t checkedIndex(std::int64_t index, std::uint64_t count) {
  if (index < 0 || static_cast<std::uint64_t>(index) >= count) {
    throw py::index_error("index " + std::to_string(index) + " is out of range for " +
                          std::to_string(count) + " entries");
  }
  return static_cast<std::uint64_t>(index);
}

}  // namespace plexview
