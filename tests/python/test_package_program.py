"""The installed program: `cmake --install` of the build tree into a scratch
folder (prefix /usr) and what lands there (program, module, resources,
desktop files, icons, manual page), the installed program and module run
from another folder, and the Debian package CPack makes of it. Needs the
build tree (PLEXVIEW_BUILD) and, for --render, a display (CTest runs it
under Xvfb)."""

import glob
import os
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

from support import ScratchFolderTestCase

BUILD = os.environ.get("PLEXVIEW_BUILD", "")
VERSION = os.environ.get("PLEXVIEW_VERSION", "")
PYTHON_DIR = os.environ.get("PLEXVIEW_INSTALL_PYTHONDIR", "")
SOURCE = os.environ.get(
    "PLEXVIEW_SOURCE", os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
)
DATA = os.environ.get("PLEXVIEW_TEST_DATA", os.path.join(SOURCE, "tests", "data"))

MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)


def png_size(path):
    """Width and height from a PNG file's header."""
    with open(path, "rb") as png:
        header = png.read(24)
    if header[:8] != b"\x89PNG\r\n\x1a\n":
        raise AssertionError(path + " is not a PNG file")
    return struct.unpack(">II", header[16:24])


def desktop_entry(path):
    with open(path, encoding="utf-8") as desktop:
        return dict(line.rstrip("\n").split("=", 1) for line in desktop if "=" in line)


@unittest.skipUnless(BUILD and VERSION and PYTHON_DIR, "needs the build tree")
class InstalledProgram(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.mkdtemp(prefix="plexview-install-")
        cls.root = os.path.join(cls.scratch, "root")
        environment = dict(os.environ, DESTDIR=cls.root)
        subprocess.run(
            ["cmake", "--install", BUILD, "--prefix", "/usr"],
            check=True, capture_output=True, env=environment, timeout=60,
        )
        cls.usr = os.path.join(cls.root, "usr")
        cls.program = os.path.join(cls.usr, "bin", "plexview")
        cls.elsewhere = os.path.join(cls.scratch, "elsewhere")
        os.mkdir(cls.elsewhere)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.scratch, ignore_errors=True)

    def installed(self, *parts):
        return os.path.join(self.usr, *parts)

    def run_program(self, arguments, display=False, **environment):
        env = {k: v for k, v in os.environ.items() if not k.startswith("PLEXVIEW_")}
        if not display:
            env.pop("DISPLAY", None)
            env.pop("WAYLAND_DISPLAY", None)
        env.update(environment)
        return subprocess.run(
            [self.program] + arguments, capture_output=True, text=True,
            cwd=self.elsewhere, env=env, timeout=60,
        )

    def test_layout(self):
        self.assertTrue(os.access(self.program, os.X_OK))
        modules = glob.glob(self.installed(PYTHON_DIR, "plexview*.so"))
        self.assertEqual(len(modules), 1, self.installed(PYTHON_DIR))
        # The resource folder is resources/ without the desktop files, which
        # have places of their own.
        self.assertEqual(
            sorted(os.listdir(self.installed("share", "plexview"))),
            sorted(n for n in os.listdir(os.path.join(SOURCE, "resources"))
                   if not n.startswith("plexview") and n not in ("icons", "__pycache__")),
        )
        hicolor = self.installed("share", "icons", "hicolor")
        self.assertTrue(os.path.isfile(os.path.join(hicolor, "scalable", "apps", "plexview.svg")))
        for size in ICON_SIZES:
            png = os.path.join(hicolor, "%dx%d" % (size, size), "apps", "plexview.png")
            self.assertEqual(png_size(png), (size, size), png)

    def test_desktop_file_opens_the_file_types(self):
        desktop = self.installed("share", "applications", "plexview.desktop")
        if shutil.which("desktop-file-validate"):
            check = subprocess.run(["desktop-file-validate", desktop], capture_output=True, text=True)
            self.assertEqual(check.returncode, 0, check.stdout + check.stderr)
            self.assertNotIn("error", check.stdout)
        entry = desktop_entry(desktop)
        # The desktop file opens exactly the types the installed MIME file defines.
        tree = ElementTree.parse(self.installed("share", "mime", "packages", "plexview.xml"))
        types = {t.get("type") for t in tree.getroot().iter(MIME + "mime-type")}
        self.assertIn("application/graphml+xml", types)
        self.assertEqual(set(filter(None, entry["MimeType"].split(";"))), types)

    def test_answers_without_display(self):
        version = self.run_program(["--version"])
        self.assertEqual((version.returncode, version.stderr), (0, ""))
        self.assertEqual(version.stdout.splitlines()[0], "plexview " + VERSION)

        usage = self.run_program(["--help"])
        self.assertEqual((usage.returncode, usage.stderr), (0, ""))
        # The manual page's OPTIONS section has an entry for every option
        # the help names, and for no other.
        with open(self.installed("share", "man", "man1", "plexview.1"), encoding="utf-8") as man:
            manual = man.read().replace("\\-", "-")
        section = manual.split(".SH OPTIONS\n", 1)[1].split("\n.SH ", 1)[0]
        entries = " ".join(re.findall(r"^\.TP\n(.*)$", section, re.MULTILINE))
        option = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")
        options = set(option.findall(usage.stdout))
        self.assertGreaterEqual(len(options), 11, usage.stdout)
        self.assertEqual(set(option.findall(entries)), options)

        refused = self.run_program(["--bogus"])
        self.assertEqual((refused.returncode, refused.stdout), (2, ""))
        self.assertIn("--bogus", refused.stderr)

        windowless = self.run_program([])
        self.assertEqual(windowless.returncode, 1)
        self.assertIn("no display", windowless.stderr)

    @unittest.skipUnless(shutil.which("groff"), "needs groff")
    def test_manual_page_renders_without_warnings(self):
        page = self.installed("share", "man", "man1", "plexview.1")
        rendered = subprocess.run(
            ["groff", "-man", "-Tutf8", "-P-cbou", "-ww", page],
            capture_output=True, text=True, env=dict(os.environ, LC_ALL="C.UTF-8"),
        )
        self.assertEqual((rendered.returncode, rendered.stderr), (0, ""))
        self.assertIn("--render", rendered.stdout.replace("\u2010", "-"))

    @unittest.skipUnless(os.environ.get("DISPLAY"), "needs a display")
    def test_render_finds_the_installed_start_up_script(self):
        # The installed script, marked, is the one that runs.
        script = self.installed("share", "plexview", "PyInterpreter.py")
        marker = os.path.join(self.scratch, "marker")
        with open(script, "a", encoding="utf-8") as out:
            out.write("\nopen(%r, 'w').close()\n" % marker)
        picture = os.path.join(self.scratch, "out.png")
        network = os.path.join(DATA, "pajek", "mixed.net")
        rendered = self.run_program(
            ["--render", network, "-o", picture, "--iterations", "5", "--size", "40x30"],
            display=True,
        )
        self.assertEqual(rendered.returncode, 0, rendered.stderr)
        self.assertTrue(os.path.exists(marker))
        self.assertEqual(png_size(picture), (40, 30))

    def test_module_imports_from_another_folder(self):
        python_path = self.installed(PYTHON_DIR)
        imported = subprocess.run(
            ["/usr/bin/python3", "-c",
             "import plexview; print(plexview.__version__); print(plexview.__file__)"],
            capture_output=True, text=True, cwd=self.elsewhere, timeout=60,
            env=dict(os.environ, PYTHONPATH=python_path),
        )
        self.assertEqual(imported.returncode, 0, imported.stderr)
        version, where = imported.stdout.split()
        self.assertEqual((version, os.path.dirname(where)), (VERSION, python_path))


@unittest.skipUnless(
    BUILD and VERSION and shutil.which("dpkg-deb") and shutil.which("dpkg-shlibdeps"),
    "needs the build tree and dpkg-dev",
)
class DebianPackage(ScratchFolderTestCase):
    def test_package_holds_the_program_and_names_its_dependencies(self):
        subprocess.run(
            ["cpack", "--config", os.path.join(BUILD, "CPackConfig.cmake"), "-B", self.folder],
            check=True, capture_output=True, timeout=120,
        )
        arch = subprocess.run(
            ["dpkg", "--print-architecture"], capture_output=True, text=True, check=True
        ).stdout.strip()
        deb = self.path("plexview_%s_%s.deb" % (VERSION, arch))
        self.assertTrue(os.path.isfile(deb), os.listdir(self.folder))

        def field(name):
            return subprocess.run(
                ["dpkg-deb", "-f", deb, name], capture_output=True, text=True, check=True
            ).stdout.strip()

        self.assertEqual(field("Version"), VERSION)
        depends = [d.strip().split(" ")[0] for d in field("Depends").split(",")]
        for package in ("python3", "python3-numpy", "libqt6widgets6", "libc6"):
            self.assertIn(package, depends)

        listing = subprocess.run(
            ["dpkg-deb", "-c", deb], capture_output=True, text=True, check=True
        ).stdout
        for expected in (r"\./usr/bin/plexview", r"\./usr/share/plexview/PyInterpreter\.py",
                         r"\./usr/lib/python3[.\d]*/dist-packages/plexview.*\.so"):
            self.assertRegex(listing, r"(?m) %s$" % expected)

if __name__ == "__main__":
    unittest.main()
