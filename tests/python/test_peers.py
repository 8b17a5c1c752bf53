"""plexview against igraph and networkx. Files the tools write must open in
plexview as the tools themselves read them back, and files plexview writes
must open in the tools with the same vertices, labels, edges, weights and
direction."""

import unittest

import numpy as np

import peers
from peers import (
    igraph,
    networkx,
    picture_of_igraph,
    picture_of_networkx,
    picture_of_plexview,
    plexview_from_picture,
)
from plexview import QLONetwork
from support import ScratchFolderTestCase

FORMATS = ("pajek", "graphml")
SUFFIX = {"pajek": ".net", "graphml": ".graphml"}


def read_with_plexview(kind, path):
    if kind == "pajek":
        return QLONetwork.initWithContentsOfPajekURL(path)
    return QLONetwork.initWithContentsOfURL(path)


class PeerTestCase(ScratchFolderTestCase):
    def assert_same_structure(self, ours, theirs):
        """Vertex count, direction, degrees and edges (by vertex position)."""
        self.assertEqual(ours.directed, theirs.directed, "direction")
        self.assertEqual(ours.vertex_count, theirs.vertex_count, "vertex count")
        self.assertEqual(len(ours.edges), len(theirs.edges), "edge count")
        self.assertEqual(ours.edge_multiset(), theirs.edge_multiset(), "edges and weights")
        self.assertEqual(ours.degrees, theirs.degrees, "degrees")
        self.assertEqual(ours.in_degrees, theirs.in_degrees, "in-degrees")
        np.testing.assert_allclose(ours.strengths, theirs.strengths, rtol=1e-6, err_msg="strengths")

    def assert_same_picture(self, ours, theirs):
        self.assertEqual(ours.labels, theirs.labels, "labels in vertex order")
        self.assert_same_structure(ours, theirs)

    def assert_same_labeled_picture(self, expected, found):
        """Labels and (label, label, weight) edges; a side without labels
        names its vertices by position."""
        count = expected.vertex_count
        self.assertEqual(
            [found.label_of(i) for i in range(found.vertex_count)],
            [expected.label_of(i) for i in range(count)],
            "labels in vertex order",
        )
        self.assertEqual(expected.labeled_edge_multiset(), found.labeled_edge_multiset(), "edges")
        self.assert_same_structure(expected, found)


@unittest.skipUnless(networkx, "networkx cannot be imported by this Python")
class NetworkxFilesTest(PeerTestCase):
    """networkx writes; plexview reads what networkx reads back."""

    def test_files_written_by_networkx(self):
        for name, graph in peers.networkx_graphs().items():
            for kind in FORMATS:
                with self.subTest(network=name, format=kind):
                    path = self.path(name + SUFFIX[kind])
                    peers.networkx_write(graph, kind, path)
                    theirs = picture_of_networkx(peers.networkx_read(kind, path))
                    network = read_with_plexview(kind, path)
                    ours = picture_of_plexview(network)
                    self.assert_same_picture(ours, theirs)
                    has_weights = any(w is not None for *_, w in graph.edges(data="weight"))
                    if kind == "graphml":
                        self.assertEqual(network.isEdgeWeighted(), has_weights)


@unittest.skipUnless(igraph, "python3-igraph cannot be imported by this Python")
class IgraphFilesTest(PeerTestCase):
    """igraph writes; plexview reads what igraph reads back."""

    def test_files_written_by_igraph(self):
        for name, graph in peers.igraph_graphs().items():
            for kind in FORMATS:
                with self.subTest(network=name, format=kind):
                    path = self.path(name + SUFFIX[kind])
                    peers.igraph_write(graph, kind, path)
                    theirs = picture_of_igraph(peers.igraph_read(kind, path))
                    network = read_with_plexview(kind, path)
                    self.assert_same_picture(picture_of_plexview(network), theirs)
                    self.assertEqual(network.isEdgeWeighted(), "weight" in graph.es.attributes())


def source_networks():
    """(name, picture, weighted) for every test network of the tools that
    can be imported, as their own in-memory graphs describe them."""
    sources = []
    if networkx:
        for name, graph in peers.networkx_graphs().items():
            weighted = any(w is not None for *_, w in graph.edges(data="weight"))
            sources.append((name, picture_of_networkx(graph), weighted))
    if igraph:
        for name, graph in peers.igraph_graphs().items():
            sources.append((name, picture_of_igraph(graph), "weight" in graph.es.attributes()))
    return sources


class OurFilesTest(PeerTestCase):
    """plexview writes; the tools read the same network."""

    def written(self, picture, weighted, kind):
        network = plexview_from_picture(picture, weighted)
        path = self.path("ours" + SUFFIX[kind])
        if kind == "pajek":
            network.writeToPajekURL(path)
        else:
            network.writeToURL(path)
        return path

    @unittest.skipUnless(networkx, "networkx cannot be imported by this Python")
    def test_networkx_reads_our_files(self):
        for name, picture, weighted in source_networks():
            for kind in FORMATS:
                with self.subTest(network=name, format=kind):
                    graph = peers.networkx_read(kind, self.written(picture, weighted, kind))
                    # read_pajek keys nodes by label; read_graphml by id, with
                    # our labels in the "Name" data.
                    label = None if kind == "pajek" else "Name"
                    found = picture_of_networkx(graph, label_attribute=label)
                    self.assert_same_labeled_picture(picture, found)

    @unittest.skipUnless(igraph, "python3-igraph cannot be imported by this Python")
    def test_igraph_reads_our_files(self):
        for name, picture, weighted in source_networks():
            for kind in FORMATS:
                with self.subTest(network=name, format=kind):
                    graph = peers.igraph_read(kind, self.written(picture, weighted, kind))
                    label = "name" if kind == "pajek" else "Name"
                    found = picture_of_igraph(graph, label_attribute=label)
                    self.assert_same_labeled_picture(picture, found)
                    self.assertEqual("weight" in graph.es.attributes(), weighted)


if __name__ == "__main__":
    unittest.main()
