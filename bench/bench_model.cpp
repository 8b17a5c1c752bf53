// Model benchmarks: reading 1,000,000-edge Pajek and GraphML files, generating
// 1,000,000-edge networks, degrees and the largest component.
//
//   build/bench/bench_model [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "plexora/QLONetwork.h"
#include "plexora/QLORandomGenerator.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kVertices = 100000;
constexpr double kDegree = 20.0;  // 1,000,000 edges on average

// A labelled, weighted random network written once to both formats.
struct Files {
  fs::path dir;
  fs::path pajek;
  fs::path graphml;
  QLONetwork::Ptr network;

  Files() {
    dir = fs::temp_directory_path() / ("plexview-bench-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    QLORandomGenerator::sharedRandomGenerator().setSeed(2024);
    auto plain = QLONetwork::initRandomNetworkWithNumberOfVertices(kVertices, kDegree);
    NetworkData data;
    data.verticesCount = plain->countVertices();
    data.from.assign(plain->edgeFromList, plain->edgeFromList + plain->countEdges());
    data.to.assign(plain->edgeToList, plain->edgeToList + plain->countEdges());
    auto& random = QLORandomGenerator::sharedRandomGenerator();
    for (std::uint64_t k = 0; k < plain->countEdges(); ++k) {
      data.weights.push_back(static_cast<float>(random.randomDouble() * 10.0));
    }
    data.edgeWeighted = true;
    auto names = std::make_shared<TextList>();
    for (std::uint64_t v = 0; v < kVertices; ++v) names->push_back("vertex " + std::to_string(v));
    data.properties.emplace_back("Name", names);
    network = QLONetwork::make(std::move(data));
    pajek = dir / "network.net";
    graphml = dir / "network.graphml";
    std::string why;
    if (!network->writeToPajekURL(pajek, WriteMode::Direct, &why) ||
        !network->writeToURL(graphml, WriteMode::Direct, &why)) {
      std::fprintf(stderr, "cannot write benchmark files: %s\n", why.c_str());
      std::exit(1);
    }
  }
  ~Files() { fs::remove_all(dir); }
};

Files& files() {
  static Files instance;
  return instance;
}

void BM_ReadPajek(benchmark::State& state) {
  auto& f = files();
  for (auto _ : state) {
    auto network = QLONetwork::initWithContentsOfPajekURL(f.pajek);
    if (!network) state.SkipWithError("read failed");
    benchmark::DoNotOptimize(network);
  }
  state.counters["edges"] = static_cast<double>(f.network->countEdges());
  state.counters["MB"] = static_cast<double>(fs::file_size(f.pajek)) / 1e6;
}
BENCHMARK(BM_ReadPajek)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_ReadGraphml(benchmark::State& state) {
  auto& f = files();
  for (auto _ : state) {
    auto network = QLONetwork::initWithContentsOfURL(f.graphml);
    if (!network) state.SkipWithError("read failed");
    benchmark::DoNotOptimize(network);
  }
  state.counters["edges"] = static_cast<double>(f.network->countEdges());
  state.counters["MB"] = static_cast<double>(fs::file_size(f.graphml)) / 1e6;
}
BENCHMARK(BM_ReadGraphml)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_WritePajek(benchmark::State& state) {
  auto& f = files();
  for (auto _ : state) f.network->writeToPajekURL(f.dir / "out.net", WriteMode::Atomic);
}
BENCHMARK(BM_WritePajek)->Unit(benchmark::kMillisecond);

void BM_WriteGraphml(benchmark::State& state) {
  auto& f = files();
  for (auto _ : state) f.network->writeToURL(f.dir / "out.graphml", WriteMode::Atomic);
}
BENCHMARK(BM_WriteGraphml)->Unit(benchmark::kMillisecond);

// Generators at 1,000,000 edges: V = 100,000 with degree 20 and
// V = 1,000,000 with degree 2.
void BM_GenerateRandom(benchmark::State& state) {
  const auto vertices = static_cast<std::uint64_t>(state.range(0));
  const double degree = 2e6 / static_cast<double>(vertices);
  std::uint64_t edges = 0;
  for (auto _ : state) {
    auto network = QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree);
    edges = network->countEdges();
  }
  state.counters["edges"] = static_cast<double>(edges);
}
BENCHMARK(BM_GenerateRandom)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_GenerateBarabasi(benchmark::State& state) {
  const auto vertices = static_cast<std::uint64_t>(state.range(0));
  const auto degree = static_cast<std::uint64_t>(2000000 / vertices);
  std::uint64_t edges = 0;
  for (auto _ : state) {
    auto network = QLONetwork::initBarabasiNetworkWitNumberOfVertices(vertices, degree);
    edges = network->countEdges();
  }
  state.counters["edges"] = static_cast<double>(edges);
}
BENCHMARK(BM_GenerateBarabasi)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_Degrees(benchmark::State& state) {
  auto network = QLONetwork::initRandomNetworkWithNumberOfVertices(1000000, 2.0);
  for (auto _ : state) {
    auto degrees = network->calcDegrees();
    auto strengths = network->calcInStrengths();
    benchmark::DoNotOptimize(degrees);
    benchmark::DoNotOptimize(strengths);
  }
}
BENCHMARK(BM_Degrees)->Unit(benchmark::kMillisecond);

void BM_LargestComponent(benchmark::State& state) {
  auto network = QLONetwork::initRandomNetworkWithNumberOfVertices(1000000, 2.0);
  std::uint64_t kept = 0;
  for (auto _ : state) kept = network->largestConnectedSubNetwork()->countVertices();
  state.counters["kept"] = static_cast<double>(kept);
}
BENCHMARK(BM_LargestComponent)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
