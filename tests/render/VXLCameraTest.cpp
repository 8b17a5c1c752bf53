// Camera and navigation maths checked against geometry, not the formulas
// (composition with matrices is checked through the view's drags).
#include <gtest/gtest.h>

#include <cmath>

#include "render/VXLCamera.h"

namespace {

std::array<double, 4> apply(const Matrix4& m, const std::array<double, 4>& v) {
  std::array<double, 4> out{};
  for (int row = 0; row < 4; ++row) {
    for (int k = 0; k < 4; ++k) out[row] += m[k * 4 + row] * v[k];
  }
  return out;
}

void expectNear(const Matrix4& a, const Matrix4& b, double tolerance) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "element " << i;
}

}  // namespace

TEST(CameraTrackball, TurnsTheWayTheMouseMoves) {
  auto ball = camera::trackballStart(400, 300, 200.4, 150.9);   // centre, truncated
  EXPECT_FALSE(camera::trackballRotation(ball, 200.9, 150.2));  // no whole-pixel move

  auto right = camera::trackballRotation(ball, 275, 150);
  ASSERT_TRUE(right);
  EXPECT_NEAR(right->y, 1.0, 1e-6);       // about +y
  EXPECT_NEAR(right->angle, 30.0, 1e-3);  // asin(75 / 150)
  auto down = camera::trackballRotation(ball, 200, 75);
  ASSERT_TRUE(down);
  EXPECT_NEAR(down->x, 1.0, 1e-6);
  // Outside the ball the point lies on its rim: a quarter turn at most.
  auto far = camera::trackballRotation(ball, 900, 150);
  EXPECT_NEAR(far->angle, 90.0, 1e-3);
  // Composed with its inverse: no turn, about the default axis.
  Rotation undone{40, 0, 1, 0};
  camera::addToRotationTrackball({-40, 0, 1, 0}, undone);
  EXPECT_EQ(undone, (Rotation{0, 1, 0, 0}));
}

TEST(CameraProjection, FrustumFollowsTheAspectAndTheModelViewTheCamera) {
  VXLCamera cam;
  const double h = std::tan(32.5 * M_PI / 180.0);
  cam.viewWidth = 800;
  cam.viewHeight = 400;
  EXPECT_NEAR(camera::frustum(cam, 1.0f, 2000.0f).right, 2 * h, 1e-6);
  cam.viewWidth = 400;
  cam.viewHeight = 800;
  auto tall = camera::frustum(cam, 1.0f, 2000.0f);
  EXPECT_NEAR(tall.right, h, 1e-6);
  EXPECT_NEAR(tall.top, 2 * h, 1e-6);
  // The frustum maps the near plane's corner onto the corner of clip space.
  auto corner = apply(camera::frustumMatrix(tall), {tall.right, tall.top, -1.0, 1.0});
  EXPECT_NEAR(corner[0] / corner[3], 1.0, 1e-9);
  EXPECT_NEAR(corner[2] / corner[3], -1.0, 1e-9);

  // The eye at z = 75 looking at the origin; a quarter turn of the world about
  // z takes x onto y.
  auto mv = camera::modelView(cam, std::nullopt, {90, 0, 0, 1}, {0, 1, 0, 0});
  auto p = apply(mv, {1, 0, 0, 1});
  EXPECT_NEAR(p[0], 0, 1e-9);
  EXPECT_NEAR(p[1], 1, 1e-9);
  EXPECT_NEAR(p[2], -75, 1e-9);
  // A drag rotation applies before the world rotation; angle 0 is ignored.
  auto dragged = camera::modelView(cam, Rotation{90, 0, 0, 1}, {90, 0, 0, 1}, {0, 1, 0, 0});
  EXPECT_NEAR(apply(dragged, {1, 0, 0, 1})[0], -1, 1e-9);
  expectNear(camera::modelView(cam, Rotation{0, 0, 0, 1}, {90, 0, 0, 1}, {0, 1, 0, 0}), mv, 0);
}

TEST(CameraNavigation, DollyScrollAndApertureClamps) {
  VXLCamera cam;
  camera::dolly(cam, 10000, 0);  // far in: never nearer than 1
  EXPECT_EQ(cam.position[2], 1.0);

  cam.position[2] = 10;
  EXPECT_FALSE(camera::scroll(cam, 105, camera::ScrollTarget::Distance));
  EXPECT_NEAR(cam.position[2], -0.5, 1e-9);  // between -1 and 1 is allowed
  cam.position[2] = 10;
  camera::scroll(cam, 110, camera::ScrollTarget::Distance);
  EXPECT_EQ(cam.position[2], 1.0);  // at or below -1 jumps to 1

  EXPECT_FALSE(camera::scroll(cam, 0, camera::ScrollTarget::Aperture));
  for (double d : {-1e6, 1e6}) {
    EXPECT_TRUE(camera::scroll(cam, d, camera::ScrollTarget::Aperture));
    EXPECT_GE(cam.aperture, 0.1);
    EXPECT_LE(cam.aperture, 179.9);
  }
}

TEST(CameraNavigation, PresetViewsKeepTheDistance) {
  VXLCamera cam;
  cam.position = {3, 4, 0};
  Rotation world{1, 2, 3, 4};
  camera::presetView(camera::PresetView::Top, cam, world, {1, 1, 1});
  EXPECT_EQ(cam.position, (Vec3d{0, 0, 5}));
  EXPECT_EQ(cam.direction, (Vec3d{0, 0, -5}));
  EXPECT_EQ(world, (Rotation{90, 0.75f, 90, 0}));
  world.z = 4;
  camera::presetView(camera::PresetView::Left, cam, world, {0, 0, 0});
  EXPECT_EQ(world, (Rotation{90, 0.75f, 0.75f, 4}));
}

TEST(CameraSpin, VelocityTurnsBackAtItsLimit) {
  camera::Spin spin;
  spin.velocity = {1.99f, -1.99f, 0};
  spin.acceleration = {0.1f, -0.1f, 0};
  Rotation object{0, 1, 0, 0};
  camera::updateObjectRotationForTimeDelta(spin, 1.0, object);  // 30 ticks' worth
  EXPECT_EQ(spin.velocity[0], 2.0f);
  EXPECT_LT(spin.acceleration[0], 0.0f);
  EXPECT_EQ(spin.velocity[1], -2.0f);
  EXPECT_GT(spin.acceleration[1], 0.0f);
  EXPECT_LE(std::fabs(spin.rotation[0]), 360.0f);
  EXPECT_NE(object.angle, 0.0f);
}
