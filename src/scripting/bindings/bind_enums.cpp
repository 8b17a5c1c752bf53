#include "bindings/bind_parts.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace py = pybind11;

namespace plexview {
namespace {

// Members compare equal to their own kind and to their int codes, as the codes
// are what files and older scripts use (scoped enums only compare strictly by
// default).
template <class Enum>
void compareWithCodes(py::enum_<Enum>& type) {
  // Replace, not overload: the strict operators would answer first.
  for (const char* name : {"__eq__", "__ne__", "__hash__"}) py::delattr(type, name);
  type.def(
      "__eq__",
      [](Enum self, const py::object& other) -> py::object {
        if (py::isinstance<Enum>(other) ||
            (py::isinstance<py::int_>(other) && !py::isinstance<py::bool_>(other))) {
          return py::bool_(py::int_(static_cast<std::uint32_t>(self)).equal(py::int_(other)));
        }
        return py::reinterpret_borrow<py::object>(Py_NotImplemented);
      },
      py::is_operator());
  type.def(
      "__ne__",
      [](Enum self, const py::object& other) -> py::object {
        py::object equal = py::cast(self).attr("__eq__")(other);
        if (equal.is(py::reinterpret_borrow<py::object>(Py_NotImplemented))) return equal;
        return py::bool_(!equal.cast<bool>());
      },
      py::is_operator());
  // Equal values must hash alike: a member hashes as its code.
  type.def("__hash__",
           [](Enum self) { return py::hash(py::int_(static_cast<std::uint32_t>(self))); });
}

}  // namespace

void bindEnums(py::module_& m) {
  // Functions taking a type or precision accept these members or int codes.
  py::enum_<NumberType> numberType(m, "NumberType", "Element type codes of QLONumberArray.");
  numberType.value("Bool", NumberType::Bool)
      .value("Int32", NumberType::Int32)
      .value("Int64", NumberType::Int64)
      .value("Float", NumberType::Float)
      .value("Double", NumberType::Double);
  compareWithCodes(numberType);

  py::enum_<Precision> precision(m, "Precision", "Component type of QLOVector3dArray.");
  precision.value("Float", Precision::Float).value("Double", Precision::Double);
  compareWithCodes(precision);
}

}  // namespace plexview
