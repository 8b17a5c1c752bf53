"""The view's drawing side from Python: the camera as a value, rotations as
tuples, the wheel and scale a window's controls drive, and shared colours."""
import unittest

import numpy as np

import plexview
from plexview import VXLNetworkView
from support import random_network


class ViewSceneTest(unittest.TestCase):
    def test_camera_and_rotations(self):
        view = VXLNetworkView()
        camera = view.camera()
        camera.position = (0.0, 0.0, 40.0)
        view.setCamera(camera)
        self.assertEqual(view.camera().position, [0.0, 0.0, 40.0])
        view.setWorldRotation((10.0, 0.0, 1.0, 0.0))
        self.assertEqual(view.worldRotation(), (10.0, 0.0, 1.0, 0.0))

    def test_colours_are_shared_arrays(self):
        view = VXLNetworkView()
        view.setNetwork(random_network(10, 2.0, seed=2))
        colours = plexview.QLOVector3dArray.fromNumpy(np.full((10, 3), 0.5, dtype=np.float32))
        view.setColors(colours)
        np.testing.assert_array_equal(view.colors().array(), 0.5)


if __name__ == "__main__":
    unittest.main()
