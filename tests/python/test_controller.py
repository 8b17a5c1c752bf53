"""The window controller from Python: the registry, settings forwarded to the
view, the generator and network installation."""
import unittest

import numpy as np

import plexview
from plexview import QLONetwork, VXLController, VXLNetworkView


def two_components():
    """A path of four vertices and a separate edge, undirected and unweighted."""
    return QLONetwork.initWithEdges(6, [0, 1, 2, 4], [1, 2, 3, 5])


class RegistryTest(unittest.TestCase):
    def test_controllers_are_found_by_uuid_and_the_last_is_shared(self):
        self.assertIsNone(VXLController.controllerWithUUID(VXLController.UUIDString()))
        view = VXLNetworkView()
        first = VXLController.init(view)
        second = VXLController.init()
        self.assertIs(VXLController.sharedController(), second)
        self.assertIs(VXLController.controllerWithUUID(first.uuid()), first)
        self.assertIs(first.networkView(), view)
        self.assertIsNot(second.networkView(), view)
        first.cleanup()
        self.assertTrue(first.isClean())
        self.assertIs(VXLController.controllerWithUUID(first.uuid()), first)
        self.assertRegex(second.uuid(), r"^[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}$")


class SettingsTest(unittest.TestCase):
    def test_settings_reach_the_view_and_refresh_the_properties_panel(self):
        controller = VXLController.init()
        panels = []
        controller.setRefreshListener(panels.append)
        controller.setRepulsiveConstant(42.5)
        controller.setViewLegendSize(2.5)
        controller.setShowEdges(False)
        view = controller.networkView()
        self.assertEqual(view.repulsiveConstant(), 42.5)
        self.assertEqual(view.legendsHeight(), 2.5)
        self.assertFalse(view.showEdges())
        self.assertEqual(panels, [VXLController.Panel.Properties] * 3)

        view.setCameraInfo(True)
        controller.setCameraInfo(False)
        self.assertTrue(controller.cameraInfo())


class NetworkTest(unittest.TestCase):
    def test_generate_names_with_the_previous_networks_degree(self):
        controller = VXLController.init()
        controller.generateNetwork(type=1, vertices="50", degree="3")
        self.assertEqual(controller.networkName(), "Barabasi(50,0)")
        self.assertEqual(controller.generatorLabels(), ("Vertices:", "A.Degree:"))
        edges = controller.network().countEdges()
        controller.generateNetwork(type=0)
        expected = 2 * np.float32(edges) / np.float32(50)
        self.assertEqual(controller.networkName(), "Random(50,%0.3g)" % expected)
        self.assertEqual(controller.network().countVertices(), 50)

    def test_install_whole_and_as_major_component(self):
        controller = VXLController.init()
        network = two_components()
        controller.setNetwork(network)
        self.assertEqual(controller.colorPropertyNames(), ["Node Degree", "Node InDegree"])
        positions = controller.positions().array()
        self.assertTrue((np.abs(positions) <= 30).all())
        self.assertIn("Position", network.keysForPropertiesOfVertices())

        # The first installation coloured the network, so its component
        # brings a "Color" along.
        controller.setMajorConnectedNetwork(network)
        self.assertEqual(controller.colorPropertyNames(), ["Color", "Node Degree"])
        self.assertEqual(controller.network().countVertices(), 4)
        self.assertEqual(controller.colorsDictionary()["Node Degree"].array().tolist(), [1, 2, 2, 1])

        controller.replaceNetworkWith(network)
        controller.selectVertexWithIndex(5)
        self.assertEqual(controller.networkView().selectedIndices(), [5])


if __name__ == "__main__":
    unittest.main()
