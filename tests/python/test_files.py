"""The controller's file commands from Python: the alert callback and errors of
positions files, the home folder in paths, and each network export
reachable. What the files hold is checked by the C++ controller file tests
and, read by networkx, by test_peers."""
import os
import unittest
from unittest import mock


import plexview
from plexview import QLONetwork
from support import ScratchFolderTestCase, controller_showing


class PositionsFileTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.controller = controller_showing(QLONetwork.initWithEdges(40, range(39), range(1, 40)))

    def test_failed_reads_raise_with_the_reason_and_failed_writes_raise(self):
        alerts = []
        self.controller.setFileAlert(lambda message, detail: alerts.append(detail))
        missing = self.path("missing.txt")
        for path, line, reason in [
            (missing, 0, "No such file"),
            (self.write_text("bad", "1 2\n"), 1, "found 2 fields"),
        ]:
            with self.assertRaises(plexview.ReadError) as raised:
                self.controller.openPositionsFromURL(path)
            self.assertEqual((raised.exception.line, raised.exception.file), (line, path))
            self.assertIn(reason, raised.exception.reason)
        self.assertEqual(len(alerts), 1)
        self.assertIn(missing, alerts[0])
        with self.assertRaises(OSError):
            self.controller.exportNodesPositions(self.missing_folder_path("layout.txt"))

    def test_a_home_path_is_expanded(self):
        with mock.patch.dict(os.environ, {"HOME": self.folder}):
            self.controller.exportNodesPositions("~/from-home.txt")
        self.assertTrue(os.path.exists(self.path("from-home.txt")))


class NetworkExportTest(ScratchFolderTestCase):
    def test_each_export_writes_the_shown_layout_or_the_edges(self):
        network = QLONetwork.initWithEdges(5, [0, 1, 3, 4], [1, 2, 0, 4], [0.5, 2, 1e-3, 7])
        controller = controller_showing(network)
        c = controller
        for name, export in [("out.net", c.exportNetworkToPajekFormat),
                             ("out.gexf", c.exportNetworkToGexf), ("out.gml", c.exportNetworkToGml)]:
            with self.subTest(name):
                export(self.path(name))
                self.assertEqual(plexview.read(self.path(name)).countEdges(), 4)
        controller.exportNetworkToEdges(self.path("out.edges"))
        self.assertTrue(os.path.exists(self.path("out.edges")))


if __name__ == "__main__":
    unittest.main()
