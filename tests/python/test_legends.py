"""Legends from Python: building them from labels and colour tuples, sizes as
tuples, and the view's legend. The layout rules are checked by the C++ legend
tests."""
import unittest

from plexview import VXLLegends, VXLNetworkView


class LegendsTest(unittest.TestCase):
    def test_colours_labels_and_defaults(self):
        legend = VXLLegends(["low", "high"], [(1, 0, 0), (0, 0, 1, 0.5)], continuous=True,
                            blackBackground=True)
        self.assertEqual(legend.labels(), ["low", "high"])
        self.assertEqual(legend.colors(), [(1.0, 0.0, 0.0, 1.0), (0.0, 0.0, 1.0, 0.5)])
        self.assertTrue(legend.continuous())
        self.assertEqual(legend.textColor(), (1.0, 1.0, 1.0, 1.0))
        same = VXLLegends.initWithTitle("", ["a"], [(0, 1, 0)], False, False)
        self.assertEqual(same.textColor(), (0.0, 0.0, 0.0, 1.0))
        for bad in [[(1, 0)], [(1, 0, 0, 1, 1)], ["red"], [("r", 0, 0)], [1.0]]:
            with self.assertRaises(ValueError, msg=repr(bad)):
                VXLLegends(["a"], bad)

    def test_sizes_and_the_views_legend(self):
        legend = VXLLegends(["only"], [(1, 0, 0)])
        self.assertEqual(legend.frameSize()[1], 20.0)  # one label: the margins alone
        legend.setMarginSize(0.0, 5.0)
        self.assertEqual(legend.marginSize(), (0.0, 5.0))
        self.assertEqual(legend.frameSize()[1], 10.0)
        view = VXLNetworkView()
        camera = view.camera()
        camera.viewHeight = 460
        view.setCamera(camera)
        view.setLegends(legend)
        self.assertIs(view.legends(), legend)
        view.setLegendsHeight(3.0)
        self.assertEqual(legend.height(), 3.0)
        view.setLegends(None)
        self.assertIsNone(view.legends())


if __name__ == "__main__":
    unittest.main()
