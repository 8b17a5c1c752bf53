"""The filter selector from Python: titles as a list, bounds as tuples, the
selection, and a property added from Python offered at the
next refresh. The selector's rules are checked by the C++ controller tests."""
import unittest

import numpy as np

from plexview import QLONetwork, VXLController


class FilterSelectionTest(unittest.TestCase):
    def test_titles_selection_and_ranges(self):
        network = QLONetwork.initWithEdges(4, [0, 1, 2], [1, 2, 3], [0.5, 3, 1.5], directed=True)
        network.setPropertiesOfVertices(np.array([5.0, -2.0, 7.5, 1.0]), "score")
        network.setPropertiesOfVertices(["a", "b", "c", "d"], "Name")
        network.setPropertiesOfVertices(np.array([3, 1, 4, 1], dtype=np.int32), "rank")
        controller = VXLController.init()
        controller.setNetwork(network)
        view = controller.networkView()
        self.assertIn("score", controller.filterPropertyTitles())
        self.assertEqual(controller.weightThresholdBounds(), (0.5, 3.0))
        controller.selectFilterProperty("score")
        self.assertEqual(view.filterPropertyName(), "score")
        self.assertEqual(controller.filterRangeBounds(), (-2.0, 7.5))

        network.setPropertiesOfVertices([0.25, 0.5, 0.75, 1.0], "added")
        controller.changeFilterProperty()
        controller.selectFilterProperty("added")
        self.assertEqual(controller.filterRangeBounds(), (0.25, 1.0))


if __name__ == "__main__":
    unittest.main()
