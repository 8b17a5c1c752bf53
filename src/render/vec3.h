#pragma once
// Small 3-vector helpers shared by the camera maths and the fitting maths.
#include <cmath>

#include "render/VXLCamera.h"

namespace camera::vec3 {

inline Vec3d cross(const Vec3d& a, const Vec3d& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double dot(const Vec3d& a, const Vec3d& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline double length(const Vec3d& a) {
  return std::sqrt(dot(a, a));
}
// `a` scaled to length 1; a zero vector stays as it is.
inline Vec3d normalised(const Vec3d& a) {
  const double n = length(a);
  return n > 0 ? Vec3d{a[0] / n, a[1] / n, a[2] / n} : a;
}

}  // namespace camera::vec3
