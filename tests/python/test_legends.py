"""Legends from Python: building them from labels and colour tuples, sizes as
tuples, and the view's legend. The layout rules are checked by the C++ legend
tests."""
import unittest

from plexview import VXLLegends, VXLNetworkView


class LegendsTest(unittest.TestCase):
    def test_colours_from_tuples_and_what_is_refused(self):
        legend = VXLLegends(["low", "high"], [(1, 0, 0), (0, 0, 1, 0.5)], continuous=True)
        self.assertEqual(legend.labels(), ["low", "high"])
        self.assertEqual(legend.colors(), [(1.0, 0.0, 0.0, 1.0), (0.0, 0.0, 1.0, 0.5)])
        with self.assertRaises(ValueError):
            VXLLegends(["a"], [(1, 0)])

    def test_sizes_and_the_views_legend(self):
        legend = VXLLegends(["only"], [(1, 0, 0)])
        view = VXLNetworkView()
        view.setLegends(legend)
        self.assertIs(view.legends(), legend)
        view.setLegends(None)
        self.assertIsNone(view.legends())


if __name__ == "__main__":
    unittest.main()
