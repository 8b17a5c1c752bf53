// The octree repulsion against the all-pairs pass: force error on uniform
// and clustered layouts, the participation rule, degenerate inputs, and
// whole steps that must not depend on the number of threads.
#include <gtest/gtest.h>
#include <tbb/global_control.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "layout/barneshut.h"
#include "layout/kernel_dispatch.h"
#include "layout/repulsion.h"
#include "layout/step.h"

namespace {

using layout::ForceAccumulator;
using layout::PassInputs;
using layout::detail::InstructionSet;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// Networks are smaller under ThreadSanitizer, which runs these tests too.
#ifdef __SANITIZE_THREAD__
constexpr std::uint64_t kLarge = 1500;
#else
constexpr std::uint64_t kLarge = 10000;
#endif

struct Cloud {
  std::vector<float> x, y, z, filter;
  bool filtered = false;
  float softening = 1.0f;
  float gravitational = 0.0f;

  std::uint64_t count() const { return x.size(); }
  void add(float px, float py, float pz) {
    x.push_back(px);
    y.push_back(py);
    z.push_back(pz);
    filter.push_back(static_cast<float>(filter.size() % 4));  // [1, 3] keeps three in four
  }
  PassInputs inputs() const {
    PassInputs in;
    in.verticesCount = count();
    in.x = x.data();
    in.y = y.data();
    in.z = z.data();
    in.filter = filtered ? filter.data() : nullptr;
    in.minFilter = 1.0f;
    in.maxFilter = 3.0f;
    in.softening = softening;
    in.repulsive = 10.0f;
    in.gravitational = gravitational;
    return in;
  }
};

Cloud uniformCloud(std::uint64_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-30.0f, 30.0f);
  Cloud c;
  for (std::uint64_t v = 0; v < n; ++v)
    c.add(coordinate(random), coordinate(random), coordinate(random));
  return c;
}

// 25 tight clusters of different sizes scattered in a large cube.
Cloud clusteredCloud(std::uint64_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> centre(-200.0f, 200.0f);
  std::normal_distribution<float> spread(0.0f, 3.0f);
  std::vector<std::array<float, 3>> centres(25);
  for (auto& c : centres) c = {centre(random), centre(random), centre(random)};
  std::discrete_distribution<std::size_t> which(
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25});
  Cloud cloud;
  for (std::uint64_t v = 0; v < n; ++v) {
    const auto& c = centres[which(random)];
    cloud.add(c[0] + spread(random), c[1] + spread(random), c[2] + spread(random));
  }
  return cloud;
}

ForceAccumulator exactForces(const Cloud& c) {
  ForceAccumulator out(c.count());
  layout::repulsionPass(c.inputs(), out);
  return out;
}

ForceAccumulator approximateForces(
    const Cloud& c, float theta,
    InstructionSet set = layout::detail::supportedInstructionSets().back()) {
  ForceAccumulator out(c.count());
  layout::BarnesHutWorkspace workspace;
  layout::detail::barnesHutRepulsionPassWith(set, c.inputs(), theta, out, workspace);
  return out;
}

// RMS of |got - want| over RMS of |want|, over the vertices whose force is
// finite. A force with a NaN component must meet one with a NaN component:
// integration treats both alike (F.F is NaN).
double relativeError(const ForceAccumulator& got, const ForceAccumulator& want) {
  double error = 0.0, norm = 0.0;
  std::size_t nanMismatches = 0;
  for (std::size_t v = 0; v < want.x.size(); ++v) {
    const double w[3] = {want.x[v], want.y[v], want.z[v]};
    const double g[3] = {got.x[v], got.y[v], got.z[v]};
    const bool wantNaN = std::isnan(w[0] + w[1] + w[2]);
    if (wantNaN != std::isnan(g[0] + g[1] + g[2])) ++nanMismatches;
    if (wantNaN) continue;
    for (int a = 0; a < 3; ++a) {
      error += (g[a] - w[a]) * (g[a] - w[a]);
      norm += w[a] * w[a];
    }
  }
  EXPECT_EQ(nanMismatches, 0u);
  return norm > 0.0 ? std::sqrt(error / norm) : std::sqrt(error);
}

TEST(BarnesHut, ForceErrorAgainstAllPairs) {
  struct Case {
    const char* what;
    Cloud cloud;
  };
  Case cases[] = {{"uniform", uniformCloud(kLarge, 1)},
                  {"clustered", clusteredCloud(kLarge, 2)},
                  {"filtered", uniformCloud(kLarge / 4, 3)}};
  cases[2].cloud.filtered = true;
  cases[2].cloud.gravitational = 0.001f;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const ForceAccumulator exact = exactForces(c.cloud);
    for (const InstructionSet set : layout::detail::supportedInstructionSets()) {
      const ForceAccumulator approximate = approximateForces(c.cloud, 0.8f, set);
      EXPECT_LE(relativeError(approximate, exact), 0.02);
      // Vertices left out feel nothing (and, by the bound, exert nothing).
      for (std::uint64_t v = 0; v < c.cloud.count(); ++v) {
        if (c.cloud.filtered && c.cloud.filter[v] == 0.0f) {
          EXPECT_EQ(approximate.x[v], 0.0);
        }
      }
    }
    // A tiny opening angle opens every cell of more than one vertex.
    EXPECT_LE(relativeError(approximateForces(c.cloud, 1e-4f), exact), 1e-5);
  }
}

// Degenerate layouts give what the all-pairs pass gives, NaN where it has NaN
// (the bound is looser than above: small networks approximate less well).
TEST(BarnesHut, DegenerateInputsMatchAllPairs) {
  struct Case {
    const char* what;
    Cloud cloud;
  };
  std::vector<Case> cases;
  Cloud one;
  one.add(3, 4, 0);
  one.gravitational = 0.5f;
  cases.push_back({"one vertex", one});
  for (const float s : {1.0f, 0.0f}) {
    Cloud point;
    for (int v = 0; v < 100; ++v) point.add(2, 2, 2);
    point.softening = s;
    cases.push_back({s > 0 ? "all at one point" : "all at one point, s 0", point});
    Cloud pair = uniformCloud(300, 5);
    pair.x[7] = pair.x[250];
    pair.y[7] = pair.y[250];
    pair.z[7] = pair.z[250];
    pair.softening = s;
    cases.push_back({s > 0 ? "two coincident" : "two coincident, s 0", pair});
  }
  Cloud nan = uniformCloud(300, 6);
  nan.y[17] = kNaN;
  cases.push_back({"NaN position", nan});
  Cloud infinite = uniformCloud(300, 7);
  infinite.z[3] = std::numeric_limits<float>::infinity();
  cases.push_back({"infinite position", infinite});
  // Everything crowded into one quantisation cell next to a far outlier.
  Cloud outlier = uniformCloud(400, 8);
  outlier.x[5] = 1e30f;
  cases.push_back({"far outlier", outlier});
  Cloud nanLeftOut = nan;
  nanLeftOut.filtered = true;
  nanLeftOut.filter[17] = 0.0f;
  cases.push_back({"NaN position left out", nanLeftOut});
  cases.push_back({"empty", Cloud{}});

  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_LE(relativeError(approximateForces(c.cloud, 0.8f), exactForces(c.cloud)), 0.05);
  }
}

// The tree covers every point once, in groups and leaves of bounded size,
// also when the points crowd into one quantisation cell.
TEST(BarnesHut, OctreeCoversEveryPointOnceInSmallLeaves) {
  Cloud crowded;
  for (int v = 0; v < 1000; ++v) crowded.add(1, 2, 3);
  crowded.add(1e30f, 0, 0);
  for (const Cloud& c : {uniformCloud(3000, 13), crowded}) {
    std::vector<std::uint32_t> indices(c.count());
    for (std::uint32_t v = 0; v < indices.size(); ++v) indices[v] = v;
    layout::Octree tree;
    layout::buildOctree(c.x.data(), c.y.data(), c.z.data(), indices, tree);
    for (const auto* list : {&tree.leaves, &tree.groups}) {
      std::uint32_t next = 0;  // in curve order, without gaps or overlaps
      for (const std::uint32_t cell : *list) {
        EXPECT_EQ(tree.cells[cell].begin, next);
        EXPECT_LE(tree.cells[cell].end - tree.cells[cell].begin, layout::kOctreeGroupSize);
        next = tree.cells[cell].end;
      }
      EXPECT_EQ(next, c.count());
    }
    std::vector<std::uint32_t> order = tree.order;
    std::sort(order.begin(), order.end());
    EXPECT_EQ(order, indices);
  }
}

// Springs summed by vertex equal the edge-wise pass, with self-loops, ends
// left out, and zero, negative and NaN weights.
TEST(BarnesHut, SpringsByVertexMatchTheEdgeWisePass) {
  Cloud c = uniformCloud(500, 10);
  c.filtered = true;
  std::mt19937 random(11);
  std::uniform_int_distribution<std::uint64_t> vertex(0, c.count() - 1);
  std::vector<std::uint64_t> from, to;
  std::vector<float> weights;
  const float odd[] = {0.0f, -1.5f, kNaN, 0.5f, 2.0f};
  for (std::uint64_t e = 0; e < 2000; ++e) {
    from.push_back(vertex(random));
    to.push_back(e % 9 == 4 ? from.back() : vertex(random));
    weights.push_back(odd[e % 5]);
  }
  PassInputs in = c.inputs();
  in.attraction = 0.02f;
  in.preferredDistance = 1.5f;
  in.edgesCount = from.size();
  in.from = from.data();
  in.to = to.data();
  in.weights = weights.data();
  layout::EdgeIncidence incidence;
  incidence.update(in.verticesCount, in.edgesCount, in.from, in.to);
  for (const auto mode : {layout::LayoutMode::Plain, layout::LayoutMode::EdgeWeighted,
                          layout::LayoutMode::WeightAsDistance}) {
    ForceAccumulator edgeWise(c.count()), byVertex(c.count());
    layout::attractionPass(mode, in, edgeWise);
    layout::attractionPassByVertex(mode, in, incidence, byVertex);
    EXPECT_LE(relativeError(byVertex, edgeWise), 1e-6) << static_cast<int>(mode);
  }
}

TEST(BarnesHut, AutomaticChoiceCountsParticipantsAndFixedThetaKeepsIt) {
  using layout::RepulsionChoice;
  struct Case {
    RepulsionChoice choice;
    float theta;
    std::uint64_t participants;
    float expected;
  };
  const Case cases[] = {{RepulsionChoice::Automatic, 0.3f, 19999, 0.0f},
                        {RepulsionChoice::Automatic, 0.3f, 20000, 0.8f},
                        {RepulsionChoice::Fixed, 0.3f, 10, 0.3f},
                        {RepulsionChoice::Fixed, 0.0f, 100000, 0.0f},
                        {RepulsionChoice::Fixed, -1.0f, 100000, 0.0f},
                        {RepulsionChoice::Fixed, kNaN, 100000, 0.0f}};
  for (const Case& c : cases) {
    EXPECT_EQ(layout::repulsionTheta(c.choice, c.theta, c.participants), c.expected)
        << c.theta << " " << c.participants;
  }
  Cloud cloud = uniformCloud(40, 12);
  cloud.filtered = true;
  EXPECT_EQ(layout::participantCount(cloud.inputs()), 30u);  // three in four
  EXPECT_EQ(layout::repulsionDescription(0.0f), "Repulsion: exact");
  EXPECT_EQ(layout::repulsionDescription(0.8f), "Repulsion: Barnes\u2013Hut \u03b8 = 0.8");
}

// A few whole steps of a network with springs, in every mode.
std::vector<float> stepsWith(int threads, layout::LayoutMode mode) {
  Cloud c = clusteredCloud(kLarge / 2, 8);
  c.filtered = true;
  c.gravitational = 0.01f;
  std::mt19937 random(9);
  std::uniform_int_distribution<std::uint64_t> vertex(0, c.count() - 1);
  std::uniform_real_distribution<float> weight(0.1f, 2.0f);
  std::vector<std::uint64_t> from, to;
  std::vector<float> weights;
  for (std::uint64_t e = 0; e < 3 * c.count(); ++e) {
    from.push_back(vertex(random));
    to.push_back(e % 10 == 0 ? from.back() : vertex(random));
    weights.push_back(weight(random));
  }
  PassInputs in = c.inputs();
  in.attraction = 0.01f;
  in.preferredDistance = 1.0f;
  in.edgesCount = from.size();
  in.from = from.data();
  in.to = to.data();
  in.weights = weights.data();
  layout::StepSettings settings;
  settings.mode = mode;
  settings.barnesHutTheta = 0.8f;
  std::vector<float> speeds(3 * c.count(), 0.0f);
  std::vector<float> positions;
  layout::StepWorkspace workspace;
  tbb::task_arena arena(threads);
  arena.execute([&] {
    for (int s = 0; s < 6; ++s) {
      positions = c.x;
      positions.insert(positions.end(), c.y.begin(), c.y.end());
      positions.insert(positions.end(), c.z.begin(), c.z.end());
      const std::uint64_t n = c.count();
      layout::step(settings, in, {positions.data(), positions.data() + n, positions.data() + 2 * n},
                   {speeds.data(), speeds.data() + n, speeds.data() + 2 * n}, workspace);
      std::copy_n(positions.begin(), n, c.x.begin());
      std::copy_n(positions.begin() + static_cast<std::ptrdiff_t>(n), n, c.y.begin());
      std::copy_n(positions.begin() + static_cast<std::ptrdiff_t>(2 * n), n, c.z.begin());
    }
  });
  return positions;
}

TEST(BarnesHut, StepsAreBitIdenticalWhateverTheThreads) {
  // More threads than cores, so that work is stolen in varying order.
  const tbb::global_control threads(tbb::global_control::max_allowed_parallelism, 4);
  for (const auto mode : {layout::LayoutMode::Plain, layout::LayoutMode::EdgeWeighted,
                          layout::LayoutMode::WeightAsDistance}) {
    const std::vector<float> one = stepsWith(1, mode);
    const std::vector<float> four = stepsWith(4, mode);
    ASSERT_EQ(one.size(), four.size());
    for (std::size_t k = 0; k < one.size(); ++k) {
      ASSERT_EQ(one[k], four[k]) << "coordinate " << k << ", mode " << static_cast<int>(mode);
    }
  }
}

}  // namespace
