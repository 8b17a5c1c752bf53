// Picking by rays, without GL: which vertex a region names.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "render/fit.h"
#include "render/pickray.h"

namespace {

constexpr int kSize = 200;

// Vertices at given positions, looked at from (0, 0, 20) down -z.
struct Scene {
  std::vector<float> x, y, z;
  std::vector<std::uint8_t> selected, hidden;
  std::vector<float> filter;
  SceneFrame frame;
  pick_ray::View view;

  explicit Scene(const std::vector<std::array<float, 3>>& at, float far = 2000.0f) {
    for (const auto& p : at) {
      x.push_back(p[0]);
      y.push_back(p[1]);
      z.push_back(p[2]);
    }
    selected.assign(at.size(), 0);
    hidden.assign(at.size(), 0);
    filter.assign(at.size(), 1.0f);
    frame.verticesCount = at.size();
    frame.x = x.data();
    frame.y = y.data();
    frame.z = z.data();
    frame.selected = selected.data();
    VXLCamera camera;
    camera.position = {0, 0, 20};
    camera.direction = {0, 0, -20};
    camera.viewWidth = camera.viewHeight = kSize;
    view.projection = camera::frustumMatrix(camera::frustum(camera, 1.0f, far));
    view.modelView = camera::modelView(camera, std::nullopt, {}, {});
    view.width = view.height = kSize;
  }
  // The window point of a world point.
  std::array<double, 2> window(const Vec3d& p) const {
    const camera::Projected q = camera::project(view.projection, view.modelView, p);
    return {(q.x + 1) * kSize / 2, (q.y + 1) * kSize / 2};
  }
  std::uint64_t pick(const Vec3d& p, double region = 1) const {
    const auto w = window(p);
    return pick_ray::nearestVertex(frame, view, {w[0], w[1], region, region});
  }
};

constexpr std::uint64_t kNone = pick_ray::kNoVertex;

TEST(PickRay, NearestShownVertexUnderTheRegion) {
  struct Case {
    const char* name;
    std::vector<std::array<float, 3>> at;
    std::function<void(Scene&)> setUp;
    Vec3d click;
    double region;
    std::uint64_t expected;
  };
  const auto none = [](Scene&) {};
  const Case cases[] = {
      {"the nearer, drawn later", {{0, 0, 0}, {0, 0, 2}}, none, {0, 0, 0}, 1, 1},
      {"a tie keeps the lower index", {{5, 0, 0}, {0, 0, 1}, {0, 0, 1}}, none, {0, 0, 1}, 1, 1},
      {"the nearer hidden",
       {{0, 0, 0}, {0, 0, 2}},
       [](Scene& s) {
         s.hidden[1] = 1;
         s.frame.hidden = s.hidden.data();
       },
       {0, 0, 0},
       1,
       0},
      {"the nearer filtered out",
       {{0, 0, 0}, {0, 0, 2}},
       [](Scene& s) {
         s.filter[1] = NAN;
         s.frame.filter = s.filter.data();
         s.frame.limitNodes = true;
         s.frame.minFilter = 0;
         s.frame.maxFilter = 2;
       },
       {0, 0, 0},
       1,
       0},
      {"beside the sphere", {{0, 0, 0}}, none, {0.9, 0, 0}, 1, kNone},
      {"on a selected vertex's shell",
       {{0, 0, 0}},
       [](Scene& s) { s.selected[0] = 1; },
       {0.78, 0, 0},
       1,
       0},
      {"beside a cube the sphere would reach",
       {{0, 0, 0}},
       [](Scene& s) { s.frame.simpleShapes = true; },
       {0.45, 0, 0},
       1,
       kNone},
      {"on a cube's corner",
       {{0, 0, 0}},
       [](Scene& s) { s.frame.simpleShapes = true; },
       {0.33, 0.33, 0.34},
       1,
       0},
      {"scaled positions", {{1, 0, 0}}, [](Scene& s) { s.frame.scale = 3; }, {3, 0, 0}, 1, 0},
      {"a region reaching the vertex", {{0, 0, 0}}, none, {1.5, 0, 0}, 25, 0},
      {"the same point with a small region", {{0, 0, 0}}, none, {1.5, 0, 0}, 1, kNone},
      {"behind the eye", {{0, 0, 30}}, none, {0, 0, 30}, 1, kNone},
  };
  for (const Case& c : cases) {
    Scene scene(c.at);
    c.setUp(scene);
    EXPECT_EQ(scene.pick(c.click, c.region), c.expected) << c.name;
  }
  Scene beyondFar({{0, 0, -20}}, 30.0f);
  EXPECT_EQ(beyondFar.pick({0, 0, -20}), kNone);
}

TEST(PickRay, ManyVerticesFindTheOneUnderEachCentre) {
  // 15 x 15 vertices 1.6 apart at z = 0 before a dense wall of 20000 at
  // z = -30: each front vertex is found at its centre, the wall between them.
  std::vector<std::array<float, 3>> at;
  for (int i = 0; i < 225; ++i) {
    at.push_back({-11.2f + 1.6f * static_cast<float>(i % 15),
                  -11.2f + 1.6f * static_cast<float>(i / 15), 0});
  }
  for (int i = 0; i < 20000; ++i) {
    at.push_back(
        {-60 + 0.6f * static_cast<float>(i % 200), -30 + 0.6f * static_cast<float>(i / 200), -30});
  }
  Scene scene(at);
  for (std::uint64_t i = 0; i < 225; i += 7) {
    EXPECT_EQ(scene.pick({at[i][0], at[i][1], 0}), i);
    const std::uint64_t between = scene.pick({at[i][0] + 0.8, at[i][1] + 0.8, 0});
    EXPECT_TRUE(between >= 225 && between != kNone) << between;
  }
}

}  // namespace
