#pragma once
// The force passes of one layout step. Each pass splits its elements into
// exactly 128 chunks run in parallel (oneTBB); every chunk sums into a private
// buffer of single-precision forces and adds it, widened to double, into the
// step's accumulator under a mutex. Per-pair and per-edge arithmetic is single
// precision; only the accumulator is double.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace layout {

enum class LayoutMode { Plain, EdgeWeighted, WeightAsDistance };

inline constexpr std::size_t kChunkCount = 128;

// Elements [begin, end) of chunk k when `count` elements are split in 128
// chunks of S = floor((count - 1) / 128) + 1 (the last chunks may be empty).
struct ChunkRange {
  std::uint64_t begin;
  std::uint64_t end;
};
ChunkRange chunkRange(std::uint64_t count, std::size_t chunk);

// A vertex takes part in the forces when min <= value <= max (NaN never does).
inline bool participates(float value, float min, float max) {
  return min <= value && value <= max;
}

// Everything the passes read. Positions are the planes of the step's snapshot
// (nothing writes them during the step). Weights are null in plain mode.
struct PassInputs {
  std::uint64_t verticesCount = 0;
  const float* x = nullptr;
  const float* y = nullptr;
  const float* z = nullptr;
  const float* filter = nullptr;  // V values; null means every vertex takes part
  float minFilter = 0;
  float maxFilter = 0;
  float softening = 1;          // s
  float repulsive = 0;          // R
  float gravitational = 0;      // G
  float attraction = 0;         // A
  float preferredDistance = 0;  // L
  std::uint64_t edgesCount = 0;
  const std::uint64_t* from = nullptr;
  const std::uint64_t* to = nullptr;
  const float* weights = nullptr;  // E values in the weighted modes
};

// The step's shared result: one double per vertex and axis (planar).
struct ForceAccumulator {
  explicit ForceAccumulator(std::uint64_t verticesCount)
      : x(verticesCount, 0.0), y(verticesCount, 0.0), z(verticesCount, 0.0) {}
  std::vector<double> x, y, z;
};

// Repulsion between every pair of participating vertices (R d / r^3 with
// r^2 = d.d + s) and gravity towards the origin (G sqrt(V) p / sqrt(p.p + s)).
// The same in every mode.
void repulsionPass(const PassInputs& in, ForceAccumulator& out);

// Spring forces along the edges: m = A x |x| with the stretch x of the mode
// (plain r - L; edge-weighted r w - L; weight as distance (r - L w) / w, edges
// with w <= 0 skipped). Self-loops and edges with an end that does not take
// part contribute nothing.
void attractionPass(LayoutMode mode, const PassInputs& in, ForceAccumulator& out);

}  // namespace layout
