#pragma once
// Vertex sizes by property for scripts, on the view and on the controller
// (both have the same setters and getters): names are checked here, so a
// typing error is a ValueError rather than vertices silently at one size.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <string>
#include <tuple>

#include "app/filterselector.h"
#include "filter/filtering.h"
#include "plexora/PropertyValue.h"
#include "render/vertexsizes.h"

namespace plexview {

template <class Class>
void bindVertexSizes(Class& cls) {
  namespace py = pybind11;
  using T = typename Class::type;
  cls.def("sizeProperty", &T::sizeProperty,
          "The property that sets each vertex's size; \"None\": the standard size.");
  cls.def(
      "setSizeProperty",
      [](T& target, const std::string& name) {
        if (name != vertex_sizes::kNoProperty) {
          const auto network = target.network();
          if (!network) throw py::value_error("no network: only \"None\" can be chosen");
          if (!filter::namedValues(*network, name)) {
            std::string choices = "\"None\"";
            for (const std::string& title : app::filterPropertyTitles(network.get())) {
              choices += ", \"" + title + "\"";
            }
            const bool other = propertyCount(network->propertyForKey(name)) > 0;
            throw py::value_error((other ? "\"" + name + "\" is not a number property"
                                         : "no number property or measure named \"" + name + "\"") +
                                  "; sizes can follow " + choices);
          }
        }
        target.setSizeProperty(name);
      },
      py::arg("name"),
      "Sizes vertices by a number property or a measure (\"Node Degree\", ...), or \"None\".");
  cls.def(
      "sizeTransform",
      [](const T& target) {
        return std::string(vertex_sizes::transformName(target.sizeTransform()));
      },
      "How the size property's values are transformed: \"linear\", \"sqrt\" or \"log\".");
  cls.def(
      "setSizeTransform",
      [](T& target, const std::string& name) {
        const auto transform = vertex_sizes::transformNamed(name);
        if (!transform) {
          throw py::value_error("unknown size transform \"" + name +
                                "\" (use \"linear\", \"sqrt\" or \"log\")");
        }
        target.setSizeTransform(*transform);
      },
      py::arg("name"), "\"linear\", \"sqrt\" or \"log\".");
  cls.def(
      "sizeRange",
      [](const T& target) {
        const vertex_sizes::Range range = target.sizeRange();
        return std::tuple{range.minimum, range.maximum};
      },
      "(smallest, largest) size, as multiples of the standard vertex size.");
  // The setter's std::invalid_argument reaches Python as ValueError.
  cls.def(
      "setSizeRange",
      [](T& target, float minimum, float maximum) {
        target.setSizeRange({minimum, maximum});
      },
      py::arg("minimum"), py::arg("maximum"),
      "Sizes as multiples of the standard vertex size: 0 < minimum <= maximum <= 100.");
}

}  // namespace plexview
