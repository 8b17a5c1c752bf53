#include "bindings/colour_conversion.h"

#include <string>

#include "colour/hexcolour.h"

namespace py = pybind11;

namespace plexview {

colour::Rgba rgbaFromPython(const py::handle& value, HexText hex) {
  const bool isText = py::isinstance<py::str>(value);
  if (isText && hex == HexText::Accepted) {
    return colour::colorFromHexadecimalValue(value.cast<std::string>());
  }
  const auto fail = [&value, hex] {
    const std::string forms =
        hex == HexText::Accepted ? "\"#rrggbb\" or (r, g, b[, a])" : "(r, g, b) or (r, g, b, a)";
    return py::value_error("a colour is " + forms + " with numbers in 0..1, not " +
                           py::repr(value).cast<std::string>());
  };
  if (isText || !py::isinstance<py::sequence>(value)) throw fail();
  const auto items = py::reinterpret_borrow<py::sequence>(value);
  if (items.size() != 3 && items.size() != 4) throw fail();
  float c[4] = {0, 0, 0, 1};
  for (std::size_t i = 0; i < items.size(); ++i) {
    try {
      c[i] = items[i].cast<float>();
    } catch (const py::cast_error&) {
      throw fail();
    }
  }
  return {c[0], c[1], c[2], c[3]};
}

}  // namespace plexview
