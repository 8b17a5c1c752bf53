// The two force passes (see kernels.h): partition into 128 chunks, choice of
// instruction set for the repulsion, merging of the chunks' private forces.
#include "layout/kernels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "layout/kernel_chunks.h"
#include "layout/kernel_dispatch.h"
#include "layout/kernel_rows.h"
#include "layout/kernel_springs.h"

namespace layout {

ChunkRange chunkRange(std::uint64_t count, std::size_t chunk) {
  if (count == 0) return {0, 0};
  const std::uint64_t size = (count - 1) / kChunkCount + 1;
  const std::uint64_t begin = std::min<std::uint64_t>(chunk * size, count);
  const std::uint64_t end = std::min<std::uint64_t>(begin + size, count);
  return {begin, end};
}

namespace detail {
namespace {

// The same repulsion code, compiled for the baseline and for AVX2 with FMA.
void repulseChunkBaseline(const RepulsionRows& rows, std::uint64_t begin, std::uint64_t end,
                          ForcePlanes out) {
  repulseChunk(rows, begin, end, out);
}

__attribute__((target("avx2,fma"))) void repulseChunkAvx2Fma(const RepulsionRows& rows,
                                                             std::uint64_t begin, std::uint64_t end,
                                                             ForcePlanes out) {
  repulseChunk(rows, begin, end, out);
}

bool hasAvx2Fma() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}

// 1 for every vertex that takes part, else 0.
std::vector<float> participationMask(const PassInputs& in) {
  std::vector<float> mask(in.verticesCount, 1.0f);
  if (in.filter == nullptr) return mask;
  for (std::uint64_t v = 0; v < in.verticesCount; ++v) {
    mask[v] = participates(in.filter[v], in.minFilter, in.maxFilter) ? 1.0f : 0.0f;
  }
  return mask;
}

// Private forces for the smallest window of vertices holding both ends of
// every edge of [begin, end).
PrivateForces endpointWindow(const PassInputs& in, std::uint64_t begin, std::uint64_t end) {
  if (begin == end) return PrivateForces(0, 0);
  std::uint64_t low = in.from[begin];
  std::uint64_t high = low;
  for (std::uint64_t e = begin; e < end; ++e) {
    low = std::min({low, in.from[e], in.to[e]});
    high = std::max({high, in.from[e], in.to[e]});
  }
  return PrivateForces(low, high - low + 1);
}

template <LayoutMode mode>
void runAttraction(const PassInputs& in, ForceAccumulator& out) {
  runChunks([&](std::size_t k) {
    const ChunkRange range = chunkRange(in.edgesCount, k);
    PrivateForces forces = endpointWindow(in, range.begin, range.end);
    attractChunk<mode>(in, range.begin, range.end, forces);
    forces.mergeInto(out);
  });
}

}  // namespace

std::vector<InstructionSet> supportedInstructionSets() {
  if (hasAvx2Fma()) return {InstructionSet::Baseline, InstructionSet::Avx2Fma};
  return {InstructionSet::Baseline};
}

void repulsionPassWith(InstructionSet set, const PassInputs& in, ForceAccumulator& out) {
  const std::vector<float> mask = participationMask(in);
  const float gravity = in.gravitational * std::sqrt(static_cast<float>(in.verticesCount));
  const RepulsionRows rows{in.x, in.y, in.z, mask.data(), in.softening, in.repulsive, gravity};
  const auto repulse = set == InstructionSet::Avx2Fma ? repulseChunkAvx2Fma : repulseChunkBaseline;
  runChunks([&](std::size_t k) {
    const ChunkRange range = chunkRange(in.verticesCount, k);
    // The pairs j < i < end touch only the vertices below the chunk's end.
    PrivateForces forces(0, range.end);
    repulse(rows, range.begin, range.end, ForcePlanes{forces.x(), forces.y(), forces.z()});
    forces.mergeInto(out);
  });
}

}  // namespace detail

void repulsionPass(const PassInputs& in, ForceAccumulator& out) {
  static const detail::InstructionSet best =
      detail::hasAvx2Fma() ? detail::InstructionSet::Avx2Fma : detail::InstructionSet::Baseline;
  detail::repulsionPassWith(best, in, out);
}

void attractionPass(LayoutMode mode, const PassInputs& in, ForceAccumulator& out) {
  switch (mode) {
    case LayoutMode::Plain:
      detail::runAttraction<LayoutMode::Plain>(in, out);
      break;
    // The weighted modes need weights; without them there is no spring force.
    case LayoutMode::EdgeWeighted:
      if (in.weights != nullptr) detail::runAttraction<LayoutMode::EdgeWeighted>(in, out);
      break;
    case LayoutMode::WeightAsDistance:
      if (in.weights != nullptr) detail::runAttraction<LayoutMode::WeightAsDistance>(in, out);
      break;
  }
}

}  // namespace layout
