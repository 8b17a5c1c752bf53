#pragma once
// Coarsening of a network for the multilevel start: vertices are merged
// along their heaviest edges (heavy-edge matching, then every vertex left
// unmatched joins its heaviest neighbour's group; vertices without edges are
// paired with each other), and the merged edges of a group pair add up their
// weights. Each level roughly halves the vertex count.
#include <cstdint>
#include <vector>

namespace layout {

// A network with weighted edges (a weight counts the original edges merged
// into it); no self-loops and no repeated vertex pairs above the finest level.
struct CoarseNetwork {
  std::uint64_t verticesCount = 0;
  std::vector<std::uint64_t> from, to;
  std::vector<float> weights;
};

// The group of every vertex of `network` (numbered 0 .. groups - 1 in order of
// first appearance along a seeded random visit), and the number of groups.
struct Grouping {
  std::vector<std::uint64_t> group;
  std::uint64_t groups = 0;
};
Grouping matchVertices(const CoarseNetwork& network, std::uint64_t seed);

// The network of the groups: one vertex per group, one edge per pair of
// groups joined by at least one edge, weighing the sum of those edges.
CoarseNetwork contract(const CoarseNetwork& network, const Grouping& grouping);

}  // namespace layout
