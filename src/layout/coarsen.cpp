// Heavy-edge matching and contraction (see coarsen.h).
#include "layout/coarsen.h"

#include <algorithm>
#include <numeric>
#include <random>

namespace layout {
namespace {

constexpr std::uint64_t kNone = ~std::uint64_t{0};

// Neighbours of every vertex with the weight of the joining edge (CSR).
struct Adjacency {
  std::vector<std::uint64_t> offsets;
  std::vector<std::uint64_t> neighbours;
  std::vector<float> weights;

  explicit Adjacency(const CoarseNetwork& n) : offsets(n.verticesCount + 1, 0) {
    for (std::size_t e = 0; e < n.from.size(); ++e) {
      if (n.from[e] == n.to[e]) continue;
      ++offsets[n.from[e] + 1];
      ++offsets[n.to[e] + 1];
    }
    for (std::uint64_t v = 0; v < n.verticesCount; ++v) offsets[v + 1] += offsets[v];
    neighbours.resize(offsets.back());
    weights.resize(offsets.back());
    std::vector<std::uint64_t> next(offsets.begin(), offsets.end() - 1);
    for (std::size_t e = 0; e < n.from.size(); ++e) {
      const std::uint64_t a = n.from[e], b = n.to[e];
      if (a == b) continue;
      const float w = n.weights.empty() ? 1.0f : n.weights[e];
      neighbours[next[a]] = b;
      weights[next[a]++] = w;
      neighbours[next[b]] = a;
      weights[next[b]++] = w;
    }
  }

  // The neighbour of v along the heaviest edge among those `accept`s, or kNone.
  template <class Accept>
  std::uint64_t heaviest(std::uint64_t v, Accept accept) const {
    std::uint64_t best = kNone;
    float bestWeight = 0.0f;
    for (std::uint64_t k = offsets[v]; k < offsets[v + 1]; ++k) {
      if (!accept(neighbours[k])) continue;
      if (best == kNone || weights[k] > bestWeight) {
        best = neighbours[k];
        bestWeight = weights[k];
      }
    }
    return best;
  }
};

}  // namespace

Grouping matchVertices(const CoarseNetwork& network, std::uint64_t seed) {
  const std::uint64_t V = network.verticesCount;
  const Adjacency adjacency(network);
  std::vector<std::uint64_t> visit(V);
  std::iota(visit.begin(), visit.end(), 0);
  std::mt19937_64 random(seed);
  std::shuffle(visit.begin(), visit.end(), random);

  Grouping result;
  result.group.assign(V, kNone);
  // Pairs along the heaviest edge to a vertex not yet matched.
  for (const std::uint64_t v : visit) {
    if (result.group[v] != kNone) continue;
    const std::uint64_t partner =
        adjacency.heaviest(v, [&](std::uint64_t u) { return result.group[u] == kNone; });
    if (partner == kNone) continue;
    result.group[v] = result.group[partner] = result.groups++;
  }
  // Vertices left over join their heaviest neighbour's group; those without
  // any edge pair up among themselves.
  std::uint64_t lonely = kNone;
  for (const std::uint64_t v : visit) {
    if (result.group[v] != kNone) continue;
    const std::uint64_t neighbour =
        adjacency.heaviest(v, [&](std::uint64_t u) { return result.group[u] != kNone; });
    if (neighbour != kNone) {
      result.group[v] = result.group[neighbour];
    } else if (adjacency.offsets[v] == adjacency.offsets[v + 1] && lonely != kNone) {
      result.group[v] = result.group[lonely];
      lonely = kNone;
    } else {
      result.group[v] = result.groups++;
      if (adjacency.offsets[v] == adjacency.offsets[v + 1]) lonely = v;
    }
  }
  return result;
}

CoarseNetwork contract(const CoarseNetwork& network, const Grouping& grouping) {
  struct Edge {
    std::uint64_t a, b;
    float w;
  };
  std::vector<Edge> edges;
  edges.reserve(network.from.size());
  for (std::size_t e = 0; e < network.from.size(); ++e) {
    std::uint64_t a = grouping.group[network.from[e]];
    std::uint64_t b = grouping.group[network.to[e]];
    if (a == b) continue;
    if (a > b) std::swap(a, b);
    edges.push_back({a, b, network.weights.empty() ? 1.0f : network.weights[e]});
  }
  std::sort(edges.begin(), edges.end(),
            [](const Edge& x, const Edge& y) { return x.a != y.a ? x.a < y.a : x.b < y.b; });
  CoarseNetwork coarse;
  coarse.verticesCount = grouping.groups;
  for (const Edge& e : edges) {
    if (!coarse.from.empty() && coarse.from.back() == e.a && coarse.to.back() == e.b) {
      coarse.weights.back() += e.w;
      continue;
    }
    coarse.from.push_back(e.a);
    coarse.to.push_back(e.b);
    coarse.weights.push_back(e.w);
  }
  return coarse;
}

}  // namespace layout
