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
            network = path_network([1.0, 2.0])
            network.setPropertiesOfVertices(["a", "b"], "group")
            target.setNetwork(network)
            with self.assertRaisesRegex(ValueError, "cube"):
                target.setSizeTransform("cube")
            # The message tells a missing name from a text property, and lists the choices.
            for name, reason in (("missing", 'no number property or measure named "missing"'),
                                 ("group", '"group" is not a number property')):
                with self.assertRaisesRegex(
                        ValueError, reason + '; sizes can follow "None", "Node Degree", "w"$'):
                    target.setSizeProperty(name)
            for low, high, shown in ((0.0, 1.0, "got 0 and 1"), (2.0, 1.0, "got 2 and 1"),
                                     (1.0, float("nan"), "got 1 and nan"),
                                     (1.0, 1000.0, "<= 100 .got 1 and 1000")):
                with self.assertRaisesRegex(ValueError, shown):
                    target.setSizeRange(low, high)
            self.assertEqual((target.sizeProperty(), target.sizeTransform(), target.sizeRange()),
                             ("None", "linear", (0.5, 3.0)))


if __name__ == "__main__":
    unittest.main()
