"""Fit, find and the selection tools of the view from Python. The framing
maths and the tools' rules are checked in C++; this checks they are reachable
and act on the view."""
import unittest

from plexview import QLONetwork, VXLNetworkView
from support import controller_showing, random_network


class ViewToolsTest(unittest.TestCase):
    def setUp(self):
        self.view = VXLNetworkView()
        self.view.setNetwork(random_network(40, 3, seed=4))

    def test_fit_moves_the_camera_to_the_vertices(self):
        self.view.resetCenter(500.0, 500.0, 500.0)
        before = self.view.camera().position
        self.assertTrue(self.view.zoomToFit())
        self.assertNotEqual(list(before), list(self.view.camera().position))
        self.view.setSelectedVertices([])
        self.assertFalse(self.view.frameSelection())

    def test_selection_tools_and_find(self):
        self.view.selectAll()
        self.assertEqual(len(self.view.selectedIndices()), 40)
        # Generated networks have no names: nothing matches.
        self.assertEqual(self.view.findVertices("x"), [])


class UndoTest(unittest.TestCase):
    def test_undo_and_redo_reach_the_controller(self):
        # The steps and what each puts back are checked by the C++ undo tests.
        controller = controller_showing(QLONetwork.initWithEdges(3, [0, 1], [1, 2]))
        self.assertFalse(controller.canUndo())
        start_map = controller.selectedColorMap()
        controller.selectColorMap("Gray")
        controller.undo()
        self.assertEqual(controller.selectedColorMap(), start_map)


if __name__ == "__main__":
    unittest.main()
