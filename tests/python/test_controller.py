"""The window controller from Python: the registry, a Python listener called
back, the generator's keyword arguments and network installation. The rules
are checked by the C++ controller tests."""
import unittest

import numpy as np

from plexview import QLONetwork, VXLController, VXLNetworkView


class RegistryTest(unittest.TestCase):
    def test_controllers_are_found_by_uuid_and_the_last_is_shared(self):
        self.assertIsNone(VXLController.controllerWithUUID(VXLController.UUIDString()))
        view = VXLNetworkView()
        first = VXLController.init(view)
        second = VXLController.init()
        self.assertIs(VXLController.sharedController(), second)
        self.assertIs(VXLController.controllerWithUUID(first.uuid()), first)
        self.assertIs(first.networkView(), view)
        first.cleanup()
        self.assertIs(VXLController.controllerWithUUID(first.uuid()), first)


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
        self.assertEqual(controller.networkName(), "Barabasi(50,0)")
        self.assertEqual(controller.network().countVertices(), 50)

        network = QLONetwork.initWithEdges(6, [0, 1, 2, 4], [1, 2, 3, 5])
        controller.setNetwork(network)
        controller.setMajorConnectedNetwork(network)
        self.assertEqual(controller.network().countVertices(), 4)
        degrees = controller.colorsDictionary()["Node Degree"].array()
        np.testing.assert_array_equal(degrees, [1, 2, 2, 1])
        controller.replaceNetworkWith(network)
        controller.selectVertexWithIndex(5)
        self.assertEqual(controller.networkView().selectedIndices(), [5])


if __name__ == "__main__":
    unittest.main()
