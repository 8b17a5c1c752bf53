#!/usr/bin/python3
"""Times plexview.from_networkx / to_networkx (and the igraph pair) against
networkx building the same graph from its edge list.

    PYTHONPATH=build/python /usr/bin/python3 bench/compare_interchange.py [--edges N] [--repeat R]

A random weighted graph of N edges (default 1,000,000) on N/10 vertices is
built once. The reference is networkx's own construction, nx.Graph(edges)
from a list of (u, v) pairs and nx.Graph() with add_weighted_edges_from for
(u, v, w) triples. Each operation runs R times (default 3); the best time
counts. Prints one row per operation with its ratio to nx.Graph(edges).
"""
import argparse
import gc
import time

import igraph
import networkx as nx
import numpy as np

import plexview


def best_time(run, repeat):
    best = float("inf")
    result = None
    for _ in range(repeat):
        result = None
        gc.collect()
        start = time.perf_counter()
        result = run()
        best = min(best, time.perf_counter() - start)
    return best, result


def weighted_graph(triples):
    graph = nx.Graph()
    graph.add_weighted_edges_from(triples)
    return graph


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--edges", type=int, default=1_000_000)
    parser.add_argument("--repeat", type=int, default=3)
    args = parser.parse_args()

    vertices = max(2, args.edges // 10)
    rng = np.random.default_rng(1)
    sources = rng.integers(0, vertices, args.edges)
    targets = rng.integers(0, vertices, args.edges)
    weights = rng.integers(1, 100, args.edges) / 10.0
    pairs = list(zip(sources.tolist(), targets.tolist()))
    triples = list(zip(sources.tolist(), targets.tolist(), weights.tolist()))

    reference, graph = best_time(lambda: nx.Graph(pairs), args.repeat)
    weighted_reference, weighted = best_time(lambda: weighted_graph(triples), args.repeat)
    network = plexview.from_networkx(weighted)
    rows = [
        ("nx.Graph(edge pairs)", reference),
        ("nx.Graph() + add_weighted_edges_from", weighted_reference),
        ("plexview.from_networkx (unweighted)", best_time(
            lambda: plexview.from_networkx(graph), args.repeat)[0]),
        ("plexview.from_networkx (weighted)", best_time(
            lambda: plexview.from_networkx(weighted), args.repeat)[0]),
        ("plexview.to_networkx (weighted)", best_time(
            lambda: plexview.to_networkx(network), args.repeat)[0]),
        ("plexview.to_igraph (weighted)", best_time(
            lambda: plexview.to_igraph(network), args.repeat)[0]),
    ]
    as_igraph = plexview.to_igraph(network)
    rows.append(("plexview.from_igraph (weighted)", best_time(
        lambda: plexview.from_igraph(as_igraph), args.repeat)[0]))
    rows.append(("igraph.Graph(edge pairs)", best_time(
        lambda: igraph.Graph(n=vertices, edges=pairs), args.repeat)[0]))

    print("%d vertices, %d edges (%d distinct in networkx), best of %d"
          % (vertices, args.edges, graph.number_of_edges(), args.repeat))
    print("%-40s %9s %8s" % ("operation", "seconds", "ratio"))
    for name, seconds in rows:
        print("%-40s %9.3f %8.2f" % (name, seconds, seconds / reference))


if __name__ == "__main__":
    main()
