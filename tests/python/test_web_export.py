"""The web bundle from Python: a real network (Les Miserables, from networkx)
written through the controller and read back with plain Python and NumPy,
the export table's codes and selection, and the OSError of a bundle that
cannot be written."""
import json
import os
import unittest

import networkx as nx
import numpy as np

from plexview import QLONetwork, VXLController
from support import ScratchFolderTestCase


def miserables():
    """The network with its names and co-appearance weights, and the same
    graph in networkx with vertices numbered in our order."""
    graph = nx.convert_node_labels_to_integers(nx.les_miserables_graph(), label_attribute="name")
    edges = list(graph.edges(data="weight"))
    network = QLONetwork.initWithEdges(graph.number_of_nodes(), [e[0] for e in edges],
                                       [e[1] for e in edges], [float(e[2]) for e in edges])
    network.setPropertiesOfVertices([graph.nodes[v]["name"] for v in graph], "Name")
    return network, edges, graph


class WebBundleTest(ScratchFolderTestCase):
    def test_a_real_network_reads_back_with_plain_tools(self):
        network, edges, graph = miserables()
        controller = VXLController.init()
        controller.setNetwork(network)
        controller.export3DTableController().reloadTable()
        folder = self.path("Les Mis")
        controller.exportWebToFile(folder)

        with open(os.path.join(folder, "edges.dat")) as source:
            self.assertEqual(source.read(), "".join(f"{a} {b}\n" for a, b, _ in edges))
        with open(os.path.join(folder, "names.dat"), encoding="utf-8") as source:
            self.assertEqual(source.read(), "\n".join(graph.nodes[v]["name"] for v in graph))
        degrees = np.loadtxt(os.path.join(folder, "degree.property"))
        np.testing.assert_array_equal(degrees, [graph.degree(v) for v in graph])
        strengths = np.loadtxt(os.path.join(folder, "Node_Strength.property"))
        np.testing.assert_allclose(strengths, [graph.degree(v, weight="weight") for v in graph])
        positions = np.loadtxt(os.path.join(folder, "positions.dat"), dtype=np.float32)
        np.testing.assert_array_equal(positions, controller.positions().array())

        with open(os.path.join(folder, "properties.json"), encoding="utf-8") as source:
            index = json.load(source)
        self.assertEqual(index["ORDER"][0], "degree")
        self.assertEqual(index["degree"], "Node Degree")
        self.assertEqual(set(index), set(index["ORDER"]) | {"ORDER"})
        for stem in index["ORDER"]:
            if stem != "degree":
                self.assertEqual(stem, index[stem].replace(" ", "_"))
            colours = np.loadtxt(os.path.join(folder, stem + ".colors"))
            self.assertEqual(colours.shape, (graph.number_of_nodes(), 3))
            self.assertTrue(((colours >= 0) & (colours <= 1)).all(), stem)
        self.assertIn("Node_Strength", index["ORDER"])

    def test_the_table_codes_and_selection_decide_what_goes_in(self):
        network = QLONetwork.initWithEdges(4, [0, 1, 2], [1, 2, 0])
        network.setPropertiesOfVertices(np.array([3.0, 1.0, 4.0, 1.5]), "Age")
        controller = VXLController.init()
        controller.setNetwork(network)
        table = controller.export3DTableController()
        Table = VXLController.Export3DTableController.Table
        self.assertIsNone(table.colorsFunctionsDictionary())
        self.assertFalse(controller.exportTo3D())  # no window, but the table is reloaded
        self.assertEqual(table.tableView(Table.Colors, "name", 0), "Age")
        self.assertEqual(table.tableView(Table.Colors, "function", 0), 1)

        table.tableView(Table.Colors, 0, "function", 0)  # linear
        table.setSelectedRows(Table.Colors, [0])
        controller.exportWebToFile(self.folder)
        np.testing.assert_array_equal(
            np.loadtxt(self.path("Age.colors"), dtype=np.float32),
            controller.colorsForProperty("Age", "Linear").array())
        with open(self.path("properties.json")) as source:
            self.assertEqual(json.load(source)["ORDER"], ["degree", "Age"])

    def test_a_bundle_that_cannot_be_written_raises(self):
        controller = VXLController.init()
        controller.setNetwork(QLONetwork.initWithEdges(2, [0], [1]))
        blocker = self.write_text("plain", "x")
        with self.assertRaises(OSError) as raised:
            controller.exportWebToFile(os.path.join(blocker, "bundle"))
        self.assertIn("plain", str(raised.exception))


if __name__ == "__main__":
    unittest.main()
