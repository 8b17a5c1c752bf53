"""Helpers shared by the Python tests: scratch folders, float bit checks,
seeded random networks and controllers showing a network."""

import os
import shutil
import tempfile
import unittest

import numpy as np

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

    def read_text(self, name):
        with open(self.path(name), encoding="utf-8") as source:
            return source.read()

    def missing_folder_path(self, name):
        """A path inside a folder that does not exist: no writer can create it."""
        return os.path.join(self.folder, "no-such-folder", name)


def assert_same_bits(test, expected, actual):
    """Exact equality of float arrays: the same bit patterns, except that any
    NaN matches any NaN (text forms keep NaN but not its payload)."""
    expected = np.asarray(expected)
    actual = np.asarray(actual)
    test.assertEqual(expected.dtype, actual.dtype)
    test.assertEqual(expected.shape, actual.shape)
    nan_expected = np.isnan(expected)
    np.testing.assert_array_equal(nan_expected, np.isnan(actual))
    unsigned = np.uint32 if expected.dtype == np.float32 else np.uint64
    np.testing.assert_array_equal(
        expected[~nan_expected].view(unsigned), actual[~nan_expected].view(unsigned)
    )



def random_network(vertices, degree, seed):
    """A random network drawn from the shared source seeded with `seed`."""
    plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(seed)
    return plexview.QLONetwork.initRandomNetworkWithNumberOfVertices(vertices, degree)


def controller_showing(network):
    """A new window controller showing `network`."""
    controller = plexview.VXLController.init()
    controller.setNetwork(network)
    return controller
