"""The controller's colouring from Python: functions, maps and custom colours,
colour properties from NumPy arrays and lists, the view's colours read back,
colours for an export, colour files, and the categorical limit and order."""
import unittest

import numpy as np

from plexview import QLONetwork, VXLController
from support import ScratchFolderTestCase


def path_of(vertices):
    """0 - 1 - ... - (vertices - 1), undirected and unweighted."""
    return QLONetwork.initWithEdges(vertices, list(range(vertices - 1)), list(range(1, vertices)))


def colours_of(controller):
    return controller.networkView().colors().array().copy()


class ScalarColouringTest(unittest.TestCase):
    def setUp(self):
        self.controller = VXLController.init()
        self.controller.setNetwork(path_of(6))

    def test_a_numeric_property_through_linear_and_gray(self):
        values = np.array([3.0, -1.0, 0.0, 7.0, 5.0, 1.0])
        self.controller.addColorProperty(values, "level")
        self.controller.selectColorProperty("level")
        self.controller.selectColorFunction("Linear")
        self.controller.selectColorMap("Gray")
        t = ((values - values.min()) / (values.max() - values.min())).astype(np.float32)
        grey = (t.astype(np.float64) * 0.9 + 0.1).astype(np.float32)
        np.testing.assert_allclose(colours_of(self.controller), np.stack([grey] * 3, axis=1),
                                   rtol=0, atol=1e-7)
        # The stored "Color" is what the view shows.
        np.testing.assert_array_equal(
            self.controller.network().propertyForKey("Color").array(), colours_of(self.controller))
        labels = self.controller.networkView().legends().labels()
        self.assertEqual(len(labels), 22)
        self.assertEqual((labels[0], labels[21]), ("-1", "7"))

        # Limits take effect at the next recolouring.
        self.controller.setMaxColorScalarValue(3.0)
        self.controller.updateCurrentColor()
        self.assertAlmostEqual(colours_of(self.controller)[3][0], 0.1 + 0.9 * 2, places=5)
        self.controller.resetMaxColorScalarValue()
        self.assertEqual(self.controller.maxColorScalarValue(), np.finfo(np.float32).max)

    def test_custom_colours_as_text_or_numbers(self):
        self.assertEqual(self.controller.colorCustom0(), "#1f77b4")
        self.assertEqual(self.controller.colorCustom2(), "#2ca02c")
        self.controller.selectColorFunction("Linear")
        self.controller.selectColorMap("Custom 2")
        self.controller.setColorCustom0("#FF0000")
        self.controller.setColorCustom1((0.0, 0.0, 1.0))
        colours = colours_of(self.controller)
        # Degrees 1, 2, 2, 2, 2, 1: the ends red, the rest blue.
        np.testing.assert_array_equal(colours[0], [1, 0, 0])
        np.testing.assert_array_equal(colours[2], [0, 0, 1])
        self.controller.colorGradientChanged("#000000", "#ffffff", (0, 1, 0))
        self.assertEqual(self.controller.colorCustom1(), "#ffffff")
        np.testing.assert_array_equal(colours_of(self.controller)[2], [1, 1, 1])
        with self.assertRaises(ValueError):
            self.controller.setColorCustom2((1, 2))


class PropertiesTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.controller = VXLController.init()
        self.controller.setNetwork(path_of(4))

    def test_arrays_lists_and_texts_become_colour_properties(self):
        self.controller.addColorProperty(np.eye(4, 3, dtype=np.float32), "rgb")
        self.controller.addColorProperty([0.5, 1.5, 2.5, 3.5], "numbers")
        self.controller.addColorProperty(["b", "a", "b", "c"], "kinds")
        self.controller.addColorProperty([1.0, 2.0], "short")  # refused
        self.assertEqual(self.controller.colorPropertyTitles(),
                         ["None", "Node Degree", "Node InDegree", "kinds", "numbers", "rgb"])
        self.controller.selectColorProperty("rgb")
        np.testing.assert_array_equal(colours_of(self.controller), np.eye(4, 3))
        self.assertIsNone(self.controller.networkView().legends())
        self.controller.selectColorProperty("kinds")
        # Fewest first; equal counts with the higher value first.
        self.assertEqual(self.controller.networkView().legends().labels(), ["c", "a", "b"])
        self.assertEqual(self.controller.colorPropertyWithName("kinds"), ["b", "a", "b", "c"])
        self.assertIsNone(self.controller.colorPropertyWithName("None"))

        exported = self.controller.colorsForProperty("numbers", "Linear").array()
        self.assertEqual(exported.shape, (4, 3))
        self.assertEqual(self.controller.selectedColorProperty(), "kinds")
        self.assertIsNone(self.controller.colorsForProperty("none", "Linear"))

        self.controller.selectColorProperty("None")
        self.assertIsNone(self.controller.networkView().colors())

    def test_colour_files_and_their_failures(self):
        alerts = []
        self.controller.setAlertHandler(alerts.append)
        colours = self.write_text("tones.txt", "0 0 1\n0 1 0\n1 0 0\n0.5 0.5 0.5\n")
        self.assertTrue(self.controller.openColorsFromURL(colours))
        self.assertEqual(self.controller.selectedColorProperty(), "tones")
        np.testing.assert_array_equal(colours_of(self.controller)[1], [0, 1, 0])
        self.assertFalse(self.controller.openColorsFromURL(self.path("missing.txt")))
        self.assertEqual(len(alerts), 1)
        self.assertIn("missing.txt", alerts[0])
        self.assertEqual(self.controller.selectedColorProperty(), "tones")


class CategoriesTest(unittest.TestCase):
    def test_limit_hide_and_order(self):
        controller = VXLController.init()
        controller.setNetwork(path_of(10))
        values = ["a"] * 4 + ["b"] * 3 + ["c"] * 2 + ["d"]
        controller.addColorProperty(values, "letters")
        controller.selectColorProperty("letters")
        view = controller.networkView()
        self.assertEqual(view.legends().labels(), ["d", "c", "b", "a"])

        controller.changeColorProperties(True, 2, False)
        self.assertEqual(controller.indexedColorLimit(), 2)
        self.assertEqual(view.legends().labels(), ["Others", "b", "a"])
        controller.changeColorProperties(True, 2, True)
        self.assertTrue(controller.hideNonIndexItems())
        self.assertEqual(view.hiddenVertices().array().tolist(), [0] * 7 + [1] * 3)
        controller.changeColorProperties(False, 2, False)
        self.assertEqual(controller.indexedColorLimit(), -2)
        self.assertEqual(len(view.legends().labels()), 4)

        self.assertEqual(controller.sortPropertyTitles()[:3],
                         ["Frequency", "Alphabetical", "Node Degree"])
        controller.changeSortProperty("Alphabetical")
        self.assertEqual(controller.sortPropertyTitle(), "Alphabetical")
        self.assertEqual(view.legends().labels(), ["a", "b", "c", "d"])
        controller.changeSortOrder(True)
        self.assertTrue(controller.isSortAscending())
        self.assertEqual(view.legends().labels(), ["d", "c", "b", "a"])


if __name__ == "__main__":
    unittest.main()
