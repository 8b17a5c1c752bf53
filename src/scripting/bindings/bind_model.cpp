#include "bindings/bind_parts.h"
#include "bindings/bindings.h"

namespace plexview {

void bindModel(pybind11::module_& m) {
  m.doc() =
      "Plexview's network model: number and vector arrays with NumPy views, the shared "
      "random source, networks with their readers, writers and generators, vertices, and the "
      "network view that lays a network out.";
  bindErrors(m);
  bindEnums(m);
  bindNumberArray(m);
  bindVector3dArray(m);
  bindRandomGenerator(m);
  bindVertex(m);
  bindNetwork(m);
  bindView(m);
  bindViewTools(m);
  bindLegends(m);
  bindController(m);
  bindControllerUndo(m);
  bindControllerSelection(m);
  bindDocuments(m);
  bindExport(m);
  bindControllerFiles(m);
  bindColour(m);
}

}  // namespace plexview
