"""Networks to and from networkx and igraph, checked against those libraries'
own view of the same graphs; reading by file type, the headless layout, and
the errors a script sees."""

import ast
import inspect
import os
import sys
import unittest
from collections import Counter
from unittest import mock

import igraph
import networkx as nx
import numpy as np

import plexview
from plexview import QLONetwork, QLOVector3dArray
from support import ScratchFolderTestCase


def edge_multiset(graph, default=None):
    """Every edge once per copy, as (ends, weight): the graph's own view."""
    def ends(u, v):
        return (u, v) if graph.is_directed() else frozenset((u, v))
    return Counter((ends(u, v), w) for u, v, w in graph.edges(data="weight", default=default))


def random_multigraph(directed):
    """Parallel edges, self-loops, a missing weight and node attributes of
    every kind, on nodes that are not 0..V-1."""
    rng = np.random.default_rng(5)
    graph = nx.MultiDiGraph() if directed else nx.MultiGraph()
    for i in range(40):
        graph.add_node(f"n{i}", score=float(i) / 3, kind=("odd", "even")[i % 2],
                       pos=(i, -i, 0.5 * i))
    for _ in range(150):
        u, v = rng.integers(0, 40, size=2)
        graph.add_edge(f"n{u}", f"n{v}", weight=float(rng.integers(1, 9)) / 4)
    graph.add_edge("n3", "n3", weight=2.5)
    graph.add_edge("n3", "n3", weight=0.25)
    graph.add_edge("n1", "n2")  # no weight: 1
    return graph


class NetworkxTest(unittest.TestCase):
    def test_round_trip_keeps_nodes_attributes_edges_weights_and_direction(self):
        for name, graph in [("multigraph", random_multigraph(False)),
                            ("multidigraph", random_multigraph(True))]:
            with self.subTest(name):
                network = plexview.from_networkx(graph)
                self.assertEqual(network.countEdges(), graph.number_of_edges())

                back = plexview.to_networkx(network)
                self.assertEqual(back.is_directed(), graph.is_directed())
                self.assertEqual(back.is_multigraph(), graph.is_multigraph())
                self.assertEqual(list(back), list(graph))
                self.assertEqual(edge_multiset(back), edge_multiset(graph, default=1.0))
                for node, data in graph.nodes(data=True):
                    expected = dict(data)
                    if "pos" in expected:
                        expected["pos"] = tuple(expected["pos"]) + (0.0,) * (3 - len(data["pos"]))
                    self.assertEqual(back.nodes[node], expected)

    def test_labels_and_positions_become_properties(self):
        graph = nx.les_miserables_graph()
        self.assertEqual(plexview.from_networkx(graph).propertyForKey("Name"), list(graph))
        network = plexview.from_networkx(random_multigraph(False))
        positions = network.propertyForKey("Position")
        self.assertIsInstance(positions, QLOVector3dArray)
        np.testing.assert_array_equal(positions.array()[5], [5, -5, 2.5])
        self.assertEqual(network.propertyForKey("kind")[:2], ["odd", "even"])

    def test_weight_attribute_errors(self):
        graph = nx.karate_club_graph()
        with self.assertRaisesRegex(ValueError, "'wieght'"):
            plexview.from_networkx(graph, weight="wieght")

    def test_a_missing_library_is_named(self):
        with mock.patch.dict(sys.modules, {"networkx": None, "igraph": None}):
            for call in (lambda: plexview.to_networkx(QLONetwork.initWithEdges(1, [], [])),
                         lambda: plexview.from_igraph(None)):
                with self.assertRaisesRegex(ImportError, r"needs the (networkx|igraph) package"):
                    call()


class IgraphTest(unittest.TestCase):
    def test_round_trip_against_igraph(self):
        tangled = igraph.Graph([(0, 1), (1, 0), (1, 0), (2, 2), (3, 1)], directed=True)
        tangled.vs["name"] = ["w", "x", "y", "z"]
        tangled.vs["pos"] = [(0, 0, 1), (1, 0, 0), (0, 1, 0), (2, 2, 2)]
        tangled.vs["size"] = [1.5, None, 3, 4]
        tangled.es["weight"] = [0.5, 1, 2, 4, 8]
        for graph in [tangled]:
            with self.subTest("loops and multi-edges"):
                network = plexview.from_igraph(graph)
                self.assertEqual(network.isDirected(), graph.is_directed())
                np.testing.assert_array_equal(network.calcDegrees().array(), graph.degree())
                back = plexview.to_igraph(network)
                self.assertEqual(back.get_edgelist(), graph.get_edgelist())
                self.assertEqual(back.is_directed(), graph.is_directed())
                for attribute in graph.es.attributes():
                    self.assertEqual(back.es[attribute], graph.es[attribute])
                for attribute in graph.vs.attributes():
                    expected = [np.nan if v is None else v for v in graph.vs[attribute]]
                    actual = [tuple(v) if isinstance(v, tuple) else v for v in back.vs[attribute]]
                    np.testing.assert_equal(actual, [tuple(v) if isinstance(v, tuple) else v
                                                     for v in expected])
        with self.assertRaisesRegex(ValueError, "'w'"):
            plexview.from_igraph(tangled, weight="w")


class ReadAndLayoutTest(ScratchFolderTestCase):
    def setUp(self):
        super().setUp()
        self.network = plexview.from_networkx(nx.karate_club_graph())

    def test_read_picks_the_reader_by_file_type(self):
        for name, write in [("k.graphml", self.network.writeToURL),
                            ("k.net", self.network.writeToPajekURL)]:
            with self.subTest(name):
                write(self.path(name))
                network = plexview.read(self.path(name))
                self.assertEqual((network.countVertices(), network.countEdges()), (34, 78))
        with self.assertRaisesRegex(plexview.ReadError, "missing.graphml"):
            plexview.read(self.path("missing.graphml"))

    def test_layout_shape_seed_and_start(self):
        first = plexview.layout(self.network, steps=60, seed=11)
        self.assertEqual((first.shape, first.dtype), ((34, 3), np.float32))
        np.testing.assert_array_equal(plexview.layout(self.network, steps=60, seed=11), first)
        self.assertIsNone(self.network.propertyForKey("Position"))  # left as it was
        # Without a seed the layout continues from the stored positions.
        self.network.setPropertiesOfVertices(first, "Position")
        np.testing.assert_array_equal(plexview.layout(self.network, steps=0), first)

    def test_render_without_a_display_says_what_to_do(self):
        hidden = {name: "" for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        with mock.patch.dict(os.environ, hidden):
            with self.assertRaisesRegex(RuntimeError, "xvfb-run"):
                plexview.render(self.network, self.path("k.png"))
        self.assertFalse(os.path.exists(self.path("k.png")))


class StubTest(unittest.TestCase):
    def test_the_stub_beside_the_module_matches_it(self):
        stub = os.path.join(os.path.dirname(plexview.__file__), "plexview.pyi")
        with open(stub, encoding="utf-8") as source:
            tree = ast.parse(source.read())
        named = {node.name: node for node in tree.body
                 if isinstance(node, (ast.FunctionDef, ast.ClassDef))}
        functions = [name for name, value in vars(plexview).items()
                     if inspect.isfunction(value) and not name.startswith("_")]
        self.assertEqual(set(functions) - set(named), set())
        for name, node in named.items():
            if name.startswith("_"):
                continue
            self.assertTrue(hasattr(plexview, name), name)
            for item in getattr(node, "body", []):
                if isinstance(item, ast.FunctionDef) and not item.name.startswith("__"):
                    self.assertTrue(hasattr(getattr(plexview, name), item.name),
                                    f"{name}.{item.name}")
            if name in functions:
                stubbed = [a.arg for a in node.args.args]
                self.assertEqual(stubbed, list(inspect.signature(vars(plexview)[name]).parameters))


if __name__ == "__main__":
    unittest.main()
