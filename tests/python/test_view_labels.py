"""Vertex labels from Python: the three modes by name, a clear error for
any other, and the property the labels show."""
import os
import unittest
from unittest import mock

import plexview
from plexview import QLONetwork, QLORandomGenerator, VXLNetworkView


class ViewLabelsTest(unittest.TestCase):
    def test_modes_by_name(self):
        view = VXLNetworkView()
        before = view.changeCount()
        view.setShowLabels("selected")
        self.assertEqual(view.showLabels(), "selected")
        self.assertGreater(view.changeCount(), before)  # the window draws again
        with self.assertRaisesRegex(ValueError, '"some"'):
            view.setShowLabels("some")
        self.assertEqual(view.showLabels(), "selected")

    def test_label_property_must_exist(self):
        view = VXLNetworkView()
        QLORandomGenerator.sharedRandomGenerator().setSeed(1)
        network = QLONetwork.initRandomNetworkWithNumberOfVertices(3, 1.0)
        network.setPropertiesOfVertices(["a", "b", "c"], "Group")
        view.setNetwork(network)
        view.setLabelProperty("Group")
        self.assertEqual(view.labelProperty(), "Group")
        with self.assertRaisesRegex(ValueError, 'no vertex property "Missing".*Group'):
            view.setLabelProperty("Missing")
        self.assertEqual(view.labelProperty(), "Group")

    def test_render_checks_the_mode_before_drawing(self):
        network = QLONetwork.initRandomNetworkWithNumberOfVertices(3, 1.0)
        hidden = {name: "" for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        with mock.patch.dict(os.environ, hidden):
            with self.assertRaisesRegex(ValueError, "'names'"):
                plexview.render(network, "unused.png", labels="names")


if __name__ == "__main__":
    unittest.main()
