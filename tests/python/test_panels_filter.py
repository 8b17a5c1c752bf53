"""The filter selector from Python: the titles offered for a network, the
selection and its fall-back, and the range the view takes from it."""
import unittest

import numpy as np

from plexview import QLONetwork, VXLController


def weighted_directed_path():
    """0 -> 1 -> 2 -> 3 with weights 0.5, 3 and 1.5, a numeric, a text and a
    vector property."""
    network = QLONetwork.initWithEdges(
        4, [0, 1, 2], [1, 2, 3], weights=[0.5, 3, 1.5], directed=True
    )
    network.setPropertiesOfVertices(np.array([5.0, -2.0, 7.5, 1.0]), "score")
    network.setPropertiesOfVertices(["a", "b", "c", "d"], "Name")
    network.setPropertiesOfVertices(np.zeros((4, 3)), "Color")
    network.setPropertiesOfVertices(np.array([3, 1, 4, 1], dtype=np.int32), "rank")
    return network


class FilterSelectionTest(unittest.TestCase):
    def setUp(self):
        self.controller = VXLController.init()
        self.controller.setNetwork(weighted_directed_path())
        self.view = self.controller.networkView()

    def test_titles_for_a_directed_weighted_network(self):
        self.assertEqual(
            self.controller.filterPropertyTitles(),
            ["Node Degree", "Node InDegree", "Node Strength", "Node InStrength", "rank", "score"],
        )
        self.assertEqual(self.controller.filterPropertyName(), "Node Degree")
        self.assertEqual(self.controller.weightThresholdBounds(), (0.5, 3.0))

    def test_selecting_a_property_resets_the_range_to_its_values(self):
        self.controller.selectFilterProperty("score")
        self.assertEqual(self.controller.filterPropertyName(), "score")
        self.assertEqual(self.view.filterPropertyName(), "score")
        self.assertEqual(self.controller.filterRangeBounds(), (-2.0, 7.5))
        self.view.prepareFrame()
        self.assertEqual(self.controller.minFilterProperty(), -2.0)
        self.assertEqual(self.controller.maxFilterProperty(), 7.5)

        for name in ("Name", "Color", "no such property"):
            self.controller.selectFilterProperty(name)
            self.assertEqual(self.controller.filterPropertyName(), "score")
        # Even a selection that stays makes the view take the name again.
        self.view.prepareFrame()

        self.controller.setMaxFilterProperty(1.0)
        self.view.prepareFrame()
        self.assertEqual(self.controller.maxFilterProperty(), 1.0)
        self.controller.selectFilterProperty("Node InStrength")
        self.view.prepareFrame()
        self.assertEqual(self.controller.filterRangeBounds(), (0.0, 3.0))
        self.assertEqual(self.controller.maxFilterProperty(), 3.0)

    def test_a_new_property_is_offered_at_the_next_refresh(self):
        network = self.controller.network()
        network.setPropertiesOfVertices([0.25, 0.5, 0.75, 1.0], "added")
        self.controller.changeFilterProperty()
        self.assertIn("added", self.controller.filterPropertyTitles())
        self.controller.selectFilterProperty("added")
        self.assertEqual(self.controller.filterRangeBounds(), (0.25, 1.0))


if __name__ == "__main__":
    unittest.main()
