#include "render/VXLCamera.h"

#include <algorithm>
#include <cmath>

#include "render/vec3.h"

namespace camera {
namespace {

using vec3::cross;
using vec3::dot;
using vec3::length;
using vec3::normalised;

Matrix4 identity() {
  return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

// The matrix gluLookAt builds.
Matrix4 lookAt(const Vec3d& eye, const Vec3d& centre, const Vec3d& up) {
  const Vec3d f = normalised({centre[0] - eye[0], centre[1] - eye[1], centre[2] - eye[2]});
  const Vec3d s = normalised(cross(f, normalised(up)));
  const Vec3d u = cross(s, f);
  Matrix4 m = {s[0], u[0], -f[0], 0, s[1], u[1], -f[1], 0, s[2], u[2], -f[2], 0, 0, 0, 0, 1};
  Matrix4 t = identity();
  t[12] = -eye[0];
  t[13] = -eye[1];
  t[14] = -eye[2];
  return multiply(m, t);
}

// Degrees to half the angle in radians, with the constant the trackball uses.
constexpr double kHalfAngle = 0.008726646;

struct Quaternion {
  double w, x, y, z;
};

Quaternion fromRotation(const Rotation& r) {
  const double half = static_cast<double>(r.angle) * kHalfAngle;
  const double s = std::sin(half);
  return {std::cos(half), r.x * s, r.y * s, r.z * s};
}

}  // namespace

void resetCamera(VXLCamera& camera, Rotation& worldRotation, const Vec3d& origin) {
  camera.aperture = 65.0;
  camera.rotationCenter = origin;
  camera.position = {0, 0, 75.0};
  camera.direction = {-0.0, -0.0, -75.0};
  camera.up = {0, 1, 0};
  worldRotation.angle = 0.75f;
  worldRotation.x = 0.75f;
  worldRotation.y = 0.75f;
}

Frustum frustum(const VXLCamera& camera, float nearClip, float farClip) {
  const double n = nearClip;
  const double h = std::tan(camera.aperture * 0.00872664625) * n;
  // A view of no height (not on screen yet) is treated as square.
  const float ratio = camera.viewHeight > 0 ? static_cast<float>(camera.viewWidth) /
                                                  static_cast<float>(camera.viewHeight)
                                            : 1.0f;
  const double r = ratio;
  if (ratio >= 1.0f) return {-r * h, r * h, -h, h, n, farClip};
  return {-h, h, -h / r, h / r, n, farClip};
}

Matrix4 frustumMatrix(const Frustum& f) {
  Matrix4 m{};
  m[0] = 2 * f.zNear / (f.right - f.left);
  m[5] = 2 * f.zNear / (f.top - f.bottom);
  m[8] = (f.right + f.left) / (f.right - f.left);
  m[9] = (f.top + f.bottom) / (f.top - f.bottom);
  m[10] = -(f.zFar + f.zNear) / (f.zFar - f.zNear);
  m[11] = -1;
  m[14] = -2 * f.zFar * f.zNear / (f.zFar - f.zNear);
  return m;
}

Matrix4 multiply(const Matrix4& a, const Matrix4& b) {
  Matrix4 m{};
  for (int col = 0; col < 4; ++col) {
    for (int row = 0; row < 4; ++row) {
      double sum = 0;
      for (int k = 0; k < 4; ++k) sum += a[k * 4 + row] * b[col * 4 + k];
      m[col * 4 + row] = sum;
    }
  }
  return m;
}

Matrix4 rotationMatrix(const Rotation& r) {
  const Vec3d axis = {r.x, r.y, r.z};
  if (length(axis) == 0) return identity();
  const Vec3d a = normalised(axis);
  const double radians = static_cast<double>(r.angle) * M_PI / 180.0;
  const double c = std::cos(radians);
  const double s = std::sin(radians);
  const double t = 1 - c;
  return {t * a[0] * a[0] + c,
          t * a[0] * a[1] + s * a[2],
          t * a[0] * a[2] - s * a[1],
          0,
          t * a[0] * a[1] - s * a[2],
          t * a[1] * a[1] + c,
          t * a[1] * a[2] + s * a[0],
          0,
          t * a[0] * a[2] + s * a[1],
          t * a[1] * a[2] - s * a[0],
          t * a[2] * a[2] + c,
          0,
          0,
          0,
          0,
          1};
}

Matrix4 modelView(const VXLCamera& camera, const std::optional<Rotation>& dragRotation,
                  const Rotation& worldRotation, const Rotation& objectRotation) {
  const Vec3d& p = camera.position;
  const Vec3d& d = camera.direction;
  Matrix4 m = lookAt(p, {p[0] + d[0], p[1] + d[1], p[2] + d[2]}, camera.up);
  if (dragRotation && dragRotation->angle != 0) m = multiply(m, rotationMatrix(*dragRotation));
  m = multiply(m, rotationMatrix(worldRotation));
  m = multiply(m, rotationMatrix(objectRotation));
  // The scene turns about the rotation centre, which sits where the eye looks.
  const Vec3d& c = camera.rotationCenter;
  if (c[0] == 0 && c[1] == 0 && c[2] == 0) return m;
  Matrix4 t = identity();
  t[12] = -c[0];
  t[13] = -c[1];
  t[14] = -c[2];
  return multiply(m, t);
}

void addToRotationTrackball(const Rotation& delta, Rotation& target) {
  const Quaternion q1 = fromRotation(target);
  const Quaternion q2 = fromRotation(delta);
  const Quaternion q = {q2.w * q1.w - q2.x * q1.x - q2.y * q1.y - q2.z * q1.z,
                        q2.w * q1.x + q1.w * q2.x + q2.y * q1.z - q2.z * q1.y,
                        q2.w * q1.y + q1.w * q2.y + q2.z * q1.x - q2.x * q1.z,
                        q2.w * q1.z + q1.w * q2.z + q2.x * q1.y - q2.y * q1.x};
  if (std::fabs(q.w - 1.0) < 1e-7) {
    target = {0.0f, 1.0f, 0.0f, 0.0f};
    return;
  }
  const double half = std::acos(std::clamp(q.w, -1.0, 1.0));
  const double s = std::sin(half);
  target = {static_cast<float>(half * 114.59155), static_cast<float>(q.x / s),
            static_cast<float>(q.y / s), static_cast<float>(q.z / s)};
}

Trackball trackballStart(int viewWidth, int viewHeight, double pointX, double pointY) {
  Trackball ball;
  ball.radius = static_cast<float>(std::min(viewWidth, viewHeight)) * 0.5f;
  ball.centerX = static_cast<int>(viewWidth * 0.5);
  ball.centerY = static_cast<int>(viewHeight * 0.5);
  const float x = static_cast<float>(static_cast<int>(pointX) - ball.centerX);
  const float y = static_cast<float>(static_cast<int>(pointY) - ball.centerY);
  const float zz = ball.radius * ball.radius - x * x - y * y;
  ball.start = {x, y, zz > 0 ? std::sqrt(zz) : 0.0f};
  return ball;
}

std::optional<Rotation> trackballRotation(const Trackball& ball, double pointX, double pointY) {
  const double x = static_cast<int>(pointX) - ball.centerX;
  const double y = static_cast<int>(pointY) - ball.centerY;
  if (std::fabs(x - ball.start[0]) < 0.001 && std::fabs(y - ball.start[1]) < 0.001) {
    return std::nullopt;
  }
  const double zz = static_cast<double>(ball.radius) * ball.radius - x * x - y * y;
  const Vec3d current = {x, y, zz > 0 ? std::sqrt(zz) : 0.0};
  const Vec3d start = {ball.start[0], ball.start[1], ball.start[2]};
  const Vec3d axis = cross(start, current);
  const double norms = length(start) * length(current);
  if (norms == 0 || length(axis) == 0) return std::nullopt;
  const Vec3d unit = normalised(axis);
  const double angle = std::atan2(length(axis) / norms, dot(start, current) / norms) * 57.29578;
  return Rotation{static_cast<float>(angle), static_cast<float>(unit[0]),
                  static_cast<float>(unit[1]), static_cast<float>(unit[2])};
}

void dolly(VXLCamera& camera, int startY, int currentY) {
  const double dy = startY - currentY;
  double& z = camera.position[2];
  z = std::max(z + static_cast<float>(-0.01 * z * dy), 1.0);
}

void pan(VXLCamera& camera, int startX, int startY, int currentX, int currentY) {
  const double k = camera.position[2] / 400.0;
  camera.position[0] += static_cast<float>((startX - currentX) * k);
  camera.position[1] += static_cast<float>((startY - currentY) * k);
}

bool scroll(VXLCamera& camera, double delta, ScrollTarget target) {
  const double d = static_cast<float>(delta);
  if (target == ScrollTarget::Distance) {
    double& z = camera.position[2];
    z = z + d * -0.01 * z;
    if (!(z > -1.0)) z = 1.0;
    return false;
  }
  if (d == 0) return false;
  const double a = camera.aperture;
  camera.aperture =
      std::clamp(static_cast<double>(static_cast<float>(a + d * -0.005 * a)), 0.1, 179.9);
  return true;
}

void presetView(PresetView view, VXLCamera& camera, Rotation& worldRotation, const Vec3d& origin) {
  camera.rotationCenter = origin;
  const double d = static_cast<float>(length(camera.position));
  camera.position = {0, 0, d};
  camera.direction = {-0.0, -0.0, -d};
  camera.up = {0, 1, 0};
  switch (view) {
    case PresetView::Top:
      worldRotation = {90.0f, 0.75f, 90.0f, 0.0f};
      break;
    case PresetView::Left:
      worldRotation = {90.0f, 0.75f, 0.75f, worldRotation.z};
      break;
    case PresetView::Front:
      worldRotation = {0.75f, 0.75f, 0.75f, worldRotation.z};
      break;
  }
}

float scaleForSlider(double s) {
  return static_cast<float>(std::pow(10.0, s));
}
float nearForSlider(double s) {
  return static_cast<float>(std::pow(4.0, s));
}
float farForSlider(double s) {
  return static_cast<float>(std::pow(4.0, s) * 2000.0);
}

void updateObjectRotationForTimeDelta(Spin& spin, double t, Rotation& objectRotation) {
  const float step = static_cast<float>(30.0 * t);
  for (std::size_t i = 0; i < 3; ++i) {
    float& vel = spin.velocity[i];
    float& accel = spin.acceleration[i];
    vel += accel * step;
    if (vel > 2.0f) {
      accel = -accel;
      vel = 2.0f;
    }
    if (vel < -2.0f) {
      accel = -accel;
      vel = -2.0f;
    }
    float& rot = spin.rotation[i];
    rot += vel * step;
    while (rot > 360.0f) rot -= 360.0f;
    while (rot < -360.0f) rot += 360.0f;
  }
  addToRotationTrackball({spin.rotation[0], 1, 0, 0}, objectRotation);
  addToRotationTrackball({spin.rotation[1], 0, 1, 0}, objectRotation);
  addToRotationTrackball({spin.rotation[2], 0, 0, 1}, objectRotation);
}

}  // namespace camera
