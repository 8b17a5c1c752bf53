"""The controller's file commands from Python: positions files, Pajek and
edge-list export read back by plexview and by igraph, and what failures do."""
import os
import unittest
from unittest import mock

import numpy as np

import peers
from peers import picture_of_igraph, picture_of_plexview, plexview_from_picture
from plexview import QLONetwork, VXLController
from support import ScratchFolderTestCase, assert_same_bits
from test_peers import PeerTestCase, source_networks


def controller_showing(network):
    controller = VXLController.init()
    controller.setNetwork(network)
    return controller


def awkward_layout(count):
    """Floats whose shortest text is long, tiny, huge or negative zero."""
    rng = np.random.default_rng(11)
    values = (rng.standard_normal((count, 3)) * 10.0 ** rng.integers(-40, 38, (count, 3)))
    values = values.astype(np.float32)
    values[0] = [np.float32(0.1), -0.0, np.float32(1.4e-45)]
    return values


class PositionsFileTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.controller = controller_showing(QLONetwork.initWithEdges(40, range(39), range(1, 40)))
        self.controller.positions().array()[:] = awkward_layout(40)

    def test_exported_layout_comes_back_bit_for_bit_after_moving(self):
        exported = self.controller.positions().array().copy()
        path = self.path("layout.txt")
        self.controller.exportNodesPositions(path)
        lines = self.read_text("layout.txt").splitlines()
        self.assertEqual([len(line.split()) for line in lines], [3] * 40)

        self.controller.networkView().randomizePositionsWithSizeX(30, 30, 30)
        self.assertFalse(np.array_equal(self.controller.positions().array(), exported))
        self.assertTrue(self.controller.openPositionsFromURL(path))
        assert_same_bits(self, exported, self.controller.positions().array())
        stored = self.controller.network().propertyForKey("Position")
        assert_same_bits(self, exported, stored.array())

    def test_only_unreachable_files_alert_and_failed_writes_raise(self):
        alerts = []
        self.controller.setFileAlert(lambda message, detail: alerts.append(detail))
        missing = self.path("missing.txt")
        self.assertFalse(self.controller.openPositionsFromURL(missing))
        self.assertFalse(self.controller.openPositionsFromURL(self.write_text("bad", "1 2\n")))
        self.assertEqual(len(alerts), 1)
        self.assertIn(missing, alerts[0])
        with self.assertRaises(OSError):
            self.controller.exportNodesPositions(self.missing_folder_path("layout.txt"))
        self.assertIsNone(self.controller.currentFolder())
        self.assertIsNone(self.controller.currentFile())

    def test_a_home_path_is_expanded(self):
        with mock.patch.dict(os.environ, {"HOME": self.folder}):
            self.controller.exportNodesPositions("~/from-home.txt")
        self.assertTrue(os.path.exists(self.path("from-home.txt")))


class NetworkExportTest(PeerTestCase):
    @unittest.skipUnless(peers.igraph, "python3-igraph cannot be imported by this Python")
    def test_pajek_export_reads_back_the_same_in_plexview_and_igraph(self):
        for name, picture, weighted in source_networks():
            with self.subTest(network=name):
                controller = controller_showing(plexview_from_picture(picture, weighted))
                path = self.path(name + ".net")
                controller.exportNetworkToPajekFormat(path)

                ours = QLONetwork.initWithContentsOfPajekURL(path)
                self.assert_same_labeled_picture(picture, picture_of_plexview(ours))
                self.assertEqual(ours.isEdgeWeighted(), weighted)
                theirs = peers.igraph_read("pajek", path)
                self.assert_same_labeled_picture(picture, picture_of_igraph(theirs, "name"))
                self.assertEqual("weight" in theirs.es.attributes(), weighted)
                # The coordinates are the layout shown.
                np.testing.assert_array_equal(
                    np.array(theirs.vs["x"], dtype=np.float32), controller.positions().x
                )

    def test_edge_list_has_one_line_per_edge_in_order(self):
        network = QLONetwork.initWithEdges(5, [0, 1, 3, 4], [1, 2, 0, 4], [0.5, 2, 1e-3, 7])
        controller = controller_showing(network)
        path = self.path("out.edges")
        controller.exportNetworkToEdges(path)
        rows = np.loadtxt(path, ndmin=2)
        self.assertEqual(rows.shape, (4, 3))
        np.testing.assert_array_equal(rows[:, 0], network.edgeFromList)
        np.testing.assert_array_equal(rows[:, 1], network.edgeToList)
        np.testing.assert_array_equal(rows[:, 2].astype(np.float32), network.edgesWeights)


if __name__ == "__main__":
    unittest.main()
