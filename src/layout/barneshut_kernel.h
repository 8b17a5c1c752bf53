#pragma once
// The inner loops of the approximate repulsion, written (like kernel_rows.h)
// so that the compiler vectorises them: planar sources, per-lane partial sums
// so that the reduction needs no reassociation of float additions.
#include <cmath>
#include <cstddef>

#include "layout/kernel_rows.h"

namespace layout::detail {

// The sum over sources [first, last) of f = d k m with d = p - q,
// r2 = d.d + s and k = -R / r2^(3/2); m is 1 for vertices (mass == nullptr).
template <bool weighted>
[[gnu::always_inline]] inline Force3 sumSources(const float* __restrict qx,
                                                const float* __restrict qy,
                                                const float* __restrict qz,
                                                const float* __restrict mass, std::size_t first,
                                                std::size_t last, float px, float py, float pz,
                                                float s, float minusR) {
  float sx[kLanes] = {};
  float sy[kLanes] = {};
  float sz[kLanes] = {};
  std::size_t j0 = first;
  for (; j0 + kLanes <= last; j0 += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const std::size_t j = j0 + lane;
      const float dx = px - qx[j];
      const float dy = py - qy[j];
      const float dz = pz - qz[j];
      const float r2 = dx * dx + dy * dy + dz * dz + s;
      const float inverse = 1.0f / std::sqrt(r2);
      float k = minusR * inverse * inverse * inverse;
      if constexpr (weighted) k *= mass[j];
      sx[lane] += dx * k;
      sy[lane] += dy * k;
      sz[lane] += dz * k;
    }
  }
  Force3 sum{0.0f, 0.0f, 0.0f};
  for (std::size_t j = j0; j < last; ++j) {
    const float dx = px - qx[j];
    const float dy = py - qy[j];
    const float dz = pz - qz[j];
    const float r2 = dx * dx + dy * dy + dz * dz + s;
    const float inverse = 1.0f / std::sqrt(r2);
    float k = minusR * inverse * inverse * inverse;
    if constexpr (weighted) k *= mass[j];
    sum.x += dx * k;
    sum.y += dy * k;
    sum.z += dz * k;
  }
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    sum.x += sx[lane];
    sum.y += sy[lane];
    sum.z += sz[lane];
  }
  return sum;
}

// The interactions of one leaf: its own vertices first in `near`, then those
// of the other leaves it meets directly; `far` holds the cells it takes whole.
struct LeafSources {
  const float* nearX;
  const float* nearY;
  const float* nearZ;
  std::size_t ownCount;
  std::size_t nearCount;
  const float* farX;
  const float* farY;
  const float* farZ;
  const float* farMass;
  std::size_t farCount;
};

// The repulsion (without gravity) on the leaf's own vertex k: f summed over
// every other near vertex and every far cell.
[[gnu::always_inline]] inline Force3 leafVertexForce(const LeafSources& src, std::size_t k, float s,
                                                     float minusR) {
  const float px = src.nearX[k];
  const float py = src.nearY[k];
  const float pz = src.nearZ[k];
  const Force3 before =
      sumSources<false>(src.nearX, src.nearY, src.nearZ, nullptr, 0, k, px, py, pz, s, minusR);
  const Force3 after = sumSources<false>(src.nearX, src.nearY, src.nearZ, nullptr, k + 1,
                                         src.nearCount, px, py, pz, s, minusR);
  const Force3 far = sumSources<true>(src.farX, src.farY, src.farZ, src.farMass, 0, src.farCount,
                                      px, py, pz, s, minusR);
  return {before.x + after.x + far.x, before.y + after.y + far.y, before.z + after.z + far.z};
}

}  // namespace layout::detail
