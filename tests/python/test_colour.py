"""plexview.colour from Python: names and settings as arguments, NumPy input and
output, hex text and the legend scale. The arithmetic itself is checked by the
C++ colour tests; these check what the binding passes through."""

import unittest

import numpy as np

import plexview

colour = plexview.colour


class TransformTest(unittest.TestCase):
    def test_functions_and_settings_reach_the_transform(self):
        values = np.array([3, 7, 5, 11], dtype=np.float32)
        got = colour.newVectorFromVectorWithTransformFunction(values, "Linear")
        self.assertEqual(got.dtype, np.float32)
        np.testing.assert_array_equal(got, [0, 0.5, 0.25, 1])
        settings = colour.TransformSettings(minColorScalarValue=5)
        got = colour.newVectorFromVectorWithTransformFunction(values, "Linear", settings)
        np.testing.assert_allclose(got, [-1 / 3, 1 / 3, 0, 1], rtol=1e-6)
        inverse = colour.newVectorFromVectorWithInverseTransformFunction
        np.testing.assert_allclose(inverse([0.25], "Power", 4.0), [0.25**0.25], rtol=1e-6)
        with self.assertRaises(ValueError):
            colour.newVectorFromVectorWithTransformFunction(np.zeros((2, 2)), "Linear")


class MapTest(unittest.TestCase):
    def test_maps_by_name_with_their_settings(self):
        low, high = (0.2, 0.4, 0.6), (1.0, 0.0, 0.5)
        settings = colour.ColorMapSettings(colorCustom0=low, colorCustom1=high)
        t = np.array([0, 1], dtype=np.float32)
        got = colour.colorsFromNormalizedVector(t, "Custom 2", settings)
        self.assertEqual(got.shape, (2, 3))
        np.testing.assert_allclose(got, [low, high], atol=1e-6)
        blend = colour.VXLCubehelixGradient(0.5, (0.1, 0.2, 0.3), (0.9, 0.8, 0.1))
        self.assertEqual(len(blend), 3)


class TextTest(unittest.TestCase):
    def test_hex_round_trip(self):
        rgba = colour.colorFromHexadecimalValue("#1F77B4")
        np.testing.assert_allclose(rgba, [0x1F / 255, 0x77 / 255, 0xB4 / 255, 1.0], rtol=1e-7)
        self.assertEqual(colour.hexadecimalValue(rgba), "#1f77b4")

    def test_legend_scale(self):
        values = np.array([2, 30, 17, 9000, 40], dtype=np.float32)
        settings = colour.TransformSettings(powerCoefficient=3)
        labels, colours = colour.legendScale(values, "Power", "Hot", settings)
        self.assertEqual((len(labels), colours.shape), (22, (22, 4)))
        self.assertEqual(labels[0], "2")


if __name__ == "__main__":
    unittest.main()
