"""Edge style from Python, on the view and through the controller: the
colour mode by name, the single colour, widths by weight and arrows, each
setter marking the picture changed."""
import unittest

from plexview import QLONetwork, VXLController, VXLNetworkView


def network(directed):
    return QLONetwork.initWithEdges(3, [0, 1], [1, 2], directed=directed)


class EdgeStyleTest(unittest.TestCase):
    def targets(self):
        view = VXLNetworkView()
        return [("view", view), ("controller", VXLController.init(VXLNetworkView()))]

    def test_colour_modes_by_name(self):
        for name, target in self.targets():
            with self.subTest(name):
                self.assertEqual(target.edgeColorMode(), "endpoints")
                for mode in ("single", "weight", "endpoints"):
                    target.setEdgeColorMode(mode)
                    self.assertEqual(target.edgeColorMode(), mode)
                for bad in ("Single", "weights", "", "endpoint "):
                    with self.assertRaises(ValueError) as caught:
                        target.setEdgeColorMode(bad)
                    self.assertIn(repr(bad), str(caught.exception))
                self.assertEqual(target.edgeColorMode(), "endpoints")
                with self.assertRaises(TypeError):
                    target.setEdgeColorMode(1)

    def test_single_colour_forms(self):
        view = VXLNetworkView()
        for given, expected in (
            ((0.25, 0.5, 1.0), (0.25, 0.5, 1.0)),
            (((0.0, 1.0, 0.5),), (0.0, 1.0, 0.5)),
            (("#ff0000",), (1.0, 0.0, 0.0)),
        ):
            with self.subTest(given):
                view.setEdgeColor(*given)
                self.assertEqual(view.edgeColor(), expected)
        for bad in ((1.5, 0, 0), ((0, 0),), ("red",), (0, 0), ((0, -0.1, 0),)):
            with self.subTest(bad), self.assertRaises(ValueError):
                view.setEdgeColor(*bad)
        self.assertEqual(view.edgeColor(), (1.0, 0.0, 0.0))

    def test_arrows_follow_the_network_installed(self):
        view = VXLNetworkView()
        view.setNetwork(network(True))
        self.assertTrue(view.showArrows())
        view.setShowArrows(False)
        self.assertFalse(view.showArrows())
        view.setNetwork(network(False))
        self.assertFalse(view.showArrows())
        controller = VXLController.init(view)
        controller.setShowArrows(True)
        self.assertTrue(view.showArrows())

    def test_every_setter_marks_a_change(self):
        view = VXLNetworkView()
        view.setNetwork(network(True))
        for change in (
            lambda: view.setEdgeColorMode("single"),
            lambda: view.setEdgeColor(0.1, 0.2, 0.3),
            lambda: view.setEdgeWidthByWeight(True),
            lambda: view.setShowArrows(False),
        ):
            before = view.changeCount()
            change()
            self.assertGreater(view.changeCount(), before)
        self.assertTrue(view.edgeWidthByWeight())


if __name__ == "__main__":
    unittest.main()
