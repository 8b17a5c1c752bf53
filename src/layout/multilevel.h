#pragma once
// The multilevel start: a starting layout for a large network, found on a
// hierarchy of ever coarser networks (coarsen.h) down to a few hundred
// vertices. The coarsest is laid out from a random start; each finer level
// starts from the coarser one's positions (a group's vertices around its
// position, the layout widened for the larger count) and takes a few steps.
// Every level runs the layout step in plain mode with the given constants,
// the octree repulsion on levels of 20,000 vertices or more. The filter is
// not applied: every vertex gets a position.
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace layout {

struct MultilevelSettings {
  float attraction = 0.001f;
  float repulsive = 10.0f;
  float gravitational = 0.001f;
  float softening = 1.0f;
  float preferredDistance = 0.0f;
  float viscosity = 0.05f;
  std::uint64_t coarsestVertices = 300;
  int coarsestSteps = 300;
  int refinementSteps = 30;
  std::uint64_t seed = 1;
};

// Told the fraction of the work done (0 to 1) after every step; answering
// false stops the start.
using MultilevelProgress = std::function<bool(double fraction)>;

struct PlanePositions {
  std::vector<float> x, y, z;
};

// Positions for the V vertices of the network with the given edges, or
// nothing when the progress callback asked to stop.
std::optional<PlanePositions> multilevelLayout(std::uint64_t verticesCount,
                                               std::uint64_t edgesCount, const std::uint64_t* from,
                                               const std::uint64_t* to,
                                               const MultilevelSettings& settings,
                                               const MultilevelProgress& progress = {});

}  // namespace layout
