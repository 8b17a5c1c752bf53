#include <pybind11/numpy.h>
#include <pybind11/stl/filesystem.h>

#include <string>

#include "bindings/arguments.h"
#include "bindings/bind_parts.h"
#include "bindings/errors.h"
#include "bindings/numpy_conversion.h"
#include "bindings/views.h"
#include "quillo/QLONumberArray.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Ptr = QLONumberArray::Ptr;

py::dtype dtypeOf(NumberType type) {
  switch (type) {
    case NumberType::Bool:
      return py::dtype::of<std::uint8_t>();
    case NumberType::Int32:
      return py::dtype::of<std::int32_t>();
    case NumberType::Int64:
      return py::dtype::of<std::int64_t>();
    case NumberType::Float:
      return py::dtype::of<float>();
    case NumberType::Double:
      break;
  }
  return py::dtype::of<double>();
}

// The elements as a writable NumPy array sharing the array's memory.
py::array viewOf(const Ptr& array) {
  const auto itemsize = static_cast<py::ssize_t>(numberTypeSize(array->numberArrayType()));
  return sharedView(dtypeOf(array->numberArrayType()), {static_cast<py::ssize_t>(array->count())},
                    {itemsize}, array->QLO_dataPointer(), array, ViewAccess::Writable);
}

py::array floatCopyOf(const QLONumberArray& array) {
  py::array_t<float> out(static_cast<py::ssize_t>(array.count()));
  array.getFloatValues(out.mutable_data());
  return out;
}

Ptr readFile(const std::filesystem::path& file, const py::handle& type) {
  const NumberType numberType = numberTypeFrom(type);
  ReadError error;
  Ptr array;
  {
    py::gil_scoped_release release;
    array = QLONumberArray::initWithContentsOfURL(file, numberType, &error);
  }
  if (!array) throw ReadFailure(error);
  return array;
}

Ptr readText(const std::string& text, const py::handle& type, const std::string& name) {
  ReadError error;
  Ptr array = QLONumberArray::initWithText(text, numberTypeFrom(type), name, &error);
  if (!array) throw ReadFailure(error);
  return array;
}

void writeFile(const QLONumberArray& array, const std::filesystem::path& file, bool atomically) {
  std::string error;
  bool written;
  {
    py::gil_scoped_release release;
    written = array.writeToFile(file, writeModeFor(atomically), &error);
  }
  if (!written) throw WriteFailure(error);
}

Ptr rangeCopy(const QLONumberArray& source, std::uint64_t location, std::uint64_t length,
              const py::handle& type) {
  Ptr array = QLONumberArray::initWithNumberArray(source, NumberRange{location, length},
                                                  numberTypeFrom(type));
  if (!array) {
    throw py::value_error("range " + std::to_string(location) + "+" + std::to_string(length) +
                          " does not lie within " + std::to_string(source.count()) + " entries");
  }
  return array;
}

std::string repr(const QLONumberArray& array) {
  std::string text = "<QLONumberArray count=" + std::to_string(array.count());
  text += " type=";
  text += py::str(py::cast(array.numberArrayType())).cast<std::string>();
  text += '>';
  return text;
}

}  // namespace

void bindNumberArray(py::module_& m) {
  py::class_<QLONumberArray, Ptr>(m, "QLONumberArray",
                                  "A flat typed array of numbers. array() is a NumPy view of the "
                                  "elements that shares their memory.")
      .def_static(
          "initWithCount",
          [](std::uint64_t count, const py::handle& type) {
            return QLONumberArray::initWithCount(count, numberTypeFrom(type));
          },
          py::arg("count"), py::arg("type"), "count zeros of the given NumberType.")
      .def_static("initWithBoolScalar", &QLONumberArray::initWithBoolScalar, py::arg("value"),
                  py::arg("count"))
      .def_static("floatArrayWithScalar", &QLONumberArray::floatArrayWithScalar, py::arg("value"),
                  py::arg("count"))
      .def_static("initWithNumberArray", &rangeCopy, py::arg("source"), py::arg("location"),
                  py::arg("length"), py::arg("type"),
                  "A converted copy of source[location:location+length]; ValueError when the "
                  "range does not lie within the source.")
      .def_static("initWithContentsOfURL", &readFile, py::arg("path"), py::arg("type"),
                  "Reads one number per line; raises ReadError on failure.")
      .def_static("initWithText", &readText, py::arg("text"), py::arg("type"),
                  py::arg("name") = "<text>")
      .def_static("fromNumpy", &numberArrayFromNumpy, py::arg("values"),
                  "A copy of a 1-D array: float32 -> Float, float64 -> Double, bool -> Bool, "
                  "int32 -> Int32, other integers -> Int64.")
      .def("count", &QLONumberArray::count)
      .def("__len__", &QLONumberArray::count)
      .def("numberArrayType", &QLONumberArray::numberArrayType)
      .def(
          "boolValueAtIndex",
          [](const QLONumberArray& a, std::int64_t i) {
            return a.boolValueAtIndex(checkedIndex(i, a.count()));
          },
          py::arg("index"))
      .def(
          "setBoolValue",
          [](QLONumberArray& a, bool value, std::int64_t i) {
            a.setBoolValue(value, checkedIndex(i, a.count()));
          },
          py::arg("value"), py::arg("index"))
      .def(
          "doubleValueAtIndex",
          [](const QLONumberArray& a, std::int64_t i) {
            return a.doubleValueAtIndex(checkedIndex(i, a.count()));
          },
          py::arg("index"))
      .def(
          "setDoubleValue",
          [](QLONumberArray& a, double value, std::int64_t i) {
            a.setDoubleValue(value, checkedIndex(i, a.count()));
          },
          py::arg("value"), py::arg("index"))
      .def(
          "textAtIndex",
          [](const QLONumberArray& a, std::int64_t i) {
            return a.textAtIndex(checkedIndex(i, a.count()));
          },
          py::arg("index"))
      .def("text", &QLONumberArray::text)
      .def("getFloatValues", &floatCopyOf, "The entries as a fresh float32 NumPy array.")
      .def("array", &viewOf, "A writable NumPy view of the elements (uint8 for Bool).")
      .def("writeToFile", &writeFile, py::arg("path"), py::arg("atomically") = true,
           "Writes one number per line; raises OSError with the reason on failure.")
      .def("__repr__", &repr);
}

}  // namespace plexview
