#pragma once
// Framing: where the camera goes so that a set of points fills the view.
// Plain functions over the camera record (no GL), shared by Fit All, Frame
// Selection and the automatic framing of a new network.
#include <cstdint>
#include <span>
#include <vector>

#include "render/VXLCamera.h"

namespace camera {

// The points' place in the view: x and y in normalised device coordinates
// (-1..1 inside the viewport) and the distance in front of the eye.
struct Projected {
  double x, y, depth;
};
// Projects a point (world coordinates as drawn, already scaled) with the
// camera's matrices.
Projected project(const Matrix4& projection, const Matrix4& modelView, const Vec3d& point);

struct FitOptions {
  // The share of the half-width and half-height left free on the binding side.
  double margin = 0.06;
  // Points are balls of this radius (the drawn vertices).
  double pointRadius = 0;
  // The framed region is at least this large on each side of its centre, so
  // one vertex does not fill the view.
  double minimumHalfSize = 0;
};
// Places the camera, keeping its viewing direction, aperture and up vector,
// so that every point lies inside the frustum and in front of the near
// plane, as near as that allows, with the points' picture centred in the
// view (the eye may sit beside the rotation centre: in perspective a cloud's
// nearer side looks larger). The points' bounding-box centre becomes the
// rotation centre. `rotation` is what the model-view applies after the
// look-at (the world and object rotations). Answers false, changing nothing,
// without points.
bool fitCamera(VXLCamera& camera, const Matrix4& rotation, std::span<const Vec3d> points,
               float nearClip, const FitOptions& options = {});

// The points whose projection falls inside the rectangle [x0, x1] x [y0, y1]
// in normalised device coordinates (in front of the eye only).
std::vector<std::uint64_t> pointsInRectangle(const Matrix4& projection, const Matrix4& modelView,
                                             std::span<const Vec3d> points, double x0, double y0,
                                             double x1, double y1);

}  // namespace camera
