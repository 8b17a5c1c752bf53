// The web bundle of a network of 1,000,000 edges over 200,000 vertices,
// edge-weighted, with names, a text property of 100 categories and a numeric
// property, written through the controller with every offered property picked
// (edges, positions, names, degrees and strengths, and the values and colours
// of the categories and the four built-in measures; the numeric "Score" sorts
// last and is not offered), each file atomically. Also the edge file's text
// alone.
//
//   build/bench/bench_web [--benchmark_filter=...]
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "app/VXLController.h"
#include "io/webtexts.h"

namespace {

constexpr std::uint64_t kVertices = 200000;
constexpr std::uint64_t kEdges = 1000000;

VXLController& controller() {
  static const VXLController::Ptr made = [] {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<std::uint64_t> vertex(0, kVertices - 1);
    std::uniform_real_distribution<float> weight(0.5f, 5.0f);
    NetworkData data;
    data.verticesCount = kVertices;
    data.edgeWeighted = true;
    for (std::uint64_t k = 0; k < kEdges; ++k) {
      data.from.push_back(vertex(random));
      data.to.push_back(vertex(random));
      data.weights.push_back(weight(random));
    }
    auto names = std::make_shared<TextList>();
    auto groups = std::make_shared<TextList>();
    std::vector<float> score(kVertices);
    for (std::uint64_t i = 0; i < kVertices; ++i) {
      names->push_back("vertex " + std::to_string(i));
      groups->push_back("group " + std::to_string(random() % 100));
      score[i] = weight(random) * weight(random);
    }
    data.properties = {
        {"Name", names}, {"Group", groups}, {"Score", QLONumberArray::initWithFloats(score)}};
    auto c = VXLController::init();
    c->setNetwork(QLONetwork::make(std::move(data)));
    return c;
  }();
  return *made;
}

void BM_WebBundle(benchmark::State& state) {
  VXLController& c = controller();
  c.export3DTableController().reloadTable();
  const auto folder = std::filesystem::temp_directory_path() / "plexview-bench-web";
  std::string error;
  for (auto _ : state) {
    if (!c.exportWebToFile(folder, &error)) state.SkipWithError(error.c_str());
  }
  std::uintmax_t bytes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) bytes += entry.file_size();
  state.counters["files"] =
      static_cast<double>(std::distance(std::filesystem::directory_iterator(folder), {}));
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_WebBundle)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_EdgesText(benchmark::State& state) {
  const auto network = controller().network();
  for (auto _ : state) benchmark::DoNotOptimize(io::edgesText(*network));
}
BENCHMARK(BM_EdgesText)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
