#pragma once
// The repulsion of one chunk of vertices, written so that the compiler
// vectorises the loop over the other vertex j of each pair:
// - positions, mask and private forces are planar float arrays (the snapshot
//   of the positions is planar for this reason: x, y, z interleaved per vertex
//   would give the same results up to rounding, but does not vectorise);
// - a vertex j that does not take part is removed by a select on its 0/1 mask,
//   not by a branch (a select rather than a multiply by the mask, so that a
//   vertex that does not take part cannot leak a NaN in as NaN * 0);
// - the j-side update is a contiguous load-add-store;
// - the i-side sum is kept in kLanes partial sums, one per vector lane, so the
//   reduction needs no reassociation of float additions.
// kernels.cpp compiles repulseChunk once per instruction set.
#include <cmath>
#include <cstdint>

namespace layout::detail {

struct RepulsionRows {
  const float* x;
  const float* y;
  const float* z;
  const float* mask;  // 1 when the vertex takes part, else 0
  float softening;
  float repulsive;
  float gravity;  // G sqrt(V)
};

struct ForcePlanes {
  float* x;
  float* y;
  float* z;
};

struct Force3 {
  float x, y, z;
};

inline constexpr std::uint64_t kLanes = 16;

// The force on a vertex at p from a vertex at p - d, or zero when that vertex
// does not take part: f = d k / sqrt(r2) with k = -R / r2 and r2 = d.d + s.
[[gnu::always_inline]] inline Force3 pairForce(float dx, float dy, float dz, bool takesPart,
                                               float s, float minusR) {
  const float r2 = dx * dx + dy * dy + dz * dz + s;
  const float inverse = 1.0f / std::sqrt(r2);
  const float k = minusR * inverse * inverse * inverse;
  return {takesPart ? dx * k : 0.0f, takesPart ? dy * k : 0.0f, takesPart ? dz * k : 0.0f};
}

// Row i: for every j < count, f(i, j) is added to f[j]; the answer is the sum
// of those forces (to be subtracted from i's own force).
[[gnu::always_inline]] inline Force3 repulseRow(
    const float* __restrict qx, const float* __restrict qy, const float* __restrict qz,
    const float* __restrict mask, float* __restrict fx, float* __restrict fy, float* __restrict fz,
    std::uint64_t count, float px, float py, float pz, float s, float minusR) {
  float sx[kLanes] = {};
  float sy[kLanes] = {};
  float sz[kLanes] = {};
  const std::uint64_t whole = count - count % kLanes;
  for (std::uint64_t j0 = 0; j0 < whole; j0 += kLanes) {
    for (std::uint64_t lane = 0; lane < kLanes; ++lane) {
      const std::uint64_t j = j0 + lane;
      const Force3 f = pairForce(px - qx[j], py - qy[j], pz - qz[j], mask[j] != 0.0f, s, minusR);
      fx[j] += f.x;
      fy[j] += f.y;
      fz[j] += f.z;
      sx[lane] += f.x;
      sy[lane] += f.y;
      sz[lane] += f.z;
    }
  }
  Force3 sum{0.0f, 0.0f, 0.0f};
  for (std::uint64_t j = whole; j < count; ++j) {
    const Force3 f = pairForce(px - qx[j], py - qy[j], pz - qz[j], mask[j] != 0.0f, s, minusR);
    fx[j] += f.x;
    fy[j] += f.y;
    fz[j] += f.z;
    sum.x += f.x;
    sum.y += f.y;
    sum.z += f.z;
  }
  for (std::uint64_t lane = 0; lane < kLanes; ++lane) {
    sum.x += sx[lane];
    sum.y += sy[lane];
    sum.z += sz[lane];
  }
  return sum;
}

// Vertices [begin, end) of the repulsion: every participating vertex i gets
// its row (the pairs j < i) and gravity towards the origin, G sqrt(V) p /
// sqrt(p.p + s). `out` covers at least the vertices below `end`.
[[gnu::always_inline]] inline void repulseChunk(const RepulsionRows& rows, std::uint64_t begin,
                                                std::uint64_t end, ForcePlanes out) {
  const float s = rows.softening;
  for (std::uint64_t i = begin; i < end; ++i) {
    if (rows.mask[i] == 0.0f) continue;
    const float px = rows.x[i];
    const float py = rows.y[i];
    const float pz = rows.z[i];
    const Force3 row = repulseRow(rows.x, rows.y, rows.z, rows.mask, out.x, out.y, out.z, i, px, py,
                                  pz, s, -rows.repulsive);
    const float c = std::sqrt(px * px + py * py + pz * pz + s);
    out.x[i] -= row.x + rows.gravity * px / c;
    out.y[i] -= row.y + rows.gravity * py / c;
    out.z[i] -= row.z + rows.gravity * pz / c;
  }
}

}  // namespace layout::detail
