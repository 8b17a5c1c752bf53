"""Helpers for checking plexview against igraph and networkx: the networks the
checks use, and each tool's picture of a network reduced to plain values so
the three can be compared field by field. Vertex indices are positions in the
tool's own vertex order; weights are float32, the precision plexview stores."""

import random
import warnings
from dataclasses import dataclass
from typing import List, Optional, Tuple

import numpy as np

try:
    import igraph
except ImportError:  # the checks that need it are skipped
    igraph = None
try:
    import networkx
except ImportError:
    networkx = None

import plexview

Edge = Tuple[int, int, np.float32]


@dataclass
class Picture:
    """What one tool says about one network."""

    directed: bool
    labels: Optional[List[str]]  # None when the tool knows no vertex labels
    edges: List[Edge]  # any order
    degrees: List[int]
    in_degrees: List[int]  # equal to degrees for undirected networks
    strengths: List[float]

    @property
    def vertex_count(self):
        return len(self.degrees)

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


# --- pictures -------------------------------------------------------------


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
        degrees=network.calcDegrees().array().astype(int).tolist(),
        in_degrees=network.calcInDegrees().array().astype(int).tolist(),
        strengths=network.calcStrengths().array().tolist(),
    )


def picture_of_igraph(graph, label_attribute="name"):
    """igraph's own view: labels from `label_attribute` when the graph has it,
    weights from "weight" (1 when absent)."""
    labels = None
    if label_attribute in graph.vs.attributes():
        labels = [str(label) for label in graph.vs[label_attribute]]
    weighted = "weight" in graph.es.attributes()
    weights = graph.es["weight"] if weighted else [None] * graph.ecount()
    edges = [(e.source, e.target, float32(w)) for e, w in zip(graph.es, weights)]
    mode_in = "in" if graph.is_directed() else "all"
    return Picture(
        directed=graph.is_directed(),
        labels=labels,
        edges=edges,
        degrees=graph.degree(),
        in_degrees=graph.degree(mode=mode_in),
        strengths=graph.strength(weights="weight" if weighted else None),
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
    in_degree = graph.in_degree if graph.is_directed() else graph.degree
    return Picture(
        directed=graph.is_directed(),
        labels=labels,
        edges=edges,
        degrees=[graph.degree[node] for node in nodes],
        in_degrees=[in_degree[node] for node in nodes],
        strengths=[graph.degree(node, weight="weight") for node in nodes],
    )


# --- the networks ----------------------------------------------------------


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
        "les_miserables": networkx.les_miserables_graph(),
        "davis_southern_women": networkx.davis_southern_women_graph(),
        "directed_weighted": directed,
        "multi_loops": multi,
    }


def igraph_graphs():
    """name -> igraph graph: Zachary's karate club (no labels, no weights) and
    a directed graph with loops, "name" labels and float weights."""
    rng = random.Random(23)
    state = random.getstate()
    random.seed(23)  # igraph draws from Python's random module
    try:
        directed = igraph.Graph.Erdos_Renyi(n=30, m=100, directed=True, loops=True)
    finally:
        random.setstate(state)
    names = [f"v{i}" for i in range(30)]
    names[3] = "two words"
    names[4] = "São Paulo"
    names[5] = "x_1.5"
    directed.vs["name"] = names
    directed.es["weight"] = [
        rng.choice([rng.uniform(-5.0, 5.0), float(rng.randint(1, 20)), 0.1]) for _ in directed.es
    ]
    return {"zachary": igraph.Graph.Famous("Zachary"), "directed_named": directed}


# --- writing with the tools -------------------------------------------------


def networkx_write(graph, kind, path):
    # Node attributes that are not text are reported by write_pajek and left out.
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        if kind == "pajek":
            networkx.write_pajek(graph, path)
        else:
            # GraphML graph data holds single values: the Davis graph's lists
            # of its two vertex groups cannot be written.
            graph = graph.copy()
            for key, value in list(graph.graph.items()):
                if not isinstance(value, (str, int, float, bool)):
                    del graph.graph[key]
            networkx.write_graphml(graph, path)


def networkx_read(kind, path):
    return networkx.read_pajek(path) if kind == "pajek" else networkx.read_graphml(path)


def igraph_write(graph, kind, path):
    if kind == "pajek":
        # igraph's Pajek writer takes labels from the "id" attribute.
        graph = graph.copy()
        if "name" in graph.vs.attributes():
            graph.vs["id"] = graph.vs["name"]
        graph.write_pajek(path)
    else:
        graph.write_graphml(path)


def igraph_read(kind, path):
    if kind == "pajek":
        return igraph.Graph.Read_Pajek(path)
    return igraph.Graph.Read_GraphML(path)


# --- plexview networks from the tools' graphs -------------------------------


def plexview_from_picture(picture, weighted):
    """A plexview network with the picture's vertices, edges (in order),
    direction, labels as "Name" and weights when `weighted`."""
    sources = np.array([a for a, _, _ in picture.edges], dtype=np.int64)
    targets = np.array([b for _, b, _ in picture.edges], dtype=np.int64)
    weights = np.array([w for _, _, w in picture.edges], dtype=np.float32) if weighted else None
    network = plexview.QLONetwork.initWithEdges(
        picture.vertex_count, sources, targets, weights, directed=picture.directed
    )
    if picture.labels is not None:
        network.setPropertiesOfVertices(picture.labels, "Name")
    return network
