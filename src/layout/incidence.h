#pragma once
// The spring pass summed vertex by vertex, for steps that must give the same
// result whatever the number of threads: every vertex adds up the forces of
// its edges itself, in edge order, so no two tasks write the same sum. The
// force of an edge is computed as in attractionPass.
#include <cstdint>
#include <vector>

#include "layout/kernels.h"

namespace layout {

// For every vertex, the edges that end at it (self-loops left out), in
// ascending order, with the vertex at the other end; CSR form.
struct EdgeIncidence {
  std::uint64_t verticesCount = 0;
  std::uint64_t edgesCount = 0;
  const std::uint64_t* from = nullptr;
  const std::uint64_t* to = nullptr;
  std::vector<std::uint64_t> offsets;  // V + 1
  std::vector<std::uint64_t> edges;
  std::vector<std::uint32_t> others;

  // Rebuilds the lists unless they were built from these very arrays.
  void update(std::uint64_t vertices, std::uint64_t edgeCount, const std::uint64_t* fromList,
              const std::uint64_t* toList);
};

// Adds the spring forces of the mode to `out` (see attractionPass); the
// incidence must be up to date for the inputs' edges.
void attractionPassByVertex(LayoutMode mode, const PassInputs& in, const EdgeIncidence& incidence,
                            ForceAccumulator& out);

}  // namespace layout
