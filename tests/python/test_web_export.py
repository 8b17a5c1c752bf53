"""The web bundle from Python: the 3D export table and the bundle reached
through the controller, and the OSError of a bundle that cannot be written.
The files, the table's codes and selection are checked by the C++ web
export tests."""
import json
import os
import unittest

from plexview import QLONetwork
from support import ScratchFolderTestCase, controller_showing


class WebBundleTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        network = QLONetwork.initWithEdges(3, [0, 1], [1, 2], [0.5, 2])
        self.controller = controller_showing(network)

    def test_the_bundle_is_written_from_the_table(self):
        self.controller.export3DTableController().reloadTable()
        folder = self.path("a bundle")
        self.controller.exportWebToFile(folder)
        with open(os.path.join(folder, "properties.json"), encoding="utf-8") as source:
            self.assertIn("ORDER", json.load(source))

    def test_a_bundle_that_cannot_be_written_raises(self):
        blocker = self.write_text("plain", "x")
        with self.assertRaisesRegex(OSError, "plain"):
            self.controller.exportWebToFile(os.path.join(blocker, "bundle"))


if __name__ == "__main__":
    unittest.main()
