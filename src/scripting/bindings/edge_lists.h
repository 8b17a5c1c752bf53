#pragma once
// Builds the data of a network from Python edge lists.
#include <pybind11/pybind11.h>

#include "plexora/QLONetwork.h"

namespace plexview {

enum class EdgeDirection { Undirected, Directed };
enum class VertexWeights { Absent, Present };

// `sources` and `targets` are 1-D sequences of non-negative integers (NumPy
// arrays or anything numpy.asarray accepts); `weights` is None (every weight
// 1, not edge-weighted) or a 1-D numeric sequence rounded to float32 (the
// network is then edge-weighted, and the list must have one weight per edge).
// TypeError or ValueError for lists of the wrong kind; the endpoint checks are
// left to QLONetwork::make.
NetworkData networkDataFrom(std::uint64_t verticesCount, const pybind11::handle& sources,
                            const pybind11::handle& targets, const pybind11::handle& weights,
                            EdgeDirection direction, VertexWeights vertexWeights);

}  // namespace plexview
