// The force passes against a plain sequential float computation of the same
// laws, on small random networks, in every mode and with every instruction set
// this processor runs.
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

// What a test network is made of; the weights mix positive, zero, negative and
// NaN values, the filter (when on) leaves about a quarter of the vertices out,
// one of them through a NaN value.
struct SceneShape {
  std::string name;
  std::uint64_t vertices;
  std::uint64_t edges;
  bool filtered;
  float softening;
  float preferredDistance;
};

struct Scene {
  std::vector<float> x, y, z, filter;
  std::vector<std::uint64_t> from, to;
  std::vector<float> weights;
  PassInputs inputs;
};

Scene makeScene(const SceneShape& shape, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-8.0f, 8.0f);
  std::uniform_real_distribution<float> unit(0.0f, 1.0f);
  Scene scene;
  const std::uint64_t V = shape.vertices;
  for (std::uint64_t v = 0; v < V; ++v) {
    scene.x.push_back(coordinate(random));
    scene.y.push_back(coordinate(random));
    scene.z.push_back(coordinate(random));
    scene.filter.push_back(unit(random) * 4.0f);  // range [1, 4] keeps three quarters
  }
  if (V > 2) scene.filter[V / 2] = kNaN;
  std::uniform_int_distribution<std::uint64_t> vertex(0, V == 0 ? 0 : V - 1);
  for (std::uint64_t e = 0; e < shape.edges; ++e) {
    const std::uint64_t a = vertex(random);
    scene.from.push_back(a);
    scene.to.push_back(e % 9 == 4 ? a : vertex(random));  // some self-loops
    const float kinds[] = {0.0f, -1.5f, kNaN};
    scene.weights.push_back(e % 11 < 3 ? kinds[e % 11] : 0.2f + 3.0f * unit(random));
  }
  PassInputs& in = scene.inputs;
  in.verticesCount = V;
  in.x = scene.x.data();
  in.y = scene.y.data();
  in.z = scene.z.data();
  in.filter = shape.filtered ? scene.filter.data() : nullptr;
  in.minFilter = 1.0f;
  in.maxFilter = 4.0f;
  in.softening = shape.softening;
  in.repulsive = 2.5f;
  in.gravitational = 0.3f;
  in.attraction = 0.7f;
  in.preferredDistance = shape.preferredDistance;
  in.edgesCount = shape.edges;
  in.from = scene.from.data();
  in.to = scene.to.data();
  in.weights = scene.weights.data();
  return scene;
}

// Forces summed in float one term at a time, and the sum of the terms'
// magnitudes, which bounds the rounding of any order of summation.
struct Expected {
  explicit Expected(std::uint64_t V) : force(3 * V, 0.0f), scale(3 * V, 0.0f) {}
  std::vector<float> force;  // x, y, z per vertex
  std::vector<float> scale;
  void add(std::uint64_t v, int axis, float term) {
    force[3 * v + axis] += term;
    scale[3 * v + axis] += std::fabs(term);
  }
};

bool takesPart(const PassInputs& in, std::uint64_t v) {
  if (in.filter == nullptr) return true;
  return in.minFilter <= in.filter[v] && in.filter[v] <= in.maxFilter;
}

Expected plainRepulsion(const PassInputs& in) {
  Expected out(in.verticesCount);
  const float g = in.gravitational * std::sqrt(static_cast<float>(in.verticesCount));
  const float* p[3] = {in.x, in.y, in.z};
  for (std::uint64_t i = 0; i < in.verticesCount; ++i) {
    if (!takesPart(in, i)) continue;
    for (std::uint64_t j = 0; j < i; ++j) {
      if (!takesPart(in, j)) continue;
      float d[3];
      for (int a = 0; a < 3; ++a) d[a] = p[a][i] - p[a][j];
      const float r2 = d[0] * d[0] + d[1] * d[1] + d[2] * d[2] + in.softening;
      const float k = -in.repulsive / r2;
      for (int a = 0; a < 3; ++a) {
        const float f = d[a] * k / std::sqrt(r2);
        out.add(i, a, -f);
        out.add(j, a, f);
      }
    }
    const float c2 = p[0][i] * p[0][i] + p[1][i] * p[1][i] + p[2][i] * p[2][i] + in.softening;
    for (int a = 0; a < 3; ++a) out.add(i, a, -g * p[a][i] / std::sqrt(c2));
  }
  return out;
}

Expected plainAttraction(LayoutMode mode, const PassInputs& in) {
  Expected out(in.verticesCount);
  const float* p[3] = {in.x, in.y, in.z};
  const float L = in.preferredDistance;
  for (std::uint64_t e = 0; e < in.edgesCount; ++e) {
    const std::uint64_t a = in.from[e];
    const std::uint64_t b = in.to[e];
    if (a == b || !takesPart(in, a) || !takesPart(in, b)) continue;
    const float w = in.weights[e];
    if (mode == LayoutMode::WeightAsDistance && !(w > 0)) continue;
    float d[3];
    for (int k = 0; k < 3; ++k) d[k] = p[k][a] - p[k][b];
    const float r2 = d[0] * d[0] + d[1] * d[1] + d[2] * d[2] + in.softening;
    const float r = std::sqrt(r2);
    float x = 0;
    switch (mode) {
      case LayoutMode::Plain:
        x = r - L;
        break;
      case LayoutMode::EdgeWeighted:
        x = r * w - L;
        break;
      case LayoutMode::WeightAsDistance:
        x = (r - L * w) / w;
        break;
    }
    const float m = in.attraction * x * std::fabs(x);
    for (int k = 0; k < 3; ++k) {
      const float f = d[k] * m / r;
      out.add(a, k, -f);
      out.add(b, k, f);
    }
  }
  return out;
}

// Equal up to the rounding of float sums: within 1e-5 of the sum of the terms'
// magnitudes (a missing or doubled term of any size is far outside that).
void expectForces(const ForceAccumulator& actual, const Expected& expected) {
  const std::vector<double>* planes[3] = {&actual.x, &actual.y, &actual.z};
  for (std::size_t v = 0; v < actual.x.size(); ++v) {
    for (int axis = 0; axis < 3; ++axis) {
      const double got = (*planes[axis])[v];
      const float want = expected.force[3 * v + axis];
      if (std::isnan(want)) {
        EXPECT_TRUE(std::isnan(got)) << "vertex " << v << " axis " << axis;
      } else {
        EXPECT_NEAR(got, want, 1e-5 * expected.scale[3 * v + axis])
            << "vertex " << v << " axis " << axis;
      }
    }
  }
}

std::string nameOf(InstructionSet set) {
  return set == InstructionSet::Avx2Fma ? "AVX2+FMA" : "baseline";
}

// Sizes chosen around the 128 chunks: fewer vertices than chunks (the chunks
// from V on are empty), exactly 128, 129 (chunks of two, most of the last
// empty), and several hundred vertices and edges (chunks of several elements).
const SceneShape kShapes[] = {
    {"empty", 0, 0, false, 1.0f, 0.0f},
    {"one self-loop", 1, 1, false, 1.0f, 0.0f},
    {"small, filtered, L > 0", 37, 60, true, 0.5f, 3.0f},
    {"128 vertices", 128, 128, false, 1.0f, 2.0f},
    {"129 vertices", 129, 300, true, 1.0f, 0.0f},
    {"several per chunk, filtered, small s", 313, 1300, true, 0.05f, 2.0f},
};

TEST(KernelsForceLaws, RepulsionAndGravityMatchThePlainComputation) {
  for (const InstructionSet set : layout::detail::supportedInstructionSets()) {
    for (const SceneShape& shape : kShapes) {
      SCOPED_TRACE(nameOf(set) + ", " + shape.name);
      const Scene scene = makeScene(shape, 7);
      ForceAccumulator forces(shape.vertices);
      layout::detail::repulsionPassWith(set, scene.inputs, forces);
      expectForces(forces, plainRepulsion(scene.inputs));
    }
  }
}

TEST(KernelsForceLaws, AttractionMatchesThePlainComputationInEveryMode) {
  for (const LayoutMode mode :
       {LayoutMode::Plain, LayoutMode::EdgeWeighted, LayoutMode::WeightAsDistance}) {
    for (const SceneShape& shape : kShapes) {
      SCOPED_TRACE("mode " + std::to_string(static_cast<int>(mode)) + ", " + shape.name);
      const Scene scene = makeScene(shape, 11);
      ForceAccumulator forces(shape.vertices);
      layout::attractionPass(mode, scene.inputs, forces);
      expectForces(forces, plainAttraction(mode, scene.inputs));
    }
  }
}

// A vertex the filter leaves out gets no force and gives none, even when its
// position is not a number or lies on top of another vertex with s = 0.
TEST(KernelsForceLaws, VertexLeftOutNeitherGetsNorGivesForce) {
  for (const InstructionSet set : layout::detail::supportedInstructionSets()) {
    SCOPED_TRACE(nameOf(set));
    Scene scene = makeScene({"40 vertices, s = 0", 40, 0, true, 0.0f, 0.0f}, 3);
    const std::uint64_t out = 20;  // its filter value is NaN
    scene.x[out] = kNaN;
    scene.filter[21] = 100.0f;
    scene.filter[22] = 2.0f;
    scene.x[21] = scene.x[22];
    scene.y[21] = scene.y[22];
    scene.z[21] = scene.z[22];
    ForceAccumulator forces(40);
    layout::detail::repulsionPassWith(set, scene.inputs, forces);
    for (const std::uint64_t v : {out, std::uint64_t{21}}) {
      EXPECT_EQ(forces.x[v], 0.0);
      EXPECT_EQ(forces.y[v], 0.0);
      EXPECT_EQ(forces.z[v], 0.0);
    }
    expectForces(forces, plainRepulsion(scene.inputs));
    for (std::uint64_t v = 0; v < 40; ++v) EXPECT_FALSE(std::isnan(forces.x[v])) << v;
  }
}

}  // namespace
