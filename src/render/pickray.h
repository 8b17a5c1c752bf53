#pragma once
// Picking as a pure function of the frame: the vertex whose shape (sphere,
// cube, or the larger shell of a selected vertex) is nearest the viewer
// within a pick region, found by casting rays from the eye on the CPU
// (parallel over the vertices). No GL.
#include <cstdint>

#include "render/VXLCamera.h"
#include "render/sceneframe.h"

namespace pick_ray {

inline constexpr std::uint64_t kNoVertex = ~std::uint64_t{0};

struct View {
  Matrix4 projection{};  // a perspective frustum (camera::frustumMatrix)
  Matrix4 modelView{};   // a rigid motion (camera::modelView)
  int width = 0, height = 0;
};

// A dx by dy pixel region centred on (x, y), window coordinates from the
// lower left.
struct Region {
  double x = 0, y = 0, dx = 1, dy = 1;
};

// The shown vertex whose shape meets the region, nearest the eye between the
// clipping planes (by eye depth; the lower index on a tie), or kNoVertex.
std::uint64_t nearestVertex(const SceneFrame& frame, const View& view, const Region& region);

}  // namespace pick_ray
