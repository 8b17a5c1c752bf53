"""Helpers shared by the Python tests: scratch folders, seeded random
networks and controllers showing a network."""

import os
import shutil
import tempfile
import unittest

import plexview


class ScratchFolderTestCase(unittest.TestCase):
    """A test case with a fresh folder, removed afterwards, in self.folder."""

    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(prefix="plexview-test-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write_text(self, name, text):
        path = self.path(name)
        with open(path, "w", encoding="utf-8") as out:
            out.write(text)
        return path

    def missing_folder_path(self, name):
        """A path inside a folder that does not exist: no writer can create it."""
        return os.path.join(self.folder, "no-such-folder", name)


def random_network(vertices, degree, seed):
    """A random network drawn from the shared source seeded with `seed`."""
    plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(seed)
    return plexview.QLONetwork.initRandomNetworkWithNumberOfVertices(vertices, degree)


def controller_showing(network):
    """A new window controller showing `network`."""
    controller = plexview.VXLController.init()
    controller.setNetwork(network)
    return controller
