#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <string>

#include "bindings/arguments.h"
#include "bindings/bind_parts.h"
#include "bindings/errors.h"
#include "bindings/numpy_conversion.h"
#include "bindings/views.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace py = pybind11;

namespace plexview {
namespace {

using Ptr = QLOVector3dArray::Ptr;

// Where the planes lie: the X plane's start, the element size and the bytes
// from one plane's start to the next.
struct PlaneLayout {
  void* x;
  py::ssize_t itemsize;
  py::ssize_t planeStride;
};

PlaneLayout layoutOf(QLOVector3dArray& array) {
  if (array.precision() == Precision::Float) {
    return {array.pointerForX(), sizeof(float),
            static_cast<py::ssize_t>(sizeof(float)) * (array.pointerForY() - array.pointerForX())};
  }
  return {array.doublePointerForX(), sizeof(double),
          static_cast<py::ssize_t>(sizeof(double)) *
              (array.doublePointerForY() - array.doublePointerForX())};
}

py::dtype dtypeOf(Precision precision) {
  return precision == Precision::Float ? py::dtype::of<float>() : py::dtype::of<double>();
}

// A writable 1-D view of one plane (0 = X, 1 = Y, 2 = Z).
py::array planeView(const Ptr& array, int axis) {
  const PlaneLayout layout = layoutOf(*array);
  const auto* start = static_cast<const unsigned char*>(layout.x) + axis * layout.planeStride;
  return sharedView(dtypeOf(array->precision()), {static_cast<py::ssize_t>(array->count())},
                    {layout.itemsize}, start, array, ViewAccess::Writable);
}

// A writable (count, 3) view across the three planes: row i is vector i.
py::array tableView(const Ptr& array) {
  const PlaneLayout layout = layoutOf(*array);
  return sharedView(dtypeOf(array->precision()), {static_cast<py::ssize_t>(array->count()), 3},
                    {layout.itemsize, layout.planeStride}, layout.x, array, ViewAccess::Writable);
}

Ptr fromPlanes(const QLONumberArray& x, const QLONumberArray& y, const QLONumberArray& z,
               const py::handle& precision) {
  Ptr array = QLOVector3dArray::initWithX(x, y, z, precisionFrom(precision));
  if (!array) {
    throw py::value_error("the x, y and z arrays have " + std::to_string(x.count()) + ", " +
                          std::to_string(y.count()) + " and " + std::to_string(z.count()) +
                          " entries");
  }
  return array;
}

Ptr readFile(const std::filesystem::path& file, const py::handle& precision) {
  const Precision chosen = precisionFrom(precision);
  ReadError error;
  Ptr array;
  {
    py::gil_scoped_release release;
    array = QLOVector3dArray::initWithContentsOfURL(file, chosen, &error);
  }
  if (!array) throw ReadFailure(error);
  return array;
}

Ptr readText(const std::string& text, const py::handle& precision, const std::string& name) {
  ReadError error;
  Ptr array = QLOVector3dArray::initWithText(text, precisionFrom(precision), name, &error);
  if (!array) throw ReadFailure(error);
  return array;
}

void writeFile(const QLOVector3dArray& array, const std::filesystem::path& file, bool atomically) {
  std::string error;
  bool written;
  {
    py::gil_scoped_release release;
    written = array.writeToURL(file, writeModeFor(atomically), &error);
  }
  if (!written) throw WriteFailure(error);
}

std::string repr(const QLOVector3dArray& array) {
  std::string text = "<QLOVector3dArray count=" + std::to_string(array.count());
  text += " precision=";
  text += py::str(py::cast(array.precision())).cast<std::string>();
  text += '>';
  return text;
}

}  // namespace

void bindVector3dArray(py::module_& m) {
  const char* writeDoc = "Writes one \"x y z\" line per vector; raises OSError on failure.";
  py::class_<QLOVector3dArray, Ptr>(m, "QLOVector3dArray",
                                    "Vectors of three components kept as three planes X, Y, Z. "
                                    "x, y, z and array() are NumPy views sharing the planes.")
      .def_static(
          "initWithSize",
          [](std::uint64_t count, const py::handle& precision) {
            return QLOVector3dArray::initWithSize(count, precisionFrom(precision));
          },
          py::arg("count"), py::arg("precision"))
      .def_static("initWithX", &fromPlanes, py::arg("x"), py::arg("y"), py::arg("z"),
                  py::arg("precision"))
      .def_static(
          "initWithVector3dArray",
          [](const QLOVector3dArray& other, const py::handle& precision) {
            return QLOVector3dArray::initWithVector3dArray(other, precisionFrom(precision));
          },
          py::arg("other"), py::arg("precision"))
      .def_static("initWithContentsOfURL", &readFile, py::arg("path"), py::arg("precision"),
                  "Reads three numbers per line; raises ReadError on failure.")
      .def_static("initWithText", &readText, py::arg("text"), py::arg("precision"),
                  py::arg("name") = "<text>")
      .def_static("fromNumpy", &vectorArrayFromNumpy, py::arg("values"),
                  "A copy of an (N, 3) array: float32 at Float precision, other real numbers at "
                  "Double precision.")
      .def("count", &QLOVector3dArray::count)
      .def("__len__", &QLOVector3dArray::count)
      .def("precision", &QLOVector3dArray::precision)
      .def(
          "vectorAtIndex",
          [](const QLOVector3dArray& a, std::int64_t i) {
            const auto v = a.vectorAtIndex(checkedIndex(i, a.count()));
            return py::make_tuple(v[0], v[1], v[2]);
          },
          py::arg("index"))
      .def(
          "setVector",
          [](QLOVector3dArray& a, const std::array<double, 3>& value, std::int64_t i) {
            a.setVector(value, checkedIndex(i, a.count()));
          },
          py::arg("value"), py::arg("index"))
      .def("text", &QLOVector3dArray::text)
      .def("writeToURL", &writeFile, py::arg("path"), py::arg("atomically") = true, writeDoc)
      .def("writeToFile", &writeFile, py::arg("path"), py::arg("atomically") = true, writeDoc)
      .def_property_readonly(
          "x", [](const Ptr& a) { return planeView(a, 0); }, "Writable view of the X plane.")
      .def_property_readonly(
          "y", [](const Ptr& a) { return planeView(a, 1); }, "Writable view of the Y plane.")
      .def_property_readonly(
          "z", [](const Ptr& a) { return planeView(a, 2); }, "Writable view of the Z plane.")
      .def("array", &tableView, "A writable (count, 3) view across the three planes.")
      .def("__repr__", &repr);
}

}  // namespace plexview
