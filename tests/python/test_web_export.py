"""The web bundle from Python: a real network (Les Miserables, from networkx)
written through the controller and read back with plain Python and NumPy, and
the OSError of a bundle that cannot be written. The table's codes and
selection are checked by the C++ web export tests."""
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
        self.assertIn("Node_Strength", index["ORDER"])

    def test_a_bundle_that_cannot_be_written_raises(self):
        controller = VXLController.init()
        controller.setNetwork(QLONetwork.initWithEdges(2, [0], [1]))
        blocker = self.write_text("plain", "x")
        with self.assertRaises(OSError) as raised:
            controller.exportWebToFile(os.path.join(blocker, "bundle"))
        self.assertIn("plain", str(raised.exception))


if __name__ == "__main__":
    unittest.main()
