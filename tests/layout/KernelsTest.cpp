// The force passes: hand-worked forces between two vertices, then random
// networks checked against rearrangements of themselves (vertices in reverse
// order, left-out vertices and skipped edges removed outright, each
// instruction set against the others) and against momentum conservation.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "layout/kernel_dispatch.h"
#include "layout/kernels.h"

namespace {

using layout::ForceAccumulator;
using layout::LayoutMode;
using layout::PassInputs;
using layout::detail::InstructionSet;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr LayoutMode kModes[] = {LayoutMode::Plain, LayoutMode::EdgeWeighted,
                                 LayoutMode::WeightAsDistance};

// A network with its positions, filter values and weights; inputs() points
// the pass at them, so a scene can be edited and passed again.
struct Scene {
  std::vector<float> x, y, z, filter;
  std::vector<std::uint64_t> from, to;
  std::vector<float> weights;
  bool filtered = false;
  float softening = 1.0f;
  float repulsive = 2.5f;
  float gravitational = 0.0f;
  float preferredDistance = 1.5f;

  std::uint64_t count() const { return x.size(); }
  PassInputs inputs() const {
    // clang-format off
    return {count(), x.data(), y.data(), z.data(), filtered ? filter.data() : nullptr,
            1.0f, 4.0f, softening, repulsive, gravitational, 0.7f, preferredDistance,
            from.size(), from.data(), to.data(), weights.data()};
    // clang-format on
  }
};

// Weights mix positive, zero, negative and NaN values; some edges are
// self-loops; the filter [1, 4] leaves about a quarter out, one through NaN.
Scene randomScene(std::uint64_t V, std::uint64_t E, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-8.0f, 8.0f), unit(0.0f, 1.0f);
  Scene s;
  for (std::uint64_t v = 0; v < V; ++v) {
    for (auto* plane : {&s.x, &s.y, &s.z}) plane->push_back(coordinate(random));
    s.filter.push_back(unit(random) * 4.0f);
  }
  if (V > 2) s.filter[V / 2] = kNaN;
  std::uniform_int_distribution<std::uint64_t> vertex(0, V == 0 ? 0 : V - 1);
  for (std::uint64_t e = 0; e < E; ++e) {
    s.from.push_back(vertex(random));
    s.to.push_back(e % 9 == 4 ? s.from.back() : vertex(random));
    const float odd[] = {0.0f, -1.5f, kNaN};
    s.weights.push_back(e % 11 < 3 ? odd[e % 11] : 0.2f + 3.0f * unit(random));
  }
  return s;
}

ForceAccumulator repulsion(const Scene& s, InstructionSet set) {
  ForceAccumulator out(s.count());
  layout::detail::repulsionPassWith(set, s.inputs(), out);
  return out;
}

ForceAccumulator attraction(const Scene& s, LayoutMode mode) {
  ForceAccumulator out(s.count());
  layout::attractionPass(mode, s.inputs(), out);
  return out;
}

double largest(const ForceAccumulator& f) {
  double m = 0;
  for (const auto* plane : {&f.x, &f.y, &f.z}) {
    for (const double c : *plane) m = std::max(m, std::fabs(c));
  }
  return m;
}

// Vertex v of `got` equals vertex order[v] of `want` (NaN matching NaN), up to
// the rounding of float sums in another order.
void expectSame(const ForceAccumulator& got, const ForceAccumulator& want,
                const std::vector<std::uint64_t>& order = {}) {
  const double tolerance = 1e-4 * largest(want) + 1e-9;
  ASSERT_EQ(got.x.size(), order.empty() ? want.x.size() : order.size());
  for (std::size_t v = 0; v < got.x.size(); ++v) {
    const std::size_t w = order.empty() ? v : order[v];
    for (const auto plane : {&ForceAccumulator::x, &ForceAccumulator::y, &ForceAccumulator::z}) {
      const double a = (got.*plane)[v];
      const double b = (want.*plane)[w];
      if (std::isnan(b)) {
        EXPECT_TRUE(std::isnan(a)) << "vertex " << v;
      } else {
        EXPECT_NEAR(a, b, tolerance) << "vertex " << v;
      }
    }
  }
}

// Every force has its opposite: the components sum to zero.
void expectBalanced(const ForceAccumulator& f) {
  for (const auto* plane : {&f.x, &f.y, &f.z}) {
    double sum = 0;
    for (const double c : *plane) sum += c;
    EXPECT_NEAR(sum, 0.0, 1e-4 * largest(f) * static_cast<double>(plane->size()) + 1e-9);
  }
}

// The scene without the edges `keep` refuses (vertices stay).
Scene withEdgesWhere(const Scene& s, auto keep) {
  Scene out = s;
  out.from.clear();
  out.to.clear();
  out.weights.clear();
  for (std::size_t e = 0; e < s.from.size(); ++e) {
    if (!keep(s.from[e], s.to[e], s.weights[e])) continue;
    out.from.push_back(s.from[e]);
    out.to.push_back(s.to[e]);
    out.weights.push_back(s.weights[e]);
  }
  return out;
}

bool takesPart(const Scene& s, std::uint64_t v) {
  return !s.filtered || layout::participates(s.filter[v], 1.0f, 4.0f);
}

// Vertices 0 at (1, 1, 1) and 1 at (4, 5, 1), s = 0: r = 5.
Scene twoVertices(float weight, float L) {
  Scene s;
  s.x = {1, 4};
  s.y = {1, 5};
  s.z = {1, 1};
  s.softening = 0.0f;
  s.preferredDistance = L;
  s.from = {0};
  s.to = {1};
  s.weights = {weight};
  return s;
}

std::string nameOf(InstructionSet set) {
  return set == InstructionSet::Avx2Fma ? "AVX2+FMA" : "baseline";
}

// Around the 128 chunks: none, fewer vertices than chunks, exactly 128, 129,
// and several per chunk.
const std::uint64_t kSizes[][2] = {{0, 0}, {1, 1}, {37, 60}, {128, 128}, {129, 300}, {313, 1300}};

TEST(KernelsForceLaws, TwoVerticesByHand) {
  for (const InstructionSet set : layout::detail::supportedInstructionSets()) {
    SCOPED_TRACE(nameOf(set));
    // R / r^2 = 0.1 along the unit vector (0.6, 0.8): apart.
    const ForceAccumulator pushed = repulsion(twoVertices(1, 0), set);
    EXPECT_NEAR(pushed.x[1], 0.06, 1e-7);
    EXPECT_NEAR(pushed.y[1], 0.08, 1e-7);
    EXPECT_NEAR(pushed.x[0], -0.06, 1e-7);
    // Gravity G sqrt(1) = 0.5 towards the origin.
    Scene alone = twoVertices(1, 0);
    alone.x = {3};
    alone.y = {4};
    alone.z = {0};
    alone.repulsive = 0.0f;
    alone.gravitational = 0.5f;
    alone.from.clear();
    const ForceAccumulator pulled = repulsion(alone, set);
    EXPECT_NEAR(pulled.x[0], -0.3, 1e-7);
    EXPECT_NEAR(pulled.y[0], -0.4, 1e-7);
  }
  // A = 0.7 and w = 2: plain x = 5 (m = 17.5), edge-weighted x = 10 (m = 70),
  // weight as distance with L = 1: x = (5 - 2) / 2 (m = 1.575); the force on
  // vertex 0 is m / r times (3, 4, 0), towards vertex 1.
  const std::pair<LayoutMode, double> cases[] = {{LayoutMode::Plain, 17.5},
                                                 {LayoutMode::EdgeWeighted, 70},
                                                 {LayoutMode::WeightAsDistance, 1.575}};
  for (const auto& [mode, m] : cases) {
    const float L = mode == LayoutMode::WeightAsDistance ? 1.0f : 0.0f;
    const ForceAccumulator spring = attraction(twoVertices(2, L), mode);
    EXPECT_NEAR(spring.x[0], 3 * m / 5, 1e-5 * m) << static_cast<int>(mode);
    EXPECT_NEAR(spring.y[0], 4 * m / 5, 1e-5 * m) << static_cast<int>(mode);
    EXPECT_NEAR(spring.y[1], -4 * m / 5, 1e-5 * m) << static_cast<int>(mode);
  }
}

TEST(KernelsForceLaws, RepulsionAgreesWithItsRearrangements) {
  const auto sets = layout::detail::supportedInstructionSets();
  for (const InstructionSet set : sets) {
    for (const auto& [V, E] : kSizes) {
      SCOPED_TRACE(nameOf(set) + ", " + std::to_string(V) + " vertices");
      Scene scene = randomScene(V, E, 7);
      scene.softening = 0.05f;
      const ForceAccumulator forces = repulsion(scene, set);
      expectBalanced(forces);
      expectSame(forces, repulsion(scene, sets.front()));

      // The same vertices in reverse order.
      Scene reversed = scene;
      std::vector<std::uint64_t> order(V);
      for (std::uint64_t v = 0; v < V; ++v) order[v] = V - 1 - v;
      for (auto* plane : {&reversed.x, &reversed.y, &reversed.z}) {
        std::reverse(plane->begin(), plane->end());
      }
      expectSame(repulsion(reversed, set), forces, order);

      // Left-out vertices (one with a NaN position) act as if removed.
      scene.filtered = true;
      if (V > 2) scene.x[V / 2] = kNaN;
      Scene kept = scene;
      kept.filtered = false;
      std::vector<std::uint64_t> keptIndex;
      for (auto* plane : {&kept.x, &kept.y, &kept.z}) plane->clear();
      for (std::uint64_t v = 0; v < V; ++v) {
        if (!takesPart(scene, v)) continue;
        keptIndex.push_back(v);
        kept.x.push_back(scene.x[v]);
        kept.y.push_back(scene.y[v]);
        kept.z.push_back(scene.z[v]);
      }
      const ForceAccumulator filtered = repulsion(scene, set);
      const ForceAccumulator alone = repulsion(kept, set);
      for (std::size_t k = 0; k < keptIndex.size(); ++k) {
        EXPECT_NEAR(filtered.x[keptIndex[k]], alone.x[k], 1e-4 * largest(alone) + 1e-9);
      }
      for (std::uint64_t v = 0; v < V; ++v) {
        if (!takesPart(scene, v)) {
          EXPECT_EQ(filtered.x[v], 0.0) << v;
        }
      }
    }
  }
}

TEST(KernelsForceLaws, AttractionSkipsLoopsLeftOutEndsAndBadDistances) {
  for (const LayoutMode mode : kModes) {
    for (const auto& [V, E] : kSizes) {
      SCOPED_TRACE("mode " + std::to_string(static_cast<int>(mode)) + ", " + std::to_string(V));
      Scene scene = randomScene(V, E, 11);
      scene.filtered = true;
      const ForceAccumulator forces = attraction(scene, mode);
      const bool distance = mode == LayoutMode::WeightAsDistance;
      Scene useful = withEdgesWhere(scene, [&](std::uint64_t a, std::uint64_t b, float w) {
        return a != b && takesPart(scene, a) && takesPart(scene, b) && (!distance || w > 0);
      });
      useful.filtered = false;
      expectSame(attraction(useful, mode), forces);
      expectBalanced(attraction(
          withEdgesWhere(useful, [](std::uint64_t, std::uint64_t, float w) { return w == w; }),
          mode));
      std::reverse(useful.from.begin(), useful.from.end());
      std::reverse(useful.to.begin(), useful.to.end());
      std::reverse(useful.weights.begin(), useful.weights.end());
      expectSame(attraction(useful, mode), forces);
      if (mode == LayoutMode::Plain) {  // the weights play no part
        std::fill(useful.weights.begin(), useful.weights.end(), 1.0f);
        expectSame(attraction(useful, mode), forces);
      }
    }
  }
}

}  // namespace
