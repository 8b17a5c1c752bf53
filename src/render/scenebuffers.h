#pragma once
// What the shader renderer keeps in GL buffers, packed from a frame on the
// CPU (no GL here): interleaved positions, colours, per-vertex flags and the
// index list of the edges drawn, and the edge colour rule as two affine maps.
#include <array>
#include <cstdint>
#include <vector>

#include "render/sceneframe.h"

namespace scene_buffers {

// Bits of a vertex's flag byte.
inline constexpr std::uint8_t kShown = 1;     // drawn (filter range and hidden mask)
inline constexpr std::uint8_t kSelected = 2;  // wears the selection shell

// x, y, z per vertex (unscaled: the scale is a uniform).
void packPositions(const SceneFrame& frame, std::vector<float>& out);
// r, g, b per vertex: its own colour, or the default colour without colours.
void packColours(const SceneFrame& frame, std::vector<float>& out);
void packFlags(const SceneFrame& frame, std::vector<std::uint8_t>& out);
// One byte per vertex, non-zero when edges ending there may be drawn.
void packEdgeEnds(const SceneFrame& frame, std::vector<std::uint8_t>& out);

// The edges drawn: endpoint indices (to, then from) and the edge index each
// pair came from, grouped by width class (one class when widths are not
// used) and in edge order within a class, for drawing a range of edges.
struct EdgeList {
  std::vector<std::uint32_t> indices;
  std::vector<std::uint64_t> edgeOf;
  // Class c's pairs are [classStart[c], classStart[c + 1]).
  std::vector<std::uint64_t> classStart{0, 0};
  std::uint64_t classes() const { return classStart.size() - 1; }
  // Pairs of class c's edges in [begin, end): [first, last) into edgeOf.
  std::array<std::uint64_t, 2> pairsOf(std::uint64_t begin, std::uint64_t end,
                                       std::uint64_t widthClass = 0) const;
};
// `ends` as packEdgeEnds gives it. Edges of weight 0 or less are left out.
void buildEdgeList(const SceneFrame& frame, const std::vector<std::uint8_t>& ends, EdgeList& out);
// r, g, b per pair of `edges`, from the frame's edge colours (nothing
// without them).
void packPairColours(const SceneFrame& frame, const EdgeList& edges, std::vector<float>& out);

// The edge colour at an endpoint is affine in the endpoint's colour c:
// colour = c * mul + add (alpha: add's alpha, mul's is 0), one map for
// endpoints not selected and one for selected ones. Without per-vertex or
// per-edge colours mul is 0 and add is the fixed colour; with per-edge
// colours c is the edge's colour.
struct EdgeColourRule {
  std::array<float, 4> mul{}, add{}, selectedMul{}, selectedAdd{};
};
EdgeColourRule edgeColourRule(const SceneFrame& frame);

}  // namespace scene_buffers
