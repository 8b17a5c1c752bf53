// Layout benchmarks: one whole layout step (both force passes, integration,
// re-centring) of a random network with average degree 8, in each mode, and
// the plain scalar reference step (reference_layout.cpp) on the same input.
// The counter `pairs/s` is repulsion pair interactions per second.
//
//   build/bench/bench_layout [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "layout/barneshut.h"
#include "layout/kernels.h"
#include "layout/multilevel.h"
#include "layout/step.h"
#include "plexora/QLONetwork.h"
#include "plexora/QLORandomGenerator.h"
#include "reference_layout.h"

namespace {

constexpr double kDegree = 8.0;
constexpr std::uint64_t kSeed = 2024;

// The force constants of every benchmark: a mild, realistic layout.
constexpr float kSoftening = 1.0f;
constexpr float kRepulsive = 1.0f;
constexpr float kGravitational = 0.01f;
constexpr float kAttraction = 0.01f;
constexpr float kPreferredDistance = 1.0f;

// A seeded random network, weights uniform in (0, 1] and positions uniform in
// the cube -30..30, speeds zero.
struct Scene {
  QLONetwork::Ptr network;
  std::vector<float> weights;
  std::vector<float> x, y, z;  // planes
  std::vector<float> vx, vy, vz;
  std::vector<float> interleaved;  // x, y, z per vertex, for the reference
  std::vector<float> interleavedSpeeds;

  explicit Scene(std::uint64_t vertices, double degree = kDegree) {
    auto& random = QLORandomGenerator::sharedRandomGenerator();
    random.setSeed(kSeed);
    network = QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree);
    for (std::uint64_t e = 0; e < network->countEdges(); ++e) {
      weights.push_back(static_cast<float>(1.0 - random.randomDouble()));
    }
    for (std::uint64_t v = 0; v < vertices; ++v) {
      for (auto* plane : {&x, &y, &z}) {
        plane->push_back(static_cast<float>(60.0 * random.randomDouble() - 30.0));
        interleaved.push_back(plane->back());
      }
    }
    vx.assign(vertices, 0.0f);
    vy.assign(vertices, 0.0f);
    vz.assign(vertices, 0.0f);
    interleavedSpeeds.assign(3 * vertices, 0.0f);
  }
};

double pairsPerStep(std::uint64_t vertices) {
  return static_cast<double>(vertices) * static_cast<double>(vertices - 1) / 2.0;
}

void reportPairs(benchmark::State& state, std::uint64_t vertices) {
  state.counters["pairs/s"] =
      benchmark::Counter(pairsPerStep(vertices) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}

// One step in `mode` with the all-pairs repulsion (theta 0) or the octree.
void runSteps(benchmark::State& state, layout::LayoutMode mode, float theta, double degree) {
  const auto vertices = static_cast<std::uint64_t>(state.range(0));
  Scene scene(vertices, degree);
  std::vector<float> snapshotX, snapshotY, snapshotZ;
  layout::PassInputs inputs;
  inputs.verticesCount = vertices;
  inputs.softening = kSoftening;
  inputs.repulsive = kRepulsive;
  inputs.gravitational = kGravitational;
  inputs.attraction = kAttraction;
  inputs.preferredDistance = kPreferredDistance;
  inputs.edgesCount = scene.network->countEdges();
  inputs.from = scene.network->edgeFromList;
  inputs.to = scene.network->edgeToList;
  inputs.weights = mode == layout::LayoutMode::Plain ? nullptr : scene.weights.data();
  const layout::StepSettings settings{mode, 0.05f, theta};
  layout::StepWorkspace workspace;
  for (auto _ : state) {
    // The view hands the step a snapshot of the positions; taking it is part
    // of the step's cost.
    snapshotX = scene.x;
    snapshotY = scene.y;
    snapshotZ = scene.z;
    inputs.x = snapshotX.data();
    inputs.y = snapshotY.data();
    inputs.z = snapshotZ.data();
    layout::step(settings, inputs, {scene.x.data(), scene.y.data(), scene.z.data()},
                 {scene.vx.data(), scene.vy.data(), scene.vz.data()}, workspace);
    benchmark::DoNotOptimize(scene.x.data());
    benchmark::ClobberMemory();
  }
  state.counters["edges"] = static_cast<double>(scene.network->countEdges());
}

void layoutStep(benchmark::State& state, layout::LayoutMode mode) {
  runSteps(state, mode, 0.0f, kDegree);
  reportPairs(state, static_cast<std::uint64_t>(state.range(0)));
}

// The octree step at theta 0.8: degree 8 up to 100,000 vertices (400,000
// edges), degree 4 above (1,000,000 vertices, 2,000,000 edges).
void BM_StepBarnesHut(benchmark::State& state) {
  runSteps(state, layout::LayoutMode::Plain, 0.8f, state.range(0) > 100000 ? 4.0 : kDegree);
}

// The octree repulsion pass alone at theta 0.8 on 10,000 vertices, uniform
// in the cube +-30 or in 25 Gaussian clusters (sigma 3) in the cube +-200,
// R 10, s 1, G 0; counter `error`: RMS of |F - F_exact| over RMS |F_exact|.
void BM_BarnesHutForceError(benchmark::State& state, bool clustered) {
  constexpr std::uint64_t n = 10000;
  std::mt19937 random(7);
  std::uniform_real_distribution<float> uniform(-30.0f, 30.0f), centre(-200.0f, 200.0f);
  std::normal_distribution<float> spread(0.0f, 3.0f);
  std::vector<std::array<float, 3>> centres(25);
  for (auto& c : centres) c = {centre(random), centre(random), centre(random)};
  std::vector<float> x(n), y(n), z(n);
  for (std::uint64_t v = 0; v < n; ++v) {
    const auto& c = centres[v % centres.size()];
    x[v] = clustered ? c[0] + spread(random) : uniform(random);
    y[v] = clustered ? c[1] + spread(random) : uniform(random);
    z[v] = clustered ? c[2] + spread(random) : uniform(random);
  }
  layout::PassInputs in;
  in.verticesCount = n;
  in.x = x.data();
  in.y = y.data();
  in.z = z.data();
  in.repulsive = 10.0f;
  layout::ForceAccumulator exact(n);
  layout::repulsionPass(in, exact);
  layout::BarnesHutWorkspace workspace;
  double error = 0, norm = 0;
  for (auto _ : state) {
    layout::ForceAccumulator approximate(n);
    layout::barnesHutRepulsionPass(in, 0.8f, approximate, workspace);
    error = norm = 0;
    for (std::uint64_t v = 0; v < n; ++v) {
      for (const auto plane : {&layout::ForceAccumulator::x, &layout::ForceAccumulator::y,
                               &layout::ForceAccumulator::z}) {
        const double d = (approximate.*plane)[v] - (exact.*plane)[v];
        error += d * d;
        norm += (exact.*plane)[v] * (exact.*plane)[v];
      }
    }
  }
  state.counters["error"] = std::sqrt(error / norm);
}

// The multilevel start of a network of `range(0)` vertices in 500 clusters
// (average degree 8, one edge in 50 between clusters) with the live layout's
// default constants, then 20 steps at theta 0.8. Counters: the mean edge
// length over the mean distance of 100,000 random vertex pairs, after the
// start and after the 20 steps.
void BM_MultilevelStart(benchmark::State& state) {
  const auto vertices = static_cast<std::uint64_t>(state.range(0));
  constexpr std::uint64_t kClusters = 500;
  const std::uint64_t size = vertices / kClusters;
  std::mt19937_64 random(kSeed);
  std::vector<std::uint64_t> from, to;
  for (std::uint64_t e = 0; e < 4 * vertices; ++e) {
    const std::uint64_t a = random() % vertices;
    const std::uint64_t cluster = e % 50 == 0 ? random() % kClusters : a / size;
    from.push_back(a);
    to.push_back(cluster * size + random() % size);
  }
  const layout::MultilevelSettings settings;
  const auto ratio = [&](const layout::PlanePositions& p) {
    const auto length = [&](std::uint64_t a, std::uint64_t b) {
      return std::hypot(double{p.x[a]} - p.x[b], double{p.y[a]} - p.y[b], double{p.z[a]} - p.z[b]);
    };
    double edges = 0, pairs = 0;
    for (std::size_t e = 0; e < from.size(); ++e) edges += length(from[e], to[e]);
    for (int k = 0; k < 100000; ++k) pairs += length(random() % vertices, random() % vertices);
    return (edges / static_cast<double>(from.size())) / (pairs / 100000);
  };
  for (auto _ : state) {
    auto positions =
        layout::multilevelLayout(vertices, from.size(), from.data(), to.data(), settings);
    state.PauseTiming();
    state.counters["ratio_start"] = ratio(*positions);
    layout::PassInputs in;
    in.verticesCount = vertices;
    in.softening = settings.softening;
    in.repulsive = settings.repulsive;
    in.gravitational = settings.gravitational;
    in.attraction = settings.attraction;
    in.edgesCount = from.size();
    in.from = from.data();
    in.to = to.data();
    layout::StepSettings step;
    step.barnesHutTheta = 0.8f;
    layout::StepWorkspace workspace;
    layout::PlanePositions& p = *positions;
    std::vector<float> vx(vertices), vy(vertices), vz(vertices);
    for (int s = 0; s < 20; ++s) {
      const layout::PlanePositions snapshot = p;
      in.x = snapshot.x.data();
      in.y = snapshot.y.data();
      in.z = snapshot.z.data();
      layout::step(step, in, {p.x.data(), p.y.data(), p.z.data()},
                   {vx.data(), vy.data(), vz.data()}, workspace);
    }
    state.counters["ratio_20_steps"] = ratio(p);
    state.ResumeTiming();
  }
}

void referenceStep(benchmark::State& state) {
  const auto vertices = static_cast<std::uint64_t>(state.range(0));
  Scene scene(vertices);
  reference::Settings settings;
  settings.softening = kSoftening;
  settings.repulsive = kRepulsive;
  settings.gravitational = kGravitational;
  settings.attraction = kAttraction;
  settings.preferredDistance = kPreferredDistance;
  const reference::Network network{vertices, scene.network->countEdges(),
                                   scene.network->edgeFromList, scene.network->edgeToList, nullptr};
  for (auto _ : state) {
    reference::step(settings, network, scene.interleaved, scene.interleavedSpeeds);
    benchmark::DoNotOptimize(scene.interleaved.data());
    benchmark::ClobberMemory();
  }
  reportPairs(state, vertices);
}

BENCHMARK_CAPTURE(layoutStep, plain, layout::LayoutMode::Plain)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(layoutStep, edge_weighted, layout::LayoutMode::EdgeWeighted)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(layoutStep, weight_as_distance, layout::LayoutMode::WeightAsDistance)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_StepBarnesHut)
    ->Arg(10000)
    ->Arg(50000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(BM_BarnesHutForceError, uniform, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BarnesHutForceError, clustered, true)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MultilevelStart)->Arg(100000)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();
BENCHMARK(referenceStep)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
