// The layout does its job: from random starts, plain-mode steps untangle a
// grid, a ring and disjoint cliques, so that neighbours end closer than
// vertices far apart in the network. (At the random start every ratio below is
// about 1.)
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "layout/step.h"

namespace {

// A network with the number of hops between any two of its vertices
// (kApart when they are not connected).
constexpr std::uint64_t kApart = 1000;

struct Network {
  std::uint64_t vertices = 0;
  std::vector<std::uint64_t> from, to;
  std::function<std::uint64_t(std::uint64_t, std::uint64_t)> hops;
};

std::uint64_t difference(std::uint64_t a, std::uint64_t b) {
  return a > b ? a - b : b - a;
}

// An edge for every pair at one hop.
void joinNeighbours(Network& n) {
  for (std::uint64_t v = 0; v < n.vertices; ++v) {
    for (std::uint64_t w = v + 1; w < n.vertices; ++w) {
      if (n.hops(v, w) == 1) {
        n.from.push_back(v);
        n.to.push_back(w);
      }
    }
  }
}

Network grid(std::uint64_t side) {
  Network n{side * side, {}, {}, [side](std::uint64_t a, std::uint64_t b) {
              return difference(a / side, b / side) + difference(a % side, b % side);
            }};
  joinNeighbours(n);
  return n;
}

Network ring(std::uint64_t size) {
  Network n{size, {}, {}, [size](std::uint64_t a, std::uint64_t b) {
              return std::min(difference(a, b), size - difference(a, b));
            }};
  for (std::uint64_t v = 0; v < size; ++v) {
    n.from.push_back(v);
    n.to.push_back((v + 1) % size);
  }
  return n;
}

Network cliques(std::uint64_t count, std::uint64_t size) {
  Network n{count * size, {}, {}, [size](std::uint64_t a, std::uint64_t b) {
              return a / size == b / size ? std::uint64_t{1} : kApart;
            }};
  joinNeighbours(n);
  return n;
}

struct Positions {
  std::vector<float> x, y, z;
  double distance(std::uint64_t a, std::uint64_t b) const {
    return std::hypot(double{x[a]} - x[b], double{y[a]} - y[b], double{z[a]} - z[b]);
  }
};

// Positions after 400 plain-mode steps from a seeded random start in the cube
// -30..30.
Positions layOut(const Network& n, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> coordinate(-30.0f, 30.0f);
  Positions p;
  for (std::uint64_t v = 0; v < n.vertices; ++v) {
    for (auto* plane : {&p.x, &p.y, &p.z}) plane->push_back(coordinate(random));
  }
  std::vector<float> vx(n.vertices, 0.0f), vy(n.vertices, 0.0f), vz(n.vertices, 0.0f);
  layout::PassInputs in;
  in.verticesCount = n.vertices;
  in.softening = 1.0f;
  in.repulsive = 20.0f;
  in.gravitational = 0.02f;
  in.attraction = 0.1f;
  in.preferredDistance = 0.0f;
  in.edgesCount = n.from.size();
  in.from = n.from.data();
  in.to = n.to.data();
  for (int step = 0; step < 400; ++step) {
    const Positions snapshot = p;
    in.x = snapshot.x.data();
    in.y = snapshot.y.data();
    in.z = snapshot.z.data();
    layout::step({layout::LayoutMode::Plain, 0.2f}, in, {p.x.data(), p.y.data(), p.z.data()},
                 {vx.data(), vy.data(), vz.data()});
  }
  return p;
}

// Mean layout distance of the pairs at `hops` (or more, when `orMore`).
double meanDistance(const Network& n, const Positions& p, std::uint64_t hops, bool orMore) {
  double sum = 0;
  double count = 0;
  for (std::uint64_t a = 0; a < n.vertices; ++a) {
    for (std::uint64_t b = a + 1; b < n.vertices; ++b) {
      const std::uint64_t h = n.hops(a, b);
      if (h == hops || (orMore && h > hops)) {
        sum += p.distance(a, b);
        count += 1;
      }
    }
  }
  return sum / count;
}

TEST(Untangle, GridAndRingNeighboursEndCloserThanTheRest) {
  struct Case {
    const char* what;
    Network network;
    double ratio;  // largest mean edge length / mean distance of the other pairs
  };
  const Case cases[] = {{"10 x 10 grid", grid(10), 0.4}, {"ring of 60", ring(60), 0.3}};
  for (const Case& c : cases) {
    const Positions p = layOut(c.network, 1);
    EXPECT_LT(meanDistance(c.network, p, 1, false), c.ratio * meanDistance(c.network, p, 2, true))
        << c.what;
  }
}

TEST(Untangle, DisjointCliquesGatherApart) {
  const Network n = cliques(4, 8);
  const Positions p = layOut(n, 5);
  EXPECT_LT(meanDistance(n, p, 1, false), 0.25 * meanDistance(n, p, kApart, false));
}

}  // namespace
