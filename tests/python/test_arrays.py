"""Arrays and the random source from Python: NumPy views that share memory and
keep it alive, conversions from NumPy, argument checks, files and their errors."""

import gc
import pathlib
import unittest

import numpy as np

import plexview
from plexview import NumberType, Precision, QLONumberArray, QLOVector3dArray
from support import ScratchFolderTestCase


class NumberArrayTest(unittest.TestCase):
    def test_numpy_input_picks_the_type_and_the_view_shares_memory(self):
        cases = [  # input dtype, number type, dtype of the view
            (np.float32, NumberType.Float, np.float32),
            (np.float64, NumberType.Double, np.float64),
            (np.bool_, NumberType.Bool, np.uint8),
            (np.int32, NumberType.Int32, np.int32),
            (np.uint64, NumberType.Int64, np.int64),
        ]
        for dtype, number_type, view_dtype in cases:
            with self.subTest(dtype=dtype):
                values = np.array([0, 1, 1, 0, 1], dtype=dtype)
                if np.issubdtype(dtype, np.integer):  # the extremes survive
                    values[:2] = [np.iinfo(dtype).min, min(np.iinfo(dtype).max, 2**63 - 1)]
                array = QLONumberArray.fromNumpy(values)
                view = array.array()
                self.assertEqual(array.numberArrayType(), number_type)
                self.assertEqual((view.dtype, view.shape), (np.dtype(view_dtype), (5,)))
                np.testing.assert_array_equal(view, values)
                floats = array.getFloatValues()
                self.assertEqual(floats.dtype, np.float32)
                np.testing.assert_array_equal(floats, values.astype(np.float32))
                view[2] = 0
                array.setDoubleValue(1.0, 3)
                self.assertEqual((array.doubleValueAtIndex(2), view[3]), (0, 1))
        self.assertEqual(QLONumberArray.fromNumpy([True, False]).numberArrayType(), NumberType.Bool)

    def test_numpy_input_is_copied_or_rejected(self):
        base = np.arange(10, dtype=np.float32)
        array = QLONumberArray.fromNumpy(base[::3])
        base[:] = -1
        np.testing.assert_array_equal(array.array(), [0, 3, 6, 9])
        cases = [
            (QLONumberArray, ValueError, np.zeros((2, 2))),
            (QLONumberArray, OverflowError, np.array([2**63], dtype=np.uint64)),
            (QLONumberArray, TypeError, np.array(["a", "b"])),
            (QLOVector3dArray, ValueError, np.zeros((4, 2))),
        ]
        for kind, error, values in cases:
            with self.subTest(kind=kind, values=values), self.assertRaises(error):
                kind.fromNumpy(values)

    def test_arguments_are_checked(self):
        array = QLONumberArray.initWithCount(3, 14)  # type codes as ints
        self.assertEqual(array.array().dtype, np.float32)
        with self.assertRaises(IndexError):
            array.setDoubleValue(1.0, 3)
        with self.assertRaises(ValueError):
            QLONumberArray.initWithCount(2, 16)
        with self.assertRaises(ValueError):
            QLONumberArray.initWithNumberArray(array, 2, 2, NumberType.Float)


class Vector3dArrayTest(unittest.TestCase):
    def test_plane_and_table_views_share_the_planes(self):
        # 5 vectors: the planes are padded to 64 bytes, so a view that assumed
        # back-to-back planes would read the padding.
        for precision, dtype in ((Precision.Float, np.float32), (Precision.Double, np.float64)):
            with self.subTest(precision=precision):
                array = QLOVector3dArray.initWithSize(5, precision)
                for i in range(5):
                    array.setVector((i + 0.5, -i, 100 + i), i)
                table = array.array()
                self.assertEqual((table.dtype, table.shape), (np.dtype(dtype), (5, 3)))
                np.testing.assert_array_equal(table[:, 2], 100 + np.arange(5))
                for axis, plane in enumerate((array.x, array.y, array.z)):
                    self.assertEqual((plane.dtype, plane.shape), (np.dtype(dtype), (5,)))
                    np.testing.assert_array_equal(plane, table[:, axis])
                table[3] = (9, 8, 7)
                array.y[4] = 1e3
                self.assertEqual(array.vectorAtIndex(3), (9.0, 8.0, 7.0))
                self.assertEqual(array.vectorAtIndex(4), (4.5, 1000.0, 104.0))
        empty = QLOVector3dArray.initWithSize(0, Precision.Float)
        self.assertEqual((empty.array().shape, empty.x.shape), ((0, 3), (0,)))

    def test_each_view_keeps_its_storage_after_the_wrapper_is_gone(self):
        values = np.arange(300, dtype=np.float64)
        rows = values.reshape(100, 3)
        cases = [
            (lambda: QLONumberArray.fromNumpy(values).array(), values),
            (lambda: QLOVector3dArray.fromNumpy(rows).array(), rows),
            (lambda: QLOVector3dArray.fromNumpy(rows).y, values[1::3]),
        ]
        for make_view, expected in cases:
            view = make_view()
            gc.collect()
            for size in (300 * 8, 3 * 128 * 8) * 50:  # freed storage would be reused
                QLONumberArray.initWithCount(size, NumberType.Bool).array()[:] = 0xAB
            np.testing.assert_array_equal(view, expected)

    def test_numpy_input_picks_the_precision(self):
        rows = np.array([[1, 2, 3], [4.5, -5, 6e-3]])
        cases = [
            (rows.astype(np.float32), Precision.Float),
            (rows, Precision.Double),
            (np.array([[1, 2, 3]], dtype=np.int64), Precision.Double),
        ]
        for values, precision in cases:
            with self.subTest(dtype=values.dtype):
                array = QLOVector3dArray.fromNumpy(values)
                self.assertEqual(array.precision(), precision)
                np.testing.assert_array_equal(array.array(), values)

    def test_arguments_are_checked(self):
        x = QLONumberArray.fromNumpy(np.array([1.0, 2.0]))
        y = QLONumberArray.fromNumpy(np.array([3, 4], dtype=np.int32))
        array = QLOVector3dArray.initWithX(x, y, x, 1)  # precision codes as ints
        np.testing.assert_array_equal(array.array(), np.array([[1, 3, 1], [2, 4, 2]], np.float32))
        wide = QLOVector3dArray.initWithVector3dArray(array, 2)
        self.assertEqual(wide.array().dtype, np.float64)
        with self.assertRaises(ValueError):
            QLOVector3dArray.initWithX(x, y, QLONumberArray.fromNumpy([1.0]), Precision.Float)
        with self.assertRaises(ValueError):
            QLOVector3dArray.initWithSize(2, 3)
        with self.assertRaises(IndexError):
            array.setVector((0, 0, 0), -1)


class FileTest(ScratchFolderTestCase):
    def test_a_path_object_is_accepted_and_failed_writes_raise(self):
        path = pathlib.Path(self.folder) / "written.txt"
        numbers = QLONumberArray.fromNumpy(np.array([-(2**63), 2**53 + 1], dtype=np.int64))
        numbers.writeToFile(path, atomically=False)
        back = QLONumberArray.initWithContentsOfURL(path, NumberType.Int64)
        np.testing.assert_array_equal(back.array(), numbers.array())
        vectors = QLOVector3dArray.fromNumpy(np.array([[0.1, -2, 3e30]], dtype=np.float32))
        for write in (numbers.writeToFile, vectors.writeToFile):
            with self.assertRaises(OSError) as caught:
                write(self.missing_folder_path("x.txt"))
            self.assertIn("x.txt", str(caught.exception))

    def test_read_errors_carry_file_and_line(self):
        cases = [
            ("bad.txt", "1.5\n\n2\nzwei\n3\n", QLONumberArray, NumberType.Float, 4),
            ("bad.xyz", "1 2 3\n4 5\n", QLOVector3dArray, Precision.Double, 2),
        ]
        for name, text, kind, type_code, line in cases:
            with self.subTest(name=name):
                path = self.write_text(name, text)
                with self.assertRaises(plexview.ReadError) as caught:
                    kind.initWithContentsOfURL(path, type_code)
                error = caught.exception
                self.assertIsInstance(error, ValueError)
                self.assertEqual((error.file, error.line), (path, line))


class RandomGeneratorTest(unittest.TestCase):
    def test_the_shared_source_is_seeded_through_any_handle(self):
        def draws(seed):
            plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(seed)
            source = plexview.QLORandomGenerator.sharedRandomGenerator()
            return source.newRandomFloatArrayWithCount(50).array()

        first, again, other = draws(99), draws(99), draws(100)
        self.assertEqual(first.dtype, np.float32)
        np.testing.assert_array_equal(first, again)
        self.assertFalse(np.array_equal(first, other))


if __name__ == "__main__":
    unittest.main()
