"""The plexview program's start-up with its embedded interpreter: the
start-up script looked up in the resource folder (PLEXVIEW_RESOURCES points
at a scratch folder), the search path and arguments it sees, a script that
fails, and `--run` scripts. Needs a display (CTest runs it under Xvfb)."""

import json
import os
import subprocess
import unittest

from support import ScratchFolderTestCase

PROGRAM = os.environ.get("PLEXVIEW_PROGRAM", "")
SOURCE = os.environ.get(
    "PLEXVIEW_SOURCE", os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
)
DATA = os.environ.get("PLEXVIEW_TEST_DATA", os.path.join(SOURCE, "tests", "data"))


# A start-up script that records what it saw and ends the program (with the
# status given to the --run "script") once the event loop runs.
RECORDING_SCRIPT = """
import os, sys, json
import plexview
with open(os.environ["PLEXVIEW_TEST_RECORD"], "w") as record:
    json.dump({"file": __file__, "argv": sys.argv,
               "pythonpath": os.environ.get("PYTHONPATH")}, record)

def runScript(path):
    with open(path) as script:
        plexview.quitApplication(int(script.read()))
"""


def run(arguments, timeout=20, **environment):
    env = dict(os.environ)
    env.update(environment)
    return subprocess.run(
        [PROGRAM] + arguments, capture_output=True, text=True, timeout=timeout, env=env
    )


@unittest.skipUnless(PROGRAM and os.environ.get("DISPLAY"), "needs the program and a display")
class StartupScript(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.resources = self.path("resources")
        os.mkdir(self.resources)
        self.record = self.path("record.json")

    def install(self, name, source=RECORDING_SCRIPT):
        """Puts a start-up script named `name` in the resource folder."""
        with open(os.path.join(self.resources, name), "w", encoding="utf-8") as out:
            out.write(source)

    def run_with_status(self, status, *extra, **environment):
        script = self.write_text("status.txt", str(status))
        return run(
            ["--run", script] + list(extra),
            PLEXVIEW_RESOURCES=self.resources,
            PLEXVIEW_TEST_RECORD=self.record,
            **environment,
        )

    def recorded(self):
        with open(self.record, encoding="utf-8") as record:
            return json.load(record)

    def test_without_a_start_up_script_the_program_stops_with_the_message(self):
        # Only the wrong names are present.
        self.install("Main.py")
        self.install("PyInterpreter.txt")
        result = run(["--render", "x.net", "-o", self.path("x.png")],
                     PLEXVIEW_RESOURCES=self.resources)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("Resources directory", result.stderr)
        self.assertFalse(os.path.exists(self.path("x.png")))

    def test_the_search_path_is_replaced_and_the_arguments_passed_on(self):
        self.install("PyInterpreter.py")
        os.mkdir(os.path.join(self.resources, "PyObjC"))
        network = os.path.join(DATA, "documents", "two-parts.net")
        result = self.run_with_status(6, network, PYTHONPATH="/elsewhere")
        self.assertEqual(result.returncode, 6, result.stderr)
        seen = self.recorded()
        self.assertEqual(
            seen["pythonpath"], self.resources + ":" + os.path.join(self.resources, "PyObjC")
        )
        self.assertEqual(seen["argv"], [PROGRAM, "--run", self.path("status.txt"), network])

    def test_a_failing_start_up_script_is_logged_and_start_up_goes_on(self):
        failing = RECORDING_SCRIPT + "\nraise RuntimeError('start-up broke here')\n"
        self.install("PyInterpreter.py", failing)
        result = self.run_with_status(7)
        # The event loop ran the --run script, which chose the status.
        self.assertEqual(result.returncode, 7, result.stderr)
        script = os.path.join(self.resources, "PyInterpreter.py")
        self.assertIn(script, result.stderr)
        self.assertIn("RuntimeError: start-up broke here", result.stderr)


@unittest.skipUnless(PROGRAM and os.environ.get("DISPLAY"), "needs the program and a display")
class RunOption(ScratchFolderTestCase):
    """--run with the program's own start-up script."""

    def run_script(self, text, *files):
        script = self.write_text("job.py", text)
        return run(["--run", script] + list(files))

    def test_the_script_runs_once_the_first_window_exists(self):
        pajek = os.path.join(DATA, "documents", "two-parts.net")
        result = self.run_script(
            "import sys\n"
            "c = VXLController.sharedController()\n"
            "d = QLODocumentController.sharedDocumentController()\n"
            "print(len(d.documents()), d.currentDocument().displayName(),\n"
            "      c.network().countVertices(), __name__, __file__)\n"
            "sys.exit(4)\n",
            pajek,
        )
        self.assertEqual(result.returncode, 4, result.stderr)
        self.assertEqual(
            result.stdout.split(), ["1", "two-parts", "5", "__main__", self.path("job.py")]
        )

    def test_an_error_prints_its_traceback_and_the_program_goes_on(self):
        result = self.run_script(
            "plexview.quitApplication(9)  # ends the program after this script\n"
            "print('before')\n"
            "{}['missing key']\n"
        )
        self.assertEqual(result.returncode, 9, result.stderr)
        self.assertIn("before", result.stdout)
        self.assertIn("KeyError: 'missing key'", result.stderr)
        self.assertIn('File "%s", line 3' % self.path("job.py"), result.stderr)
        self.assertNotIn("PyInterpreter.py", result.stderr)

    def test_sys_exit_with_a_message_ends_with_status_one(self):
        result = self.run_script("import sys\nsys.exit('giving up')\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn("giving up", result.stderr)

    def test_a_missing_script_is_refused_before_any_window(self):
        result = run(["--run", self.path("absent.py")])
        self.assertEqual(result.returncode, 1)
        self.assertIn("absent.py", result.stderr)


if __name__ == "__main__":
    unittest.main()
