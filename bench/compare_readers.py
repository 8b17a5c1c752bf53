#!/usr/bin/python3
"""Times Plexview's readers against igraph's and networkx's on the same
files, side by side in one run.

    PYTHONPATH=build/python /usr/bin/python3 bench/compare_readers.py \
        [--edges N] [--repeat R] [--no-networkx]

A labelled, weighted random network of N edges (default 1,000,000) on N/10
vertices, laid out in 3-D, is generated and written by Plexview as Pajek,
GraphML, GML, GEXF and an edge list. Plexview reads each file R times
(default 5), igraph R/2 times, networkx once (it is slow: minutes for GML and
GEXF at 1M edges); the best time counts. Prints one row per format with the
time ratios ("-" where a tool has no reader for the format).
"""
import argparse
import warnings
import os
import sys
import tempfile
import time

import numpy as np

import igraph
import plexview


def best_time(read, path, repeat):
    best = float("inf")
    result = None
    for _ in range(repeat):
        start = time.perf_counter()
        result = read(path)
        best = min(best, time.perf_counter() - start)
    return best, result


def main():
    warnings.simplefilter("ignore")  # igraph notes the GML graphics it skips
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--edges", type=int, default=1_000_000)
    parser.add_argument("--repeat", type=int, default=5)
    parser.add_argument("--no-networkx", dest="networkx", action="store_false")
    args = parser.parse_args()

    vertices = max(2, args.edges // 10)
    plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(7)
    rng = np.random.default_rng(7)
    sources = rng.integers(0, vertices, args.edges, dtype=np.uint64)
    targets = rng.integers(0, vertices, args.edges, dtype=np.uint64)
    weights = (rng.random(args.edges) * 10).astype(np.float32)
    network = plexview.QLONetwork.initWithEdges(vertices, sources, targets, weights)
    network.setPropertiesOfVertices([f"vertex {v}" for v in range(vertices)], "Name")
    layout = plexview.QLOVector3dArray.initWithSize(vertices, plexview.Precision.Float)
    layout.array()[:] = rng.uniform(-100, 100, (vertices, 3)).astype(np.float32)
    network.setPropertiesOfVertices(layout, "Position")

    with tempfile.TemporaryDirectory() as folder:
        files = {}
        for name, suffix, write in [
            ("Pajek", ".net", network.writeToPajekURL),
            ("GraphML", ".graphml", network.writeToURL),
            ("GML", ".gml", network.writeToGmlURL),
            ("GEXF", ".gexf", network.writeToGexfURL),
            ("edges", ".edges", network.writeToEdgesURL),
        ]:
            files[name] = os.path.join(folder, "network" + suffix)
            write(files[name])
        print(f"network: {vertices} vertices, {args.edges} edges, weighted, labelled, laid out")
        print("files: " + ", ".join(
            f"{name} {os.path.getsize(path) / 1e6:.1f} MB" for name, path in files.items()))
        print(f"best of {args.repeat} (Plexview), {max(1, args.repeat // 2)} (igraph), "
              "1 (networkx)")
        nx = None
        if args.networkx:
            import networkx as nx
        # networkx 2.8 reads GEXF only in the 1.1/1.2 namespaces: it reads a
        # copy of our 1.3 file with the namespace URIs changed.
        gexf12 = os.path.join(folder, "network12.gexf")
        with open(files["GEXF"], encoding="utf-8") as source, open(gexf12, "w") as out:
            out.write(source.read().replace("http://gexf.net/1.3", "http://www.gexf.net/1.2draft"))
        ours = plexview.QLONetwork.initWithContentsOfURL
        rows = [
            ("Pajek", plexview.QLONetwork.initWithContentsOfPajekURL, igraph.Graph.Read_Pajek, None),
            ("GraphML", ours, igraph.Graph.Read_GraphML, None),
            ("GML", ours, igraph.Graph.Read_GML, nx and (lambda p: nx.read_gml(p, label="id"))),
            ("GEXF", ours, None, nx and (lambda p: nx.read_gexf(gexf12))),
            ("edges", ours, lambda p: igraph.Graph.Read_Ncol(p, names=False, directed=False),
             None),
        ]
        print(f"{'format':8} {'plexview s':>11} {'igraph s':>9} {'ratio':>6} "
              f"{'networkx s':>11} {'ratio':>6}")
        failed = False
        for name, read_ours, read_igraph, read_networkx in rows:
            path = files[name]
            our_time, our_net = best_time(read_ours, path, args.repeat)
            counts = (our_net.countVertices(), our_net.countEdges())
            cells = []
            for read, repeat, count in [
                (read_igraph, max(1, args.repeat // 2), lambda g: (g.vcount(), g.ecount())),
                (read_networkx, 1, lambda g: (g.number_of_nodes(), g.number_of_edges())),
            ]:
                if read is None:
                    cells.append(f"{'-':>11} {'-':>6}" if cells else f"{'-':>9} {'-':>6}")
                    continue
                their_time, their_net = best_time(read, path, repeat)
                if count(their_net) != counts:
                    print(f"{name}: the readers disagree on the counts: {count(their_net)} "
                          f"against our {counts}", file=sys.stderr)
                    failed = True
                del their_net
                width = 11 if cells else 9
                cells.append(f"{their_time:{width}.3f} {their_time / our_time:6.1f}")
            print(f"{name:8} {our_time:11.3f} " + " ".join(cells))
        return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
