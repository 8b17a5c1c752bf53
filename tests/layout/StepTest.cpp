// Integration (clamps and NaN rules of each mode) and whole steps, which re-centre.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "layout/step.h"

namespace {

using layout::ForceAccumulator;
using layout::LayoutMode;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr LayoutMode kPlain = LayoutMode::Plain;
constexpr LayoutMode kWeighted = LayoutMode::EdgeWeighted;
constexpr LayoutMode kDistance = LayoutMode::WeightAsDistance;
constexpr LayoutMode kModes[] = {kPlain, kWeighted, kDistance};

struct Vec {
  float x, y, z;
};

// One vertex at p0 = (1, -2, 3) with speed v0 integrates force F.
struct IntegrationCase {
  const char* what;
  LayoutMode mode;
  float eta;
  float L;
  Vec force;
  Vec speed;
  Vec expectedSpeed;
};

// Speeds start against the force where a force clamp is tested, so the result
// stays below every speed limit and shows the clamped force alone.
const IntegrationCase kIntegration[] = {
    {"|F| 25 -> 10", kPlain, 0, 0, {15, 20, 0}, {-8.4f, -11.2f, 0}, {-2.4f, -3.2f, 0}},
    {"|F| 25 -> 15", kWeighted, 0, 0, {15, 20, 0}, {-8.4f, -11.2f, 0}, {0.6f, 0.8f, 0}},
    {"|F| 19 kept", kPlain, 0, 0, {0, 11.4f, 15.2f}, {0, -10.8f, -14.4f}, {0, 0.6f, 0.8f}},
    {"|F|^2 400 kept", kDistance, 0, 0, {20, 0, 0}, {-14, 0, 0}, {6, 0, 0}},
    {"NaN F dropped", kPlain, 0.5f, 0, {kNaN, 1, 1}, {3, 0, -1}, {1.5f, 0, -0.5f}},
    {"NaN F stops", kWeighted, 0.5f, 0, {kNaN, 1, 1}, {3, 0, -1}, {0, 0, 0}},
    {"viscosity", kPlain, 0.25f, 0, {1, 2, 0}, {1, 0, -2}, {1.5f, 1.5f, -1.5f}},
    {"|v| 12 -> 5", kPlain, 0, 0, {0, 0, 0}, {7.2f, 9.6f, 0}, {3, 4, 0}},
    {"|v| 12 kept, L 10", kPlain, 0, 10, {0, 0, 0}, {7.2f, 9.6f, 0}, {7.2f, 9.6f, 0}},
    {"|v| 15 -> 5, L 10", kPlain, 0, 10, {0, 0, 0}, {9, 12, 0}, {3, 4, 0}},
    {"|v| 12 -> 7.5", kWeighted, 0, 0, {0, 0, 0}, {7.2f, 9.6f, 0}, {4.5f, 6, 0}},
    {"|v| 12 -> 7.5, L 10", kDistance, 0, 10, {0, 0, 0}, {7.2f, 9.6f, 0}, {4.5f, 6, 0}},
    {"NaN v zeroed", kPlain, 0.05f, 0, {0.5f, 0, 0}, {kNaN, 1, 1}, {0, 0, 0}},
};

TEST(StepIntegration, ClampsAndNaNRulesOfEachMode) {
  for (const IntegrationCase& c : kIntegration) {
    SCOPED_TRACE(testing::Message() << c.what << ", mode " << static_cast<int>(c.mode));
    ForceAccumulator forces(1);
    forces.x[0] = c.force.x;
    forces.y[0] = c.force.y;
    forces.z[0] = c.force.z;
    Vec p{1, -2, 3};
    Vec v = c.speed;
    layout::integrate({c.mode, c.eta}, c.L, forces, 1, {&p.x, &p.y, &p.z}, {&v.x, &v.y, &v.z});
    EXPECT_NEAR(v.x, c.expectedSpeed.x, 1e-5f);
    EXPECT_NEAR(v.y, c.expectedSpeed.y, 1e-5f);
    EXPECT_NEAR(v.z, c.expectedSpeed.z, 1e-5f);
    EXPECT_FLOAT_EQ(p.x, 1 + v.x);
    EXPECT_FLOAT_EQ(p.y, -2 + v.y);
    EXPECT_FLOAT_EQ(p.z, 3 + v.z);
  }
}

// Random positions away from the origin and small random speeds.
struct Layout {
  std::vector<float> x, y, z, vx, vy, vz;
  layout::Planes positions() { return {x.data(), y.data(), z.data()}; }
  layout::Planes speeds() { return {vx.data(), vy.data(), vz.data()}; }
};

Layout randomLayout(std::uint64_t V, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-30.0f, 30.0f);
  std::uniform_real_distribution<float> speed(-2.0f, 2.0f);
  Layout l;
  for (std::uint64_t v = 0; v < V; ++v) {
    l.x.push_back(coordinate(random) + 40.0f);
    l.y.push_back(coordinate(random) - 7.0f);
    l.z.push_back(coordinate(random));
    for (auto* plane : {&l.vx, &l.vy, &l.vz}) plane->push_back(speed(random));
  }
  return l;
}

double mean(const std::vector<float>& values) {
  double sum = 0;
  for (const float value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

void expectCentred(const Layout& l) {
  EXPECT_NEAR(mean(l.x), 0.0, 1e-4);
  EXPECT_NEAR(mean(l.y), 0.0, 1e-4);
  EXPECT_NEAR(mean(l.z), 0.0, 1e-4);
}

// A ring over the layout; the filter leaves every fifth vertex out.
struct Ring {
  explicit Ring(const Layout& l, float softening)
      : x(l.x), y(l.y), z(l.z), filter(l.x.size()), weights(l.x.size()) {
    const std::uint64_t V = l.x.size();
    for (std::uint64_t v = 0; v < V; ++v) {
      filter[v] = v % 5 == 0 ? 9.0f : 1.0f;
      from.push_back(v);
      to.push_back((v + 1) % V);
      weights[v] = 0.5f + static_cast<float>(v % 3);
    }
    in = {.verticesCount = V,
          .x = x.data(),
          .y = y.data(),
          .z = z.data(),
          .filter = filter.data(),
          .minFilter = 0.0f,
          .maxFilter = 2.0f,
          .softening = softening,
          .repulsive = 5.0f,
          .gravitational = 0.1f,
          .attraction = 0.05f,
          .preferredDistance = 2.0f,
          .edgesCount = V,
          .from = from.data(),
          .to = to.data(),
          .weights = weights.data()};
  }
  Ring(const Ring&) = delete;                   // `in` points into the members
  std::vector<float> x, y, z, filter, weights;  // x, y, z: the snapshot
  std::vector<std::uint64_t> from, to;
  layout::PassInputs in;
};

TEST(StepWhole, RecentresEveryVertexAndLetsFilteredOnesCoast) {
  for (const LayoutMode mode : kModes) {
    SCOPED_TRACE(static_cast<int>(mode));
    Layout l = randomLayout(200, 4);
    const Layout before = l;
    const Ring ring(l, 1.0f);
    layout::step({mode, 0.1f}, ring.in, l.positions(), l.speeds());
    expectCentred(l);
    for (std::uint64_t v = 0; v < 200; ++v) {
      if (v % 5 == 0) {  // left out: no force, only viscosity
        EXPECT_FLOAT_EQ(l.vx[v], before.vx[v] * 0.9f) << v;
        EXPECT_FLOAT_EQ(l.vz[v], before.vz[v] * 0.9f) << v;
      } else {
        EXPECT_NE(l.vx[v], before.vx[v] * 0.9f) << v;
      }
    }
  }
}

TEST(StepWhole, CoincidentVerticesGetFiniteForcesWithSofteningAndStayFiniteWithout) {
  for (const LayoutMode mode : kModes) {
    for (const float softening : {1.0f, 0.0f}) {
      SCOPED_TRACE(testing::Message() << "mode " << static_cast<int>(mode) << ", s " << softening);
      Layout l = randomLayout(10, 8);
      l.x[3] = l.x[4];
      l.y[3] = l.y[4];
      l.z[3] = l.z[4];
      Ring ring(l, softening);
      ring.in.filter = nullptr;

      ForceAccumulator forces(10);
      layout::repulsionPass(ring.in, forces);
      layout::attractionPass(mode, ring.in, forces);
      EXPECT_EQ(std::isnan(forces.x[3]), softening == 0.0f);
      EXPECT_EQ(std::isnan(forces.x[4]), softening == 0.0f);
      EXPECT_FALSE(std::isnan(forces.x[7]));

      layout::step({mode, 0.1f}, ring.in, l.positions(), l.speeds());
      for (std::uint64_t v = 0; v < 10; ++v) {
        EXPECT_TRUE(std::isfinite(l.x[v]) && std::isfinite(l.y[v]) && std::isfinite(l.z[v])) << v;
      }
    }
  }
}

// Two vertices joined by one edge of weight 2, no repulsion or gravity: the
// spring pulls or pushes them to the mode's rest length, where the stretch is 0.
TEST(StepWhole, SingleEdgeSettlesAtTheRestLengthOfTheMode) {
  const float L = 4.0f;
  const float s = 0.01f;
  const std::uint64_t from = 0;
  const std::uint64_t to = 1;
  const float weight = 2.0f;
  const std::pair<LayoutMode, float> restLengths[] = {
      {kPlain, L}, {kWeighted, L / weight}, {kDistance, L * weight}};
  for (const auto& [mode, rest] : restLengths) {
    for (const float start : {0.5f, 20.0f}) {
      SCOPED_TRACE(testing::Message() << "mode " << static_cast<int>(mode) << ", start " << start);
      Layout l{{-start / 2, start / 2}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}};
      layout::PassInputs in;
      in.verticesCount = 2;
      in.softening = s;
      in.attraction = 0.1f;
      in.preferredDistance = L;
      in.edgesCount = 1;
      in.from = &from;
      in.to = &to;
      in.weights = &weight;
      for (int n = 0; n < 600; ++n) {
        const Layout snapshot = l;
        in.x = snapshot.x.data();
        in.y = snapshot.y.data();
        in.z = snapshot.z.data();
        layout::step({mode, 0.2f}, in, l.positions(), l.speeds());
      }
      const float d = l.x[1] - l.x[0];
      EXPECT_NEAR(std::sqrt(d * d + s), rest, 0.02f * rest);
      EXPECT_NEAR(l.x[0] + l.x[1], 0.0f, 1e-5f);
    }
  }
}

}  // namespace
