"""Networks and vertices from Python: edge lists and their views, properties in
and out, vertices, files and their errors, and the calls made without the GIL."""

import gc
import unittest
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import plexview
from plexview import NumberType, Precision, QLONetwork, QLONumberArray, QLOVector3dArray
from support import ScratchFolderTestCase

GRAPHML = QLONetwork.initWithContentsOfURL
PAJEK = QLONetwork.initWithContentsOfPajekURL


class InitWithEdgesTest(unittest.TestCase):
    def test_edge_views_hold_the_input(self):
        sources = np.array([0, 3, 2, 200], dtype=np.uint8)
        targets = np.array([1, 0, 2, 4], dtype=np.int16)
        network = QLONetwork.initWithEdges(201, sources, targets, weights=[0.1, 2, -3.5, 1e30])
        self.assertEqual((network.countVertices(), network.countEdges()), (201, 4))
        views = (network.edgeFromList, network.edgeToList, network.edgesWeights)
        self.assertEqual([view.dtype for view in views], [np.uint64, np.uint64, np.float32])
        np.testing.assert_array_equal(views[0], sources)
        np.testing.assert_array_equal(views[1], targets)
        # float64 weights are rounded to float32 once, not truncated.
        np.testing.assert_array_equal(views[2], np.array([0.1, 2, -3.5, 1e30], dtype=np.float32))
        empty = QLONetwork.initWithEdges(4, [], [])
        self.assertEqual((empty.edgeFromList.shape, empty.edgesWeights.dtype), ((0,), np.float32))
        np.testing.assert_array_equal(empty.calcDegrees().array(), np.zeros(4))

    def test_each_edge_view_is_read_only_and_outlives_the_wrapper(self):
        edges = (np.arange(999), np.arange(1, 1000), np.arange(2, 1001, dtype=np.float32))
        for name, values in zip(("edgeFromList", "edgeToList", "edgesWeights"), edges):
            with self.subTest(view=name):
                view = getattr(QLONetwork.initWithEdges(1001, *edges), name)
                self.assertFalse(view.flags.writeable)
                with self.assertRaises(ValueError):
                    view[0] = 5
                gc.collect()
                for _ in range(20):  # freed storage would be reused
                    QLONetwork.initWithEdges(1000, np.zeros(999, dtype=int), [0] * 999)
                np.testing.assert_array_equal(view, values)

    def test_invalid_edge_lists_raise_with_the_reason(self):
        cases = [
            (ValueError, dict(sources=[0, 3], targets=[1, 1]), "beyond"),
            (ValueError, dict(sources=[0, -1], targets=[1, 2]), "negative"),
            (TypeError, dict(sources=[0.0, 1.0], targets=[1, 2]), "integers"),
            (TypeError, dict(sources=[0], targets=[1], weights=["heavy"]), "numbers"),
        ]
        for error, arguments, reason in cases:
            with self.subTest(arguments=arguments):
                with self.assertRaises(error) as caught:
                    QLONetwork.initWithEdges(3, **arguments)
                self.assertIn(reason, str(caught.exception))


class PropertyTest(unittest.TestCase):
    def setUp(self):
        self.network = QLONetwork.initWithEdges(3, [0, 1], [1, 2])

    def test_every_kind_goes_in_and_comes_out(self):
        numbers = QLONumberArray.fromNumpy(np.array([1.5, -2, 4]))
        vectors = QLOVector3dArray.fromNumpy(np.arange(9, dtype=np.float32).reshape(3, 3))
        self.network.setPropertiesOfVertices(numbers, "size")
        self.network.setPropertiesOfVertices(vectors, "Position")
        self.network.setPropertiesOfVertices(["a", "b c", "ü"], "Name")
        self.network.setPropertiesOfVertices(("x", "y", "z"), "tag")
        table = self.network.propertiesOfVertices()
        self.assertEqual(list(table), ["size", "Position", "Name", "tag"])
        self.assertIs(table["size"], numbers)
        self.assertIs(table["Position"], vectors)
        self.assertEqual(table["Name"], ["a", "b c", "ü"])
        self.assertEqual(self.network.propertyForKey("tag"), ["x", "y", "z"])
        self.assertIsNone(self.network.propertyForKey("absent"))
        entries = self.network.vertexAtIndex(1).properties()
        self.assertEqual(entries, {"size": -2.0, "Position": (3, 4, 5), "Name": "b c", "tag": "y"})
        self.assertIsInstance(entries["size"], float)

    def test_numpy_input_becomes_a_copy_of_the_right_kind(self):
        source = np.array([1, 2, 3], dtype=np.int32)
        self.network.setPropertiesOfVertices(source, "count")
        self.network.setPropertiesOfVertices(np.ones((3, 3)), "Color")
        self.network.setPropertiesOfVertices(np.array(["p", "q", "r"]), "label")
        self.network.setPropertiesOfVertices(np.array([b"s", b"t", b"u"]), "code")
        self.network.setPropertiesOfVertices([0.5, 1.5, 2.5], "share")
        source[:] = 0
        count = self.network.propertyForKey("count")
        self.assertEqual(count.numberArrayType(), NumberType.Int32)
        np.testing.assert_array_equal(count.array(), [1, 2, 3])
        self.assertEqual(self.network.propertyForKey("Color").precision(), Precision.Double)
        self.assertEqual(self.network.propertyForKey("label"), ["p", "q", "r"])
        self.assertEqual(self.network.propertyForKey("code"), ["s", "t", "u"])
        self.assertEqual(self.network.propertyForKey("share").numberArrayType(), NumberType.Double)

    def test_unsuitable_values_are_rejected(self):
        wrong_count = [
            QLOVector3dArray.initWithSize(4, Precision.Float),
            ["only", "two"],
        ]
        for value in wrong_count:
            with self.subTest(value=value), self.assertRaises(ValueError) as caught:
                self.network.setPropertiesOfVertices(value, "Name")
            self.assertIn("3 vertices", str(caught.exception))
        with self.assertRaises(TypeError):
            self.network.setPropertiesOfVertices([{}, {}, {}], "odd")
        self.assertEqual(self.network.keysForPropertiesOfVertices(), [])


class VertexTest(unittest.TestCase):
    def test_indices_are_checked_and_a_vertex_keeps_its_network_alive(self):
        network = QLONetwork.initWithEdges(3, [0, 1], [1, 2])
        for call in (network.vertexAtIndex, network.vertexName, network.degreeOfVertex):
            for index in (3, -1):
                with self.subTest(call=call.__name__, index=index), self.assertRaises(IndexError):
                    call(index)
        network.setPropertiesOfVertices(["a", "b", "c"], "Name")
        vertex = network.vertices()[2]
        del network
        gc.collect()
        self.assertEqual(vertex.name(), "c")
        self.assertEqual(vertex.network().countEdges(), 2)


class FileTest(ScratchFolderTestCase):
    def test_each_writer_raises_os_error_naming_the_file(self):
        network = QLONetwork.initWithEdges(4, [0, 1, 2, 3], [1, 2, 0, 3], directed=True)
        for write in (network.writeToURL, network.writeToPajekURL, network.writeToEdgesURL):
            with self.subTest(writer=write.__name__):
                with self.assertRaises(OSError) as caught:
                    write(self.missing_folder_path("out.x"), atomically=False)
                self.assertIn("out.x", str(caught.exception))
        network.writeToPajekURL(self.path("out.net"))
        self.assertEqual(PAJEK(self.path("out.net")).countEdges(), 4)

    def test_read_errors_arrive_with_file_line_and_a_printable_reason(self):
        # The readers' rules are checked in C++; this checks what a script sees.
        cases = [
            ("bytes.net", b"*Edges\n1 2\xaf\n", plexview.openNetworkFile, 2,
             "'2\\xAF' is not a vertex number"),
            ("absent.net", None, PAJEK, 0, ""),
        ]
        for name, data, read, line, reason in cases:
            with self.subTest(name=name):
                path = self.path(name)
                if data is not None:
                    with open(path, "wb") as out:
                        out.write(data)
                with self.assertRaises(plexview.ReadError) as caught:
                    read(path)
                error = caught.exception
                self.assertEqual((error.file, error.line), (path, line))
                self.assertIn(reason, error.reason)

    def test_texts_of_a_file_arrive_as_python_strings(self):
        text = '*Network Zo\u00eb\n*Vertices 2\n1 "\u00e9t\u00e9"\n2 "caf\xe9"\n'
        network = plexview.openNetworkFile(self.write_text("plain.net", text))
        self.assertEqual(network.propertiesOfVertices()["Name"], ["\u00e9t\u00e9", "caf\xe9"])
        self.assertEqual(network.title(), "Zo\u00eb")


class GilFreeTest(ScratchFolderTestCase):
    def test_generators_readers_and_writers_run_side_by_side(self):
        def work(k):
            for turn in range(5):
                path = self.path(f"n{k}-{turn}.net")
                network = QLONetwork.initRandomNetworkWithNumberOfVertices(300, 4.0)
                network.writeToPajekURL(path)
                QLONetwork.initBarabasiNetworkWitNumberOfVertices(300, 4).writeToURL(path + "g")
                self.assertEqual(PAJEK(path).countEdges(), network.countEdges())
                self.assertRaises(plexview.ReadError, GRAPHML, path + ".absent")

        with ThreadPoolExecutor(4) as pool:
            list(pool.map(work, range(4)))  # re-raises what failed in a thread


if __name__ == "__main__":
    unittest.main()
