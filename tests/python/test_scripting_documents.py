"""Documents from Python without windows: a document controller made by the
script, opening native and Pajek files into documents, saving another tool's
file without losing its data, reopening autosaves left by a crash, and the
errors of bad files and failed saves."""

import os
import shutil
import unittest
import xml.etree.ElementTree as ET

import plexview

from support import ScratchFolderTestCase

DATA = os.path.join(os.environ.get("PLEXVIEW_TEST_DATA", ""), "documents")
FOREIGN = os.path.join(os.environ.get("PLEXVIEW_TEST_DATA", ""), "graphml", "other-tools-extras.graphml")
Display = plexview.QLODocumentController.Display
G = "{http://graphml.graphdrawing.org/xmlns}"
# What every Plexview document adds: its flags.
OURS = {"edgeWeighted", "vertexWeighted"}


def graphml_contents(path):
    """Every key (name, domain, type, default) and every data value of the
    graph, the nodes (by id) and the edges (by end points), by attribute name,
    with key defaults filled in, and the graph's description."""
    root = ET.parse(path).getroot()
    keys, defaults = {}, {}
    for key in root.iter(G + "key"):
        name = key.get("attr.name") or key.get("yfiles.type")
        keys[key.get("id")] = name
        default = key.find(G + "default")
        domain = key.get("for", "all")
        if name not in OURS:
            defaults[(name, domain, key.get("attr.type"))] = (
                default.text if default is not None else None
            )

    def values(element):
        found = {}
        for data in element.findall(G + "data"):
            inner = (data.text or "") + "".join(ET.tostring(c, encoding="unicode") for c in data)
            found[keys[data.get("key")]] = inner.strip()
        return found

    graph = root.find(G + "graph")
    node_values = {node.get("id"): values(node) for node in graph.findall(G + "node")}
    for (name, domain, _), default in defaults.items():
        if default is not None and domain in ("node", "all"):
            for found in node_values.values():
                found.setdefault(name, default)
    graph_values = {k: v for k, v in values(graph).items() if k not in OURS}
    return {
        "keys": defaults,
        "graph": graph_values,
        "desc": graph.findtext(G + "desc"),
        "nodes": node_values,
        "edges": sorted(
            (e.get("source"), e.get("target"), e.get("id"), sorted(values(e).items()))
            for e in graph.findall(G + "edge")
        ),
    }


def controller():
    shared = plexview.QLODocumentController.sharedDocumentController()
    return shared if shared is not None else plexview.QLODocumentController()


class Documents(ScratchFolderTestCase):
    def test_native_and_pajek_files_open_into_documents(self):
        documents = controller()
        before = len(documents.documents())
        native = documents.openDocumentWithContentsOfURL(
            os.path.join(DATA, "two-parts.graphml"), Display.DontShow
        )
        pajek = documents.openDocumentWithContentsOfURL(os.path.join(DATA, "two-parts.net"))
        self.assertEqual(len(documents.documents()), before + 2)
        self.assertEqual(documents.currentDocument().displayName(), "two-parts")

        self.assertEqual(native.networkToBeOppened().countVertices(), 6)
        self.assertIsNone(native.networkController())  # no windows

        saved = self.path("saved.graphml")
        pajek.saveToURL(saved)
        self.assertEqual(pajek.fileURL(), saved)
        back = plexview.openNetworkFile(saved)
        self.assertEqual((back.countVertices(), back.countEdges()), (5, 4))

    def test_bad_files_and_failed_saves_raise(self):
        documents = controller()
        broken = os.path.join(DATA, "broken.net")
        with self.assertRaises(plexview.ReadError) as raised:
            documents.openDocumentWithContentsOfURL(broken)
        self.assertEqual((raised.exception.file, raised.exception.line), (broken, 5))
        self.assertIn("outside", raised.exception.reason)

        document = documents.openDocumentWithContentsOfURL(os.path.join(DATA, "two-parts.net"))
        target = self.missing_folder_path("never.graphml")
        with self.assertRaises(OSError):
            document.saveToURL(target)
        self.assertFalse(os.path.exists(target))
        self.assertEqual(document.fileURL(), "")

    def test_saving_another_tools_file_keeps_all_its_data(self):
        documents = controller()
        copy = self.path("friends.graphml")
        shutil.copy(FOREIGN, copy)
        document = documents.openDocumentWithContentsOfURL(copy, Display.DontShow)
        self.assertEqual(document.fileURL(), "", "saving must ask where")
        self.assertEqual(document.displayName(), "friends")
        self.assertFalse(document.networkToBeOppened().isPlexviewDocument())

        saved = self.path("saved.graphml")
        document.saveToURL(saved)
        self.assertEqual(graphml_contents(saved), graphml_contents(FOREIGN))
        # Saved by us, it reopens in place, as a document of ours.
        again = documents.openDocumentWithContentsOfURL(saved, Display.DontShow)
        self.assertEqual(again.fileURL(), saved)
        self.assertEqual(again.networkToBeOppened().propertiesOfVertices()["Name"][0], "Ann")

    def test_an_autosave_left_by_a_crash_reopens_untitled(self):
        documents = controller()
        folder = plexview.QLOComplexNetwork.autosaveFolder()
        os.makedirs(folder, exist_ok=True)
        left = os.path.join(folder, "crashed.graphml")
        shutil.copy(os.path.join(DATA, "two-parts.graphml"), left)
        self.assertIn((left, "crashed"), documents.recoverableDocuments())

        # What a reopened autosave is, is checked by the C++ document tests.
        document = documents.reopenRecoveredDocument(left, Display.DontShow)
        self.assertEqual(document.displayName(), "crashed")
        self.assertNotIn((left, "crashed"), documents.recoverableDocuments())
        with self.assertRaises(plexview.ReadError):
            documents.reopenRecoveredDocument(left, Display.DontShow)
        document.autosave()
        self.assertEqual(plexview.openNetworkFile(left).countVertices(), 6)


if __name__ == "__main__":
    unittest.main()
