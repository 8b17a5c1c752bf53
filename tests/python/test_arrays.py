"""QLONumberArray, QLOVector3dArray and the random source from Python: NumPy
views that share memory, conversions from NumPy, exact text round trips and
read errors."""

import gc
import os
import unittest

import numpy as np

import plexview
from plexview import NumberType, Precision, QLONumberArray, QLOVector3dArray
from support import ScratchFolderTestCase, assert_same_bits

NUMPY_DTYPES = {
    NumberType.Bool: np.uint8,
    NumberType.Int32: np.int32,
    NumberType.Int64: np.int64,
    NumberType.Float: np.float32,
    NumberType.Double: np.float64,
}


def churn_memory(count, itemsize):
    """Allocates and frees C++ arrays of the same size, so freed storage would
    be handed out again and overwritten."""
    for _ in range(50):
        junk = QLONumberArray.initWithCount(count * itemsize, NumberType.Bool)
        junk.array()[:] = 0xAB


class NumberArrayViewTest(unittest.TestCase):
    def test_view_has_element_dtype_and_shape(self):
        for number_type, dtype in NUMPY_DTYPES.items():
            with self.subTest(number_type=number_type):
                array = QLONumberArray.initWithCount(7, number_type)
                view = array.array()
                self.assertEqual(view.dtype, np.dtype(dtype))
                self.assertEqual(view.shape, (7,))
                self.assertTrue(view.flags.writeable)
                self.assertEqual(len(array), 7)
                self.assertEqual(array.numberArrayType(), number_type)

    def test_view_and_array_share_memory(self):
        for number_type in (NumberType.Int32, NumberType.Int64, NumberType.Float, NumberType.Double):
            with self.subTest(number_type=number_type):
                array = QLONumberArray.initWithCount(5, number_type)
                view = array.array()
                view[:] = [3, -1, 0, 12, 7]
                self.assertEqual([array.doubleValueAtIndex(i) for i in range(5)], [3, -1, 0, 12, 7])
                array.setDoubleValue(-8.0, 3)
                self.assertEqual(view[3], -8)
                array.array()[0] = 9  # a second view sees the same memory
                self.assertEqual(view[0], 9)

    def test_bool_view_is_bytes_of_zero_and_one(self):
        mask = QLONumberArray.initWithBoolScalar(False, 6)
        view = mask.array()
        mask.setBoolValue(True, 2)
        np.testing.assert_array_equal(view, [0, 0, 1, 0, 0, 0])
        view[4] = 1
        self.assertTrue(mask.boolValueAtIndex(4))
        self.assertFalse(mask.boolValueAtIndex(5))
        np.testing.assert_array_equal(QLONumberArray.initWithBoolScalar(True, 3).array(), [1, 1, 1])

    def test_view_keeps_storage_after_wrapper_is_gone(self):
        values = np.arange(1000, dtype=np.float64) * 0.5
        array = QLONumberArray.fromNumpy(values)
        view = array.array()
        del array
        gc.collect()
        churn_memory(1000, 8)
        np.testing.assert_array_equal(view, values)
        view[10] = -1.0  # still writable, still ours
        self.assertEqual(view[10], -1.0)

    def test_float_values_are_a_copy(self):
        array = QLONumberArray.fromNumpy(np.array([1.5, 2**40, -3], dtype=np.int64))
        floats = array.getFloatValues()
        self.assertEqual(floats.dtype, np.float32)
        np.testing.assert_array_equal(floats, np.array([1, 2**40, -3], dtype=np.float32))
        floats[0] = 100
        self.assertEqual(array.doubleValueAtIndex(0), 1)

    def test_indices_are_checked(self):
        array = QLONumberArray.initWithCount(3, NumberType.Bool)
        for call in (
            lambda: array.boolValueAtIndex(3),
            lambda: array.boolValueAtIndex(-1),
            lambda: array.setBoolValue(True, 3),
            lambda: array.doubleValueAtIndex(100),
            lambda: array.setDoubleValue(1.0, -2),
        ):
            with self.assertRaises(IndexError):
                call()

    def test_type_codes_as_ints(self):
        self.assertEqual(QLONumberArray.initWithCount(2, 14).numberArrayType(), NumberType.Float)
        self.assertEqual(QLONumberArray.initWithCount(2, 15).array().dtype, np.float64)
        self.assertEqual(NumberType.Int64, 10)
        for bad in (0, 2, 9, 16, -1, 2**40):
            with self.subTest(code=bad), self.assertRaises(ValueError):
                QLONumberArray.initWithCount(2, bad)
        with self.assertRaises(TypeError):
            QLONumberArray.initWithCount(2, "Float")

    def test_copy_of_a_range_converts(self):
        source = QLONumberArray.fromNumpy(np.array([0.5, 1.5, -2.75, 4.0, 9.0]))
        part = QLONumberArray.initWithNumberArray(source, 1, 3, NumberType.Int32)
        self.assertEqual(part.numberArrayType(), NumberType.Int32)
        np.testing.assert_array_equal(part.array(), [1, -2, 4])
        source.array()[2] = 100.0
        self.assertEqual(part.array()[1], -2)  # an independent copy
        with self.assertRaises(ValueError):
            QLONumberArray.initWithNumberArray(source, 3, 3, NumberType.Float)

class NumberArrayFromNumpyTest(unittest.TestCase):
    def test_dtype_decides_the_number_type(self):
        cases = [
            (np.float32, NumberType.Float),
            (np.float64, NumberType.Double),
            (np.bool_, NumberType.Bool),
            (np.int32, NumberType.Int32),
            (np.int64, NumberType.Int64),
            (np.int8, NumberType.Int64),
            (np.int16, NumberType.Int64),
            (np.uint8, NumberType.Int64),
            (np.uint16, NumberType.Int64),
            (np.uint32, NumberType.Int64),
            (np.uint64, NumberType.Int64),
        ]
        for dtype, number_type in cases:
            with self.subTest(dtype=dtype):
                values = np.array([1, 0, 1, 1], dtype=dtype)
                array = QLONumberArray.fromNumpy(values)
                self.assertEqual(array.numberArrayType(), number_type)
                np.testing.assert_array_equal(array.array(), values)

    def test_integer_extremes_survive(self):
        for dtype in (np.int8, np.uint16, np.uint32, np.int32, np.int64):
            info = np.iinfo(dtype)
            with self.subTest(dtype=dtype):
                values = np.array([info.min, info.max, 0], dtype=dtype)
                np.testing.assert_array_equal(QLONumberArray.fromNumpy(values).array(), values)
        top = np.array([np.iinfo(np.int64).max], dtype=np.uint64)
        self.assertEqual(QLONumberArray.fromNumpy(top).array()[0], np.iinfo(np.int64).max)
        with self.assertRaises(OverflowError):
            QLONumberArray.fromNumpy(top + np.uint64(1))

    def test_result_is_a_copy_of_strided_input(self):
        base = np.arange(10, dtype=np.float32)
        array = QLONumberArray.fromNumpy(base[::3])
        np.testing.assert_array_equal(array.array(), [0, 3, 6, 9])
        base[:] = -1
        np.testing.assert_array_equal(array.array(), [0, 3, 6, 9])

    def test_sequences_are_accepted(self):
        self.assertEqual(QLONumberArray.fromNumpy([1.5, 2]).numberArrayType(), NumberType.Double)
        self.assertEqual(QLONumberArray.fromNumpy([True, False]).numberArrayType(), NumberType.Bool)
        self.assertEqual(QLONumberArray.fromNumpy(np.array([], dtype=np.float32)).count(), 0)

    def test_unsuitable_input_is_rejected(self):
        with self.assertRaises(ValueError):
            QLONumberArray.fromNumpy(np.zeros((2, 2)))
        with self.assertRaises(ValueError):
            QLONumberArray.fromNumpy(np.float32(3))
        for values in (np.array([1 + 2j]), np.array(["a", "b"]), np.array([object()])):
            with self.subTest(dtype=values.dtype), self.assertRaises(TypeError):
                QLONumberArray.fromNumpy(values)


class Vector3dArrayViewTest(unittest.TestCase):
    # 5 vectors: the planes are padded to 64 bytes, so a view that assumed
    # back-to-back planes would read the padding.
    COUNT = 5

    def filled(self, precision):
        array = QLOVector3dArray.initWithSize(self.COUNT, precision)
        for i in range(self.COUNT):
            array.setVector((i + 0.5, -i, 100 + i), i)
        return array

    def test_plane_views_share_memory(self):
        for precision, dtype in ((Precision.Float, np.float32), (Precision.Double, np.float64)):
            with self.subTest(precision=precision):
                array = self.filled(precision)
                x, y, z = array.x, array.y, array.z
                for plane in (x, y, z):
                    self.assertEqual(plane.dtype, dtype)
                    self.assertEqual(plane.shape, (self.COUNT,))
                np.testing.assert_array_equal(x, np.arange(self.COUNT) + 0.5)
                np.testing.assert_array_equal(y, -np.arange(self.COUNT))
                np.testing.assert_array_equal(z, 100 + np.arange(self.COUNT))
                z[2] = -7.25
                y[4] = 1e3
                self.assertEqual(array.vectorAtIndex(2), (2.5, -2.0, -7.25))
                self.assertEqual(array.vectorAtIndex(4), (4.5, 1000.0, 104.0))

    def test_table_view_spans_the_planes(self):
        for precision, itemsize in ((Precision.Float, 4), (Precision.Double, 8)):
            with self.subTest(precision=precision):
                array = self.filled(precision)
                table = array.array()
                self.assertEqual(table.shape, (self.COUNT, 3))
                self.assertEqual(table.strides[0], itemsize)
                self.assertGreaterEqual(table.strides[1], self.COUNT * itemsize)
                for i in range(self.COUNT):
                    self.assertEqual(tuple(table[i]), array.vectorAtIndex(i))
                table[3] = (9, 8, 7)
                self.assertEqual(array.vectorAtIndex(3), (9.0, 8.0, 7.0))
                self.assertEqual(array.z[3], 7)
                # Writes through a plane view show in the table view.
                array.y[0] = 42
                self.assertEqual(table[0, 1], 42)

    def test_views_keep_storage_after_wrapper_is_gone(self):
        array = QLOVector3dArray.fromNumpy(np.arange(300, dtype=np.float64).reshape(100, 3))
        table, y = array.array(), array.y
        del array
        gc.collect()
        churn_memory(3 * 128, 8)
        np.testing.assert_array_equal(table, np.arange(300).reshape(100, 3))
        np.testing.assert_array_equal(y, np.arange(1, 300, 3))

    def test_empty_array_has_empty_views(self):
        array = QLOVector3dArray.initWithSize(0, Precision.Float)
        self.assertEqual(array.array().shape, (0, 3))
        self.assertEqual(array.x.shape, (0,))
        self.assertEqual(len(array), 0)

    def test_from_numpy_picks_precision_and_copies(self):
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
        source = rows.copy()
        array = QLOVector3dArray.fromNumpy(source.T.copy().T)  # Fortran order input
        source[:] = 0
        np.testing.assert_array_equal(array.array(), rows)

    def test_from_numpy_rejects_other_shapes(self):
        for shape in ((3,), (4, 2), (2, 3, 1), (3, 4)):
            with self.subTest(shape=shape), self.assertRaises(ValueError):
                QLOVector3dArray.fromNumpy(np.zeros(shape))
        with self.assertRaises(TypeError):
            QLOVector3dArray.fromNumpy(np.array([["a", "b", "c"]]))

    def test_from_planes_and_conversion(self):
        x = QLONumberArray.fromNumpy(np.array([1.0, 2.0]))
        y = QLONumberArray.fromNumpy(np.array([3, 4], dtype=np.int32))
        z = QLONumberArray.fromNumpy(np.array([0.1, 0.2]))
        array = QLOVector3dArray.initWithX(x, y, z, Precision.Float)
        np.testing.assert_array_equal(
            array.array(), np.array([[1, 3, 0.1], [2, 4, 0.2]], dtype=np.float32)
        )
        short = QLONumberArray.fromNumpy(np.array([1.0]))
        with self.assertRaises(ValueError):
            QLOVector3dArray.initWithX(x, y, short, Precision.Float)

        wide = QLOVector3dArray.initWithVector3dArray(array, Precision.Double)
        self.assertEqual(wide.precision(), Precision.Double)
        np.testing.assert_array_equal(wide.array(), array.array().astype(np.float64))
        wide.x[0] = 50
        self.assertEqual(array.x[0], 1)  # independent copy
        with self.assertRaises(ValueError):
            QLOVector3dArray.initWithSize(2, 3)
        with self.assertRaises(IndexError):
            array.vectorAtIndex(2)
        with self.assertRaises(IndexError):
            array.setVector((0, 0, 0), -1)


class TextRoundTripTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.rng = np.random.default_rng(20240611)

    def test_double_values_read_back_bit_exact(self):
        doubles = self.rng.integers(0, 2**64, size=3000, dtype=np.uint64).view(np.float64)
        info = np.finfo(np.float64)
        doubles = np.concatenate([doubles, [info.max, info.tiny, 5e-324, -0.0, np.inf]])
        path = self.path("doubles.txt")
        QLONumberArray.fromNumpy(doubles).writeToFile(path, atomically=False)
        assert_same_bits(
            self, doubles, QLONumberArray.initWithContentsOfURL(path, NumberType.Double).array()
        )

    def test_int64_values_read_back_exactly(self):
        # Integers beyond 2^53 have no exact double: they must not pass through one.
        limits = np.iinfo(np.int64)
        integers = np.array([limits.min, limits.max, 0, -1, 2**53 + 1, -(2**62) - 3], dtype=np.int64)
        path = self.path("integers.txt")
        QLONumberArray.fromNumpy(integers).writeToFile(path)
        np.testing.assert_array_equal(
            QLONumberArray.initWithContentsOfURL(path, NumberType.Int64).array(), integers
        )

    def test_path_like_objects_are_accepted(self):
        import pathlib

        path = pathlib.Path(self.folder) / "mask.txt"
        QLONumberArray.fromNumpy(np.array([True, False, True])).writeToFile(path)
        back = QLONumberArray.initWithContentsOfURL(path, NumberType.Bool)
        np.testing.assert_array_equal(back.array(), [1, 0, 1])

    def test_failed_writes_raise_os_error_and_keep_old_file(self):
        target = self.missing_folder_path("x.txt")
        array = QLONumberArray.floatArrayWithScalar(1.0, 3)
        for atomically in (True, False):
            with self.subTest(atomically=atomically):
                with self.assertRaises(OSError) as caught:
                    array.writeToFile(target, atomically=atomically)
                self.assertIn("x.txt", str(caught.exception))
                with self.assertRaises(OSError):
                    QLOVector3dArray.initWithSize(2, Precision.Float).writeToFile(target, atomically)
        # A directory in the way of the target.
        os.mkdir(self.path("taken"))
        with self.assertRaises(OSError):
            array.writeToFile(self.path("taken"))


class ReadErrorTest(ScratchFolderTestCase):
    def test_bad_number_names_its_line(self):
        path = self.write_text("bad.txt", "1.5\n\n2\nzwei\n3\n")
        with self.assertRaises(plexview.ReadError) as caught:
            QLONumberArray.initWithContentsOfURL(path, NumberType.Float)
        error = caught.exception
        self.assertIsInstance(error, ValueError)
        self.assertEqual(error.line, 4)
        self.assertEqual(error.file, path)
        self.assertIn("line 4", str(error))
        self.assertIn("zwei", str(error))
        self.assertTrue(str(error).startswith(path))

    def test_bad_vector_line_names_its_line(self):
        path = self.write_text("bad.xyz", "1 2 3\n4 5\n")
        with self.assertRaises(plexview.ReadError) as caught:
            QLOVector3dArray.initWithContentsOfURL(path, Precision.Double)
        self.assertEqual(caught.exception.line, 2)
        self.assertIn("line 2", str(caught.exception))

    def test_missing_file_is_a_read_error_without_line(self):
        path = self.path("absent.txt")
        with self.assertRaises(plexview.ReadError) as caught:
            QLONumberArray.initWithContentsOfURL(path, NumberType.Double)
        self.assertEqual(caught.exception.line, 0)
        self.assertIn("absent.txt", str(caught.exception))
        self.assertNotIn("line", str(caught.exception).replace(path, ""))

class RandomGeneratorTest(unittest.TestCase):
    def test_seed_repeats_every_draw(self):
        def draws():
            source = plexview.QLORandomGenerator.sharedRandomGenerator()
            floats = source.newRandomFloatArrayWithCount(50).array().copy()
            return floats, [source.randomIntegerFrom(-3, 3) for _ in range(20)], source.randomDouble()

        plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(99)
        first = draws()
        plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(99)
        second = draws()
        np.testing.assert_array_equal(first[0], second[0])
        self.assertEqual(first[1:], second[1:])
        self.assertEqual(first[0].dtype, np.float32)
        self.assertGreater(len(set(first[0].tolist())), 40)


if __name__ == "__main__":
    unittest.main()
