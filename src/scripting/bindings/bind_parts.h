#pragma once
// The pieces bindModel() puts together, one per class (or group of enums).
// They must run in this order: later classes refer to earlier ones in their
// signatures.
#include <pybind11/pybind11.h>

namespace plexview {

void bindErrors(pybind11::module_& m);
void bindEnums(pybind11::module_& m);
void bindNumberArray(pybind11::module_& m);
void bindVector3dArray(pybind11::module_& m);
void bindRandomGenerator(pybind11::module_& m);
void bindVertex(pybind11::module_& m);
void bindNetwork(pybind11::module_& m);
void bindView(pybind11::module_& m);
// Fit, find and the selection tools, added to the view's class.
void bindViewTools(pybind11::module_& m);
void bindLegends(pybind11::module_& m);  // also gives the view its legend
void bindController(pybind11::module_& m);
// Undo and redo, added to the controller's class.
void bindControllerUndo(pybind11::module_& m);
// The selection handler, vertex-object selection and placement, added to the
// view and controller classes.
void bindControllerSelection(pybind11::module_& m);
void bindDocuments(pybind11::module_& m);  // documents hand out controllers
// The view's image and vector export.
void bindExport(pybind11::module_& m);
// The controller's file commands, added to the class bindController() made.
void bindControllerFiles(pybind11::module_& m);
// The plexview.colour submodule (plain functions; no class depends on it).
void bindColour(pybind11::module_& m);
// Its categorical part, added to the submodule by bindColour().
void bindCategories(pybind11::module_& colourModule);
// The Python-level functions (read, layout, render, networkx and igraph
// interchange); they use every class above, so they come last.
void bindPythonic(pybind11::module_& m);

}  // namespace plexview
