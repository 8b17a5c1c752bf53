"""Every example of docs/SCRIPTING.md, executed: the Python examples in
order inside one run of the program (through --run, each in a fresh script
namespace), and the `plexview` command lines in a folder holding the files
they name. Needs a display (CTest runs it under Xvfb)."""

import json
import os
import re
import shlex
import subprocess
import unittest

from support import ScratchFolderTestCase

PROGRAM = os.environ.get("PLEXVIEW_PROGRAM", "")
SOURCE = os.environ.get(
    "PLEXVIEW_SOURCE", os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
)
DOCUMENT = os.path.join(SOURCE, "docs", "SCRIPTING.md")

FENCE = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
SCRIPT_FILE = re.compile(r"^# (\S+\.py):")

# Runs each example as a script of its own and records what became of it.
DRIVER = """
import json, sys, traceback
import __main__ as startup

examples = json.loads(%(examples)r)
results = []
for number, source in enumerate(examples):
    namespace = startup.scriptNamespace("__main__")
    try:
        exec(compile(source, "<example %%d>" %% number, "exec"), namespace)
        results.append({"ok": True})
    except SystemExit as request:
        results.append({"ok": request.code in (None, 0), "error": "exit %%r" %% request.code})
    except BaseException:
        results.append({"ok": False, "error": traceback.format_exc()})
with open(%(record)r, "w") as record:
    json.dump(results, record)
plexview.quitApplication(0)
"""


def examples():
    """(language, text) of every fenced block, in order."""
    with open(DOCUMENT, encoding="utf-8") as document:
        return [(match.group(1), match.group(2)) for match in FENCE.finditer(document.read())]


def write_karate_club(path):
    import networkx

    graph = networkx.karate_club_graph()
    for _, attributes in graph.nodes(data=True):
        attributes["club"] = str(attributes["club"])
    for _, _, attributes in graph.edges(data=True):
        attributes.clear()
    networkx.write_graphml(graph, path)


@unittest.skipUnless(PROGRAM and os.environ.get("DISPLAY"), "needs the program and a display")
class ScriptingDocument(ScratchFolderTestCase):
    def test_every_python_example_runs_in_the_program(self):
        runnable = [
            text for kind, text in examples() if kind == "python" and not SCRIPT_FILE.match(text)
        ]
        self.assertEqual({kind for kind, _ in examples()}, {"python", "sh"})
        self.assertGreaterEqual(len(runnable), 8)
        record = self.path("results.json")
        driver = self.write_text(
            "driver.py", DRIVER % {"examples": json.dumps(runnable), "record": record}
        )
        result = subprocess.run(
            [PROGRAM, "--run", driver], capture_output=True, text=True, timeout=180
        )
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(record, encoding="utf-8") as results:
            outcomes = json.load(results)
        self.assertEqual(len(outcomes), len(runnable))
        for number, (text, outcome) in enumerate(zip(runnable, outcomes)):
            with self.subTest(example=number, first_line=text.splitlines()[0]):
                self.assertTrue(outcome["ok"], outcome.get("error"))

    def test_every_command_line_runs_in_a_folder_with_its_files(self):
        write_karate_club(self.path("karate.graphml"))
        for kind, text in examples():
            named = SCRIPT_FILE.match(text)
            if kind == "python" and named:
                self.write_text(named.group(1), text)
        commands = [
            line
            for kind, text in examples()
            if kind == "sh"
            for line in text.splitlines()
            if line.startswith("plexview ")
        ]
        self.assertGreaterEqual(len(commands), 4)
        for command in commands:
            with self.subTest(command=command):
                arguments = shlex.split(command)
                result = subprocess.run(
                    [PROGRAM] + arguments[1:],
                    capture_output=True,
                    text=True,
                    timeout=180,
                    cwd=self.folder,
                )
                self.assertEqual(result.returncode, 0, result.stderr)
                if "-o" in arguments:
                    picture = self.path(arguments[arguments.index("-o") + 1])
                    self.assertGreater(os.path.getsize(picture), 0)
        # layout.py saved the laid-out network beside the original.
        self.assertTrue(os.path.exists(self.path("karate-laid-out.graphml")))


if __name__ == "__main__":
    unittest.main()
