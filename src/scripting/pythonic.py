# The plexview module's Python-level functions: reading any network file,
# headless layout and rendering, and interchange with networkx and igraph.
# The compiled module runs this file in its own namespace when it is set up
# (as an extension module and inside the program alike), so every name here
# becomes plexview.NAME; helpers start with "_" to stay out of
# `from plexview import *`.

from __future__ import annotations

__doc__ = """Plexview: 3-D force-directed layout and drawing of complex networks.

A picture of a networkx graph in three lines:

    network = plexview.from_networkx(networkx.karate_club_graph())
    positions = plexview.layout(network, steps=500, seed=1)
    plexview.render(network, "karate.png", positions=positions, color_by="club")

plexview.read(path) opens any network file the program opens. The classes
behind these functions are those of the program: QLONetwork (the network,
its edge arrays and vertex properties), VXLNetworkView (the layout and the
drawing), VXLController (a window's settings and colouring) and the arrays
QLONumberArray and QLOVector3dArray with NumPy views. to_networkx,
from_igraph and to_igraph convert the other way and to igraph.
"""

import gc as _gc
import importlib as _importlib
import itertools as _itertools
import numbers as _numbers
import operator as _operator
import os as _os
import warnings as _warnings
from typing import Any as _Any

import numpy as _np

_chain = _itertools.chain.from_iterable

# The attribute that carries positions in networkx and igraph, and the
# property that carries them here.
_POSITION_ATTRIBUTE = "pos"
_DEFAULT_WEIGHT = "weight"


def read(path: str | _os.PathLike) -> QLONetwork:
    """Reads a network file of any format the program opens, chosen by the
    file's extension (else its content). Raises ReadError (with the file,
    line and reason) when it cannot be read."""
    return openNetworkFile(_os.fspath(path))


# --- layout and rendering ---------------------------------------------------


# From this many vertices a window opening a network starts its layout on
# coarser versions of the network, and so does layout().
_MULTILEVEL_VERTICES = 50000


def layout(network: QLONetwork, steps: int = 500, theta: float | None = None,
           seed: int | None = None, multilevel: bool | None = None) -> _np.ndarray:
    """Lays the network out without a window and answers the positions as a
    new (V, 3) float32 array; the network is left as it was.

    The layout starts from the network's "Position" property when it has one
    and no seed is given; otherwise from random positions in the -30..30
    cube drawn from the shared random source, seeded with `seed` first when
    given (the same seed gives the same layout). It then runs `steps` steps
    of the program's own force-directed layout. theta None lets the size
    choose the repulsion (every pair below 20,000 vertices, Barnes-Hut with
    theta 0.8 from there on); a number fixes the Barnes-Hut opening angle
    (0: every pair). multilevel True places a random start on coarser
    versions of the network first (the multilevel start); None does so for
    networks of 50,000 vertices or more, as a window opening them does."""
    if steps < 0:
        raise ValueError("steps must be 0 or more, got %r" % (steps,))
    if seed is not None:
        QLORandomGenerator.sharedRandomGenerator().setSeed(seed)
    view = VXLNetworkView()
    view.setNetwork(network)
    start = network.propertyForKey("Position")
    stored = seed is None and isinstance(start, QLOVector3dArray)
    if stored:
        # A copy: the view moves its positions in place.
        view.setPositions(QLOVector3dArray.fromNumpy(_np.array(start.array(), dtype=_np.float32)))
    if theta is None:
        view.setAutomaticRepulsion(True)
    else:
        view.setBarnesHutTheta(float(theta))
    view.prepareFrame()
    if multilevel is None:
        multilevel = not stored and network.countVertices() >= _MULTILEVEL_VERTICES
    if multilevel:
        view.multilevelStart()
    view.iterateBy(int(steps))
    return _np.array(view.positions().array(), dtype=_np.float32)


def _has_display():
    return any(_os.environ.get(name) for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"))


def _checked_positions(network, positions):
    array = _np.asarray(positions, dtype=_np.float32)
    expected = (network.countVertices(), 3)
    if array.shape != expected:
        raise ValueError("positions must have shape %r, got %r" % (expected, array.shape))
    return array


def _colour_by(controller, color_by):
    """Colours by a property name (number, text or colour property), or by
    one value per vertex given directly."""
    if not isinstance(color_by, str):
        controller.addColorProperty(color_by, "color_by")
        color_by = "color_by"
    names = list(controller.colorPropertyNames())
    names += [key for key in controller.network().keysForPropertiesOfVertices()
              if key not in names and key != "Position"]
    if color_by not in names:
        raise ValueError(
            "no property %r to colour by; the network offers: %s" % (color_by, ", ".join(names))
        )
    controller.selectColorProperty(color_by)


def render(network: QLONetwork, path: str | _os.PathLike, size: tuple[int, int] = (1600, 1200),
           color_by: str | _Any = None, positions: _Any = None, steps: int = 500,
           theta: float | None = None, seed: int | None = None,
           line_width: float | None = None, labels: str = "none",
           size_by: str | None = None) -> str:
    """Draws the network into a file and answers the path written.

    The extension picks the format: png, jpg/jpeg, tif/tiff, bmp, gif
    (pictures of `size` = (width, height) pixels) or pdf, svg, eps, ps
    (vector documents of that size). The positions drawn are `positions`
    ((V, 3) numbers) when given, else layout(network, steps, theta, seed).
    color_by names a property to colour by (a number property through the
    colour map, a text property by category, or one of "Node Degree",
    "Node InDegree", "Node Strength" ...), or gives one number or text per
    vertex; None keeps the colouring by degree. line_width is the edge width
    in pixels (None: the program's default). labels is "none", "selected" or
    "all": which vertices have their name written beside them. size_by
    names a number property or measure ("Node Degree" ...) that sets each
    vertex's size, as View > Size by does (ValueError for an unknown name).

    As in a window once a new network's layout has settled, the camera frames
    the whole network, and the drawn positions are kept in the network's
    "Position" property. Drawing needs a display: without one, RuntimeError says to
    run under xvfb-run. OSError when the file cannot be written."""
    if labels not in ("none", "selected", "all"):
        raise ValueError('labels must be "none", "selected" or "all", not %r' % (labels,))
    if not _has_display():
        raise RuntimeError(
            "plexview.render draws with OpenGL and needs a display, but DISPLAY is not set; "
            "run the script under a virtual X server: xvfb-run -a python3 SCRIPT.py"
        )
    width, height = (int(extent) for extent in size)
    if positions is None:
        positions = layout(network, steps=steps, theta=theta, seed=seed)
    positions = _checked_positions(network, positions)
    shared = VXLController.sharedController()
    controller = VXLController.init()
    try:
        controller.setNetwork(network)
        controller.setPositions(QLOVector3dArray.fromNumpy(positions))
        if color_by is not None:
            _colour_by(controller, color_by)
        view = controller.networkView()
        view.setShowLabels(labels)
        if size_by is not None:
            view.setSizeProperty(size_by)
        view.prepareFrame()
        view.zoomToFit(width, height)  # framed, as a window frames a settled network
        if line_width is None:
            line_width = controller.viewLineWidth()
        report = view.exportImageToFile(_os.fspath(path), width, height, float(line_width))
    finally:
        _forgetController(controller)
        _restoreSharedController(shared)
    return str(report["path"])


# --- interchange: shared pieces -----------------------------------------------


def _import(module, caller, package):
    try:
        return _importlib.import_module(module)
    except ImportError as error:
        raise ImportError(
            "plexview.%s needs the %s package, which is not installed (Debian: apt install "
            "python3-%s; pip: pip install %s)" % (caller, module, package, package)
        ) from error


def _is_number(value):
    return isinstance(value, _numbers.Real)


def _is_point(value):
    return (
        isinstance(value, (tuple, list, _np.ndarray))
        and len(value) in (2, 3)
        and all(_is_number(c) for c in value)
    )


def _property_from_column(name, values):
    """A vertex property from one attribute's values (None where a vertex
    lacks it): numbers (missing: NaN), texts (missing: "") or 2-D/3-D points
    (missing: the origin). None, with a warning, for anything else."""
    present = [v for v in values if v is not None]
    if not present:
        return None
    if all(isinstance(v, str) for v in present):
        return ["" if v is None else v for v in values]
    if all(_is_number(v) for v in present):
        return _np.array([_np.nan if v is None else v for v in values], dtype=_np.float64)
    if all(_is_point(v) for v in present):
        points = _np.zeros((len(values), 3), dtype=_np.float32)
        for i, v in enumerate(values):
            if v is not None:
                points[i, : len(v)] = v
        return points
    _warnings.warn(
        "vertex attribute %r left out: its values are neither all numbers, all texts nor all "
        "2-D or 3-D points" % (name,),
        stacklevel=3,
    )
    return None


def _set_properties(network, columns):
    """Stores {attribute: values} as vertex properties ("pos" as "Position")."""
    for attribute, values in columns.items():
        value = _property_from_column(attribute, values)
        if value is None:
            continue
        name = "Position" if attribute == _POSITION_ATTRIBUTE else attribute
        network.setPropertiesOfVertices(value, name)


def _weights(values, weight, describe, edge):
    """The weight array of a list of weights (None where an edge lacks one),
    or None for an unweighted network. Edges without the attribute weigh 1
    when others have it; a name no edge carries is an error unless it is the
    default "weight". describe() tells the attributes there are, edge(i)
    the ends of the i-th edge."""
    missing = values.count(None)
    if missing == len(values):
        if weight == _DEFAULT_WEIGHT or not values:
            return None
        raise ValueError("no edge has the weight attribute %r; %s" % (weight, describe()))
    if missing:
        values = [1.0 if v is None else v for v in values]
    try:
        return _np.asarray(values, dtype=_np.float64)
    except (TypeError, ValueError):
        bad = next(i for i, v in enumerate(values) if not _is_number(v))
        raise ValueError(
            "edge %s has the weight %r under %r, which is not a number"
            % (edge(bad), values[bad], weight)
        ) from None


def _network(count, sources, targets, weights, directed, columns):
    network = QLONetwork.initWithEdges(count, sources, targets, weights, directed)
    _set_properties(network, columns)
    return network


def _has_parallel_edges(sources, targets, directed, count):
    if len(sources) < 2:
        return False
    if not directed:
        sources, targets = _np.minimum(sources, targets), _np.maximum(sources, targets)
    keys = _np.sort(sources * _np.uint64(max(count, 1)) + targets)
    return bool(_np.any(keys[1:] == keys[:-1]))


def _vertex_columns(network, label_attribute, position_attribute, leave_out):
    """{attribute: list of values} for every vertex property (labels under
    label_attribute, positions under position_attribute as 3-tuples)."""
    columns = {}
    for name, value in network.propertiesOfVertices().items():
        if name in leave_out:
            continue
        if isinstance(value, QLOVector3dArray):
            values = [tuple(row) for row in value.array().tolist()]
        elif isinstance(value, QLONumberArray):
            values = value.array().tolist()
        else:
            values = list(value)
        attribute = {"Name": label_attribute, "Position": position_attribute}.get(name, name)
        columns[attribute] = values
    return columns


# --- networkx -----------------------------------------------------------------


def _networkx_edges(graph, index, count):
    """(sources, targets, edge data dictionaries) of every edge, with the
    nodes numbered by index (None: the nodes are 0..V-1), read from
    the graph's adjacency dictionaries (node -> neighbour -> data, or ->
    key -> data in multigraphs, as the networkx documentation describes
    them) with C-level iteration only: networkx's own edge views loop in
    Python and cost more than building the graph did. An undirected edge is
    listed from both ends, so only its copy from the lower vertex is kept."""
    adjacency = graph._adj
    neighbours = _np.fromiter(map(len, adjacency.values()), dtype=_np.int64, count=count)
    total = int(neighbours.sum())
    sources = _np.repeat(_np.arange(count, dtype=_np.int64), neighbours)
    neighbour_keys = _chain(adjacency.values())
    if index is not None:
        neighbour_keys = map(index, neighbour_keys)
    targets = _np.fromiter(neighbour_keys, dtype=_np.int64, count=total)
    data = _chain(map(dict.values, adjacency.values()))
    if graph.is_multigraph():
        keydicts = list(data)
        copies = _np.fromiter(map(len, keydicts), dtype=_np.int64, count=total)
        sources, targets = _np.repeat(sources, copies), _np.repeat(targets, copies)
        data = _chain(map(dict.values, keydicts))
    if graph.is_directed():
        return sources, targets, list(data)
    lower = sources <= targets
    return sources[lower], targets[lower], list(_itertools.compress(data, lower.tolist()))


def from_networkx(graph: _Any, weight: str | None = "weight") -> QLONetwork:
    """A QLONetwork of a networkx graph (Graph, DiGraph, MultiGraph or
    MultiDiGraph, every edge kept, self-loops and parallel edges too).

    Vertices follow the graph's node order. Node keys become the "Name"
    labels (as text) unless they are exactly 0..V-1 in order. Node
    attributes become vertex properties: numbers (missing: NaN), texts
    (missing: "") and 2-D or 3-D points ("pos" becomes the "Position"
    layout); others are left out with a warning. The edge attribute named
    by `weight` becomes the edge weights (edges without it weigh 1); the
    network is unweighted when weight is None or when the default "weight"
    is on no edge, and a ValueError names the attributes there are when
    another name is on no edge. Other edge attributes are not kept."""
    _import("networkx", "from_networkx", "networkx")
    nodes = list(graph)
    count = len(nodes)
    identity = nodes == list(range(count)) and all(type(n) is int for n in nodes)
    index = None if identity else dict(zip(nodes, range(count))).__getitem__
    sources, targets, data = _networkx_edges(graph, index, count)

    def describe():
        found = sorted({key for d in _itertools.islice(data, 1000) for key in d})
        return "the edges have: %s" % (", ".join(map(repr, found)) or "no attributes")

    weights = None
    if weight is not None:
        value = _operator.methodcaller("get", weight)
        try:  # the common case, every edge weighted, without a list between
            weights = _np.fromiter(map(value, data), dtype=_np.float64, count=len(data))
        except (TypeError, ValueError):
            weights = None
        # numpy reads a missing weight (None) as NaN: those go the long way.
        if weights is None or _np.isnan(weights).any():
            weights = _weights(list(map(value, data)), weight, describe,
                               lambda i: (nodes[sources[i]], nodes[targets[i]]))

    attributes = {}
    for i, node_data in enumerate(graph._node.values()):
        for key, entry in node_data.items():
            attributes.setdefault(key, [None] * count)[i] = entry
    if not identity:
        attributes["Name"] = [str(node) for node in nodes]
    return _network(count, sources, targets, weights, graph.is_directed(), attributes)


def _networkx_class(nx, directed, multiple):
    if multiple:
        return nx.MultiDiGraph if directed else nx.MultiGraph
    return nx.DiGraph if directed else nx.Graph


def to_networkx(network: QLONetwork) -> _Any:
    """A networkx graph of the network: a DiGraph when directed, else a
    Graph, or a MultiDiGraph / MultiGraph when some vertices are joined by
    more than one edge; self-loops are kept.

    Nodes are keyed by the "Name" labels when the network has them and they
    are all different, else by the vertex numbers 0..V-1. Every other vertex
    property becomes a node attribute of the same name (numbers as float,
    texts as str, vector properties as 3-tuples, "Position" as "pos"); the
    edge weights go to the "weight" attribute when the network is
    edge-weighted."""
    nx = _import("networkx", "to_networkx", "networkx")
    count = network.countVertices()
    directed = network.isDirected()
    from_list = network.edgeFromList
    to_list = network.edgeToList
    multiple = _has_parallel_edges(from_list, to_list, directed, count)
    graph = _networkx_class(nx, directed, multiple)()

    labels = network.propertyForKey("Name")
    keyed = isinstance(labels, list) and len(set(labels)) == count
    keys = labels if keyed else list(range(count))
    columns = _vertex_columns(network, "Name", _POSITION_ATTRIBUTE, {"Name"} if keyed else ())
    if columns:
        names = list(columns)
        node_data = [dict(zip(names, row)) for row in zip(*columns.values())]
    else:
        node_data = [{} for _ in range(count)]

    # The graph's own dictionaries are filled directly: the networkx
    # documentation describes them (node -> attributes, node -> neighbour ->
    # edge data, with one shared data dictionary per edge), and this avoids
    # the per-edge checks of add_edges_from, which cost as much again.
    graph._node.update(zip(keys, node_data))
    successors = graph._adj
    successors.update((key, {}) for key in keys)
    predecessors = graph._pred if directed else successors
    if directed:
        predecessors.update((key, {}) for key in keys)

    if keyed:
        sources = list(map(keys.__getitem__, from_list.tolist()))
        targets = list(map(keys.__getitem__, to_list.tolist()))
    else:
        sources, targets = from_list.tolist(), to_list.tolist()
    if network.isEdgeWeighted():
        data = [{"weight": w} for w in network.edgesWeights.tolist()]
    else:
        data = [{} for _ in range(len(sources))]

    # A million new dictionaries would set off the cyclic garbage collector
    # hundreds of times over objects that can hold no cycle yet.
    collecting = _gc.isenabled()
    _gc.disable()
    try:
        _fill_adjacency(successors, predecessors, sources, targets, data, multiple)
    finally:
        if collecting:
            _gc.enable()
    return graph


def _fill_adjacency(successors, predecessors, sources, targets, data, multiple):
    if multiple:
        for u, v, d in zip(sources, targets, data):
            forward = successors[u]
            keydict = forward.get(v)
            if keydict is None:
                keydict = forward[v] = {}
                predecessors[v][u] = keydict
            keydict[len(keydict)] = d
    else:
        for u, v, d in zip(sources, targets, data):
            successors[u][v] = d
            predecessors[v][u] = d


# --- igraph -------------------------------------------------------------------


def from_igraph(graph: _Any, weight: str | None = "weight") -> QLONetwork:
    """A QLONetwork of an igraph Graph, every edge kept (self-loops and
    multiple edges too), directed when it is.

    The "name" vertex attribute becomes the "Name" labels (as text), "pos"
    the "Position" layout; other vertex attributes become vertex properties
    as in from_networkx. The edge attribute named by `weight` becomes the
    edge weights, with the same rules as from_networkx."""
    _import("igraph", "from_igraph", "igraph")
    count = graph.vcount()
    ends = _np.array(graph.get_edgelist(), dtype=_np.int64).reshape(-1, 2)
    weights = None
    if weight is not None:
        present = graph.es.attributes()
        values = graph.es[weight] if weight in present else [None] * graph.ecount()
        found = "the edges have: %s" % (", ".join(map(repr, sorted(present))) or "no attributes")
        weights = _weights(values, weight, lambda: found, lambda i: ends[i])
    attributes = {}
    for name in graph.vs.attributes():
        values = graph.vs[name]
        if name == "name":
            attributes["Name"] = [str(v) for v in values]
        else:
            attributes[name] = values
    return _network(count, ends[:, 0], ends[:, 1], weights, graph.is_directed(), attributes)


def to_igraph(network: QLONetwork) -> _Any:
    """An igraph Graph of the network, with its direction, every edge, the
    edge weights as the "weight" edge attribute (when edge-weighted), the
    "Name" labels as the "name" vertex attribute, "Position" as "pos"
    (3-tuples) and every other vertex property under its own name."""
    ig = _import("igraph", "to_igraph", "igraph")
    # igraph takes a list of tuples fastest (numpy arrays and lists of lists
    # go through a slower path).
    ends = list(zip(network.edgeFromList.tolist(), network.edgeToList.tolist()))
    graph = ig.Graph(n=network.countVertices(), edges=ends, directed=network.isDirected())
    if network.isEdgeWeighted():
        graph.es["weight"] = network.edgesWeights.tolist()
    for name, values in _vertex_columns(network, "name", _POSITION_ATTRIBUTE, ()).items():
        graph.vs[name] = values
    return graph


# The future import above binds this name; it is no part of the module.
del annotations
