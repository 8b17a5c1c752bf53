#include "render/pickray.h"

#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/parallel_reduce.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace pick_ray {
namespace {

struct Hit {
  double depth = std::numeric_limits<double>::infinity();
  std::uint64_t vertex = kNoVertex;
  bool before(const Hit& other) const {
    return depth < other.depth || (depth == other.depth && vertex < other.vertex);
  }
};

using Vec3 = std::array<double, 3>;

Vec3 transform(const Matrix4& m, const Vec3& p) {
  return {m[0] * p[0] + m[4] * p[1] + m[8] * p[2] + m[12],
          m[1] * p[0] + m[5] * p[1] + m[9] * p[2] + m[13],
          m[2] * p[0] + m[6] * p[1] + m[10] * p[2] + m[14]};
}

// The transpose of the model-view's rotation applied to v (its inverse).
Vec3 unrotate(const Matrix4& m, const Vec3& v) {
  return {m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[4] * v[0] + m[5] * v[1] + m[6] * v[2],
          m[8] * v[0] + m[9] * v[1] + m[10] * v[2]};
}

double dot(const Vec3& a, const Vec3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

class Caster {
 public:
  Caster(const SceneFrame& frame, const View& view, const Region& region)
      : frame_(frame), view_(view), region_(region) {
    const Matrix4& p = view.projection;
    near_ = p[14] / (p[10] - 1);
    far_ = p[14] / (p[10] + 1);
    // Window pixels per eye-space unit at depth 1, the larger of x and y.
    pixelsPerUnit_ = std::max(p[0] * view.width, p[5] * view.height) / 2;
  }

  Hit cast(std::uint64_t i) const {
    if (!frame_.vertexShown(i)) return {};
    const double s = frame_.scale;
    const Vec3 world{frame_.x[i] * s, frame_.y[i] * s, frame_.z[i] * s};
    const Vec3 centre = transform(view_.modelView, world);
    if (centre[2] >= 0) return {};  // at or behind the eye
    const bool selected = frame_.selected && frame_.selected[i];
    const double size = (selected ? scene_shapes::kShellSize : scene_shapes::kSize) *
                        static_cast<double>(frame_.sizeFactor(i));
    // The ray through the region's point nearest the centre's pixel, then
    // through the region's centre.
    const std::array<double, 2> pixel = windowOf(centre);
    const double hx = region_.dx / 2, hy = region_.dy / 2;
    // Far from the region on screen: no ray needed. The shape lies within
    // `size` of its centre; seen off the axis its picture stretches by at
    // most 1 + |x / z| + |y / z|.
    const double distance = -centre[2];
    const double stretch = 1 + (std::abs(centre[0]) + std::abs(centre[1])) / distance;
    const double reach = size * stretch * pixelsPerUnit_ / std::max(distance - size, near_);
    if (std::abs(pixel[0] - region_.x) > hx + reach + 1 ||
        std::abs(pixel[1] - region_.y) > hy + reach + 1) {
      return {};
    }
    const std::array<double, 2> nearest{std::clamp(pixel[0], region_.x - hx, region_.x + hx),
                                        std::clamp(pixel[1], region_.y - hy, region_.y + hy)};
    double depth = along(rayThrough(nearest), centre, world, size);
    if (!std::isfinite(depth))
      depth = along(rayThrough({region_.x, region_.y}), centre, world, size);
    if (!std::isfinite(depth)) return {};
    return {depth, i};
  }

 private:
  std::array<double, 2> windowOf(const Vec3& eye) const {
    const Matrix4& p = view_.projection;
    const double w = -eye[2];
    const double x = (p[0] * eye[0] + p[8] * eye[2]) / w;
    const double y = (p[5] * eye[1] + p[9] * eye[2]) / w;
    return {(x + 1) * 0.5 * view_.width, (y + 1) * 0.5 * view_.height};
  }

  // The eye-space direction (z = -1) of the ray through a window point.
  Vec3 rayThrough(const std::array<double, 2>& window) const {
    const Matrix4& p = view_.projection;
    const double x = 2 * window[0] / view_.width - 1;
    const double y = 2 * window[1] / view_.height - 1;
    return {(x + p[8]) / p[0], (y + p[9]) / p[5], -1};
  }

  // The eye depth where the ray t * d (t = depth) first meets the shape
  // between the clipping planes, or infinity.
  double along(const Vec3& d, const Vec3& centre, const Vec3& world, double size) const {
    double enter = 0, leave = 0;
    if (frame_.simpleShapes) {
      // The cube is axis-aligned in the world: take the ray there.
      const Vec3 origin = unrotate(
          view_.modelView, {-view_.modelView[12], -view_.modelView[13], -view_.modelView[14]});
      const Vec3 direction = unrotate(view_.modelView, d);
      enter = -std::numeric_limits<double>::infinity();
      leave = std::numeric_limits<double>::infinity();
      for (std::size_t a = 0; a < 3; ++a) {
        const double lo = world[a] - size / 2 - origin[a];
        const double hi = world[a] + size / 2 - origin[a];
        if (direction[a] == 0) {
          if (lo > 0 || hi < 0) return std::numeric_limits<double>::infinity();
          continue;
        }
        const double t0 = lo / direction[a], t1 = hi / direction[a];
        enter = std::max(enter, std::min(t0, t1));
        leave = std::min(leave, std::max(t0, t1));
      }
      if (enter > leave) return std::numeric_limits<double>::infinity();
    } else {
      const double a = dot(d, d), b = dot(d, centre);
      const double disc = b * b - a * (dot(centre, centre) - size * size);
      if (disc < 0) return std::numeric_limits<double>::infinity();
      const double root = std::sqrt(disc);
      enter = (b - root) / a;
      leave = (b + root) / a;
    }
    if (leave < near_ || enter > far_) return std::numeric_limits<double>::infinity();
    return std::max(enter, near_);
  }

  const SceneFrame& frame_;
  const View& view_;
  const Region& region_;
  double near_ = 0, far_ = 0, pixelsPerUnit_ = 0;
};

}  // namespace

std::uint64_t nearestVertex(const SceneFrame& frame, const View& view, const Region& region) {
  if (frame.verticesCount == 0 || view.width <= 0 || view.height <= 0) return kNoVertex;
  const Caster caster(frame, view, region);
  const Hit best = oneapi::tbb::parallel_reduce(
      oneapi::tbb::blocked_range<std::uint64_t>(0, frame.verticesCount, 4096), Hit{},
      [&](const oneapi::tbb::blocked_range<std::uint64_t>& range, Hit hit) {
        for (std::uint64_t i = range.begin(); i < range.end(); ++i) {
          const Hit h = caster.cast(i);
          if (h.before(hit)) hit = h;
        }
        return hit;
      },
      [](const Hit& a, const Hit& b) { return b.before(a) ? b : a; });
  return best.vertex;
}

}  // namespace pick_ray
