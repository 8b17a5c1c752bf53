"""The start-up script's Python side without the program: the console's
PyInterpreter (output, tracebacks, the evaluation field and its buffer),
the namespace scripts see, and the layout and colouring behind --render.
The script is loaded from the source tree next to the extension module;
the failures of --render are tested through the program."""

import io
import os
import runpy
import sys
import unittest

import numpy as np

import plexview

SOURCE = os.environ.get(
    "PLEXVIEW_SOURCE", os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
)
STARTUP = runpy.run_path(os.path.join(SOURCE, "resources", "PyInterpreter.py"))


def ring_with_teams(count=12):
    sources = np.arange(count, dtype=np.uint64)
    targets = (sources + 1) % count
    network = plexview.QLONetwork.initWithEdges(count, sources, targets)
    network.setPropertiesOfVertices(["red" if i < 4 else "blue" for i in range(count)], "team")
    return network


class ConsoleInterpreter(unittest.TestCase):
    def setUp(self):
        self.interpreter = STARTUP["PyInterpreter"]()

    def test_a_run_answers_its_output_and_keeps_its_names(self):
        first = self.interpreter.runCode("total = 6 * 7\nprint('total', total)\n")
        second = self.interpreter.runCode(
            "import sys\nprint('again', total, file=sys.stderr)\n"
        )
        self.assertEqual(first, "total 42\n")
        self.assertEqual(second, "again 42\n")
        self.assertIs(sys.stdout, sys.__stdout__)
        self.assertIs(sys.stderr, sys.__stderr__)

    def test_errors_come_back_as_tracebacks_that_quote_the_script(self):
        cases = [
            ("x = 1\ny = x / 0\n", ["ZeroDivisionError", "line 2", "y = x / 0"]),
            ("def f(:\n", ["SyntaxError"]),
            ("import sys\nsys.exit(3)\n", ["SystemExit: 3"]),
            ("print('partial')\nundefined_name\n", ["partial\n", "NameError", "undefined_name"]),
        ]
        for source, expected in cases:
            with self.subTest(source=source):
                answer = self.interpreter.runCode(source)
                for text in expected:
                    self.assertIn(text, answer)
                self.assertNotIn("PyInterpreter.py", answer)
        # The interpreter is still usable.
        self.assertEqual(self.interpreter.runCode("print(x)"), "1\n")

    def test_the_evaluation_field_echoes_and_shows_values(self):
        evaluate = self.interpreter.evaluate
        self.assertEqual(evaluate("n = 5"), ">>> n = 5\n")
        self.assertEqual(evaluate("n * 2"), ">>> n * 2\n10\n")
        # An unfinished statement continues with the "... " prompt.
        self.assertEqual(evaluate("for i in range(2):"), ">>> for i in range(2):\n")
        self.assertEqual(evaluate("    print(i)"), "...     print(i)\n")
        self.assertEqual(evaluate(""), "... \n0\n1\n")
        self.assertIn("NameError", evaluate("nope"))
        # Runs and lines share one namespace.
        self.interpreter.runCode("shared = 'from a run'")
        self.assertEqual(evaluate("shared"), ">>> shared\n'from a run'\n")

    def test_reset_forgets_an_unfinished_statement(self):
        self.interpreter.evaluate("if True:")
        self.interpreter.resetBuffer()
        self.assertEqual(self.interpreter.evaluate("3"), ">>> 3\n3\n")

    def test_scripts_see_the_controllers_and_the_model_classes(self):
        answer = self.interpreter.runCode(
            "c = VXLController.init()\n"
            "net = QLONetwork.initWithEdges(3, np.array([0, 1]), np.array([1, 2]))\n"
            "c.setNetwork(net)\n"
            "print(VXLController.sharedController().uuid() == c.uuid(),\n"
            "      c.network().countEdges(), type(c.positions()).__name__,\n"
            "      plexview.QLODocumentController is QLODocumentController)\n"
        )
        self.assertEqual(answer, "True 2 QLOVector3dArray True\n")


class RenderPieces(unittest.TestCase):
    def test_layout_steps_all_and_reports_its_progress(self):
        controller = plexview.VXLController.init()
        controller.setNetwork(ring_with_teams())
        view = controller.networkView()
        before = view.positions().array().copy()
        errors = io.StringIO()
        saved, sys.stderr = sys.stderr, errors
        try:
            STARTUP["layOut"](view, 7, "ring", chunks=3)
        finally:
            sys.stderr = saved
        self.assertEqual(errors.getvalue(), "plexview: laying out ring: 7 of 7 steps\n")
        self.assertFalse(np.array_equal(before, view.positions().array()))

    def test_colouring_by_categories_and_by_numbers(self):
        def colours_by(name, network):
            controller = plexview.VXLController.init()
            controller.setNetwork(network)
            STARTUP["colourBy"](controller, name)
            return np.round(controller.networkView().colors().array(), 4)

        teams = colours_by("team", ring_with_teams())
        self.assertEqual([len({tuple(c) for c in part}) for part in (teams[:4], teams[4:])], [1, 1])
        self.assertFalse(np.array_equal(teams[0], teams[4]))
        network = ring_with_teams()
        network.setPropertiesOfVertices(np.arange(12, dtype=np.float32), "rank")
        ranks = colours_by("rank", network)
        # The default map runs from blue (lowest) to red (highest).
        self.assertGreater(ranks[0, 2], ranks[0, 0])
        self.assertGreater(ranks[11, 0], ranks[11, 2])
        # Equal degrees: one colour for every vertex.
        degrees = colours_by("Node Degree", ring_with_teams())
        self.assertEqual(len({tuple(c) for c in degrees}), 1)


if __name__ == "__main__":
    unittest.main()
