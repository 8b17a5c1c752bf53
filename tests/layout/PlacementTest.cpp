// Start layouts drawn from the shared random source, and recentre-and-rescale.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "../support/networks.h"
#include "layout/placement.h"
#include "plexora/QLORandomGenerator.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace {

using Point = std::array<double, 3>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(Placement, RandomPositionsFillTheBoxFromTheSharedSource) {
  const std::uint64_t V = 300;
  auto& random = QLORandomGenerator::sharedRandomGenerator();
  random.setSeed(5);
  // A mirrored and a collapsed axis.
  auto positions = layout::randomBoxPositions(V, 10.f, -4.f, 0.f);
  ASSERT_EQ(positions->count(), V);
  EXPECT_EQ(positions->precision(), Precision::Float);
  float low[2] = {0, 0}, high[2] = {0, 0};
  for (std::uint64_t i = 0; i < V; ++i) {
    for (int axis = 0; axis < 2; ++axis) {
      const float c = (axis == 0 ? positions->xfv() : positions->yfv())[i];
      low[axis] = std::min(low[axis], c);
      high[axis] = std::max(high[axis], c);
    }
    ASSERT_EQ(positions->zfv()[i], 0.0f);
  }
  // 300 draws reach close to both walls of each axis and never past them.
  EXPECT_TRUE(low[0] >= -10 && low[0] < -9 && high[0] <= 10 && high[0] > 9);
  EXPECT_TRUE(low[1] >= -4 && low[1] < -3.5 && high[1] <= 4 && high[1] > 3.5);
  random.setSeed(5);
  EXPECT_EQ(layout::randomBoxPositions(V, 10.f, -4.f, 0.f)->text(), positions->text());
  EXPECT_LE(std::fabs(layout::randomCubePositions(V)->zfv()[0]), 30.0f);
}

TEST(Placement, RescaleCentresAndScalesByTheLongestExtent) {
  struct Case {
    const char* what;
    std::vector<Point> input;
    std::array<float, 3> size;
    std::vector<Point> expected;
  };
  const std::vector<Case> cases = {
      {"no vertices", {}, {10, 10, 10}, {}},
      {"one vertex goes to the origin", {{3, -4, 5}}, {10, 10, 10}, {{0, 0, 0}}},
      {"coincident vertices too", {{1, 1, 1}, {1, 1, 1}}, {10, 10, 10}, {{0, 0, 0}, {0, 0, 0}}},
      // Extents 0, 2 and 4 about the centre (5, 2, 4); a negative size mirrors.
      {"each axis by its own size",
       {{5, 1, 2}, {5, 3, 6}, {5, 2, 4}},
       {7, 20, -10},
       {{0, -5, 5}, {0, 5, -5}, {0, 0, 0}}},
      // 2^24 - (-1) is 2^24 in float: the ends land exactly on -0.5 and 0.5.
      {"offsets from the minimum in float",
       {{0, -1, 0}, {0, 16777216.0, 0}},
       {1, 1, 1},
       {{0, -0.5, 0}, {0, 0.5, 0}}},
  };
  for (const Case& c : cases) {
    for (const Precision precision : {Precision::Float, Precision::Double}) {
      auto result = layout::recentredAndRescaled(*testing_support::vectorArray(c.input, precision),
                                                 c.size[0], c.size[1], c.size[2]);
      EXPECT_EQ(result->precision(), Precision::Float) << c.what;
      ASSERT_EQ(result->count(), c.expected.size()) << c.what;
      for (std::size_t i = 0; i < c.expected.size(); ++i) {
        EXPECT_EQ(result->vectorAtIndex(i), c.expected[i]) << c.what << ": vertex " << i;
      }
    }
  }
}

TEST(Placement, NaNCoordinatesBoundNothingAndStayNaN) {
  // The extremes of x lie in middle lanes of the first eight, those of z in
  // lane 0, which also takes the tail: then a vertex with NaN x and z.
  const std::vector<Point> points = {{4, 0, 2}, {2, 0, 0}, {3, 0, 0}, {8, 0, 0},  {1, 0, 0},
                                     {5, 0, 0}, {0, 0, 0}, {7, 0, 0}, {6, 0, -2}, {kNaN, 0, kNaN}};
  auto result = layout::recentredAndRescaled(*testing_support::vectorArray(points), 10, 10, 10);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point p = result->vectorAtIndex(i);
    if (std::isnan(points[i][0])) {
      EXPECT_TRUE(std::isnan(p[0]) && p[1] == 0 && std::isnan(p[2])) << "vertex " << i;
    } else {
      EXPECT_EQ(p, (Point{(points[i][0] - 4) * 1.25, 0, points[i][2] * 1.25})) << "vertex " << i;
    }
  }
}
