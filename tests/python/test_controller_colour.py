"""The controller's colouring from Python: colour properties from NumPy arrays,
lists and texts, colours as text or tuples, colour files with their alerts, and
the categorical switches. The colouring rules are checked by the C++
controller tests."""
import unittest

import numpy as np

from plexview import QLONetwork
from support import ScratchFolderTestCase, controller_showing


def colours_of(controller):
    return controller.networkView().colors().array().copy()


def controller_on_path(vertices):
    """A controller showing the path 0 - 1 - ... - (vertices - 1)."""
    ends = list(range(vertices))
    return controller_showing(QLONetwork.initWithEdges(vertices, ends[:-1], ends[1:]))


class ColouringTest(ScratchFolderTestCase):
    def test_custom_colours_as_text_or_numbers(self):
        controller = controller_on_path(6)
        controller.selectColorFunction("Linear")
        controller.selectColorMap("Custom 2")
        controller.setColorCustom0("#FF0000")
        controller.setColorCustom1((0.0, 0.0, 1.0))
        # Degrees 1, 2, 2, 2, 2, 1: the ends red, the rest blue.
        np.testing.assert_array_equal(colours_of(controller)[[0, 2]], [[1, 0, 0], [0, 0, 1]])
        with self.assertRaises(ValueError):
            controller.setColorCustom2((1, 2))

    def test_arrays_lists_and_texts_become_colour_properties(self):
        controller = controller_on_path(4)
        controller.addColorProperty(np.eye(4, 3, dtype=np.float32), "rgb")
        controller.addColorProperty([0.5, 1.5, 2.5, 3.5], "numbers")
        controller.addColorProperty(["b", "a", "b", "c"], "kinds")
        controller.addColorProperty([1.0, 2.0], "short")  # refused
        self.assertEqual(controller.colorPropertyTitles(),
                         ["None", "Node Degree", "Node InDegree", "kinds", "numbers", "rgb"])
        controller.selectColorProperty("rgb")
        np.testing.assert_array_equal(colours_of(controller), np.eye(4, 3))
        self.assertEqual(controller.colorPropertyWithName("kinds"), ["b", "a", "b", "c"])

    def test_colour_files_alert_through_the_python_handler(self):
        controller = controller_on_path(4)
        alerts = []
        controller.setAlertHandler(alerts.append)
        colours = self.write_text("tones.txt", "0 0 1\n0 1 0\n1 0 0\n0.5 0.5 0.5\n")
        self.assertTrue(controller.openColorsFromURL(colours))
        self.assertEqual(controller.selectedColorProperty(), "tones")
        self.assertFalse(controller.openColorsFromURL(self.path("missing.txt")))
        self.assertEqual(len(alerts), 1)
        self.assertIn("missing.txt", alerts[0])

    def test_category_switches(self):
        controller = controller_on_path(10)
        controller.addColorProperty(["a"] * 4 + ["b"] * 3 + ["c"] * 2 + ["d"], "letters")
        controller.selectColorProperty("letters")
        view = controller.networkView()
        controller.changeColorProperties(True, 2, True)
        self.assertEqual(view.legends().labels(), ["b", "a"])
        self.assertEqual(view.hiddenVertices().array().tolist(), [0] * 7 + [1] * 3)


if __name__ == "__main__":
    unittest.main()
