// Random and preferential-attachment generators. Both run in time linear in
// V + E and draw from an engine seeded by the shared random source, so a
// seeded shared source gives the same network every time.
#include <algorithm>
#include <cmath>
#include <random>

#include "plexora/QLONetwork.h"
#include "plexora/QLORandomGenerator.h"

namespace {

// An index uniform in [0, size) from 64 random bits (multiply-shift; the bias
// is below 2^-40 for any size we generate).
std::uint64_t uniformIndex(std::uint64_t bits, std::uint64_t size) {
  return static_cast<std::uint64_t>((static_cast<unsigned __int128>(bits) * size) >> 64);
}

QLONetwork::Ptr makeGenerated(NetworkData&& data) {
  auto network = QLONetwork::make(std::move(data));
  // The generators only produce valid edges; a failure here is a bug.
  if (!network) std::abort();
  return network;
}

}  // namespace

// Each of the V(V-1)/2 vertex pairs is joined with probability
// p = degree / (V - 1), so the expected average degree is `degree`. Instead of
// testing every pair, the gap to the next joined pair is drawn from the
// geometric distribution, which keeps the work proportional to V + E.
QLONetwork::Ptr QLONetwork::initRandomNetworkWithNumberOfVertices(std::uint64_t vertices,
                                                                  double degree) {
  NetworkData data;
  data.verticesCount = vertices;
  const double p = vertices > 1 ? degree / static_cast<double>(vertices - 1) : 0.0;
  if (!(p > 0.0)) return makeGenerated(std::move(data));

  std::mt19937_64 engine(QLORandomGenerator::sharedRandomGenerator().nextSeed());
  const double expected =
      static_cast<double>(vertices) * std::min(degree, double(vertices - 1)) / 2;
  data.from.reserve(static_cast<std::size_t>(expected * 1.01 + 16));
  data.to.reserve(data.from.capacity());

  if (p >= 1.0) {
    for (std::uint64_t v = 1; v < vertices; ++v) {
      for (std::uint64_t w = 0; w < v; ++w) {
        data.from.push_back(w);
        data.to.push_back(v);
      }
    }
    return makeGenerated(std::move(data));
  }

  // Pairs (w, v) with w < v are enumerated row by row; `w` walks along row v.
  const double logOneMinusP = std::log1p(-p);
  std::uint64_t v = 1;
  double w = -1.0;
  while (v < vertices) {
    const double r = unitDouble(engine());
    w += 1.0 + std::floor(std::log1p(-r) / logOneMinusP);
    while (v < vertices && w >= static_cast<double>(v)) {
      w -= static_cast<double>(v);
      ++v;
    }
    if (v < vertices) {
      data.from.push_back(static_cast<std::uint64_t>(w));
      data.to.push_back(v);
    }
  }
  return makeGenerated(std::move(data));
}

// Preferential attachment. A seed clique of ceil(k/2) + 1 vertices starts the
// network; every later vertex joins m existing vertices chosen with probability
// proportional to their degree (by drawing from the list of edge ends), where
// m is k/2 for even k and k/2 or k/2 + 1 with equal chance for odd k, so the
// average degree comes out close to k.
QLONetwork::Ptr QLONetwork::initBarabasiNetworkWitNumberOfVertices(
    std::uint64_t vertices, std::uint64_t approximateDegree) {
  NetworkData data;
  data.verticesCount = vertices;
  const std::uint64_t k = approximateDegree;
  if (k == 0 || vertices < 2) return makeGenerated(std::move(data));

  std::mt19937_64 engine(QLORandomGenerator::sharedRandomGenerator().nextSeed());
  const std::uint64_t half = k / 2;
  const bool odd = (k % 2) != 0;
  const std::uint64_t seedSize = std::min(vertices, half + (odd ? 1 : 0) + 1);

  const std::uint64_t expected = seedSize * (seedSize - 1) / 2 + (vertices - seedSize) * (half + 1);
  data.from.reserve(expected);
  data.to.reserve(expected);
  std::vector<std::uint64_t> ends;  // every edge end once: degree-weighted sampling
  ends.reserve(2 * expected);
  auto addEdge = [&](std::uint64_t a, std::uint64_t b) {
    data.from.push_back(a);
    data.to.push_back(b);
    ends.push_back(a);
    ends.push_back(b);
  };

  for (std::uint64_t v = 1; v < seedSize; ++v) {
    for (std::uint64_t w = 0; w < v; ++w) addEdge(w, v);
  }

  std::vector<std::uint64_t> chosen;
  for (std::uint64_t v = seedSize; v < vertices; ++v) {
    std::uint64_t m = half + ((odd && (engine() & 1)) ? 1 : 0);
    if (m >= v) {
      // Joining every earlier vertex: no sampling needed.
      for (std::uint64_t w = 0; w < v; ++w) addEdge(w, v);
      continue;
    }
    chosen.clear();
    const std::uint64_t endsBefore = ends.size();
    while (chosen.size() < m) {
      const std::uint64_t target =
          endsBefore > 0 ? ends[uniformIndex(engine(), endsBefore)] : uniformIndex(engine(), v);
      if (std::find(chosen.begin(), chosen.end(), target) == chosen.end()) chosen.push_back(target);
    }
    for (std::uint64_t target : chosen) addEdge(target, v);
  }
  return makeGenerated(std::move(data));
}
