#include "bindings/bind_parts.h"
#include "bindings/bindings.h"

#include "app/options.h"

namespace plexview {

void bindModel(pybind11::module_& m) {
  m.attr("__version__") = app::versionNumber();
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
  bindPythonic(m);  // sets the module's docstring too
}

}  // namespace plexview
