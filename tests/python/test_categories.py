"""plexview.colour categories from Python: the order with its enums and a
network argument, the colouring result's fields, the key file as a dict, and
colour files of each kind with their errors. The rules themselves are checked
by the C++ colour tests."""

import unittest

import numpy as np

import plexview
from support import ScratchFolderTestCase

colour = plexview.colour
GREY = 128 / 255
HEX = {"red": (1, 0, 0), "green": (0, 1, 0), "blue": (0, 0, 1), "grey": (GREY, GREY, GREY)}


class OrderTest(unittest.TestCase):
    def test_numbers_by_their_text_and_measures_of_a_network(self):
        order = colour.sortedArrayWithColorsArray
        ascending = order(np.array([10, 2, 3, 10]), "Alphabetical", colour.SortOrder.Ascending)
        self.assertEqual([s.theObject for s in ascending], ["10", "3", "2"])
        # A star on 0: degree 3 at the centre, 1 at each leaf.
        network = plexview.QLONetwork.initWithEdges(4, [0, 0, 0], [1, 2, 3])
        values = ["hub", "leaf", "leaf", "other"]
        stubs = order(values, "Node Degree", network=network)
        self.assertEqual([(s.theObject, s.sortObject) for s in stubs],
                         [("other", 1.0), ("leaf", 2.0), ("hub", 3.0)])


class ColouringTest(ScratchFolderTestCase):
    def test_limit_hiding_and_the_key_file(self):
        self.write_text("somecolors.clr", "red #ff0000\ngreen #00ff00\nblue #0000ff\ngrey #808080\n")
        self.write_text("colororder.txt", "red\ngreen\nblue\n")
        values = ["a"] * 4 + ["b"] * 3 + ["c"] * 2 + ["d"]
        shown = colour.categoricalColouring(values, limit=1, resources=self.folder)
        self.assertIsNone(shown.hidden)
        self.assertEqual(shown.legendLabels, ["Others", "a"])
        np.testing.assert_array_equal(shown.colors[[0, 4]], [HEX["red"], HEX["green"]])
        hidden = colour.categoricalColouring(values, limit=1, hide=colour.HideOthers.On,
                                             resources=self.folder)
        np.testing.assert_array_equal(hidden.hidden, [False] * 4 + [True] * 6)

        keys = self.write_text(
            "net.keys", "<plist><dict><key>b</key><string>grey</string></dict></plist>")
        self.assertEqual(colour.readKeyFile(keys), {"b": "grey"})
        where = dict(resources=self.folder, networkFile=self.path("net.graphml"))
        result = colour.categoricalColouring(["a", "a", "b"], **where)
        np.testing.assert_allclose(result.colors, [HEX["red"], HEX["red"], HEX["grey"]])
        exported = colour.colorsForCategories(["a", "a", "b"], **where)
        np.testing.assert_array_equal(exported, result.colors)


class ColorFileTest(ScratchFolderTestCase):
    def test_each_kind_and_the_errors(self):
        name, colours = colour.readColorFile(self.write_text("rgb.txt", "0.2 0.4 0.6\n1 1 1\n"))
        self.assertEqual(name, "rgb")
        self.assertIsInstance(colours, plexview.QLOVector3dArray)
        _, texts = colour.readColorFile(self.write_text("groups.txt", "1 2\nx y\n"))
        self.assertEqual(texts, ["1 2", "x y"])
        with self.assertRaises(plexview.ReadError) as bad:
            colour.readColorFile(self.write_text("bad.txt", "1\n2\nthree\n"))
        self.assertEqual(bad.exception.line, 3)


if __name__ == "__main__":
    unittest.main()
