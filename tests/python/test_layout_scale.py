"""Layout at scale from Python: the repulsion choice on the view and the
controller, and the multilevel start with and without a progress callback.
The approximation itself is checked by the C++ layout tests."""
import unittest

import numpy as np

from plexview import VXLController, VXLNetworkView
from support import random_network


class RepulsionChoiceTest(unittest.TestCase):
    def test_theta_on_the_view_and_through_the_controller(self):
        view = VXLNetworkView()
        view.setNetwork(random_network(300, 4, seed=3))
        view.setBarnesHutTheta(0.5)
        self.assertAlmostEqual(view.repulsionThetaInUse(), 0.5)
        before = view.positions().array().copy()
        view.iterateBy(3)
        after = view.positions().array()
        self.assertTrue(np.isfinite(after).all())
        self.assertFalse(np.array_equal(before, after))

        controller = VXLController.init()
        controller.setBarnesHutTheta(1.2)
        self.assertAlmostEqual(controller.networkView().barnesHutTheta(), 1.2, places=6)
        self.assertFalse(controller.automaticRepulsion())
        controller.resetToDefaults()
        self.assertTrue(controller.automaticRepulsion())


class MultilevelStartTest(unittest.TestCase):
    def test_places_positions_and_reports_progress(self):
        view = VXLNetworkView()
        view.setNetwork(random_network(2000, 4, seed=3))
        before = view.positions().array().copy()
        fractions = []
        self.assertTrue(view.multilevelStart(fractions.append))
        self.assertFalse(np.array_equal(before, view.positions().array()))
        self.assertAlmostEqual(fractions[-1], 1.0)

    def test_a_false_answer_stops_and_keeps_the_positions(self):
        controller = VXLController.init()
        controller.networkView().setNetwork(random_network(1000, 4, seed=3))
        before = controller.positions().array().copy()
        self.assertFalse(controller.multilevelStart(lambda fraction: fraction < 0.2))
        np.testing.assert_array_equal(before, controller.positions().array())
        self.assertTrue(controller.multilevelStart())


if __name__ == "__main__":
    unittest.main()
