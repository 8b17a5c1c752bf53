"""The network view from Python: install a network, step the layout
synchronously and in the background, and read positions, speeds and
filter values as NumPy arrays. The layout's rules are checked in C++."""
import time
import unittest

import numpy as np

import plexview
from plexview import QLONetwork, VXLNetworkView
from support import random_network


class ViewStepTest(unittest.TestCase):
    def test_positions_are_numpy_views_of_the_layout(self):
        view = VXLNetworkView()
        view.setNetwork(random_network(50, 3, seed=9))
        positions = view.positions()
        table = positions.array()
        self.assertEqual((table.shape, table.dtype), ((50, 3), np.float32))
        table[0] = (1, 2, 3)
        self.assertEqual(positions.vectorAtIndex(0), (1.0, 2.0, 3.0))
        view.setPositions(plexview.QLOVector3dArray.fromNumpy(np.zeros((50, 3))))
        np.testing.assert_array_equal(view.positions().array(), 0)


class ViewRunTest(unittest.TestCase):
    def test_timer_runs_background_batches_until_paused(self):
        view = VXLNetworkView()
        view.setNetwork(random_network(3000, 4, seed=9))
        view.setIterations(100000)
        before = view.positions().array().copy()
        view.start()
        view.animationTimer()
        self.assertTrue(view.iterating())
        time.sleep(0.2)
        view.pause()
        view.waitForBatch()
        self.assertFalse(view.iterating())
        self.assertFalse(np.array_equal(before, view.positions().array()))

    def test_filter_values_and_thresholds_as_arrays_and_tuples(self):
        net = QLONetwork.initWithEdges(4, [0, 1, 2], [1, 2, 3], weights=[2, 4, 8])
        view = VXLNetworkView()
        view.setNetwork(net)
        view.prepareFrame()
        np.testing.assert_array_equal(view.filterProperty(), [1, 2, 2, 1])
        self.assertEqual(view.maxMinWeight(), (8.0, 2.0))
        self.assertEqual(plexview.getMaxMinValuesForPropertyOfNetwork(net, "Node Strength"), (12.0, 2.0))


if __name__ == "__main__":
    unittest.main()
