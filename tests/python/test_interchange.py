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
    def cases(self):
        karate = nx.karate_club_graph()
        directed = nx.gnp_random_graph(60, 0.08, seed=3, directed=True)
        for node in directed:
            directed.nodes[node]["pos"] = (node, 2.0 * node)  # 2-D: z becomes 0
            directed.nodes[node]["rank"] = node % 4
        return [
            ("karate", karate),
            ("les miserables", nx.les_miserables_graph()),
            ("directed with 2-D positions", directed),
            ("multigraph", random_multigraph(False)),
            ("multidigraph", random_multigraph(True)),
        ]

    def test_round_trip_keeps_nodes_attributes_edges_weights_and_direction(self):
        for name, graph in self.cases():
            with self.subTest(name):
                network = plexview.from_networkx(graph)
                self.assertEqual(network.countVertices(), graph.number_of_nodes())
                self.assertEqual(network.countEdges(), graph.number_of_edges())
                self.assertEqual(network.isDirected(), graph.is_directed())
                weighted = any("weight" in d for _, _, d in graph.edges(data=True))
                self.assertEqual(network.isEdgeWeighted(), weighted)

                back = plexview.to_networkx(network)
                self.assertEqual(back.is_directed(), graph.is_directed())
                self.assertEqual(back.is_multigraph(), graph.is_multigraph())
                self.assertEqual(list(back), list(graph))
                self.assertEqual(edge_multiset(back),
                                 edge_multiset(graph, default=1.0 if weighted else None))
                for node, data in graph.nodes(data=True):
                    expected = dict(data)
                    if "pos" in expected:
                        expected["pos"] = tuple(expected["pos"]) + (0.0,) * (3 - len(data["pos"]))
                    self.assertEqual(back.nodes[node], expected)

    def test_labels_and_positions_become_properties(self):
        graph = nx.les_miserables_graph()
        network = plexview.from_networkx(graph)
        self.assertEqual(network.propertyForKey("Name"), list(graph))
        self.assertIsNone(plexview.from_networkx(nx.path_graph(3)).propertyForKey("Name"))

        network = plexview.from_networkx(random_multigraph(False))
        positions = network.propertyForKey("Position")
        self.assertIsInstance(positions, QLOVector3dArray)
        np.testing.assert_array_equal(positions.array()[5], [5, -5, 2.5])
        self.assertEqual(network.propertyForKey("kind")[:2], ["odd", "even"])

    def test_which_networkx_class_comes_back(self):
        ring = QLONetwork.initWithEdges(4, [0, 1, 2, 3], [1, 2, 3, 0])
        doubled = QLONetwork.initWithEdges(3, [0, 1, 1], [1, 0, 2])
        reversed_pair = QLONetwork.initWithEdges(3, [0, 1], [1, 0], directed=True)
        for network, expected in [(ring, nx.Graph), (doubled, nx.MultiGraph),
                                  (reversed_pair, nx.DiGraph)]:
            with self.subTest(expected.__name__):
                graph = plexview.to_networkx(network)
                self.assertIs(type(graph), expected)
                self.assertEqual(graph.number_of_edges(), network.countEdges())

    def test_repeated_labels_key_nodes_by_number(self):
        network = QLONetwork.initWithEdges(3, [0, 1], [1, 2])
        network.setPropertiesOfVertices(["a", "b", "a"], "Name")
        graph = plexview.to_networkx(network)
        self.assertEqual(list(graph), [0, 1, 2])
        self.assertEqual(graph.nodes[2], {"Name": "a"})

    def test_weight_attribute_errors(self):
        graph = nx.karate_club_graph()
        with self.assertRaisesRegex(ValueError, r"no edge has the weight attribute 'wieght'.*"
                                                r"'weight'"):
            plexview.from_networkx(graph, weight="wieght")
        self.assertFalse(plexview.from_networkx(graph, weight=None).isEdgeWeighted())
        self.assertFalse(plexview.from_networkx(nx.path_graph(4)).isEdgeWeighted())
        graph.edges[0, 1]["label"] = "strong"
        with self.assertRaisesRegex(ValueError,
                                    r"edge \(0, 1\) has the weight 'strong' under 'label'"):
            plexview.from_networkx(graph, weight="label")

    def test_a_missing_library_is_named(self):
        with mock.patch.dict(sys.modules, {"networkx": None, "igraph": None}):
            for call in (lambda: plexview.to_networkx(QLONetwork.initWithEdges(1, [], [])),
                         lambda: plexview.from_igraph(None)):
                with self.assertRaisesRegex(ImportError, r"needs the (networkx|igraph) package"):
                    call()


class IgraphTest(unittest.TestCase):
    def test_round_trip_against_igraph(self):
        famous = igraph.Graph.Famous("Zachary")
        tangled = igraph.Graph([(0, 1), (1, 0), (1, 0), (2, 2), (3, 1)], directed=True)
        tangled.vs["name"] = ["w", "x", "y", "z"]
        tangled.vs["pos"] = [(0, 0, 1), (1, 0, 0), (0, 1, 0), (2, 2, 2)]
        tangled.vs["size"] = [1.5, None, 3, 4]
        tangled.es["weight"] = [0.5, 1, 2, 4, 8]
        for name, graph in [("Zachary", famous), ("loops and multi-edges", tangled)]:
            with self.subTest(name):
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
        with self.assertRaisesRegex(ValueError, "no edge has the weight attribute 'w'"):
            plexview.from_igraph(famous, weight="w")


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
        with self.assertRaises(plexview.ReadError) as raised:
            plexview.read(self.path("missing.graphml"))
        self.assertIn("missing.graphml", str(raised.exception))

    def test_layout_shape_seed_and_start(self):
        first = plexview.layout(self.network, steps=60, seed=11)
        self.assertEqual((first.shape, first.dtype), ((34, 3), np.float32))
        np.testing.assert_array_equal(plexview.layout(self.network, steps=60, seed=11), first)
        self.assertFalse(np.array_equal(plexview.layout(self.network, steps=60, seed=12), first))
        self.assertIsNone(self.network.propertyForKey("Position"))  # left as it was

        # Without a seed the layout continues from the stored positions.
        self.network.setPropertiesOfVertices(first, "Position")
        np.testing.assert_array_equal(plexview.layout(self.network, steps=0), first)
        moved = plexview.layout(self.network, steps=5, theta=0.5)
        self.assertFalse(np.array_equal(moved, first))
        np.testing.assert_array_equal(self.network.propertyForKey("Position").array(), first)

    def test_multilevel_start_places_a_random_start(self):
        ring = QLONetwork.initWithEdges(400, np.arange(400), (np.arange(400) + 1) % 400)
        plain = plexview.layout(ring, steps=0, seed=2)
        placed = plexview.layout(ring, steps=0, seed=2, multilevel=True)
        self.assertEqual(placed.shape, (400, 3))
        self.assertTrue(np.isfinite(placed).all())
        self.assertFalse(np.array_equal(placed, plain))

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
