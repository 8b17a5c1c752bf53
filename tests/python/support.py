"""Helpers shared by the Python tests: scratch folders and float bit checks."""

import os
import shutil
import tempfile
import unittest

import numpy as np


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


def random_float32(rng, count):
    """Float32 values spread over the whole range, subnormals included: random
    bit patterns (NaNs dropped) plus the values that text forms get wrong most
    often."""
    bits = rng.integers(0, 2**32, size=count, dtype=np.uint64).astype(np.uint32)
    values = bits.view(np.float32)
    values = values[~np.isnan(values)]
    info = np.finfo(np.float32)
    extremes = np.array(
        [
            0.0,
            -0.0,
            info.max,
            -info.max,
            info.tiny,  # smallest normal
            np.float32(1.4e-45),  # smallest subnormal
            -np.float32(1.4e-45),
            info.eps,
            np.float32(0.1),
            np.float32(1) / np.float32(3),
            np.float32(16777217.0),  # rounds to 2^24
            np.inf,
            -np.inf,
            np.nan,
        ],
        dtype=np.float32,
    )
    return np.concatenate([extremes, values])
