// Prints what a network holds: counts, flags, properties, degree range and the
// largest component. With no file it summarises a generated network.
//
//   plexview-summary [--random N K | --barabasi N K] [--seed S] [FILE...]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/QLORandomGenerator.h"
#include "quillo/numbertext.h"

namespace {

void summarise(const std::string& title, const QLONetwork& network) {
  std::printf("%s\n", title.c_str());
  std::printf("  vertices: %llu\n", static_cast<unsigned long long>(network.countVertices()));
  std::printf("  edges: %llu\n", static_cast<unsigned long long>(network.countEdges()));
  std::printf("  directed: %s  edge-weighted: %s  vertex-weighted: %s\n",
              network.isDirected() ? "YES" : "NO", network.isEdgeWeighted() ? "YES" : "NO",
              network.isVertexWeighted() ? "YES" : "NO");
  std::string keys;
  for (const auto& [name, value] : network.propertiesOfVertices()) {
    if (!keys.empty()) keys += ", ";
    keys += name;
    keys += " (";
    keys += propertyClassName(value);
    keys += ')';
  }
  std::printf("  properties: %s\n", keys.empty() ? "none" : keys.c_str());
  if (network.countVertices() > 0) {
    auto degrees = network.calcDegrees();
    const double* d = degrees->data<double>();
    auto [lo, hi] = std::minmax_element(d, d + degrees->count());
    std::printf("  degree: %s to %s, average %.4g\n", quillo::numberText(*lo).c_str(),
                quillo::numberText(*hi).c_str(),
                2.0 * static_cast<double>(network.countEdges()) /
                    static_cast<double>(network.countVertices()));
  }
  auto component = network.largestConnectedSubNetwork();
  std::printf("  largest component: %llu vertices, %llu edges\n",
              static_cast<unsigned long long>(component->countVertices()),
              static_cast<unsigned long long>(component->countEdges()));
}

int usage() {
  std::fprintf(stderr,
               "usage: plexview-summary [--random N K | --barabasi N K] [--seed S] [FILE...]\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files;
  std::string generator;
  std::uint64_t vertices = 0;
  double degree = 0;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--random" || arg == "--barabasi") {
      if (i + 2 >= argc) return usage();
      auto n = quillo::parseUInt64(argv[i + 1]);
      auto k = quillo::parseDouble(argv[i + 2]);
      if (!n || !k || *k < 0) return usage();
      generator = arg.substr(2);
      vertices = *n;
      degree = *k;
      i += 2;
    } else if (arg == "--seed") {
      auto seed = i + 1 < argc ? quillo::parseUInt64(argv[i + 1]) : std::nullopt;
      if (!seed) return usage();
      QLORandomGenerator::sharedRandomGenerator().setSeed(*seed);
      ++i;
    } else if (arg == "-h" || arg == "--help") {
      usage();
      return 0;
    } else if (!arg.empty() && arg[0] == '-') {
      return usage();
    } else {
      files.push_back(arg);
    }
  }
  if (generator.empty() && files.empty()) {
    generator = "random";
    vertices = 1000;
    degree = 4;
  }
  int status = 0;
  if (!generator.empty()) {
    try {
      auto start = std::chrono::steady_clock::now();
      auto network = generator == "random"
                         ? QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, degree)
                         : QLONetwork::initBarabasiNetworkWitNumberOfVertices(
                               vertices, static_cast<std::uint64_t>(degree));
      double seconds =
          std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
      char title[128];
      std::snprintf(title, sizeof title,
                    "generated %s network (%llu vertices, degree %g) in %.3f s", generator.c_str(),
                    static_cast<unsigned long long>(vertices), degree, seconds);
      summarise(title, *network);
    } catch (const std::bad_alloc&) {
      std::fprintf(stderr,
                   "plexview-summary: not enough memory for a %s network of %llu vertices\n",
                   generator.c_str(), static_cast<unsigned long long>(vertices));
      return 1;
    }
  }
  for (const auto& file : files) {
    ReadError error;
    try {
      if (auto network = QLONetwork::initWithContentsOfURL(file, &error)) {
        summarise(file, *network);
        continue;
      }
    } catch (const std::bad_alloc&) {
      error = ReadError{file, 0, "not enough memory to read and summarise the network"};
    }
    std::fflush(stdout);
    std::fprintf(stderr, "plexview-summary: %s\n", error.describe().c_str());
    status = 1;
  }
  return status;
}
