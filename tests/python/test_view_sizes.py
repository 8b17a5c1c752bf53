"""Vertex sizes by property from Python, on the view and on the controller."""
import unittest

import numpy as np

import plexview
from plexview import VXLController, VXLNetworkView


def path_network(values):
    n = len(values)
    network = plexview.QLONetwork.initWithEdges(n, list(range(n - 1)), list(range(1, n)))
    network.setPropertiesOfVertices(np.array(values, dtype=np.float32), "w")
    return network


class ViewSizesTest(unittest.TestCase):
    def test_setters_size_the_vertices(self):
        view = VXLNetworkView()
        view.setNetwork(path_network([1.0, 100.0, 10.0]))
        view.setSizeRange(1.0, 3.0)
        view.setSizeTransform("log")
        view.setSizeProperty("w")
        np.testing.assert_allclose(view.vertexSizes(), [1.0, 3.0, 2.0], rtol=1e-6)
        view.setSizeProperty("None")
        self.assertIsNone(view.vertexSizes())

    def test_bad_names_and_ranges_are_value_errors(self):
        for target in (VXLNetworkView(), VXLController.init()):
            network = path_network([1.0, 2.0])
            network.setPropertiesOfVertices(["a", "b"], "group")
            target.setNetwork(network)
            with self.assertRaisesRegex(ValueError, "cube"):
                target.setSizeTransform("cube")
            with self.assertRaisesRegex(ValueError, '"group"'):
                target.setSizeProperty("group")
            with self.assertRaisesRegex(ValueError, "got 2 and 1"):
                target.setSizeRange(2.0, 1.0)
            self.assertEqual((target.sizeProperty(), target.sizeTransform(), target.sizeRange()),
                             ("None", "linear", (0.5, 3.0)))


if __name__ == "__main__":
    unittest.main()
