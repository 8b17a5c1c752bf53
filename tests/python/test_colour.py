"""plexview.colour from Python: transforms, maps, the cubehelix blend, hex
text and the legend scale, each checked against values worked out here in
plain Python or NumPy from the definitions."""

import math
import unittest

import numpy as np

import plexview

colour = plexview.colour
f32 = np.float32


def jet(t):
    """The Jet ramp evaluated step by step in float32."""
    h = f32((1.0 - float(f32(t))) * (2.0 / 3.0))
    h = f32(1.0) if not h <= 1.0 else h
    x = f32(6.0) * h
    if x <= -1.0:
        return (0.4, 0.4, 0.4)
    i = int(x)
    v, p = f32(0.7199999690055847), f32(0.08000004291534424)
    frac = (x - f32(i)) * (v - p)
    q, u = v - frac, frac + p
    return [(v, u, p), (q, v, p), (p, v, u), (p, q, v), (u, p, v), (v, p, q), (v, u, p)][i]


def cubehelix(t, start, end):
    """The cubehelix blend in double precision."""

    def hsl(r, g, b):
        most, least = max(r, g, b), min(r, g, b)
        total = most + least
        if most == least:
            return 0.0, 0.0, total / 2
        d = most - least
        s = d / (2 - total) if total / 2 > 0.5 else d / total
        if most == r:
            hue = (g - b) / d + (6 if g < b else 0)
        elif most == g:
            hue = (b - r) / d + 2
        else:
            hue = (r - g) / d + 4
        return hue / 6, s, total / 2

    h0, s0, l0 = hsl(*start)
    h1, s1, l1 = hsl(*end)
    h = math.radians(h0 + 120) + math.radians(h1 - h0) * t
    light = (l0 + (l1 - l0) * t) ** 1.2
    amplitude = (1 - light) * (s0 + (s1 - s0) * t) * light
    c, s = math.cos(h), math.sin(h)
    return (light + amplitude * (1.78277 * s - 0.14861 * c),
            light + amplitude * (-0.29227 * c - 0.90649 * s),
            light + amplitude * 1.97294 * c)


class TransformTest(unittest.TestCase):
    def test_linear_normalises_by_the_data_or_the_given_limits(self):
        values = np.array([3, 7, 5, 11], dtype=np.float32)
        got = colour.newVectorFromVectorWithTransformFunction(values, "Linear")
        self.assertEqual(got.dtype, np.float32)
        np.testing.assert_array_equal(got, (values - 3) / f32(8))
        settings = colour.TransformSettings(minColorScalarValue=5)
        self.assertEqual(colour.resolveLimits(values, settings), (5.0, 11.0))
        got = colour.newVectorFromVectorWithTransformFunction(values, "Linear", settings)
        np.testing.assert_array_equal(got, (values - 5) / f32(6))

    def test_exponential_curves(self):
        t = np.linspace(0, 1, 11)
        curves = {
            "Exponential": 1 + (0.003999956490252552 - f32(0.004).item() ** t) * 1.004016064448547,
            "Exponential1/10": 1 + (0.00039999994970507186 - f32(0.0004).item() ** t)
            * 1.0004001600539127,
        }
        for name, expected in curves.items():
            with self.subTest(name):
                got = colour.newVectorFromVectorWithTransformFunction(t * 10, name)
                np.testing.assert_allclose(got, expected, atol=3e-7)

    def test_inverses(self):
        y = np.array([0.0, 0.25, 1.0], dtype=np.float32)
        np.testing.assert_allclose(
            colour.newVectorFromVectorWithInverseTransformFunction(y, "Logarithmic"),
            np.exp(y), rtol=1e-6)
        np.testing.assert_allclose(
            colour.newVectorFromVectorWithInverseTransformFunction(y, "Power", 4.0),
            y ** 0.25, rtol=1e-6)
        got = colour.newVectorFromVectorWithInverseTransformFunction(y, "Exponential")
        expected = [0.0] + [math.log(1 - v + 0.0040160205733087906) * -0.1811114890566871
                            - 0.004008021588291635 for v in y[1:]]
        np.testing.assert_allclose(got, expected, atol=3e-7)

    def test_bad_shapes_are_refused(self):
        with self.assertRaises(ValueError):
            colour.newVectorFromVectorWithTransformFunction(np.zeros((2, 2)), "Linear")


class MapTest(unittest.TestCase):
    def test_jet_follows_its_ramp(self):
        t = np.array([0.0, 0.1, 0.33, 0.5, 0.61, 0.9, 1.0, 1.02, 2.5, np.nan], dtype=np.float32)
        got = colour.colorsFromNormalizedVector(t, "Jet")
        self.assertEqual(got.shape, (len(t), 3))
        np.testing.assert_allclose(got, [jet(v) for v in t], atol=1e-6)

    def test_custom_two_blends_the_given_colours(self):
        settings = colour.ColorMapSettings(colorCustom0=(0.2, 0.4, 0.6), colorCustom1=(1, 0, 0.5))
        t = np.array([-1, 0, 0.3, 1, 2], dtype=np.float32)
        c = np.clip(t, 0, 1)[:, None]
        expected = np.array([1, 0, 0.5]) * c + np.array([0.2, 0.4, 0.6]) * (1 - c)
        got = colour.colorsFromNormalizedVector(t, "Custom 2", settings)
        np.testing.assert_allclose(got, expected, atol=1e-6)
        settings.invertColorMap = True
        c = np.clip(1 - t, 0, 1)[:, None]
        expected = np.array([1, 0, 0.5]) * c + np.array([0.2, 0.4, 0.6]) * (1 - c)
        got = colour.colorsFromNormalizedVector(t, "Custom 2", settings)
        np.testing.assert_allclose(got, expected, atol=1e-6)

    def test_cubehelix_blend(self):
        start, end = colour.colorFromHexadecimalValue("#1F77B4"), (0.9, 0.8, 0.1)
        for t in (0.0, 0.35, 1.0, 1.4):
            with self.subTest(t=t):
                got = colour.VXLCubehelixGradient(t, start, end)
                np.testing.assert_allclose(got, cubehelix(t, start[:3], end), atol=2e-6)

    def test_cubehelix_and_unknown_maps_are_black(self):
        for name in ("Cubehelix", "No such map"):
            got = colour.colorsFromNormalizedVector([0.0, 0.5, 1.0], name)
            np.testing.assert_array_equal(got, np.zeros((3, 3)))


class TextTest(unittest.TestCase):
    def test_hex_round_trip(self):
        for text in ("#1f77b4", "#ff7f0e", "#000000", "#ffffff", "#0a0b0c"):
            with self.subTest(text):
                rgba = colour.colorFromHexadecimalValue(text.upper())
                expected = [int(text[k:k + 2], 16) / 255 for k in (1, 3, 5)] + [1.0]
                np.testing.assert_allclose(rgba, expected, rtol=1e-7)
                self.assertEqual(colour.hexadecimalValue(rgba), text)
        self.assertEqual(colour.colorFromHexadecimalValue("not a colour"), (0.0, 0.0, 0.0, 1.0))

    def test_legend_scale_labels(self):
        values = np.array([2, 30, 17, 9000, 40], dtype=np.float32)
        labels, colours = colour.legendScale(values, "Power", "Hot",
                                             colour.TransformSettings(powerCoefficient=3))
        self.assertEqual(len(labels), 22)
        self.assertEqual(colours.shape, (22, 4))
        for i, label in enumerate(labels):
            if i % 3:
                self.assertEqual(label, "")
                continue
            v = (i / 21) ** (1 / 3) * (9000 - 2) + 2
            self.assertEqual(label, ("%.0f" if 10 < abs(v) < 9999 else "%.2g") % v)
        np.testing.assert_allclose(colours[:, 0], 1 - np.arange(22) / 21, atol=1e-6)
        np.testing.assert_allclose(colours[:, 3], 0.9, atol=1e-7)


if __name__ == "__main__":
    unittest.main()
