#include "bindings/bind_parts.h"
#include "plexora/QLORandomGenerator.h"
#include "quillo/QLONumberArray.h"

namespace py = pybind11;

namespace plexview {

void bindRandomGenerator(py::module_& m) {
  // The generator is a process-wide singleton: Python only ever borrows it.
  py::class_<QLORandomGenerator, std::unique_ptr<QLORandomGenerator, py::nodelete>>(
      m, "QLORandomGenerator", "The process-wide random source used by the generators.")
      .def_static("sharedRandomGenerator", &QLORandomGenerator::sharedRandomGenerator,
                  py::return_value_policy::reference)
      .def("setSeed", &QLORandomGenerator::setSeed, py::arg("seed"))
      .def("newRandomFloatArrayWithCount", &QLORandomGenerator::newRandomFloatArrayWithCount,
           py::arg("count"), "count floats drawn uniformly from [0, 1).")
      .def("randomIntegerFrom", &QLORandomGenerator::randomIntegerFrom, py::arg("lower"),
           py::arg("upper"), "A uniform integer n with lower <= n <= upper.")
      .def("randomDouble", &QLORandomGenerator::randomDouble, "A uniform double in [0, 1).")
      .def("nextSeed", &QLORandomGenerator::nextSeed);
}

}  // namespace plexview
