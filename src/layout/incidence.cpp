// Edge incidence lists and the spring pass summed by vertex (see incidence.h).
#include "layout/incidence.h"

#include "layout/kernel_springs.h"
#include "layout/parallel.h"

namespace layout {

void EdgeIncidence::update(std::uint64_t vertices, std::uint64_t edgeCount,
                           const std::uint64_t* fromList, const std::uint64_t* toList) {
  if (vertices == verticesCount && edgeCount == edgesCount && fromList == from && toList == to &&
      offsets.size() == vertices + 1) {
    return;
  }
  verticesCount = vertices;
  edgesCount = edgeCount;
  from = fromList;
  to = toList;
  offsets.assign(vertices + 1, 0);
  for (std::uint64_t e = 0; e < edgeCount; ++e) {
    if (from[e] == to[e]) continue;
    ++offsets[from[e] + 1];
    ++offsets[to[e] + 1];
  }
  for (std::uint64_t v = 0; v < vertices; ++v) offsets[v + 1] += offsets[v];
  edges.resize(offsets[vertices]);
  others.resize(offsets[vertices]);
  std::vector<std::uint64_t> next(offsets.begin(), offsets.end() - 1);
  for (std::uint64_t e = 0; e < edgeCount; ++e) {
    if (from[e] == to[e]) continue;
    others[next[from[e]]] = static_cast<std::uint32_t>(to[e]);
    edges[next[from[e]]++] = e;
    others[next[to[e]]] = static_cast<std::uint32_t>(from[e]);
    edges[next[to[e]]++] = e;
  }
}

namespace {

template <LayoutMode mode>
void springsByVertex(const PassInputs& in, const EdgeIncidence& incidence, ForceAccumulator& out) {
  const auto takesPart = [&](std::uint64_t v) {
    return in.filter == nullptr || participates(in.filter[v], in.minFilter, in.maxFilter);
  };
  detail::parallelRanges(in.verticesCount, 1024, [&](std::size_t first, std::size_t last) {
    for (std::uint64_t v = first; v < last; ++v) {
      if (!takesPart(v)) continue;
      const float px = in.x[v], py = in.y[v], pz = in.z[v];
      double sx = 0.0, sy = 0.0, sz = 0.0;
      for (std::uint64_t k = incidence.offsets[v]; k < incidence.offsets[v + 1]; ++k) {
        const std::uint32_t u = incidence.others[k];
        if (!takesPart(u)) continue;
        const float w = mode == LayoutMode::Plain ? 1.0f : in.weights[incidence.edges[k]];
        if (mode == LayoutMode::WeightAsDistance && !(w > 0.0f)) continue;
        // The edge-wise pass's arithmetic: the force on v pulls it along
        // p_u - p_v (d = p_v - p_u, whichever end v is).
        const float dx = px - in.x[u];
        const float dy = py - in.y[u];
        const float dz = pz - in.z[u];
        const float r = std::sqrt(dx * dx + dy * dy + dz * dz + in.softening);
        const float x = detail::stretch<mode>(r, w, in.preferredDistance);
        const float m = in.attraction * x * std::fabs(x);
        sx -= static_cast<double>(dx * m / r);
        sy -= static_cast<double>(dy * m / r);
        sz -= static_cast<double>(dz * m / r);
      }
      out.x[v] += sx;
      out.y[v] += sy;
      out.z[v] += sz;
    }
  });
}

}  // namespace

void attractionPassByVertex(LayoutMode mode, const PassInputs& in, const EdgeIncidence& incidence,
                            ForceAccumulator& out) {
  switch (mode) {
    case LayoutMode::Plain:
      springsByVertex<LayoutMode::Plain>(in, incidence, out);
      break;
    case LayoutMode::EdgeWeighted:
      if (in.weights != nullptr) springsByVertex<LayoutMode::EdgeWeighted>(in, incidence, out);
      break;
    case LayoutMode::WeightAsDistance:
      if (in.weights != nullptr) springsByVertex<LayoutMode::WeightAsDistance>(in, incidence, out);
      break;
  }
}

}  // namespace layout
