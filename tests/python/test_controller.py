"""The window controller from Python: the registry, a Python listener called
back, the generator's keyword arguments, network installation, a Python
selection handler and the placement actions. The rules are checked by the C++
controller tests."""
import gc
import sys
import unittest

import numpy as np

from plexview import QLONetwork, VXLController, VXLNetworkView, VXLSelectionHandler
from support import controller_showing


class RegistryTest(unittest.TestCase):
    def test_controllers_are_found_by_uuid_and_the_last_is_shared(self):
        self.assertIsNone(VXLController.controllerWithUUID(VXLController.UUIDString()))
        # Which one is shared and for how long is checked in C++; a script
        # gets back the very object it made.
        view = VXLNetworkView()
        first = VXLController.init(view)
        self.assertIs(VXLController.controllerWithUUID(first.uuid()), first)
        self.assertIs(VXLController.sharedController(), first)
        self.assertIs(first.networkView(), view)


class SettingsTest(unittest.TestCase):
    def test_a_setting_calls_the_python_listener_with_the_panel(self):
        controller = VXLController.init()
        panels = []
        controller.setRefreshListener(panels.append)
        controller.setRepulsiveConstant(42.5)
        self.assertEqual(controller.networkView().repulsiveConstant(), 42.5)
        self.assertEqual(panels, [VXLController.Panel.Properties])


class NetworkTest(unittest.TestCase):
    def test_generate_with_texts_and_install_as_major_component(self):
        controller = VXLController.init()
        controller.generateNetwork(type=1, vertices="50", degree="3")
        self.assertEqual(controller.network().countVertices(), 50)

        network = QLONetwork.initWithEdges(6, [0, 1, 2, 4], [1, 2, 3, 5])
        controller.setNetwork(network)
        controller.setMajorConnectedNetwork(network)
        self.assertEqual(controller.network().countVertices(), 4)
        degrees = controller.colorsDictionary()["Node Degree"].array()
        np.testing.assert_array_equal(degrees, [1, 2, 2, 1])


class Recorder(VXLSelectionHandler):
    def __init__(self, calls):
        super().__init__()
        self.calls = calls

    def handleSelectionWithController(self, controller, vertexIndex):
        self.calls.append((controller, vertexIndex))
        if vertexIndex == 3:
            raise RuntimeError("a failing handler")


class SelectionAndPlacementTest(unittest.TestCase):
    def setUp(self):
        network = QLONetwork.initWithEdges(6, [0, 1, 2, 4], [1, 2, 3, 5])
        self.controller = controller_showing(network)

    def test_a_python_handler_is_kept_and_told_of_vertex_selections(self):
        c, calls = self.controller, []
        c.setSelectionHandler(Recorder(calls))
        gc.collect()  # only the view holds the handler now
        self.assertIsInstance(c.selectionHandler(), Recorder)
        c.selectVertex(c.network().vertexAtIndex(2))
        reported = []
        hook, sys.unraisablehook = sys.unraisablehook, reported.append
        try:
            c.selectVertexWithIndex(3)  # the handler raises: reported, the selection stands
        finally:
            sys.unraisablehook = hook
        self.assertEqual([type(r.exc_value) for r in reported], [RuntimeError])
        self.assertEqual(calls, [(c, 2), (c, 3)])
        c.setSelectionHandler(None)
        c.selectVertexWithIndex(1)
        self.assertEqual(len(calls), 2)
        with self.assertRaisesRegex(TypeError, "VXLSelectionHandler"):
            c.setSelectionHandler(print)

    def test_placement_actions_reach_the_layout(self):
        # Where they place and that the layout is stored are checked in C++.
        self.controller.randomizePositionsWithSizeX(10, 10, 0)
        positions = self.controller.positions().array()
        self.assertTrue(np.all(positions[:, 2] == 0))
        self.controller.resetCenter(4, 4, 4)
        positions = self.controller.positions().array()
        self.assertAlmostEqual(float(np.ptp(positions[:, :2], axis=0).max()), 4, places=5)


if __name__ == "__main__":
    unittest.main()
