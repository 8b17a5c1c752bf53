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
        self.assertEqual(view.sizeProperty(), "None")
        self.assertIsNone(view.vertexSizes())
        view.setSizeRange(1.0, 3.0)
        view.setSizeTransform("log")
        view.setSizeProperty("w")
        self.assertEqual((view.sizeProperty(), view.sizeTransform(), view.sizeRange()),
                         ("w", "log", (1.0, 3.0)))
        np.testing.assert_allclose(view.vertexSizes(), [1.0, 3.0, 2.0], rtol=1e-6)
        view.setSizeProperty("Node Degree")  # 1, 2, 1
        np.testing.assert_allclose(view.vertexSizes(), [1.0, 3.0, 1.0], rtol=1e-6)
        view.setSizeProperty("None")
        self.assertIsNone(view.vertexSizes())

    def test_bad_names_and_ranges_are_value_errors(self):
        for target in (VXLNetworkView(), VXLController.init()):
            target.setNetwork(path_network([1.0, 2.0]))
            with self.assertRaisesRegex(ValueError, "cube"):
                target.setSizeTransform("cube")
            with self.assertRaisesRegex(ValueError, "missing"):
                target.setSizeProperty("missing")
            for low, high in ((0.0, 1.0), (2.0, 1.0), (1.0, float("nan")), (1.0, 1000.0)):
                with self.assertRaises(ValueError, msg=(low, high)):
                    target.setSizeRange(low, high)
            self.assertEqual((target.sizeProperty(), target.sizeTransform(), target.sizeRange()),
                             ("None", "linear", (0.5, 3.0)))


if __name__ == "__main__":
    unittest.main()
