#pragma once
// The plain reference layout step: the same formulas as the parallel kernels,
// written as straightforward scalar loops over interleaved positions (x, y, z
// per vertex), on one thread. The benchmarks measure the kernels against it.
#include <cstdint>
#include <vector>

#include "layout/kernels.h"

namespace reference {

struct Network {
  std::uint64_t verticesCount = 0;
  std::uint64_t edgesCount = 0;
  const std::uint64_t* from = nullptr;
  const std::uint64_t* to = nullptr;
  const float* weights = nullptr;  // null in plain mode
};

struct Settings {
  layout::LayoutMode mode = layout::LayoutMode::Plain;
  float softening = 1;
  float repulsive = 0;
  float gravitational = 0;
  float attraction = 0;
  float preferredDistance = 0;
  float viscosity = 0.05f;
  const float* filter = nullptr;  // V values; null means every vertex takes part
  float minFilter = 0;
  float maxFilter = 0;
};

// One step: forces on a snapshot, integration, re-centring. `positions` and
// `speeds` hold 3 V floats, x, y, z per vertex.
void step(const Settings& settings, const Network& network, std::vector<float>& positions,
          std::vector<float>& speeds);

}  // namespace reference
