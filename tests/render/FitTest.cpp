// Framing without GL: after a fit every point projects inside the viewport
// and the points fill most of it; the rectangle selection; the view's fit,
// find and selection tools on small networks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "../support/networks.h"
#include "render/VXLNetworkView.h"
#include "render/fit.h"

namespace {

std::vector<Vec3d> cloud(Vec3d centre, Vec3d half, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  std::vector<Vec3d> points(300);
  for (Vec3d& p : points) {
    for (int a = 0; a < 3; ++a) p[a] = centre[a] + half[a] * unit(random);
  }
  return points;
}

// The largest |x| or |y| in device coordinates, the picture's middle (both
// 0 when it is centred), and whether every point lies in front of the near
// plane.
struct Extent {
  double largest = 0;
  double lowX = 1e9, highX = -1e9, lowY = 1e9, highY = -1e9;
  bool inFront = true;
  double middleX() const { return (lowX + highX) / 2; }
  double middleY() const { return (lowY + highY) / 2; }
};
Extent extentAfter(const VXLCamera& cam, const Rotation& world, const std::vector<Vec3d>& points,
                   float nearClip) {
  const Matrix4 projection = camera::frustumMatrix(camera::frustum(cam, nearClip, 1e9f));
  const Matrix4 view = camera::modelView(cam, std::nullopt, world, Rotation{});
  Extent e;
  for (const Vec3d& p : points) {
    const camera::Projected q = camera::project(projection, view, p);
    e.largest = std::max({e.largest, std::abs(q.x), std::abs(q.y)});
    e.lowX = std::min(e.lowX, q.x);
    e.highX = std::max(e.highX, q.x);
    e.lowY = std::min(e.lowY, q.y);
    e.highY = std::max(e.highY, q.y);
    e.inFront = e.inFront && q.depth > nearClip;
  }
  return e;
}

}  // namespace

TEST(Fit, EveryPointInsideAndTheExtentFillsTheView) {
  struct Case {
    const char* what;
    int width, height;
    double aperture;
    Rotation world;
    Vec3d centre, half;
  };
  const Case cases[] = {
      {"square view, cloud at the origin", 400, 400, 65, {}, {0, 0, 0}, {10, 10, 10}},
      {"deep cloud, near side larger", 800, 600, 65, {25, 1, 1, 0}, {0, 0, 0}, {30, 5, 60}},
      {"wide view, far off-centre cloud", 1200, 300, 65, {}, {500, -300, 40}, {3, 1, 2}},
      {"huge network", 640, 480, 65, {30, 1, 0, 0}, {0, 0, 0}, {5000, 4000, 3000}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    VXLCamera cam;
    cam.viewWidth = c.width;
    cam.viewHeight = c.height;
    cam.aperture = c.aperture;
    const std::vector<Vec3d> points = cloud(c.centre, c.half, 3);
    const Vec3d directionBefore = cam.direction;
    ASSERT_TRUE(camera::fitCamera(cam, camera::rotationMatrix(c.world), points, 1.0f));
    const Extent e = extentAfter(cam, c.world, points, 1.0f);
    EXPECT_TRUE(e.inFront);
    EXPECT_LE(e.largest, 1.0);
    EXPECT_GT(e.largest, 0.85);
    EXPECT_NEAR(e.middleX(), 0, 1e-9);
    EXPECT_NEAR(e.middleY(), 0, 1e-9);
    // The viewing direction is kept; only its length follows the distance.
    const double len = std::hypot(cam.direction[0], cam.direction[1], cam.direction[2]);
    const double lenBefore = std::hypot(directionBefore[0], directionBefore[1], directionBefore[2]);
    for (int a = 0; a < 3; ++a) {
      EXPECT_NEAR(cam.direction[a] / len, directionBefore[a] / lenBefore, 1e-12);
    }
  }
  // One vertex: drawn as a ball clear of the near plane, in a region of the
  // minimum size rather than filling the view.
  VXLCamera one;
  one.viewWidth = one.viewHeight = 100;
  const std::vector<Vec3d> lone = {{10, 10, 10}};
  ASSERT_TRUE(camera::fitCamera(one, camera::rotationMatrix({}), lone, 1.0f, {0.0, 0.8, 4.0}));
  const Extent edge = extentAfter(one, {}, {{10, 14, 10}}, 1.8f);
  EXPECT_TRUE(edge.inFront);
  EXPECT_NEAR(edge.largest, 1.0, 1e-9);

  VXLCamera untouched;
  EXPECT_FALSE(camera::fitCamera(untouched, camera::rotationMatrix({}), {}, 1.0f));
  EXPECT_EQ(untouched.position, VXLCamera{}.position);
}

TEST(Fit, PointsInRectangle) {
  VXLCamera cam;
  cam.viewWidth = cam.viewHeight = 100;
  const std::vector<Vec3d> points = {{0, 0, 0}, {10, 10, 0}, {-10, 0, 0}, {0, 0, 200}};
  const Matrix4 projection = camera::frustumMatrix(camera::frustum(cam, 1.0f, 1000.0f));
  const Matrix4 view = camera::modelView(cam, std::nullopt, Rotation{}, Rotation{});
  // The right upper quarter holds (10, 10) only; corners may come in any
  // order; the point behind the eye never counts.
  EXPECT_EQ(camera::pointsInRectangle(projection, view, points, 1, 1, 0.01, 0.01),
            (std::vector<std::uint64_t>{1}));
  EXPECT_EQ(camera::pointsInRectangle(projection, view, points, -1, -1, 1, 1),
            (std::vector<std::uint64_t>{0, 1, 2}));
}

TEST(ViewTools, FitFollowsShownVerticesAndNewNetworksAreFramed) {
  VXLNetworkView view;
  auto network = testing_support::chain({1, 1, 1, 1});  // 5 vertices
  view.setNetwork(network);
  auto positions = QLOVector3dArray::initWithSize(5, Precision::Float);
  for (std::uint64_t v = 0; v < 5; ++v) positions->setVector({double(v) * 10, 0, 0}, v);
  positions->setVector({1000, 0, 0}, 4);
  view.setPositions(positions);
  VXLCamera cam = view.camera();
  cam.viewWidth = cam.viewHeight = 200;
  view.setCamera(cam);
  view.animationTimer();  // a new network is framed at the next tick
  EXPECT_NEAR(view.camera().rotationCenter[0], 500, 1e-3);

  // Hidden by the filter: vertex 4 (degree 1 like vertex 0, so filter on
  // degree 2 and hide both ends).
  view.setMinFilterProperty(2);
  view.setMaxFilterProperty(2);
  view.prepareFrame();
  EXPECT_EQ(view.shownVertices(), (std::vector<std::uint64_t>{1, 2, 3}));
  ASSERT_TRUE(view.zoomToFit());
  EXPECT_NEAR(view.camera().rotationCenter[0], 20, 1e-3);

  view.setSelectedVertices({1});
  ASSERT_TRUE(view.frameSelection());
  EXPECT_NEAR(view.camera().rotationCenter[0], 10, 1e-3);
  view.setSelectedVertices({4});  // selected but filtered out
  EXPECT_FALSE(view.frameSelection());

  // Vertices drawn ten times the standard size are framed whole.
  view.setSizeProperty("Node Degree");
  view.setSizeRange({10, 10});
  ASSERT_TRUE(view.zoomToFit());
  const VXLCamera fitted = view.camera();
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(fitted, view.nearClipDistance(), 1e9f));
  const Matrix4 eye =
      camera::modelView(fitted, std::nullopt, view.worldRotation(), view.objectRotation());
  const double s = view.scale(), radius = 0.7 * 10;
  for (const double x : {10 * s - radius, 30 * s + radius}) {  // the end balls' outer edges
    EXPECT_LE(std::abs(camera::project(projection, eye, {x, 0, 0}).x), 1.0) << x;
  }

  // Framed for a wide picture, the chain spans its width; the view keeps
  // its own size.
  view.setSizeProperty("None");
  ASSERT_TRUE(view.zoomToFit(400, 200));
  VXLCamera wide = view.camera();
  EXPECT_EQ(wide.viewWidth, 200);
  wide.viewWidth = 400;
  wide.viewHeight = 200;
  const Matrix4 wideProjection =
      camera::frustumMatrix(camera::frustum(wide, view.nearClipDistance(), 1e9f));
  const Matrix4 wideEye =
      camera::modelView(wide, std::nullopt, view.worldRotation(), view.objectRotation());
  const double edge = std::abs(camera::project(wideProjection, wideEye, {30 * s + 0.8, 0, 0}).x);
  EXPECT_GT(edge, 0.8);
  EXPECT_LE(edge, 1.0);
}

TEST(ViewTools, SelectAllInvertNeighboursAndFind) {
  NetworkData data;
  data.verticesCount = 5;
  data.from = {0, 3, 3};
  data.to = {1, 1, 4};
  data.directed = true;
  data.properties.emplace_back(
      "Name", std::make_shared<TextList>(TextList{"Alpha", "beta", "Gamma", "ALPHABET", "x"}));
  data.properties.emplace_back("Kind",
                               std::make_shared<TextList>(TextList{"", "", "", "", "alpine"}));
  auto degrees = QLONumberArray::initWithCount(5, NumberType::Double);
  degrees->setDoubleValue(7, 2);
  data.properties.emplace_back("Weightish", degrees);
  VXLNetworkView view;
  view.setNetwork(QLONetwork::make(std::move(data)));

  EXPECT_EQ(view.findVertices("alp"), (std::vector<std::uint64_t>{0, 3, 4}));
  EXPECT_EQ(view.findVertices("BET"), (std::vector<std::uint64_t>{1, 3}));
  EXPECT_TRUE(
      view.findVertices("7").empty());  // neither number properties nor, with names, numbers
  EXPECT_TRUE(view.findVertices("").empty());

  view.setSelectedVertices({1});
  view.selectNeighbours();  // 1 has in-edges from 0 and 3
  EXPECT_EQ(view.selectedIndices(), (std::vector<std::uint64_t>{0, 1, 3}));
  view.selectNeighbours();  // one more step reaches 4 through 3
  EXPECT_EQ(view.selectedIndices(), (std::vector<std::uint64_t>{0, 1, 3, 4}));
  view.invertSelection();
  EXPECT_EQ(view.selectedIndices(), (std::vector<std::uint64_t>{2}));
  view.selectAll();
  EXPECT_EQ(view.selectedIndices().size(), 5u);

  // Without names the vertex numbers are searched, as the labels show them.
  auto unnamed = testing_support::chain(std::vector<float>(12, 1.0f));  // 13 vertices
  unnamed->setPropertiesOfVertices(std::make_shared<TextList>(TextList(13, "x")), "Kind");
  view.setNetwork(unnamed);
  EXPECT_EQ(view.findVertices("1"), (std::vector<std::uint64_t>{1, 10, 11, 12}));
  EXPECT_EQ(view.findVertices("X").size(), 13u);
}
