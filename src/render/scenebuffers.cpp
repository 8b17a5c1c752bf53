#include "render/scenebuffers.h"

#include <algorithm>

#include "render/edgestyle.h"

namespace scene_buffers {

void packPositions(const SceneFrame& frame, std::vector<float>& out) {
  const std::uint64_t V = frame.verticesCount;
  out.resize(3 * V);
  for (std::uint64_t i = 0; i < V; ++i) {
    out[3 * i] = frame.x[i];
    out[3 * i + 1] = frame.y[i];
    out[3 * i + 2] = frame.z[i];
  }
}

void packColours(const SceneFrame& frame, std::vector<float>& out) {
  const std::uint64_t V = frame.verticesCount;
  out.resize(3 * V);
  const scene::Rgb fixed = scene::kDefaultVertexColour;
  for (std::uint64_t i = 0; i < V; ++i) {
    out[3 * i] = frame.r ? frame.r[i] : fixed.r;
    out[3 * i + 1] = frame.r ? frame.g[i] : fixed.g;
    out[3 * i + 2] = frame.r ? frame.b[i] : fixed.b;
  }
}

void packFlags(const SceneFrame& frame, std::vector<std::uint8_t>& out) {
  const std::uint64_t V = frame.verticesCount;
  out.resize(V);
  for (std::uint64_t i = 0; i < V; ++i) {
    const bool shown = frame.vertexShown(i);
    const bool selected = frame.selected && frame.selected[i];
    out[i] = static_cast<std::uint8_t>((shown ? kShown : 0) | (selected ? kSelected : 0));
  }
}

void packEdgeEnds(const SceneFrame& frame, std::vector<std::uint8_t>& out) {
  const std::uint64_t V = frame.verticesCount;
  out.resize(V);
  for (std::uint64_t i = 0; i < V; ++i) out[i] = frame.edgeEndShown(i) ? 1 : 0;
}

std::array<std::uint64_t, 2> EdgeList::pairsOf(std::uint64_t begin, std::uint64_t end,
                                               std::uint64_t widthClass) const {
  const auto from = edgeOf.begin() + static_cast<std::ptrdiff_t>(classStart[widthClass]);
  const auto to = edgeOf.begin() + static_cast<std::ptrdiff_t>(classStart[widthClass + 1]);
  const auto first = std::lower_bound(from, to, begin);
  const auto last = std::lower_bound(first, to, end);
  return {static_cast<std::uint64_t>(first - edgeOf.begin()),
          static_cast<std::uint64_t>(last - edgeOf.begin())};
}

void buildEdgeList(const SceneFrame& frame, const std::vector<std::uint8_t>& ends, EdgeList& out) {
  out.indices.clear();
  out.edgeOf.clear();
  out.classStart.assign(1, 0);
  const std::uint8_t classes = frame.edgeWidths ? edge_style::kWidthClasses : 1;
  for (std::uint8_t c = 0; c < classes; ++c) {
    for (std::uint64_t k = 0; k < frame.edgesCount; ++k) {
      if (frame.edgeWidths && frame.edgeWidths[k] != c) continue;
      if (frame.weights && 0.0f >= frame.weights[k]) continue;
      const std::uint64_t t = frame.to[k];
      const std::uint64_t f = frame.from[k];
      if (!ends[t] || !ends[f]) continue;
      out.indices.push_back(static_cast<std::uint32_t>(t));
      out.indices.push_back(static_cast<std::uint32_t>(f));
      out.edgeOf.push_back(k);
    }
    out.classStart.push_back(out.edgeOf.size());
  }
}

void packPairColours(const SceneFrame& frame, const EdgeList& edges, std::vector<float>& out) {
  out.clear();
  if (!frame.edgeColours) return;
  out.resize(3 * edges.edgeOf.size());
  for (std::size_t p = 0; p < edges.edgeOf.size(); ++p) {
    const float* c = frame.edgeColours + 3 * edges.edgeOf[p];
    out[3 * p] = c[0];
    out[3 * p + 1] = c[1];
    out[3 * p + 2] = c[2];
  }
}

namespace {

std::array<float, 4> asArray(const scene::Rgba& c) {
  return {c.r, c.g, c.b, c.a};
}

// The rule at colour 0 gives add, at colour 1 add + mul.
void affine(const SceneFrame& frame, scene::Selection selection, std::array<float, 4>& mul,
            std::array<float, 4>& add) {
  auto at = [&](std::optional<scene::Rgb> c) {
    return asArray(scene::edgeEndpointColour(c, selection, frame.lineBlending(), frame.background,
                                             frame.edgesIntensity));
  };
  if (!frame.edgeColours && frame.colouring() == scene::Colouring::Fixed) {
    add = at(std::nullopt);
    mul = {0, 0, 0, 0};
    return;
  }
  add = at(scene::Rgb{0, 0, 0});
  const std::array<float, 4> one = at(scene::Rgb{1, 1, 1});
  for (std::size_t i = 0; i < 3; ++i) mul[i] = one[i] - add[i];
  mul[3] = 0;
}

}  // namespace

EdgeColourRule edgeColourRule(const SceneFrame& frame) {
  EdgeColourRule rule;
  affine(frame, scene::Selection::NotSelected, rule.mul, rule.add);
  affine(frame, scene::Selection::Selected, rule.selectedMul, rule.selectedAdd);
  return rule;
}

}  // namespace scene_buffers
