"""Legends from Python: building them from labels and colour tuples, their
frame size rules, and the view's legend with its height."""
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
        legend.useLightBackgroundDefaults()
        self.assertEqual(legend.textColor(), (0.0, 0.0, 0.0, 1.0))
        self.assertEqual(legend.title(), "")
        same = VXLLegends.initWithTitle("", ["a"], [(0, 1, 0)], False, False)
        self.assertEqual(same.colors(), [(0.0, 1.0, 0.0, 1.0)])
        for bad in [[(1, 0)], [(1, 0, 0, 1, 1)], ["red"], [("r", 0, 0)], [1.0]]:
            with self.assertRaises(ValueError, msg=repr(bad)):
                VXLLegends(["a"], bad)

    def test_frame_size_rules(self):
        legend = VXLLegends(["only"], [(1, 0, 0)])
        width, height = legend.frameSize()
        self.assertEqual(height, 20.0)  # one label: the margins alone
        self.assertGreater(width, 31.0)
        legend.setTitle("a title much wider than the only label")
        self.assertEqual(legend.frameSize(), (width, height))  # a title keeps the frame
        legend.setHeight(2.0)
        wide, tall = legend.frameSize()
        self.assertGreater(wide, 2 * width)
        self.assertGreater(tall, 40.0)
        legend.setMarginSize(0.0, 0.0)
        self.assertEqual(legend.marginSize(), (0.0, 0.0))
        self.assertAlmostEqual(legend.frameSize()[1], tall - 40.0)

    def test_view_scales_its_legend(self):
        view = VXLNetworkView()
        camera = view.camera()
        camera.viewHeight = 460
        view.setCamera(camera)
        legend = VXLLegends(["a", "b"], [(1, 0, 0), (0, 1, 0)])
        view.setLegends(legend)
        self.assertIs(view.legends(), legend)
        self.assertEqual(legend.height(), 1.0)
        view.setLegendsHeight(3.0)
        self.assertEqual(legend.height(), 3.0)
        view.setBlackBackground(True)
        self.assertEqual(legend.borderColor()[:3], (1.0, 1.0, 1.0))
        view.setLegends(None)
        self.assertIsNone(view.legends())


if __name__ == "__main__":
    unittest.main()
