// The multilevel start: coarsening merges along edges and keeps the weights,
// and the start untangles a grid and separates disjoint clusters with the
// live layout's default constants; it stops when asked.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <set>
#include <vector>

#include "layout/coarsen.h"
#include "layout/multilevel.h"

namespace {

using layout::CoarseNetwork;
using layout::PlanePositions;

double distance(const PlanePositions& p, std::uint64_t a, std::uint64_t b) {
  return std::hypot(double{p.x[a]} - p.x[b], double{p.y[a]} - p.y[b], double{p.z[a]} - p.z[b]);
}

PlanePositions start(const CoarseNetwork& n, layout::MultilevelSettings settings = {}) {
  settings.coarsestVertices = 40;
  auto p = layout::multilevelLayout(n.verticesCount, n.from.size(), n.from.data(), n.to.data(),
                                    settings);
  EXPECT_TRUE(p.has_value());
  return p ? *p : PlanePositions{};
}

CoarseNetwork grid(std::uint64_t side) {
  CoarseNetwork n;
  n.verticesCount = side * side;
  for (std::uint64_t r = 0; r < side; ++r) {
    for (std::uint64_t c = 0; c < side; ++c) {
      const std::uint64_t v = r * side + c;
      if (c + 1 < side) n.from.push_back(v), n.to.push_back(v + 1);
      if (r + 1 < side) n.from.push_back(v), n.to.push_back(v + side);
    }
  }
  return n;
}

TEST(Coarsen, GroupsFollowEdgesAndContractionAddsWeights) {
  // Two triangles joined by one edge, a self-loop, a repeated edge, and two
  // vertices without edges.
  CoarseNetwork n;
  n.verticesCount = 8;
  n.from = {0, 1, 2, 3, 4, 5, 2, 0, 0};
  n.to = {1, 2, 0, 4, 5, 3, 3, 0, 1};
  const layout::Grouping g = layout::matchVertices(n, 7);
  ASSERT_EQ(g.group.size(), 8u);
  EXPECT_LT(g.groups, 8u);
  EXPECT_EQ(g.group[6], g.group[7]);  // the two lonely ones pair up
  for (std::uint64_t v = 0; v < 6; ++v) EXPECT_NE(g.group[v], g.group[6]);
  const CoarseNetwork c = layout::contract(n, g);
  EXPECT_EQ(c.verticesCount, g.groups);
  double weight = 0;
  std::set<std::pair<std::uint64_t, std::uint64_t>> pairs;
  for (std::size_t e = 0; e < c.from.size(); ++e) {
    EXPECT_LT(c.from[e], c.to[e]);
    EXPECT_TRUE(pairs.insert({c.from[e], c.to[e]}).second);
    weight += c.weights[e];
  }
  // Every edge between different groups is kept once, with its weight.
  double between = 0;
  for (std::size_t e = 0; e < n.from.size(); ++e) {
    between += g.group[n.from[e]] != g.group[n.to[e]] ? 1 : 0;
  }
  EXPECT_EQ(weight, between);
}

TEST(Multilevel, UntanglesAGrid) {
  const CoarseNetwork n = grid(30);
  const PlanePositions p = start(n);
  double edges = 0;
  for (std::size_t e = 0; e < n.from.size(); ++e) edges += distance(p, n.from[e], n.to[e]);
  edges /= static_cast<double>(n.from.size());
  // Corners of the grid end far apart, relative to the edges.
  const std::uint64_t last = n.verticesCount - 1;
  EXPECT_GT(distance(p, 0, last), 8 * edges);
  EXPECT_GT(distance(p, 29, last - 29), 8 * edges);
  std::mt19937 random(3);
  std::uniform_int_distribution<std::uint64_t> vertex(0, last);
  double pairs = 0;
  for (int k = 0; k < 2000; ++k) pairs += distance(p, vertex(random), vertex(random));
  EXPECT_LT(edges, 0.15 * pairs / 2000);
}

TEST(Multilevel, SeparatesDisjointClusters) {
  constexpr std::uint64_t kClusters = 30, kSize = 40;
  CoarseNetwork n;
  n.verticesCount = kClusters * kSize;
  std::mt19937 random(4);
  std::uniform_int_distribution<std::uint64_t> member(0, kSize - 1);
  for (std::uint64_t c = 0; c < kClusters; ++c) {
    for (int e = 0; e < 4 * static_cast<int>(kSize); ++e) {
      n.from.push_back(c * kSize + member(random));
      n.to.push_back(c * kSize + member(random));
    }
  }
  const PlanePositions p = start(n);
  double inside = 0, across = 0, insideCount = 0, acrossCount = 0;
  for (std::uint64_t a = 0; a < n.verticesCount; a += 7) {
    for (std::uint64_t b = a + 1; b < n.verticesCount; b += 3) {
      (a / kSize == b / kSize ? inside : across) += distance(p, a, b);
      (a / kSize == b / kSize ? insideCount : acrossCount) += 1;
    }
  }
  EXPECT_LT(inside / insideCount, 0.2 * across / acrossCount);
}

TEST(Multilevel, StopsWhenAsked) {
  const CoarseNetwork n = grid(20);
  int calls = 0;
  double last = -1;
  bool rising = true;
  const auto p = layout::multilevelLayout(n.verticesCount, n.from.size(), n.from.data(),
                                          n.to.data(), {}, [&](double fraction) {
                                            rising = rising && fraction >= last && fraction <= 1;
                                            last = fraction;
                                            return ++calls < 10;
                                          });
  EXPECT_FALSE(p.has_value());
  EXPECT_EQ(calls, 10);
  EXPECT_TRUE(rising);
  // Without a network there is nothing to do, and nothing fails.
  const auto empty = layout::multilevelLayout(0, 0, nullptr, nullptr, {});
  ASSERT_TRUE(empty.has_value());
  EXPECT_TRUE(empty->x.empty());
}

}  // namespace
