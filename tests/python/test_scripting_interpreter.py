"""The start-up script's Python side without the program: the console's
PyInterpreter (output, tracebacks, the evaluation field and its buffer),
the namespace scripts see, and the layout and colouring behind --render.
The script is loaded from the source tree next to the extension module;
the failures of --render are tested through the program."""

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
        answer = self.interpreter.runCode("x = 1\ny = x / 0\n")
        for text in ["ZeroDivisionError", "line 2", "y = x / 0"]:
            self.assertIn(text, answer)
        self.assertNotIn("PyInterpreter.py", answer)
        # The interpreter is still usable.
        self.assertEqual(self.interpreter.runCode("print(x)"), "1\n")

    def test_the_evaluation_field_echoes_and_shows_values(self):
        evaluate = self.interpreter.evaluate
        self.interpreter.runCode("n = 5")  # runs and lines share one namespace
        self.assertEqual(evaluate("n * 2"), ">>> n * 2\n10\n")
        # An unfinished statement continues with the "... " prompt.
        self.assertEqual(evaluate("for i in range(2):"), ">>> for i in range(2):\n")
        self.assertEqual(evaluate("    print(i)"), "...     print(i)\n")
        self.assertEqual(evaluate(""), "... \n0\n1\n")

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
    def test_layout_moves_the_vertices(self):
        controller = plexview.VXLController.init()
        controller.setNetwork(ring_with_teams())
        view = controller.networkView()
        before = view.positions().array().copy()
        STARTUP["layOut"](view, 7, "ring", chunks=3)
        self.assertFalse(np.array_equal(before, view.positions().array()))

    def test_colouring_by_categories(self):
        controller = plexview.VXLController.init()
        controller.setNetwork(ring_with_teams())
        STARTUP["colourBy"](controller, "team")
        teams = np.round(controller.networkView().colors().array(), 4)
        self.assertEqual([len({tuple(c) for c in part}) for part in (teams[:4], teams[4:])], [1, 1])
        self.assertFalse(np.array_equal(teams[0], teams[4]))


if __name__ == "__main__":
    unittest.main()
