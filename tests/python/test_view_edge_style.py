"""Edge style from Python, on the view and through the controller: the
colour mode by name, the single colour, widths by weight and arrows."""

import unittest

from plexview import QLONetwork, VXLController, VXLNetworkView


def network(directed):
    return QLONetwork.initWithEdges(3, [0, 1], [1, 2], directed=directed)


class EdgeStyleTest(unittest.TestCase):
    def test_colour_mode_by_name_on_view_and_controller(self):
        for name, target in [("view", VXLNetworkView()),
                             ("controller", VXLController.init(VXLNetworkView()))]:
            with self.subTest(name):
                target.setEdgeColorMode("single")
                self.assertEqual(target.edgeColorMode(), "single")
                with self.assertRaisesRegex(ValueError, "'weights'"):
                    target.setEdgeColorMode("weights")
                self.assertEqual(target.edgeColorMode(), "single")
                with self.assertRaises(TypeError):
                    target.setEdgeColorMode(1)

    def test_single_colour_as_numbers_or_text(self):
        view = VXLNetworkView()
        view.setEdgeColor(0.25, 0.5, 1.0)
        self.assertEqual(view.edgeColor(), (0.25, 0.5, 1.0))
        view.setEdgeColor("#ff0000")
        self.assertEqual(view.edgeColor(), (1.0, 0.0, 0.0))
        with self.assertRaises(ValueError):
            view.setEdgeColor(1.5, 0, 0)
        self.assertEqual(view.edgeColor(), (1.0, 0.0, 0.0))

    def test_arrows_follow_the_network_and_the_controller(self):
        view = VXLNetworkView()
        view.setNetwork(network(True))
        self.assertTrue(view.showArrows())
        view.setNetwork(network(False))
        self.assertFalse(view.showArrows())
        VXLController.init(view).setShowArrows(True)
        self.assertTrue(view.showArrows())
        before = view.changeCount()
        view.setEdgeWidthByWeight(True)  # the window draws again
        self.assertGreater(view.changeCount(), before)


if __name__ == "__main__":
    unittest.main()
