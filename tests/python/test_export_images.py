"""The view's image and vector export from Python: the report a script gets,
the picture's size as the file records it, the legend exports carry, and
the errors a script sees."""
import os
import re
import shutil
import struct
import subprocess
import unittest

import plexview
from plexview import VXLNetworkView
from support import ScratchFolderTestCase, controller_showing, random_network

def setUpModule():
    """Drawing needs an X display: without one, start a private Xvfb. The
    drawing connection stays open until the process ends (the application
    object is never destroyed), so the server is stopped only after that."""
    if os.environ.get("DISPLAY") or os.environ.get("QT_QPA_PLATFORM"):
        return
    if not shutil.which("Xvfb"):
        raise unittest.SkipTest("no X display and no Xvfb to draw with")
    read, write = os.pipe()
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "640x480x24",
                             "-nolisten", "tcp"], pass_fds=(write,), stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as answer:
        os.environ["DISPLAY"] = ":" + answer.readline().strip()
    subprocess.Popen(["sh", "-c", f"while kill -0 {os.getpid()} 2>/dev/null; do sleep 0.2; done;"
                      f" kill {xvfb.pid}"], start_new_session=True)


class ExportImagesTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.view = VXLNetworkView()
        self.view.setNetwork(random_network(30, 4.0, seed=7))

    def test_the_renderer_drawing_a_picture_is_the_one_asked_for(self):
        self.view.setPreferredRenderPath("shader")
        self.view.exportImageToFile(self.path("shader.png"), 80, 60)
        self.assertEqual(self.view.renderPath(), "shader")
        with self.assertRaisesRegex(ValueError, "vulkan"):
            self.view.setPreferredRenderPath("vulkan")

    def test_the_report_of_a_raster_and_a_vector_export(self):
        # Every extension's format is checked by the C++ export tests.
        for name, written, kind in [("f.pdf", "f.pdf", "PDF"), ("j.dat", "j.dat.png", "PNG")]:
            with self.subTest(name):
                report = self.view.exportImageToFile(self.path(name), 160, 120)
                self.assertEqual(str(report["path"]), self.path(written))
                self.assertEqual(report["format"], kind)
                self.assertEqual((report["width"], report["height"]), (160, 120))
        with open(self.path("j.dat.png"), "rb") as png:
            self.assertEqual(struct.unpack(">II", png.read(24)[16:24]), (160, 120))

    def test_errors(self):
        with self.assertRaisesRegex(OSError, "not been drawn"):
            self.view.exportImageToFile(self.path("x.png"))
        for name in ("x.png", "x.pdf"):
            with self.assertRaisesRegex(OSError, re.escape(self.missing_folder_path(name))):
                self.view.exportImageToFile(self.missing_folder_path(name), 10, 10)
        self.assertEqual(os.listdir(self.folder), [])


if __name__ == "__main__":
    unittest.main()


class LegendExportTest(ScratchFolderTestCase):
    def test_exports_carry_the_readable_legend(self):
        controller = controller_showing(random_network(30, 4.0, seed=7))
        controller.selectColorProperty("Node Degree")
        view = controller.networkView()
        view.exportImageToFile(self.path("a.svg"), 200, 200)
        self.assertIn("Node Degree", open(self.path("a.svg")).read())
        view.setExportLegendStyle(plexview.LegendStyle.Rows)
        view.exportImageToFile(self.path("b.svg"), 200, 200)
        self.assertNotIn("Node Degree", open(self.path("b.svg")).read())

    def test_readable_ticks(self):
        ticks = plexview.colour.readableTicks(1, 100, logarithmic=True)
        self.assertEqual([t for _, t in ticks if t], ["1", "10", "100"])
