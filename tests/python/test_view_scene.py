"""The view's drawing side from Python: options, colours, camera and the
navigation a window's controls drive."""
import unittest

import numpy as np

import plexview
from plexview import VXLNetworkView


class ViewSceneTest(unittest.TestCase):
    def test_options_read_back_what_was_set(self):
        view = VXLNetworkView()
        self.assertEqual((view.lineWidth(), view.scale()), (1.5, 1.0))
        for name, value in [("ShowEdges", False), ("SimpleShapes", True), ("LimitNodes", True),
                            ("BlackBackground", True), ("LineWidth", 3.0), ("Scale", 0.5)]:
            getattr(view, "set" + name)(value)
            self.assertEqual(getattr(view, name[0].lower() + name[1:])(), value, name)

    def test_camera_and_rotations(self):
        view = VXLNetworkView()
        camera = view.camera()
        camera.position = (0.0, 0.0, 40.0)
        camera.aperture = 30.0
        view.setCamera(camera)
        self.assertEqual(view.camera().position, [0.0, 0.0, 40.0])
        view.setWorldRotation((10.0, 0.0, 1.0, 0.0))
        self.assertEqual(view.worldRotation(), (10.0, 0.0, 1.0, 0.0))
        view.viewFromTop()
        self.assertEqual(view.worldRotation(), (90.0, 0.75, 90.0, 0.0))
        self.assertAlmostEqual(view.camera().position[2], 40.0, places=5)
        for delta in (-1e6, 1e6):
            view.scrollWheel(delta, shift=True)
            self.assertTrue(0.1 <= view.camera().aperture <= 179.9)
        self.assertEqual(view.updateScale(1.0), "10.0x")
        self.assertEqual(view.scale(), 10.0)

    def test_colours_are_shared_arrays(self):
        view = VXLNetworkView()
        plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(2)
        view.setNetwork(plexview.QLONetwork.initRandomNetworkWithNumberOfVertices(10, 2.0))
        colours = plexview.QLOVector3dArray.fromNumpy(np.full((10, 3), 0.5, dtype=np.float32))
        view.setColors(colours)
        np.testing.assert_array_equal(view.colors().array(), 0.5)


if __name__ == "__main__":
    unittest.main()
