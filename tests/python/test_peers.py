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


def weighted(graph):
    """Whether the tool's graph has edge weights."""
    if igraph and isinstance(graph, igraph.Graph):
        return "weight" in graph.es.attributes()
    return any(w is not None for *_, w in graph.edges(data="weight"))


def source_networks():
    """(name, picture, weighted) for every test network of the tools that
    can be imported, as their own in-memory graphs describe them."""
    sources = []
    if networkx:
        for name, graph in peers.networkx_graphs().items():
            sources.append((name, picture_of_networkx(graph), weighted(graph)))
    if igraph:
        for name, graph in peers.igraph_graphs().items():
            sources.append((name, picture_of_igraph(graph), weighted(graph)))
    return sources


class ToolFilesTest(PeerTestCase):
    """The tools write; plexview reads what the tool reads back."""

    def test_files_written_by_the_tools(self):
        tools = []
        if networkx:
            tools.append(("networkx", peers.networkx_graphs(), peers.networkx_write,
                          peers.networkx_read, picture_of_networkx))
        if igraph:
            tools.append(("igraph", peers.igraph_graphs(), peers.igraph_write,
                          peers.igraph_read, picture_of_igraph))
        for tool, graphs, write, read, picture_of in tools:
            for name, graph in graphs.items():
                for kind in FORMATS:
                    with self.subTest(tool=tool, network=name, format=kind):
                        path = self.path(name + SUFFIX[kind])
                        write(graph, kind, path)
                        network = read_with_plexview(kind, path)
                        theirs = picture_of(read(kind, path))
                        self.assert_same_picture(picture_of_plexview(network), theirs)
                        # (networkx's Pajek files are left out here.)
                        if kind == "graphml" or tool == "igraph":
                            self.assertEqual(network.isEdgeWeighted(), weighted(graph))


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

    def test_the_tools_read_our_files(self):
        readers = []  # (tool, read, picture, the attribute holding Pajek labels)
        if networkx:
            readers.append(("networkx", peers.networkx_read, picture_of_networkx, None))
        if igraph:
            readers.append(("igraph", peers.igraph_read, picture_of_igraph, "name"))
        for tool, read, picture_of, pajek_label in readers:
            for name, picture, has_weights in source_networks():
                for kind in FORMATS:
                    with self.subTest(tool=tool, network=name, format=kind):
                        graph = read(kind, self.written(picture, has_weights, kind))
                        # GraphML readers keep our labels in the "Name" data.
                        label = pajek_label if kind == "pajek" else "Name"
                        found = picture_of(graph, label_attribute=label)
                        self.assert_same_labeled_picture(picture, found)
                        if tool == "igraph":
                            self.assertEqual("weight" in graph.es.attributes(), has_weights)


if __name__ == "__main__":
    unittest.main()
