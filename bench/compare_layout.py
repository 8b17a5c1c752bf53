#!/usr/bin/python3
"""Times one layout step of Plexview against one iteration of igraph's 3-D
Fruchterman-Reingold layout with its grid off (exact all-pairs repulsion, as
ours), on the same random network, side by side in one run; with --ngraph
FOLDER also our octree step (theta 0.8) against ngraph.forcelayout's 3-D
Barnes-Hut step (theta 0.8), run with Node from the npm packages installed in
FOLDER (npm install --prefix build/ngraph ngraph.forcelayout ngraph.graph).

    PYTHONPATH=build/python /usr/bin/python3 bench/compare_layout.py [--vertices N] [--degree K]
        [--ngraph build/ngraph]

Plexview runs `--steps` plain-mode steps (default 20) after one warm-up step;
igraph runs `--niter` iterations (default 20) in one call. Both times are
divided by their number of iterations; the best of `--repeat` runs counts.
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile
import time

import igraph
import numpy as np

import plexview


def best(fn, repeat):
    times = []
    for _ in range(repeat):
        start = time.perf_counter()
        fn()
        times.append(time.perf_counter() - start)
    return min(times)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vertices", type=int, default=10_000)
    parser.add_argument("--degree", type=float, default=8.0)
    parser.add_argument("--steps", type=int, default=20)
    parser.add_argument("--niter", type=int, default=20)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--ngraph", help="folder with ngraph.forcelayout in node_modules")
    args = parser.parse_args()

    plexview.QLORandomGenerator.sharedRandomGenerator().setSeed(11)
    network = plexview.QLONetwork.initRandomNetworkWithNumberOfVertices(args.vertices, args.degree)
    edges = np.stack([network.edgeFromList, network.edgeToList], axis=1).astype(np.int64)
    graph = igraph.Graph(n=args.vertices, edges=edges.tolist(), directed=False)

    view = plexview.VXLNetworkView()
    view.setNetwork(network)
    view.prepareFrame()
    view.iterateBy(1)  # warm-up: first-touch of buffers and worker threads
    ours = best(lambda: view.iterateBy(args.steps), args.repeat) / args.steps
    if not np.isfinite(view.positions().array()).all():
        print("plexview produced non-finite positions", file=sys.stderr)
        return 1

    start = np.random.default_rng(1).uniform(-30, 30, (args.vertices, 3)).tolist()
    theirs = best(
        lambda: graph.layout_fruchterman_reingold(
            niter=args.niter, dim=3, grid="nogrid", seed=start
        ),
        args.repeat,
    ) / args.niter

    print(f"network: {args.vertices} vertices, {network.countEdges()} edges")
    print(f"plexview plain step      {ours * 1e3:9.2f} ms")
    print(f"igraph FR 3-D, no grid   {theirs * 1e3:9.2f} ms per iteration")
    print(f"ratio igraph / plexview  {theirs / ours:9.1f}")
    if args.ngraph:
        compare_with_ngraph(args, network)
    return 0


def compare_with_ngraph(args, network):
    view = plexview.VXLNetworkView()
    view.setNetwork(network)
    view.prepareFrame()
    view.setBarnesHutTheta(0.8)
    view.iterateBy(1)
    ours = best(lambda: view.iterateBy(args.steps), args.repeat) / args.steps
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as edges:
        json.dump({"vertices": args.vertices,
                   "from": [int(v) for v in network.edgeFromList],
                   "to": [int(v) for v in network.edgeToList]}, edges)
    try:
        script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "ngraph_steps.js")
        out = subprocess.run(["node", script, args.ngraph, edges.name, str(args.steps),
                              str(args.repeat)], check=True, capture_output=True, text=True)
    finally:
        os.unlink(edges.name)
    theirs = float(out.stdout.strip()) / 1e3
    print(f"plexview octree step     {ours * 1e3:9.2f} ms (theta 0.8)")
    print(f"ngraph.forcelayout 3-D   {theirs * 1e3:9.2f} ms per step (theta 0.8)")
    print(f"ratio ngraph / plexview  {theirs / ours:9.1f}")


if __name__ == "__main__":
    sys.exit(main())
