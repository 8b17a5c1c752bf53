#!/usr/bin/python3
"""Times Plexview's Pajek and GraphML readers against igraph's on the same
files, side by side in one run.

    PYTHONPATH=build/python /usr/bin/python3 bench/compare_readers.py [--edges N] [--repeat R]

A labelled, weighted random network of N edges (default 1,000,000) on N/10
vertices is generated and written by Plexview in both formats. Each reader
reads each file R times (default 5); the best time counts. Prints one row per
reader and format and the speed ratio.
"""
import argparse
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
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--edges", type=int, default=1_000_000)
    parser.add_argument("--repeat", type=int, default=5)
    args = parser.parse_args()

    vertices = max(2, args.edges // 10)
    plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(7)
    rng = np.random.default_rng(7)
    sources = rng.integers(0, vertices, args.edges, dtype=np.uint64)
    targets = rng.integers(0, vertices, args.edges, dtype=np.uint64)
    weights = (rng.random(args.edges) * 10).astype(np.float32)
    network = plexview.QLONetwork.initWithEdges(vertices, sources, targets, weights)
    network.setPropertiesOfVertices([f"vertex {v}" for v in range(vertices)], "Name")

    with tempfile.TemporaryDirectory() as folder:
        pajek = os.path.join(folder, "network.net")
        graphml = os.path.join(folder, "network.graphml")
        network.writeToPajekURL(pajek)
        network.writeToURL(graphml)
        print(f"network: {vertices} vertices, {args.edges} edges, weighted, labelled")
        print(f"files: Pajek {os.path.getsize(pajek) / 1e6:.1f} MB, "
              f"GraphML {os.path.getsize(graphml) / 1e6:.1f} MB; best of {args.repeat}")
        rows = [
            ("Pajek", pajek, plexview.QLONetwork.initWithContentsOfPajekURL, igraph.Graph.Read_Pajek),
            ("GraphML", graphml, plexview.QLONetwork.initWithContentsOfURL, igraph.Graph.Read_GraphML),
        ]
        print(f"{'format':8} {'plexview s':>11} {'igraph s':>9} {'ratio':>6}")
        failed = False
        for name, path, ours, theirs in rows:
            our_time, our_net = best_time(ours, path, args.repeat)
            their_time, their_net = best_time(theirs, path, max(1, args.repeat // 2))
            if our_net.countEdges() != their_net.ecount() or our_net.countVertices() != their_net.vcount():
                print(f"{name}: the readers disagree on the counts", file=sys.stderr)
                failed = True
            print(f"{name:8} {our_time:11.3f} {their_time:9.3f} {their_time / our_time:6.1f}")
        return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
