// Python access to the documents: the program's document controller, opening
// network files into windows (or, without windows, into documents alone),
// the front document, its window's controller, and saving.
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <chrono>
#include <string>

#include "app/QLODocumentController.h"
#include "app/networkfile.h"
#include "bindings/bind_parts.h"
#include "bindings/errors.h"

namespace py = pybind11;

namespace plexview {
namespace {

// The process's document controller is never deleted from Python: the
// program owns its own, and one made by a script lives as long as the process.
using DocumentController =
    py::class_<QLODocumentController, std::unique_ptr<QLODocumentController, py::nodelete>>;

QLONetwork::Ptr openNetworkFile(const std::filesystem::path& file) {
  ReadError error;
  QLONetwork::Ptr network;
  {
    py::gil_scoped_release release;
    network = app::openNetworkFile(file, error);
  }
  if (!network) throw ReadFailure(error);
  return network;
}

// The window's controller as the registry holds it (the document only points at it).
VXLController::Ptr controllerOf(const QLOComplexNetwork& document) {
  const VXLController* controller = document.networkController();
  return controller ? VXLController::controllerWithUUID(controller->uuid()) : nullptr;
}

QLOComplexNetwork::Ptr openDocument(QLODocumentController& documents,
                                    const std::filesystem::path& file,
                                    QLODocumentController::Display display) {
  DocumentError error;
  auto document = documents.openDocumentWithContentsOfURL(file, display, &error);
  if (!document) throw ReadFailure(error.reason);
  return document;
}

QLOComplexNetwork::Ptr reopenRecovered(QLODocumentController& documents,
                                       const std::filesystem::path& file,
                                       QLODocumentController::Display display) {
  DocumentError error;
  auto document = documents.reopenRecoveredDocument(file, display, &error);
  if (!document) throw ReadFailure(error.reason);
  return document;
}

py::list recoverable(const QLODocumentController& documents) {
  py::list found;
  for (const auto& document : documents.recoverableDocuments()) {
    found.append(py::make_tuple(document.file.string(), document.displayName));
  }
  return found;
}

bool autosaveNow(QLOComplexNetwork& document) {
  std::string error;
  if (!document.autosave(&error)) throw WriteFailure(error);
  return true;
}

void saveDocument(QLOComplexNetwork& document, const std::filesystem::path& file) {
  std::string error;
  if (!document.saveToURL(file, &error)) throw WriteFailure(error);
}

void bindDocument(py::module_& m) {
  py::class_<QLOComplexNetwork, QLOComplexNetwork::Ptr>(
      m, "QLOComplexNetwork",
      "The document of one window: the network read from a file until its window's "
      "controller installs it, the file's location, name and type, and saving.")
      .def("networkController", &controllerOf,
           "The controller of the document's window, or None without a window.")
      .def("networkToBeOppened", &QLOComplexNetwork::networkToBeOppened,
           "The network read from the file (None for an untitled document).")
      .def("isDefaultNetwork", &QLOComplexNetwork::isDefaultNetwork,
           "True while the window shows the network it generated at start-up.")
      .def("isMajorComponentOnlySelected", &QLOComplexNetwork::isMajorComponentOnlySelected)
      .def(
          "fileURL", [](const QLOComplexNetwork& d) { return d.fileURL().string(); },
          "The file's location as text ('' when untitled).")
      .def("displayName", &QLOComplexNetwork::displayName)
      .def("fileType", &QLOComplexNetwork::fileType)
      .def("isDocumentEdited", &QLOComplexNetwork::isDocumentEdited)
      .def("autosave", &autosaveNow,
           "Saves an edited document now: in place when it has a location (only documents "
           "Plexview saved have one), else into the recovery folder. Raises OSError on failure.")
      .def(
          "setAutosaveInterval",
          [](QLOComplexNetwork& d, double seconds) {
            d.setAutosaveInterval(
                std::chrono::milliseconds(static_cast<long long>(seconds * 1000)));
          },
          py::arg("seconds"), "How often the window autosaves an edited document.")
      .def(
          "autosavedContentsFileURL",
          [](const QLOComplexNetwork& d) { return d.autosavedContentsFileURL().string(); },
          "Where an untitled document's autosave is ('' before the first).")
      .def_static(
          "autosaveFolder", [] { return QLOComplexNetwork::autosaveFolder().string(); },
          "The recovery folder of untitled documents' autosaves.")
      .def("saveToURL", &saveDocument, py::arg("path"),
           "Saves the shown network with its layout as GraphML; raises OSError on failure "
           "(the previous file stays).");
}

}  // namespace

void bindDocuments(py::module_& m) {
  m.def("openNetworkFile", &openNetworkFile, py::arg("path"),
        "Reads a Pajek or GraphML network file with the reader its name (else its content) "
        "calls for; raises ReadError on failure.");
  bindDocument(m);

  DocumentController cls(m, "QLODocumentController",
                         "The program's document controller: its documents, the front one, and "
                         "opening files into windows.");
  py::enum_<QLODocumentController::Display>(cls, "Display")
      .value("Show", QLODocumentController::Display::Show)
      .value("DontShow", QLODocumentController::Display::DontShow);
  cls.def(py::init<>(),
          "A document controller; the first made in the process becomes the shared one. In the "
          "program it already exists.");
  cls.def_static("sharedDocumentController", &QLODocumentController::sharedDocumentController,
                 py::return_value_policy::reference, "The process's document controller, or None.");
  cls.def("openDocumentWithContentsOfURL", &openDocument, py::arg("path"),
          py::arg("display") = QLODocumentController::Display::Show,
          "Opens the file into the untouched start-up window when there is one, else into a new "
          "document (and window); answers the document. Raises ReadError (file, line, reason) "
          "when the file cannot be read. Another tool's GraphML file opens untitled, so that "
          "saving never writes over it.");
  cls.def("recoverableDocuments", &recoverable,
          "Autosaves an earlier run left behind that no running Plexview holds, oldest first, "
          "as (path, display name) pairs.");
  cls.def("reopenRecoveredDocument", &reopenRecovered, py::arg("path"),
          py::arg("display") = QLODocumentController::Display::Show,
          "Reopens one of recoverableDocuments() as an untitled, edited document under its old "
          "name; raises ReadError when it cannot.");
  cls.def("newDocument", &QLODocumentController::newDocument,
          "An untitled document (in a new window, with a generated network, in the program).");
  cls.def("documents", &QLODocumentController::documents, "The open documents, oldest first.");
  cls.def("currentDocument", &QLODocumentController::currentDocument,
          "The front document, or None.");
  cls.def("isMajorComponentOnlySelected", &QLODocumentController::isMajorComponentOnlySelected);
}

}  // namespace plexview
