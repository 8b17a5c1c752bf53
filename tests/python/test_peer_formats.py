"""GML, GEXF and edge lists against networkx and igraph: files the tools
write open in plexview as the tools read them back (structure, labels,
weights, node attributes), and the GEXF and GML files plexview writes open in
the tools with the same network, layout and colours."""

import html
import math
import random
import unittest
import warnings

import numpy as np

import peers
from peers import igraph, networkx, picture_of_igraph, picture_of_networkx, picture_of_plexview
from plexview import Precision, QLONetwork, QLOVector3dArray
from test_peers import PeerTestCase, source_networks

# networkx 2.8 reads GEXF only in the 1.1 and 1.2 namespaces; the elements
# and attributes it reads are the same in 1.3.
GEXF_13_TO_12 = [
    ("http://gexf.net/1.3/viz", "http://www.gexf.net/1.2draft/viz"),
    ("http://gexf.net/1.3", "http://www.gexf.net/1.2draft"),
    ('version="1.3"', 'version="1.2"'),
]


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


def graphs():
    graphs = peers.networkx_graphs()
    graphs["attributed"] = attributed_graph()
    return graphs


def property_values(network, name):
    value = network.propertyForKey(name)
    if isinstance(value, list):
        return value
    return value.array().astype(float).tolist()


class ToolFilesTest(PeerTestCase):
    def assert_attributes(self, network, graph, nodes, skip=("label", "viz", "id")):
        """Every node attribute the tool reads back is a vertex property of
        the same values (numbers as numbers, booleans as 0/1, texts as texts)."""
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

    @unittest.skipUnless(networkx, "networkx cannot be imported by this Python")
    def test_gml_and_gexf_written_by_networkx(self):
        for name, graph in graphs().items():
            with self.subTest(network=name, format="gml"):
                path = self.path(name + ".gml")
                networkx.write_gml(graph, path, stringizer=str)
                theirs = networkx.read_gml(path)
                network = QLONetwork.initWithContentsOfURL(path)
                self.assert_same_picture(picture_of_plexview(network), picture_of_networkx(theirs))
                self.assert_attributes(network, theirs, list(theirs.nodes))
            with self.subTest(network=name, format="gexf"):
                path = self.path(name + ".gexf")
                with warnings.catch_warnings():
                    warnings.simplefilter("ignore")
                    networkx.write_gexf(graph, path)
                theirs = networkx.read_gexf(path)
                network = QLONetwork.initWithContentsOfURL(path)
                self.assert_same_picture(
                    picture_of_plexview(network), picture_of_networkx(theirs, "label")
                )
                self.assert_attributes(network, theirs, list(theirs.nodes))

    @unittest.skipUnless(networkx, "networkx cannot be imported by this Python")
    def test_edge_lists_written_by_networkx(self):
        for name, graph in graphs().items():
            for suffix, delimiter in ((".csv", ","), (".tsv", "\t"), (".edges", " ")):
                if delimiter == " " and any(" " in str(node) for node in graph.nodes):
                    continue  # a blank-separated list cannot hold "a b"
                with self.subTest(network=name, format=suffix):
                    path = self.path(name + suffix)
                    weighted = any(w is not None for *_, w in graph.edges(data="weight"))
                    data = ["weight"] if weighted else False
                    networkx.write_edgelist(graph, path, delimiter=delimiter, data=data)
                    theirs = networkx.read_edgelist(
                        path,
                        delimiter=delimiter,
                        data=[("weight", float)] if weighted else True,
                        create_using=networkx.MultiGraph,
                    )
                    network = QLONetwork.initWithContentsOfURL(path)
                    self.assertEqual(network.isEdgeWeighted(), weighted)
                    self.assert_same_picture(
                        picture_of_plexview(network), picture_of_networkx(theirs)
                    )

    @unittest.skipUnless(igraph, "python3-igraph cannot be imported by this Python")
    def test_gml_written_by_igraph(self):
        for name, graph in peers.igraph_graphs().items():
            with self.subTest(network=name):
                path = self.path(name + ".gml")
                graph.write_gml(path)
                theirs = igraph.Graph.Read_GML(path)
                network = QLONetwork.initWithContentsOfURL(path)
                self.assert_same_structure(picture_of_plexview(network), picture_of_igraph(theirs))
                self.assertEqual(network.isEdgeWeighted(), "weight" in graph.es.attributes())
                if "name" in theirs.vs.attributes():
                    self.assertEqual(network.propertyForKey("name"), theirs.vs["name"])


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
    def our_networks(self):
        for name, picture, weighted in source_networks():
            network = peers.plexview_from_picture(picture, weighted)
            yield name, picture, weighted, network

    @unittest.skipUnless(networkx, "networkx cannot be imported by this Python")
    def test_networkx_reads_our_files(self):
        for index, (name, picture, weighted, network) in enumerate(self.our_networks()):
            position, colour = laid_out(network, index)
            with self.subTest(network=name, format="gexf"):
                path = self.path("ours.gexf")
                network.writeToGexfURL(path)
                with open(path, encoding="utf-8") as source:
                    text = source.read()
                for new, old in GEXF_13_TO_12:
                    text = text.replace(new, old)
                graph = networkx.read_gexf(self.write_text("ours12.gexf", text))
                found = picture_of_networkx(graph, label_attribute="label")
                self.assert_same_labeled_picture(picture, found)
                for i, node in enumerate(graph.nodes):
                    viz = graph.nodes[node]["viz"]
                    xyz = [viz["position"][axis] for axis in "xyz"]
                    np.testing.assert_array_equal(np.float32(xyz), position[i])
                    rgb = [viz["color"][c] for c in "rgb"]
                    self.assertEqual(rgb, colour[i].tolist())
            with self.subTest(network=name, format="gml"):
                path = self.path("ours.gml")
                network.writeToGmlURL(path, atomically=False)
                graph = networkx.read_gml(path, label="id")
                found = picture_of_networkx(graph, label_attribute="label")
                self.assert_same_labeled_picture(picture, found)
                for i, node in enumerate(graph.nodes):
                    xyz = [graph.nodes[node]["graphics"][axis] for axis in "xyz"]
                    np.testing.assert_array_equal(np.float32(xyz), position[i])

    @unittest.skipUnless(igraph, "python3-igraph cannot be imported by this Python")
    def test_igraph_reads_our_gml(self):
        for name, picture, weighted, network in self.our_networks():
            with self.subTest(network=name):
                path = self.path("ours.gml")
                network.writeToGmlURL(path)
                with warnings.catch_warnings():
                    warnings.simplefilter("ignore")
                    graph = igraph.Graph.Read_GML(path)
                # igraph 0.10.2 leaves character references such as &#227; as
                # they are (networkx, which reads GML as ASCII, needs them).
                graph.vs["label"] = [html.unescape(label) for label in graph.vs["label"]]
                found = picture_of_igraph(graph, label_attribute="label")
                self.assert_same_labeled_picture(picture, found)


if __name__ == "__main__":
    unittest.main()
