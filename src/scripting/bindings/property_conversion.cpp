#include "bindings/property_conversion.h"

#include <pybind11/numpy.h>

#include "bindings/numpy_conversion.h"

namespace py = pybind11;

namespace plexview {
namespace {

bool holdsOnlyStrings(const py::sequence& items) {
  for (const py::handle item : items) {
    if (!py::isinstance<py::str>(item)) return false;
  }
  return true;
}

std::shared_ptr<TextList> textsFrom(const py::iterable& items) {
  auto texts = std::make_shared<TextList>();
  for (const py::handle item : items) texts->push_back(py::str(item).cast<std::string>());
  return texts;
}

PropertyValue fromNumpy(const py::array& array) {
  const char kind = array.dtype().kind();
  if (array.ndim() == 1 && (kind == 'U' || kind == 'S')) {
    if (kind == 'S') return textsFrom(array.attr("astype")("U"));
    return textsFrom(array);
  }
  if (array.ndim() == 1) return numberArrayFromNumpy(array);
  if (array.ndim() == 2) return vectorArrayFromNumpy(array);
  throw py::value_error("a property array must have shape (N,) or (N, 3)");
}

}  // namespace

py::object propertyToPython(const PropertyValue& value) {
  if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
    return py::cast(*numbers);
  }
  if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
    return py::cast(*vectors);
  }
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
    py::list list;
    for (const auto& text : **texts) list.append(py::str(text));
    return list;
  }
  return py::none();
}

PropertyValue propertyFromPython(const py::handle& value) {
  if (py::isinstance<QLONumberArray>(value)) return value.cast<std::shared_ptr<QLONumberArray>>();
  if (py::isinstance<QLOVector3dArray>(value)) {
    return value.cast<std::shared_ptr<QLOVector3dArray>>();
  }
  if (py::isinstance<py::str>(value) || py::isinstance<py::bytes>(value)) {
    throw py::type_error("a property needs one entry per vertex, not a single text");
  }
  if ((py::isinstance<py::list>(value) || py::isinstance<py::tuple>(value)) &&
      holdsOnlyStrings(py::reinterpret_borrow<py::sequence>(value))) {
    return textsFrom(py::reinterpret_borrow<py::iterable>(value));
  }
  return fromNumpy(asNumpy(value));
}

py::object entryToPython(const PropertyEntry& entry) {
  if (auto* number = std::get_if<double>(&entry)) return py::float_(*number);
  if (auto* vector = std::get_if<std::array<double, 3>>(&entry)) {
    return py::make_tuple((*vector)[0], (*vector)[1], (*vector)[2]);
  }
  if (auto* text = std::get_if<std::string>(&entry)) return py::str(*text);
  return py::none();
}

}  // namespace plexview
