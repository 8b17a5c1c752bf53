// The multilevel start (see multilevel.h).
#include "layout/multilevel.h"

#include <cmath>
#include <random>

#include "layout/coarsen.h"
#include "layout/repulsion.h"
#include "layout/step.h"

namespace layout {
namespace {

// A level whose vertex count shrinks by less than this stops the coarsening.
constexpr double kLeastShrink = 0.95;

class Runner {
 public:
  Runner(const MultilevelSettings& settings, const MultilevelProgress& progress, double work)
      : settings_(settings), progress_(progress), work_(work) {}

  // `steps` layout steps of `network` from `positions`; false when stopped.
  bool run(const CoarseNetwork& network, PlanePositions& positions, int steps) {
    const std::uint64_t n = network.verticesCount;
    PassInputs in;
    in.verticesCount = n;
    in.softening = settings_.softening;
    in.repulsive = settings_.repulsive;
    in.gravitational = settings_.gravitational;
    in.attraction = settings_.attraction;
    in.preferredDistance = settings_.preferredDistance;
    in.edgesCount = network.from.size();
    in.from = network.from.data();
    in.to = network.to.data();
    StepSettings step;
    step.viscosity = settings_.viscosity;
    step.barnesHutTheta = repulsionTheta(RepulsionChoice::Automatic, 0.0f, n);
    StepWorkspace workspace;
    PlanePositions snapshot;
    PlanePositions speeds{std::vector<float>(n), std::vector<float>(n), std::vector<float>(n)};
    for (int s = 0; s < steps; ++s) {
      snapshot = positions;
      in.x = snapshot.x.data();
      in.y = snapshot.y.data();
      in.z = snapshot.z.data();
      layout::step(step, in, {positions.x.data(), positions.y.data(), positions.z.data()},
                   {speeds.x.data(), speeds.y.data(), speeds.z.data()}, workspace);
      done_ += static_cast<double>(n);
      if (progress_ && !progress_(std::min(1.0, done_ / work_))) return false;
    }
    return true;
  }

 private:
  const MultilevelSettings& settings_;
  const MultilevelProgress& progress_;
  double work_;
  double done_ = 0.0;
};

// The typical radius of a layout of n vertices with these constants: where
// the repulsion of the whole layout, R n / D^2, meets gravity G sqrt(n).
double naturalRadius(const MultilevelSettings& s, std::uint64_t n) {
  const double g = std::max(1e-6, static_cast<double>(s.gravitational));
  return std::sqrt(std::max(1e-6, static_cast<double>(s.repulsive)) / g) *
         std::pow(static_cast<double>(n), 0.25);
}

double meanEdgeLength(const CoarseNetwork& network, const PlanePositions& p) {
  double sum = 0.0;
  for (std::size_t e = 0; e < network.from.size(); ++e) {
    const std::uint64_t a = network.from[e], b = network.to[e];
    const double dx = p.x[a] - p.x[b], dy = p.y[a] - p.y[b], dz = p.z[a] - p.z[b];
    sum += std::sqrt(dx * dx + dy * dy + dz * dz);
  }
  return network.from.empty() ? 0.0 : sum / static_cast<double>(network.from.size());
}

// The finer level's start: every vertex at its group's position, widened by
// the fourth root of the growth in vertex count, plus a small random offset.
PlanePositions prolong(const PlanePositions& coarse, const CoarseNetwork& coarseNetwork,
                       const Grouping& grouping, std::mt19937_64& random) {
  const std::size_t n = grouping.group.size();
  const double scale =
      std::pow(static_cast<double>(n) / static_cast<double>(coarse.x.size()), 0.25);
  const double spread = std::max(0.5, 0.2 * scale * meanEdgeLength(coarseNetwork, coarse));
  std::uniform_real_distribution<double> offset(-spread, spread);
  PlanePositions fine{std::vector<float>(n), std::vector<float>(n), std::vector<float>(n)};
  for (std::size_t v = 0; v < n; ++v) {
    const std::uint64_t g = grouping.group[v];
    fine.x[v] = static_cast<float>(coarse.x[g] * scale + offset(random));
    fine.y[v] = static_cast<float>(coarse.y[g] * scale + offset(random));
    fine.z[v] = static_cast<float>(coarse.z[g] * scale + offset(random));
  }
  return fine;
}

}  // namespace

std::optional<PlanePositions> multilevelLayout(std::uint64_t verticesCount,
                                               std::uint64_t edgesCount, const std::uint64_t* from,
                                               const std::uint64_t* to,
                                               const MultilevelSettings& settings,
                                               const MultilevelProgress& progress) {
  std::vector<CoarseNetwork> levels(1);
  levels[0].verticesCount = verticesCount;
  levels[0].from.assign(from, from + edgesCount);
  levels[0].to.assign(to, to + edgesCount);
  std::vector<Grouping> groupings;
  while (levels.back().verticesCount > settings.coarsestVertices) {
    Grouping grouping = matchVertices(levels.back(), settings.seed + levels.size());
    const auto before = static_cast<double>(levels.back().verticesCount);
    if (static_cast<double>(grouping.groups) > kLeastShrink * before) break;
    levels.push_back(contract(levels.back(), grouping));
    groupings.push_back(std::move(grouping));
  }

  double work = static_cast<double>(settings.coarsestSteps) *
                static_cast<double>(levels.back().verticesCount);
  for (std::size_t k = 0; k + 1 < levels.size(); ++k) {
    work += settings.refinementSteps * static_cast<double>(levels[k].verticesCount);
  }
  Runner runner(settings, progress, std::max(work, 1.0));

  std::mt19937_64 random(settings.seed);
  const CoarseNetwork& coarsest = levels.back();
  const double radius = naturalRadius(settings, std::max<std::uint64_t>(coarsest.verticesCount, 1));
  std::uniform_real_distribution<double> start(-radius, radius);
  PlanePositions positions;
  for (std::uint64_t v = 0; v < coarsest.verticesCount; ++v) {
    positions.x.push_back(static_cast<float>(start(random)));
    positions.y.push_back(static_cast<float>(start(random)));
    positions.z.push_back(static_cast<float>(start(random)));
  }
  if (!runner.run(coarsest, positions, settings.coarsestSteps)) return std::nullopt;
  for (std::size_t k = groupings.size(); k-- > 0;) {
    positions = prolong(positions, levels[k + 1], groupings[k], random);
    if (!runner.run(levels[k], positions, settings.refinementSteps)) return std::nullopt;
  }
  return positions;
}

}  // namespace layout
