#include "bindings/edge_lists.h"

#include <pybind11/numpy.h>

#include <algorithm>
#include <string>

#include "bindings/numpy_conversion.h"

namespace py = pybind11;

namespace plexview {
namespace {

template <class T>
using Contiguous = py::array_t<T, py::array::c_style | py::array::forcecast>;

py::array oneDimensional(const py::handle& object, const char* what) {
  py::array array = asNumpy(object);
  if (array.ndim() != 1) {
    throw py::value_error(std::string(what) + " must be 1-D, got " + std::to_string(array.ndim()) +
                          " dimensions");
  }
  return array;
}

template <class T>
std::vector<T> copyOf(const py::array& array) {
  auto values = Contiguous<T>::ensure(array);
  if (!values) throw py::error_already_set();
  return std::vector<T>(values.data(), values.data() + values.size());
}

std::vector<std::uint64_t> vertexNumbers(const py::handle& object, const char* what) {
  py::array array = oneDimensional(object, what);
  // An empty list comes out of numpy.asarray as float64: nothing to check.
  if (array.size() == 0) return {};
  const char kind = array.dtype().kind();
  if (kind == 'u') return copyOf<std::uint64_t>(array);
  if (kind != 'i') {
    throw py::type_error(std::string(what) + " must hold integers, got dtype " +
                         py::str(array.dtype()).cast<std::string>());
  }
  const std::vector<std::int64_t> signedNumbers = copyOf<std::int64_t>(array);
  auto negative = std::find_if(signedNumbers.begin(), signedNumbers.end(),
                               [](std::int64_t v) { return v < 0; });
  if (negative != signedNumbers.end()) {
    throw py::value_error(std::string(what) + " entry " +
                          std::to_string(negative - signedNumbers.begin()) + " is negative");
  }
  return std::vector<std::uint64_t>(signedNumbers.begin(), signedNumbers.end());
}

std::vector<float> weightValues(const py::handle& object) {
  py::array array = oneDimensional(object, "weights");
  if (array.size() == 0) return {};
  const char kind = array.dtype().kind();
  if (kind != 'f' && kind != 'i' && kind != 'u' && kind != 'b') {
    throw py::type_error("weights must be numbers, got dtype " +
                         py::str(array.dtype()).cast<std::string>());
  }
  return copyOf<float>(array);
}

}  // namespace

NetworkData networkDataFrom(std::uint64_t verticesCount, const py::handle& sources,
                            const py::handle& targets, const py::handle& weights,
                            EdgeDirection direction, VertexWeights vertexWeights) {
  NetworkData data;
  data.verticesCount = verticesCount;
  data.from = vertexNumbers(sources, "sources");
  data.to = vertexNumbers(targets, "targets");
  data.edgeWeighted = !weights.is_none();
  if (data.edgeWeighted) {
    data.weights = weightValues(weights);
    // QLONetwork::make reads an empty weight list as "all 1"; an explicit empty
    // list for a non-empty edge list is a mistake, so it is caught here.
    if (data.weights.size() != data.from.size()) {
      throw py::value_error("the weight list does not match the edges");
    }
  }
  data.directed = direction == EdgeDirection::Directed;
  data.vertexWeighted = vertexWeights == VertexWeights::Present;
  return data;
}

}  // namespace plexview
