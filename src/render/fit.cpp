#include "render/fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "render/vec3.h"

namespace camera {
namespace {

using vec3::cross;
using vec3::dot;
using vec3::normalised;

// The linear part of a column-major matrix applied to v.
Vec3d turn(const Matrix4& m, const Vec3d& v) {
  return {m[0] * v[0] + m[4] * v[1] + m[8] * v[2], m[1] * v[0] + m[5] * v[1] + m[9] * v[2],
          m[2] * v[0] + m[6] * v[1] + m[10] * v[2]};
}

}  // namespace

Projected project(const Matrix4& projection, const Matrix4& modelView, const Vec3d& point) {
  std::array<double, 4> eye{};
  for (int row = 0; row < 4; ++row) {
    eye[row] = modelView[row] * point[0] + modelView[4 + row] * point[1] +
               modelView[8 + row] * point[2] + modelView[12 + row];
  }
  std::array<double, 4> clip{};
  for (int row = 0; row < 4; ++row) {
    clip[row] = projection[row] * eye[0] + projection[4 + row] * eye[1] +
                projection[8 + row] * eye[2] + projection[12 + row] * eye[3];
  }
  return {clip[0] / clip[3], clip[1] / clip[3], -eye[2]};
}

bool fitCamera(VXLCamera& camera, const Matrix4& rotation, std::span<const Vec3d> points,
               float nearClip, const FitOptions& options) {
  if (points.empty()) return false;
  Vec3d low = points.front(), high = points.front();
  for (const Vec3d& p : points) {
    for (int a = 0; a < 3; ++a) {
      low[a] = std::min(low[a], p[a]);
      high[a] = std::max(high[a], p[a]);
    }
  }
  const Vec3d centre{(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2};

  // The eye's axes, as the look-at builds them.
  const Vec3d f = normalised(camera.direction);
  const Vec3d s = normalised(cross(f, normalised(camera.up)));
  const Vec3d u = cross(s, f);
  const Frustum fr = frustum(camera, nearClip, std::numeric_limits<float>::max());
  const double keep = 1.0 - options.margin;
  const double tanX = fr.right / fr.zNear * keep;
  const double tanY = fr.top / fr.zNear * keep;
  // A ball of radius r touches a side plane when its centre is r / cos away.
  const double r = options.pointRadius;
  const double ballX = r * std::sqrt(1 + tanX * tanX);
  const double ballY = r * std::sqrt(1 + tanY * tanY);

  // The eye sits at -D f from the centre: a point w (turned, relative to the
  // centre) lies D + f.w in front of it and must satisfy
  // |s.w| + ballX <= (D + f.w) tanX and |u.w| + ballY <= (D + f.w) tanY.
  double distance = options.minimumHalfSize / std::min(tanX, tanY);
  for (const Vec3d& p : points) {
    const Vec3d w = turn(rotation, {p[0] - centre[0], p[1] - centre[1], p[2] - centre[2]});
    const double ahead = dot(f, w);
    distance = std::max({distance, (std::abs(dot(s, w)) + ballX) / tanX - ahead,
                         (std::abs(dot(u, w)) + ballY) / tanY - ahead, 1.1 * nearClip + r - ahead});
  }
  camera.rotationCenter = centre;
  camera.position = {-distance * f[0], -distance * f[1], -distance * f[2]};
  camera.direction = {distance * f[0], distance * f[1], distance * f[2]};
  return true;
}

std::vector<std::uint64_t> pointsInRectangle(const Matrix4& projection, const Matrix4& modelView,
                                             std::span<const Vec3d> points, double x0, double y0,
                                             double x1, double y1) {
  const double left = std::min(x0, x1), right = std::max(x0, x1);
  const double bottom = std::min(y0, y1), top = std::max(y0, y1);
  std::vector<std::uint64_t> inside;
  for (std::uint64_t i = 0; i < points.size(); ++i) {
    const Projected p = project(projection, modelView, points[i]);
    if (p.depth > 0 && left <= p.x && p.x <= right && bottom <= p.y && p.y <= top) {
      inside.push_back(i);
    }
  }
  return inside;
}

}  // namespace camera
