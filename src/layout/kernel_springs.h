#pragma once
// The spring forces of one chunk of edges, one template per layout mode so the
// mode's stretch is chosen at compile time. Scalar: the edges gather and
// scatter at random vertices, and there are far fewer edges than pairs.
#include <cmath>
#include <cstdint>

#include "layout/kernel_chunks.h"
#include "layout/kernels.h"

namespace layout::detail {

// The stretch x of an edge of length r and weight w.
template <LayoutMode mode>
float stretch(float r, float w, float preferred) {
  if constexpr (mode == LayoutMode::Plain) return r - preferred;
  if constexpr (mode == LayoutMode::EdgeWeighted) return r * w - preferred;
  if constexpr (mode == LayoutMode::WeightAsDistance) return (r - preferred * w) / w;
}

// Edges [begin, end): m = A x |x| along each edge that joins two different
// participating vertices (and, as distances, has a weight above 0).
template <LayoutMode mode>
void attractChunk(const PassInputs& in, std::uint64_t begin, std::uint64_t end,
                  PrivateForces& forces) {
  const auto takesPart = [&](std::uint64_t v) {
    return in.filter == nullptr || participates(in.filter[v], in.minFilter, in.maxFilter);
  };
  const std::uint64_t first = forces.first();
  float* fx = forces.x();
  float* fy = forces.y();
  float* fz = forces.z();
  for (std::uint64_t e = begin; e < end; ++e) {
    const std::uint64_t a = in.from[e];
    const std::uint64_t b = in.to[e];
    if (a == b || !takesPart(a) || !takesPart(b)) continue;
    const float w = mode == LayoutMode::Plain ? 1.0f : in.weights[e];
    if (mode == LayoutMode::WeightAsDistance && !(w > 0.0f)) continue;
    const float dx = in.x[a] - in.x[b];
    const float dy = in.y[a] - in.y[b];
    const float dz = in.z[a] - in.z[b];
    const float r2 = dx * dx + dy * dy + dz * dz + in.softening;
    const float r = std::sqrt(r2);
    const float x = stretch<mode>(r, w, in.preferredDistance);
    const float m = in.attraction * x * std::fabs(x);
    // When r2 is 0 this is 0 * m / 0, a NaN that integration discards.
    const float ex = dx * m / r;
    const float ey = dy * m / r;
    const float ez = dz * m / r;
    fx[a - first] -= ex;
    fy[a - first] -= ey;
    fz[a - first] -= ez;
    fx[b - first] += ex;
    fy[b - first] += ey;
    fz[b - first] += ez;
  }
}

}  // namespace layout::detail
