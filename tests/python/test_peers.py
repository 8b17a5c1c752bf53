"""plexview against networkx, once per file format and direction: files
networkx writes open in plexview as networkx itself reads them back
(structure, labels, weights, node attributes), and files plexview writes open
in networkx with the same vertices, labels, edges, weights, direction, and
for GEXF and GML the same layout and colours."""

import math
import random
import unittest
import warnings
from dataclasses import dataclass
from typing import List, Optional, Tuple

import networkx
import numpy as np

from plexview import Precision, QLONetwork, QLOVector3dArray
from support import ScratchFolderTestCase

# Each tool's picture of a network is reduced to plain values so the two can
# be compared field by field. Vertex indices are positions in the tool's own
# vertex order; weights are float32, the precision plexview stores.
Edge = Tuple[int, int, np.float32]


@dataclass
class Picture:
    """What one tool says about one network."""

    directed: bool
    labels: Optional[List[str]]  # None when the tool knows no vertex labels
    edges: List[Edge]  # any order
    vertex_count: int

    def edge_multiset(self):
        """Edges as a sorted list; an undirected edge with its ends in order."""
        edges = self.edges
        if not self.directed:
            edges = [(min(a, b), max(a, b), w) for a, b, w in edges]
        return sorted(edges)

    def label_of(self, index):
        return self.labels[index] if self.labels is not None else str(index)

    def labeled_edge_multiset(self):
        """Edges as (label, label, weight), a sorted list; without labels a
        vertex is named by its position."""
        edges = [(self.label_of(a), self.label_of(b), w) for a, b, w in self.edges]
        if not self.directed:
            edges = [(min(a, b), max(a, b), w) for a, b, w in edges]
        return sorted(edges)


def float32(value):
    return np.float32(1.0 if value is None else value)


def picture_of_plexview(network):
    labels = None
    if isinstance(network.propertyForKey("Name"), list):
        labels = [network.vertexName(i) for i in range(network.countVertices())]
    edges = list(
        zip(
            network.edgeFromList.tolist(),
            network.edgeToList.tolist(),
            network.edgesWeights.astype(np.float32),
        )
    )
    return Picture(
        directed=network.isDirected(),
        labels=labels,
        edges=edges,
        vertex_count=network.countVertices(),
    )


def picture_of_networkx(graph, label_attribute=None):
    """networkx's own view, vertices in the graph's node order. Labels are the
    node keys, or the `label_attribute` of each node when given (None when no
    node has it)."""
    nodes = list(graph.nodes)
    index = {node: i for i, node in enumerate(nodes)}
    if label_attribute is None:
        labels = [str(node) for node in nodes]
    else:
        found = [graph.nodes[node].get(label_attribute) for node in nodes]
        labels = None if all(label is None for label in found) else [str(x) for x in found]
    edges = [
        (index[a], index[b], float32(w)) for a, b, w in graph.edges(data="weight", default=None)
    ]
    return Picture(
        directed=graph.is_directed(), labels=labels, edges=edges, vertex_count=len(nodes)
    )


def networkx_graphs():
    """name -> networkx graph. Nodes keep their keys; weights where the data
    set has them."""
    rng = random.Random(17)
    directed = networkx.gn_graph(40, seed=3)  # a growing tree of arcs, no loops
    directed.add_edge(0, 5)  # a pair of opposite arcs
    directed.add_edge(7, 7)  # a loop
    # The weights mix Python ints and floats, as real data often does
    # (networkx then declares one "weight" GraphML key per type).
    for a, b in directed.edges:
        directed.edges[a, b]["weight"] = rng.choice(
            [rng.uniform(0.001, 100.0), rng.randint(1, 9), 1e-7 * rng.random(), 3.0e12]
        )
    # Undirected, with a loop and parallel edges of different weights.
    multi = networkx.MultiGraph()
    multi.add_nodes_from(["hub", "a b", "c", "lonely"])
    multi.add_edge("hub", "a b", weight=0.25)
    multi.add_edge("hub", "a b", weight=4.0)
    multi.add_edge("c", "c", weight=1.5)
    multi.add_edge("c", "hub", weight=1e-3)
    return {
        "karate_club": networkx.karate_club_graph(),
        "directed_weighted": directed,
        "multi_loops": multi,
    }


def plexview_from_picture(picture, weighted):
    """A plexview network with the picture's vertices, edges (in order),
    direction, labels as "Name" and weights when `weighted`."""
    sources = np.array([a for a, _, _ in picture.edges], dtype=np.int64)
    targets = np.array([b for _, b, _ in picture.edges], dtype=np.int64)
    weights = np.array([w for _, _, w in picture.edges], dtype=np.float32) if weighted else None
    network = QLONetwork.initWithEdges(
        picture.vertex_count, sources, targets, weights, directed=picture.directed
    )
    if picture.labels is not None:
        network.setPropertiesOfVertices(picture.labels, "Name")
    return network


# networkx 2.8 reads GEXF only in the 1.1 and 1.2 namespaces; the elements
# and attributes it reads are the same in 1.3.
GEXF_13_TO_12 = [
    ("http://gexf.net/1.3/viz", "http://www.gexf.net/1.2draft/viz"),
    ("http://gexf.net/1.3", "http://www.gexf.net/1.2draft"),
    ('version="1.3"', 'version="1.2"'),
]


def weighted(graph):
    return any(w is not None for *_, w in graph.edges(data="weight"))


def attributed_graph():
    """A directed weighted random graph with text, integer, float and boolean
    node attributes, one node lacking some of them."""
    rng = random.Random(5)
    graph = networkx.gnm_random_graph(30, 90, seed=11, directed=True)
    for node in graph.nodes:
        graph.nodes[node]["city"] = rng.choice(["Lyon", "São Paulo", 'say "x" & <y>'])
        graph.nodes[node]["rank"] = rng.randint(-5, 500)
        graph.nodes[node]["score"] = rng.uniform(-1.0, 1.0)
        graph.nodes[node]["active"] = rng.random() < 0.5
    for key in ("rank", "score"):
        del graph.nodes[3][key]
    for a, b in graph.edges:
        graph.edges[a, b]["weight"] = rng.choice([rng.uniform(0.01, 9.0), rng.randint(1, 5)])
    return graph


def write_edge_list(graph, path):
    networkx.write_edgelist(graph, path, delimiter=",", data=["weight"] if weighted(graph) else False)


def read_edge_list(graph, path):
    data = [("weight", float)] if weighted(graph) else True
    return networkx.read_edgelist(path, delimiter=",", data=data, create_using=networkx.MultiGraph)


# suffix: networkx's writer, its reader, the node attribute networkx reads
# labels from, whether the node attributes are checked, and whether the file
# tells weighted from unweighted (networkx's Pajek, GML and GEXF files do not
# say; the attributed graph's attributes do not fit Pajek or plain GraphML).
THEIR_FILES = {
    ".net": (networkx.write_pajek, lambda g, p: networkx.read_pajek(p), None, False, False),
    ".graphml": (networkx.write_graphml, lambda g, p: networkx.read_graphml(p), None, False, True),
    ".gml": (lambda g, p: networkx.write_gml(g, p, stringizer=str),
             lambda g, p: networkx.read_gml(p), None, True, False),
    ".gexf": (networkx.write_gexf, lambda g, p: networkx.read_gexf(p), "label", True, False),
    ".csv": (write_edge_list, read_edge_list, None, False, True),
}


def property_values(network, name):
    value = network.propertyForKey(name)
    if isinstance(value, list):
        return value
    return value.array().astype(float).tolist()


def read_our_gexf(path):
    with open(path, encoding="utf-8") as source:
        text = source.read()
    for new, old in GEXF_13_TO_12:
        text = text.replace(new, old)
    with open(path, "w", encoding="utf-8") as out:
        out.write(text)
    return networkx.read_gexf(path)


# suffix: plexview's writer, networkx's reader, the attribute holding the labels
# and each node's position in what networkx read (None when the format has none).
OUR_FILES = {
    ".net": (QLONetwork.writeToPajekURL, networkx.read_pajek, None, None),
    ".graphml": (QLONetwork.writeToURL, networkx.read_graphml, "Name", None),
    ".gexf": (QLONetwork.writeToGexfURL, read_our_gexf, "label",
              lambda data: [data["viz"]["position"][axis] for axis in "xyz"]),
    ".gml": (lambda network, path: network.writeToGmlURL(path, atomically=False),
             lambda path: networkx.read_gml(path, label="id"), "label",
             lambda data: [data["graphics"][axis] for axis in "xyz"]),
}


class PeerTestCase(ScratchFolderTestCase):
    def assert_same_structure(self, ours, theirs):
        """Vertex count, direction and edges (by vertex position)."""
        self.assertEqual(ours.directed, theirs.directed, "direction")
        self.assertEqual(ours.vertex_count, theirs.vertex_count, "vertex count")
        self.assertEqual(ours.edge_multiset(), theirs.edge_multiset(), "edges and weights")

    def assert_same_labeled_picture(self, expected, found):
        """Labels and (label, label, weight) edges; a side without labels
        names its vertices by position."""
        self.assertEqual(
            [found.label_of(i) for i in range(found.vertex_count)],
            [expected.label_of(i) for i in range(expected.vertex_count)],
            "labels in vertex order",
        )
        self.assertEqual(expected.labeled_edge_multiset(), found.labeled_edge_multiset(), "edges")
        self.assert_same_structure(expected, found)


class TheirFilesTest(PeerTestCase):
    def assert_attributes(self, network, graph):
        """Every node attribute networkx reads back is a vertex property of
        the same values (numbers as numbers, booleans as 0/1, texts as texts)."""
        nodes = list(graph.nodes)
        skip = ("label", "viz", "id")
        names = {key for node in nodes for key in graph.nodes[node] if key not in skip}
        for name in names:
            ours = property_values(network, name)
            for index, node in enumerate(nodes):
                theirs = graph.nodes[node].get(name)
                if theirs is None:
                    self.assertTrue(ours[index] in ("", None) or math.isnan(ours[index]), name)
                elif isinstance(theirs, str):
                    self.assertEqual(ours[index], theirs, name)
                else:
                    self.assertAlmostEqual(ours[index], float(theirs), places=9, msg=name)

    def test_files_written_by_networkx(self):
        graphs = dict(networkx_graphs(), attributed=attributed_graph())
        for suffix, (write, read, label, attributes, tells_weights) in THEIR_FILES.items():
            for name, graph in graphs.items():
                if name == "attributed" and not attributes and suffix != ".csv":
                    continue
                with self.subTest(network=name, format=suffix):
                    path = self.path(name + suffix)
                    with warnings.catch_warnings():
                        warnings.simplefilter("ignore")
                        write(graph, path)
                    theirs = read(graph, path)
                    network = (QLONetwork.initWithContentsOfPajekURL if suffix == ".net"
                               else QLONetwork.initWithContentsOfURL)(path)
                    ours = picture_of_plexview(network)
                    found = picture_of_networkx(theirs, label)
                    self.assertEqual(ours.labels, found.labels, "labels in vertex order")
                    self.assert_same_structure(ours, found)
                    if tells_weights:
                        self.assertEqual(network.isEdgeWeighted(), weighted(graph))
                    if attributes:
                        self.assert_attributes(network, theirs)


def laid_out(network, seed):
    """The network with a "Position" and a "Color" of its own."""
    rng = np.random.default_rng(seed)
    count = network.countVertices()
    position = QLOVector3dArray.initWithSize(count, Precision.Float)
    position.array()[:] = rng.uniform(-50, 50, (count, 3)).astype(np.float32)
    colour = QLOVector3dArray.initWithSize(count, Precision.Float)
    colour.array()[:] = rng.integers(0, 256, (count, 3)) / 255.0
    network.setPropertiesOfVertices(position, "Position")
    network.setPropertiesOfVertices(colour, "Color")
    return position.array().copy(), np.rint(colour.array() * 255).astype(int)


class OurFilesTest(PeerTestCase):
    def test_networkx_reads_our_files(self):
        for index, (name, graph) in enumerate(networkx_graphs().items()):
            picture = picture_of_networkx(graph)
            for suffix, (write, read, label, position_of) in OUR_FILES.items():
                with self.subTest(network=name, format=suffix):
                    network = plexview_from_picture(picture, weighted(graph))
                    if position_of is not None:
                        position, colour = laid_out(network, index)
                    path = self.path("ours" + suffix)
                    write(network, path)
                    theirs = read(path)
                    self.assert_same_labeled_picture(picture, picture_of_networkx(theirs, label))
                    if position_of is None:
                        continue
                    for i, data in enumerate(theirs.nodes.values()):
                        np.testing.assert_array_equal(np.float32(position_of(data)), position[i])
                        if suffix == ".gexf":
                            rgb = [data["viz"]["color"][c] for c in "rgb"]
                            self.assertEqual(rgb, colour[i].tolist())


if __name__ == "__main__":
    unittest.main()
