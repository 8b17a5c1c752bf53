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
        np.testing.assert_array_equal(got, (values - 3) / np.float32(8))
        settings = colour.TransformSettings(minColorScalarValue=5)
        self.assertEqual(colour.resolveLimits(values, settings), (5.0, 11.0))
        got = colour.newVectorFromVectorWithTransformFunction(values, "Linear", settings)
        np.testing.assert_array_equal(got, (values - 5) / np.float32(6))
        y = np.array([0.0, 0.25, 1.0], dtype=np.float32)
        inverse = colour.newVectorFromVectorWithInverseTransformFunction
        np.testing.assert_allclose(inverse(y, "Logarithmic"), np.exp(y), rtol=1e-6)
        np.testing.assert_allclose(inverse(y, "Power", 4.0), y**0.25, rtol=1e-6)
        with self.assertRaises(ValueError):
            colour.newVectorFromVectorWithTransformFunction(np.zeros((2, 2)), "Linear")


class MapTest(unittest.TestCase):
    def test_maps_by_name_with_their_settings(self):
        jet = colour.colorsFromNormalizedVector(np.array([0, 1, 2.5], dtype=np.float32), "Jet")
        np.testing.assert_allclose(jet, [(0.08, 0.08, 0.72), (0.72, 0.08, 0.08), (0.4,) * 3],
                                   atol=1e-6)
        low, high = np.array([0.2, 0.4, 0.6]), np.array([1, 0, 0.5])
        settings = colour.ColorMapSettings(colorCustom0=tuple(low), colorCustom1=tuple(high))
        t = np.array([-1, 0, 0.3, 1, 2], dtype=np.float32)
        for invert, c in ((False, t), (True, 1 - t)):
            settings.invertColorMap = invert
            c = np.clip(c, 0, 1)[:, None]
            got = colour.colorsFromNormalizedVector(t, "Custom 2", settings)
            np.testing.assert_allclose(got, high * c + low * (1 - c), atol=1e-6)
        for name in ("Cubehelix", "No such map"):
            got = colour.colorsFromNormalizedVector([0.0, 0.5, 1.0], name)
            np.testing.assert_array_equal(got, np.zeros((3, 3)))

    def test_cubehelix_blend_takes_its_ends_in_order(self):
        start, end = colour.colorFromHexadecimalValue("#1F77B4"), (0.9, 0.8, 0.1)
        blend = colour.VXLCubehelixGradient
        self.assertEqual(len(blend(0.5, start, end)), 3)
        np.testing.assert_allclose(blend(0.0, start, end), blend(0.0, start, (0, 0, 0)))
        np.testing.assert_allclose(blend(1.0, start, end), blend(1.0, (1, 1, 1), end))
        self.assertFalse(np.allclose(blend(0.0, start, end), blend(0.0, end, start)))


class TextTest(unittest.TestCase):
    def test_hex_round_trip(self):
        for text in ("#1f77b4", "#000000", "#ffffff", "#0a0b0c"):
            with self.subTest(text):
                rgba = colour.colorFromHexadecimalValue(text.upper())
                expected = [int(text[k : k + 2], 16) / 255 for k in (1, 3, 5)] + [1.0]
                np.testing.assert_allclose(rgba, expected, rtol=1e-7)
                self.assertEqual(colour.hexadecimalValue(rgba), text)
        self.assertEqual(colour.colorFromHexadecimalValue("not a colour"), (0.0, 0.0, 0.0, 1.0))

    def test_legend_scale(self):
        values = np.array([2, 30, 17, 9000, 40], dtype=np.float32)
        settings = colour.TransformSettings(powerCoefficient=3)
        labels, colours = colour.legendScale(values, "Power", "Hot", settings)
        self.assertEqual((len(labels), colours.shape), (22, (22, 4)))
        self.assertEqual((labels[0], labels[1], labels[21]), ("2", "", "9000"))
        # A cube root spreads the labels: the middle one is far above the mean.
        self.assertEqual(labels[9], "%.0f" % ((9 / 21) ** (1 / 3) * 8998 + 2))
        np.testing.assert_allclose(colours[:, 0], 1 - np.arange(22) / 21, atol=1e-6)
        np.testing.assert_allclose(colours[:, 3], 0.9, atol=1e-7)


if __name__ == "__main__":
    unittest.main()
