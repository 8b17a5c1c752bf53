"""From a file or a networkx graph to a picture with the module's functions:
read, layout and render, each format by its extension. Needs a display
(CTest runs it under Xvfb)."""

import struct
import subprocess
import sys
import unittest

import networkx as nx
import numpy as np

import plexview
from support import ScratchFolderTestCase


class RenderTest(ScratchFolderTestCase):
    def test_read_layout_render_in_every_kind_of_format(self):
        shared = plexview.VXLController.init()
        plexview.from_networkx(nx.karate_club_graph()).writeToURL(self.path("karate.graphml"))
        network = plexview.read(self.path("karate.graphml"))
        positions = plexview.layout(network, steps=100, seed=3)
        signatures = {"png": b"\x89PNG", "jpg": b"\xff\xd8\xff", "pdf": b"%PDF", "svg": b"<?xml"}
        for extension, signature in signatures.items():
            with self.subTest(extension):
                written = plexview.render(network, self.path("k." + extension), size=(320, 240),
                                          positions=positions, color_by="club")
                self.assertEqual(written, self.path("k." + extension))
                with open(written, "rb") as picture:
                    head = picture.read(24)
                self.assertTrue(head.startswith(signature), head)
                if extension == "png":
                    self.assertEqual(struct.unpack(">II", head[16:24]), (320, 240))
        # The window's controller is still the shared one; the drawn
        # positions are kept in the network, as in a window.
        self.assertEqual(plexview.VXLController.sharedController().uuid(), shared.uuid())
        np.testing.assert_allclose(network.propertyForKey("Position").array(), positions)

    def test_colouring_by_values_and_by_an_unknown_property(self):
        network = plexview.from_networkx(nx.les_miserables_graph())
        degrees = network.calcDegrees().array()
        plexview.render(network, self.path("m.png"), size=(200, 150), steps=20, seed=1,
                        color_by=np.log1p(degrees))
        colours = network.propertyForKey("Color").array()  # the colours shown
        self.assertGreater(len(np.unique(colours, axis=0)), 3)
        with self.assertRaisesRegex(ValueError, "'clubs'"):
            plexview.render(network, self.path("x.png"), steps=0, color_by="clubs")
        with self.assertRaisesRegex(ValueError, "nothing"):
            plexview.render(network, self.path("x.png"), steps=0, size_by="nothing")

    def test_render_leaves_no_controller_behind(self):
        # A script drawing many networks must not keep each one alive.
        script = (
            "import networkx, plexview\n"
            "plexview.render(plexview.from_networkx(networkx.path_graph(3)), %r, steps=0)\n"
            "print(plexview.VXLController.sharedController())\n" % self.path("p.png")
        )
        run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stdout.strip()), (0, "None"), run.stderr)


if __name__ == "__main__":
    unittest.main()
