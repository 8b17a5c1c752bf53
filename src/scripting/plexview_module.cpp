// The importable extension module: everything it offers is set up by
// bindModel(), which the program can also use for an embedded module.
#include <pybind11/pybind11.h>

#include "bindings/bindings.h"

PYBIND11_MODULE(plexview, m) {
  plexview::bindModel(m);
}
