"""QLONetwork and QLOVertex from Python: building from edge lists, edge views,
properties in and out, degrees, the largest component, generators and the
writers' error handling."""

import gc
import os
import unittest

import numpy as np

import plexview
from plexview import NumberType, Precision, QLONetwork, QLONumberArray, QLOVector3dArray
from support import ScratchFolderTestCase


def reference_degrees(V, sources, targets, weights=None):
    """Degree and strength per vertex counted straight from the edge list."""
    sources = np.asarray(sources, dtype=np.int64)
    targets = np.asarray(targets, dtype=np.int64)
    w = np.ones(len(sources)) if weights is None else np.asarray(weights, dtype=np.float32)
    degrees = np.bincount(sources, minlength=V) + np.bincount(targets, minlength=V)
    in_degrees = np.bincount(targets, minlength=V)
    strengths = np.bincount(sources, w, minlength=V) + np.bincount(targets, w, minlength=V)
    in_strengths = np.bincount(targets, w, minlength=V)
    return degrees, in_degrees, strengths, in_strengths


class InitWithEdgesTest(unittest.TestCase):
    def test_edge_views_hold_the_input(self):
        sources = np.array([0, 3, 2, 2], dtype=np.int32)
        targets = [1, 0, 2, 4]
        network = QLONetwork.initWithEdges(5, sources, targets, weights=[0.1, 2, -3.5, 1e30])
        self.assertEqual(network.countVertices(), 5)
        self.assertEqual(network.countEdges(), 4)
        self.assertEqual(network.edgeFromList.dtype, np.uint64)
        self.assertEqual(network.edgeToList.dtype, np.uint64)
        self.assertEqual(network.edgesWeights.dtype, np.float32)
        np.testing.assert_array_equal(network.edgeFromList, sources)
        np.testing.assert_array_equal(network.edgeToList, targets)
        # float64 weights are rounded to float32 once, not truncated.
        np.testing.assert_array_equal(
            network.edgesWeights, np.array([0.1, 2, -3.5, 1e30], dtype=np.float32)
        )

    def test_edge_views_are_read_only_and_outlive_the_wrapper(self):
        network = QLONetwork.initWithEdges(1000, np.arange(999), np.arange(1, 1000))
        from_list, weights = network.edgeFromList, network.edgesWeights
        for view in (from_list, network.edgeToList, weights):
            self.assertFalse(view.flags.writeable)
            with self.assertRaises(ValueError):
                view[0] = 5
        del network
        gc.collect()
        for _ in range(20):
            QLONetwork.initWithEdges(1000, np.zeros(999, dtype=int), np.zeros(999, dtype=int))
        np.testing.assert_array_equal(from_list, np.arange(999))
        np.testing.assert_array_equal(weights, np.ones(999, dtype=np.float32))

    def test_flags_follow_the_arguments(self):
        plain = QLONetwork.initWithEdges(3, [0], [1])
        self.assertFalse(plain.isDirected())
        self.assertFalse(plain.isEdgeWeighted())
        self.assertFalse(plain.isVertexWeighted())
        np.testing.assert_array_equal(plain.edgesWeights, [1.0])

        marked = QLONetwork.initWithEdges(3, [0], [1], [1.0], directed=True, vertexWeighted=True)
        self.assertTrue(marked.isDirected())
        self.assertTrue(marked.isEdgeWeighted())  # weights given, even if all 1
        self.assertTrue(marked.isVertexWeighted())
        text = repr(marked)
        for part in ("vertices=3", "edges=1", "directed", "edge-weighted", "vertex-weighted"):
            self.assertIn(part, text)
        self.assertIn("undirected", repr(plain))
        self.assertNotIn("weighted", repr(plain))

    def test_networks_without_edges(self):
        for network in (QLONetwork.initWithEdges(4, [], []), QLONetwork.initWithEdges(0, [], [])):
            self.assertEqual(network.countEdges(), 0)
            self.assertEqual(network.edgeFromList.shape, (0,))
            self.assertEqual(network.edgesWeights.dtype, np.float32)
            np.testing.assert_array_equal(
                network.calcDegrees().array(), np.zeros(network.countVertices())
            )

    def test_invalid_edge_lists_raise_value_error_with_reason(self):
        cases = [
            (dict(sources=[0, 3], targets=[1, 1]), "beyond"),
            (dict(sources=[0, 1], targets=[1, 5]), "beyond"),
            (dict(sources=[0, 1, 2], targets=[1, 2]), "differ in length"),
            (dict(sources=[0, 1], targets=[1, 2], weights=[1.0]), "weight"),
            (dict(sources=[0, 1], targets=[1, 2], weights=[]), "weight"),
            (dict(sources=[0, -1], targets=[1, 2]), "negative"),
            (dict(sources=[[0, 1]], targets=[[1, 2]]), "1-D"),
        ]
        for arguments, reason in cases:
            with self.subTest(arguments=arguments):
                with self.assertRaises(ValueError) as caught:
                    QLONetwork.initWithEdges(3, **arguments)
                self.assertIn(reason, str(caught.exception))

    def test_non_integer_vertex_numbers_are_rejected(self):
        for sources in ([0.0, 1.0], ["0", "1"], [True, False]):
            with self.subTest(sources=sources), self.assertRaises(TypeError):
                QLONetwork.initWithEdges(3, sources, [1, 2])
        with self.assertRaises(TypeError):
            QLONetwork.initWithEdges(3, [0], [1], weights=["heavy"])

    def test_unsigned_and_small_integer_types(self):
        for dtype in (np.uint8, np.int16, np.uint64, np.int64):
            with self.subTest(dtype=dtype):
                network = QLONetwork.initWithEdges(
                    300, np.array([0, 200], dtype=dtype), np.array([7, 120], dtype=dtype)
                )
                np.testing.assert_array_equal(network.edgeFromList, [0, 200])
        with self.assertRaises(ValueError):
            QLONetwork.initWithEdges(3, np.array([2**63], dtype=np.uint64), [0])


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

        self.assertEqual(self.network.keysForPropertiesOfVertices(), ["size", "Position", "Name", "tag"])
        table = self.network.propertiesOfVertices()
        self.assertEqual(list(table), ["size", "Position", "Name", "tag"])
        self.assertIs(table["size"], numbers)
        self.assertIs(table["Position"], vectors)
        self.assertEqual(table["Name"], ["a", "b c", "ü"])
        self.assertEqual(self.network.propertyForKey("tag"), ["x", "y", "z"])
        self.assertIsNone(self.network.propertyForKey("absent"))

        vertex = self.network.vertexAtIndex(1)
        entries = vertex.properties()
        self.assertEqual(entries, {"size": -2.0, "Position": (3.0, 4.0, 5.0), "Name": "b c", "tag": "y"})
        self.assertIsInstance(entries["size"], float)
        self.assertEqual(vertex.name(), "b c")
        self.assertEqual(self.network.vertexName(2), "ü")

    def test_stored_arrays_are_shared_with_the_network(self):
        numbers = QLONumberArray.initWithCount(3, NumberType.Float)
        self.network.setPropertiesOfVertices(numbers, "load")
        numbers.array()[2] = 7.5
        self.assertEqual(self.network.vertexAtIndex(2).properties()["load"], 7.5)
        self.network.propertyForKey("load").array()[0] = -1
        self.assertEqual(self.network.vertexAtIndex(0).properties()["load"], -1)

    def test_numpy_input_becomes_a_copy_of_the_right_kind(self):
        source = np.array([1, 2, 3], dtype=np.int32)
        self.network.setPropertiesOfVertices(source, "count")
        self.network.setPropertiesOfVertices(np.ones((3, 3)), "Color")
        self.network.setPropertiesOfVertices(np.array(["p", "q", "r"]), "label")
        self.network.setPropertiesOfVertices([0.5, 1.5, 2.5], "share")
        source[:] = 0
        count = self.network.propertyForKey("count")
        self.assertEqual(count.numberArrayType(), NumberType.Int32)
        np.testing.assert_array_equal(count.array(), [1, 2, 3])
        color = self.network.propertyForKey("Color")
        self.assertIsInstance(color, QLOVector3dArray)
        self.assertEqual(color.precision(), Precision.Double)
        self.assertEqual(self.network.propertyForKey("label"), ["p", "q", "r"])
        self.assertEqual(self.network.propertyForKey("share").numberArrayType(), NumberType.Double)

    def test_replacing_keeps_the_place_in_the_order(self):
        self.network.setPropertiesOfVertices([1, 2, 3], "a")
        self.network.setPropertiesOfVertices([4, 5, 6], "b")
        self.network.setPropertiesOfVertices(["x", "y", "z"], "a")
        self.assertEqual(self.network.keysForPropertiesOfVertices(), ["a", "b"])
        self.assertEqual(self.network.propertyForKey("a"), ["x", "y", "z"])

    def test_count_mismatch_raises_and_changes_nothing(self):
        self.network.setPropertiesOfVertices(["a", "b", "c"], "Name")
        wrong = [
            QLONumberArray.initWithCount(2, NumberType.Float),
            QLOVector3dArray.initWithSize(4, Precision.Float),
            ["only", "two"],
            np.zeros(5),
            np.zeros((2, 3)),
            [],
        ]
        for value in wrong:
            with self.subTest(value=value):
                with self.assertRaises(ValueError) as caught:
                    self.network.setPropertiesOfVertices(value, "Name")
                self.assertIn("3 vertices", str(caught.exception))
        self.assertEqual(self.network.keysForPropertiesOfVertices(), ["Name"])
        self.assertEqual(self.network.propertyForKey("Name"), ["a", "b", "c"])

    def test_unsuitable_values_raise_type_or_value_error(self):
        with self.assertRaises(TypeError):
            self.network.setPropertiesOfVertices("abc", "Name")  # one text, not three
        with self.assertRaises(TypeError):
            self.network.setPropertiesOfVertices([{}, {}, {}], "odd")
        with self.assertRaises(ValueError):
            self.network.setPropertiesOfVertices(np.zeros((3, 2)), "odd")
        self.assertEqual(self.network.keysForPropertiesOfVertices(), [])


class VertexTest(unittest.TestCase):
    def test_vertices_in_order_with_their_edge_counts(self):
        network = QLONetwork.initWithEdges(4, [0, 0, 2], [1, 2, 2])
        vertices = network.vertices()
        self.assertEqual([v.identification() for v in vertices], [0, 1, 2, 3])
        self.assertEqual([v.countEdges() for v in vertices], [2, 1, 3, 0])
        self.assertEqual([v.name() for v in vertices], ["0", "1", "2", "3"])
        self.assertEqual(vertices[2].properties(), {})

    def test_indices_are_checked(self):
        network = QLONetwork.initWithEdges(2, [0], [1])
        for call in (network.vertexAtIndex, network.vertexName, network.degreeOfVertex):
            for index in (2, -1):
                with self.subTest(call=call.__name__, index=index), self.assertRaises(IndexError):
                    call(index)

    def test_vertex_keeps_its_network_alive(self):
        network = QLONetwork.initWithEdges(3, [0, 1], [1, 2])
        network.setPropertiesOfVertices(["a", "b", "c"], "Name")
        vertex = network.vertexAtIndex(2)
        del network
        gc.collect()
        self.assertEqual(vertex.name(), "c")
        self.assertEqual(vertex.network().countEdges(), 2)
        self.assertIn("'c'", repr(vertex))


class DegreeTest(unittest.TestCase):
    def test_random_graphs_match_counts_from_the_edge_list(self):
        rng = np.random.default_rng(7)
        V, E = 200, 900
        sources = rng.integers(0, V, E)
        targets = rng.integers(0, V, E)
        weights = rng.random(E).astype(np.float32)
        for directed in (False, True):
            with self.subTest(directed=directed):
                network = QLONetwork.initWithEdges(V, sources, targets, weights, directed=directed)
                degrees, in_degrees, strengths, in_strengths = reference_degrees(
                    V, sources, targets, weights
                )
                if not directed:
                    in_degrees, in_strengths = degrees, strengths
                np.testing.assert_array_equal(network.calcDegrees().array(), degrees)
                np.testing.assert_array_equal(network.calcInDegrees().array(), in_degrees)
                np.testing.assert_allclose(network.calcStrengths().array(), strengths, rtol=1e-12)
                np.testing.assert_allclose(network.calcInStrengths().array(), in_strengths, rtol=1e-12)
                self.assertEqual([v.countEdges() for v in network.vertices()], list(degrees))


class WriterTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.network = QLONetwork.initWithEdges(
            4, [0, 1, 2, 3], [1, 2, 0, 3], weights=[0.1, 2.5, 1e-7, 3], directed=True
        )
        self.network.setPropertiesOfVertices(["a", "b b", "c", "d"], "Name")

    def writers(self):
        return {
            "graphml": self.network.writeToURL,
            "pajek": self.network.writeToPajekURL,
            "edges": self.network.writeToEdgesURL,
        }

    def test_unwritable_paths_raise_os_error_with_the_reason(self):
        os.mkdir(self.path("folder"))
        for name, write in self.writers().items():
            for atomically in (True, False):
                with self.subTest(writer=name, atomically=atomically):
                    target = self.missing_folder_path("out." + name)
                    with self.assertRaises(OSError) as caught:
                        write(target, atomically=atomically)
                    self.assertIn("out." + name, str(caught.exception))
                    with self.assertRaises(OSError):
                        write(self.path("folder"), atomically)

    def test_written_files_read_back(self):
        graphml, pajek = self.path("n.graphml"), self.path("n.net")
        self.network.setPropertiesOfVertices(np.array([1, 2, 3, 4], dtype=np.int32), "count")
        self.network.writeToURL(graphml)
        self.network.writeToPajekURL(pajek, atomically=False)
        for back in (QLONetwork.initWithContentsOfURL(graphml), QLONetwork.initWithContentsOfPajekURL(pajek)):
            with self.subTest(back=back):
                self.assertTrue(back.isDirected())
                self.assertTrue(back.isEdgeWeighted())
                np.testing.assert_array_equal(back.edgeFromList, self.network.edgeFromList)
                np.testing.assert_array_equal(back.edgeToList, self.network.edgeToList)
                np.testing.assert_array_equal(back.edgesWeights, self.network.edgesWeights)
                self.assertEqual([v.name() for v in back.vertices()], ["a", "b b", "c", "d"])
        back = QLONetwork.initWithContentsOfURL(graphml)
        np.testing.assert_array_equal(back.propertyForKey("count").array(), [1, 2, 3, 4])

    def test_edge_list_lines(self):
        path = self.path("n.edges")
        self.network.writeToEdgesURL(path)
        rows = [line.split() for line in self.read_text("n.edges").splitlines()]
        self.assertEqual([(int(a), int(b)) for a, b, _ in rows], [(0, 1), (1, 2), (2, 0), (3, 3)])
        np.testing.assert_array_equal(
            np.array([w for _, _, w in rows], dtype=np.float32), self.network.edgesWeights
        )

    def test_failed_write_keeps_the_previous_file(self):
        # A target name at the length limit leaves no room for the temporary
        # name beside it, so the atomic write fails even with root's rights.
        name = "k" * (os.pathconf(self.folder, "PC_NAME_MAX") - 4) + ".net"
        path = self.write_text(name, "previous contents\n")
        for write in (self.network.writeToPajekURL, self.network.writeToURL):
            with self.subTest(writer=write.__name__):
                with self.assertRaises(OSError):
                    write(path)
                self.assertEqual(self.read_text(name), "previous contents\n")
                self.assertEqual(os.listdir(self.folder), [name])  # no temporary left
        # Writing in place is allowed to replace it.
        self.network.writeToPajekURL(path, atomically=False)
        self.assertTrue(self.read_text(name).startswith("*Vertices 4"))


class NetworkReadErrorTest(ScratchFolderTestCase):
    def test_bad_files_raise_read_error_with_line(self):
        pajek = self.write_text("bad.net", "*Vertices 3\n1 \"a\"\n*Edges\n1 2\n1 9\n")
        with self.assertRaises(plexview.ReadError) as caught:
            QLONetwork.initWithContentsOfPajekURL(pajek)
        self.assertEqual(caught.exception.line, 5)
        self.assertIn("line 5", str(caught.exception))
        self.assertEqual(caught.exception.file, pajek)

        graphml = self.write_text("bad.graphml", "<graphml>\n<graph>\n<node id='a'/>\n</graphml>\n")
        with self.assertRaises(plexview.ReadError) as caught:
            QLONetwork.initWithContentsOfURL(graphml)
        self.assertIsInstance(caught.exception, ValueError)
        self.assertGreater(caught.exception.line, 0)

    def test_missing_file(self):
        for read in (QLONetwork.initWithContentsOfURL, QLONetwork.initWithContentsOfPajekURL):
            with self.subTest(read=read.__name__), self.assertRaises(plexview.ReadError):
                read(self.path("absent"))


if __name__ == "__main__":
    unittest.main()
