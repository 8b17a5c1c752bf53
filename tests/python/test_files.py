"""The controller's file commands from Python: the alert callback and errors of
positions files, and Pajek and edge-list export read back by igraph and NumPy.
The round trips themselves are checked by the C++ controller file tests."""
import os
import unittest
from unittest import mock

import numpy as np

import peers
from peers import picture_of_igraph, plexview_from_picture
import plexview
from plexview import QLONetwork, VXLController
from support import ScratchFolderTestCase
from test_peers import PeerTestCase, source_networks


def controller_showing(network):
    controller = VXLController.init()
    controller.setNetwork(network)
    return controller


class PositionsFileTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.controller = controller_showing(QLONetwork.initWithEdges(40, range(39), range(1, 40)))

    def test_failed_reads_raise_with_the_reason_and_failed_writes_raise(self):
        alerts = []
        self.controller.setFileAlert(lambda message, detail: alerts.append(detail))
        missing = self.path("missing.txt")
        short = self.write_text("short.txt", "1 2 3\n" * 39)
        for path, line, reason in [
            (missing, 0, "No such file"),
            (self.write_text("bad", "1 2\n"), 1, "found 2 fields"),
            (short, 0, "holds 39 positions, but the network has 40 vertices"),
        ]:
            with self.assertRaises(plexview.ReadError) as raised:
                self.controller.openPositionsFromURL(path)
            self.assertEqual((raised.exception.line, os.path.basename(raised.exception.file)),
                             (line, os.path.basename(path)))
            self.assertIn(reason, raised.exception.reason)
        self.assertEqual(len(alerts), 1)
        self.assertIn(missing, alerts[0])
        with self.assertRaises(OSError):
            self.controller.exportNodesPositions(self.missing_folder_path("layout.txt"))

    def test_a_home_path_is_expanded(self):
        with mock.patch.dict(os.environ, {"HOME": self.folder}):
            self.controller.exportNodesPositions("~/from-home.txt")
        self.assertTrue(os.path.exists(self.path("from-home.txt")))


class NetworkExportTest(PeerTestCase):
    @unittest.skipUnless(peers.igraph, "python3-igraph cannot be imported by this Python")
    def test_pajek_export_reads_back_the_same_in_igraph_with_the_layout(self):
        name, picture, weighted = source_networks()[-1]
        controller = controller_showing(plexview_from_picture(picture, weighted))
        path = self.path(name + ".net")
        controller.exportNetworkToPajekFormat(path)
        theirs = peers.igraph_read("pajek", path)
        self.assert_same_labeled_picture(picture, picture_of_igraph(theirs, "name"))
        np.testing.assert_array_equal(
            np.array(theirs.vs["x"], dtype=np.float32), controller.positions().x
        )

    def test_edge_list_has_one_line_per_edge_in_order(self):
        network = QLONetwork.initWithEdges(5, [0, 1, 3, 4], [1, 2, 0, 4], [0.5, 2, 1e-3, 7])
        controller = controller_showing(network)
        path = self.path("out.edges")
        controller.exportNetworkToEdges(path)
        rows = np.loadtxt(path, ndmin=2)
        np.testing.assert_array_equal(rows[:, 0], network.edgeFromList)
        np.testing.assert_array_equal(rows[:, 2].astype(np.float32), network.edgesWeights)


if __name__ == "__main__":
    unittest.main()
