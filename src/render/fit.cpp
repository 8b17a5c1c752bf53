#include "render/fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

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

  // The eye sits at -D f + a s + b u, the bounding-box centre being the
  // origin; a point w (turned, relative to the centre) lies D + f.w in front
  // of it, and |s.w - a| + ballX <= (D + f.w) tanX (likewise for y). Over all
  // points that is D tanX + a >= maxP and D tanX - a >= maxQ with
  // P = s.w - f.w tanX + ballX and Q = -s.w - f.w tanX + ballX: the nearest
  // eye takes D tanX = (maxP + maxQ) / 2.
  double maxPx = -std::numeric_limits<double>::infinity(), maxQx = maxPx;
  double maxPy = maxPx, maxQy = maxPx;
  double distance = options.minimumHalfSize / std::min(tanX, tanY);
  std::vector<double> ahead(points.size()), across(points.size()), upward(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3d& p = points[i];
    const Vec3d w = turn(rotation, {p[0] - centre[0], p[1] - centre[1], p[2] - centre[2]});
    ahead[i] = dot(f, w);
    across[i] = dot(s, w);
    upward[i] = dot(u, w);
    maxPx = std::max(maxPx, across[i] - ahead[i] * tanX + ballX);
    maxQx = std::max(maxQx, -across[i] - ahead[i] * tanX + ballX);
    maxPy = std::max(maxPy, upward[i] - ahead[i] * tanY + ballY);
    maxQy = std::max(maxQy, -upward[i] - ahead[i] * tanY + ballY);
    distance = std::max(distance, 1.1 * nearClip + r - ahead[i]);
  }
  distance = std::max({distance, (maxPx + maxQx) / 2 / tanX, (maxPy + maxQy) / 2 / tanY});
  // At that distance, the sideways offset that centres the picture: the
  // one where the nearest miss on the right equals that on the left. Their
  // sum falls piecewise linearly as the offset grows, so Newton steps find
  // it in a few passes, halving the bracket when a step would leave it. It
  // is the offset that keeps the extremes furthest from the sides, so the
  // points still fit.
  const auto centring = [&](const std::vector<double>& side, double ball) {
    const auto [lowest, highest] = std::minmax_element(side.begin(), side.end());
    double lo = *lowest, hi = *highest;
    double offset = (lo + hi) / 2;
    for (int step = 0; step < 64 && hi - lo > 1e-12 * (1 + std::abs(offset)); ++step) {
      double most = -std::numeric_limits<double>::infinity(), least = -most;
      double mostDepth = 1, leastDepth = 1;
      for (std::size_t i = 0; i < side.size(); ++i) {
        const double depth = distance + ahead[i];
        const double right = (side[i] - offset + ball) / depth;
        const double left = (side[i] - offset - ball) / depth;
        if (right > most) {
          most = right;
          mostDepth = depth;
        }
        if (left < least) {
          least = left;
          leastDepth = depth;
        }
      }
      const double sum = most + least;
      if (sum == 0) break;
      (sum > 0 ? lo : hi) = offset;
      const double newton = offset + sum / (1 / mostDepth + 1 / leastDepth);
      offset = lo < newton && newton < hi ? newton : (lo + hi) / 2;
    }
    return offset;
  };
  const double a = centring(across, ballX), b = centring(upward, ballY);
  camera.rotationCenter = centre;
  camera.position = {-distance * f[0] + a * s[0] + b * u[0], -distance * f[1] + a * s[1] + b * u[1],
                     -distance * f[2] + a * s[2] + b * u[2]};
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
