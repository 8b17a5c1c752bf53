// Start layouts drawn from the shared random source, and recentre-and-rescale.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "layout/placement.h"
#include "plexora/QLORandomGenerator.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace {

using Point = std::array<double, 3>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::shared_ptr<QLOVector3dArray> positionsOf(const std::vector<Point>& points,
                                              Precision precision = Precision::Float) {
  auto positions = QLOVector3dArray::initWithSize(points.size(), precision);
  for (std::size_t i = 0; i < points.size(); ++i) positions->setVector(points[i], i);
  return positions;
}

std::array<std::vector<float>, 3> planesOf(const QLOVector3dArray& positions) {
  return {positions.xfv(), positions.yfv(), positions.zfv()};
}

void expectSamePositions(const QLOVector3dArray& actual, const QLOVector3dArray& expected) {
  ASSERT_EQ(actual.count(), expected.count());
  const auto a = planesOf(actual);
  const auto e = planesOf(expected);
  for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(a[axis], e[axis]) << "axis " << axis;
}

void seed(std::uint64_t value) {
  QLORandomGenerator::sharedRandomGenerator().setSeed(value);
}

}  // namespace

TEST(PlacementRandom, CubeFillsMinus30To30OnEachAxis) {
  seed(11);
  const std::uint64_t V = 2000;
  auto positions = layout::randomCubePositions(V);
  ASSERT_TRUE(positions);
  ASSERT_EQ(positions->count(), V);
  EXPECT_EQ(positions->precision(), Precision::Float);
  for (const auto& plane : planesOf(*positions)) {
    const auto [low, high] = std::minmax_element(plane.begin(), plane.end());
    EXPECT_GE(*low, -30.0f);
    EXPECT_LT(*high, 30.0f);
    // 2000 uniform draws leave no gap of a whole unit at either end.
    EXPECT_LT(*low, -29.0f);
    EXPECT_GT(*high, 29.0f);
  }
  EXPECT_EQ(layout::randomCubePositions(0)->count(), 0u);
  EXPECT_EQ(layout::randomBoxPositions(0, 1, 2, 3)->count(), 0u);
}

TEST(PlacementRandom, SeededDrawsAreReproducibleAndTakenXThenYThenZ) {
  const std::uint64_t V = 300;
  seed(5);
  auto first = layout::randomCubePositions(V);
  seed(5);
  auto again = layout::randomCubePositions(V);
  seed(6);
  auto other = layout::randomCubePositions(V);
  expectSamePositions(*again, *first);
  EXPECT_NE(other->xfv(), first->xfv());

  // The same seed drawn by hand: three arrays of V, in axis order.
  seed(5);
  auto& random = QLORandomGenerator::sharedRandomGenerator();
  const auto x = random.newRandomFloatArrayWithCount(V);
  const auto y = random.newRandomFloatArrayWithCount(V);
  const auto z = random.newRandomFloatArrayWithCount(V);
  const auto planes = planesOf(*first);
  const QLONumberArray* draws[3] = {x.get(), y.get(), z.get()};
  for (int axis = 0; axis < 3; ++axis) {
    for (std::uint64_t i = 0; i < V; ++i) {
      const double u = draws[axis]->doubleValueAtIndex(i);
      // Within a rounding of 60 u (2^-19 near 60).
      ASSERT_NEAR(planes[axis][i], 60.0 * u - 30.0, 4e-6) << "axis " << axis << " vertex " << i;
    }
  }
}

TEST(PlacementRandom, BoxSpansEachAxisSize) {
  const std::vector<std::array<float, 3>> sizes = {
      {10, 10, 0}, {1, 250, 0.5f}, {-10, 5, -2}, {0, 0, 0}};
  for (const auto& size : sizes) {
    seed(21);
    auto positions = layout::randomBoxPositions(2000, size[0], size[1], size[2]);
    ASSERT_TRUE(positions);
    ASSERT_EQ(positions->count(), 2000u);
    EXPECT_EQ(positions->precision(), Precision::Float);
    const auto planes = planesOf(*positions);
    for (int axis = 0; axis < 3; ++axis) {
      const float half = std::fabs(size[axis]);
      const auto [low, high] = std::minmax_element(planes[axis].begin(), planes[axis].end());
      SCOPED_TRACE(testing::Message() << "size " << size[axis] << " axis " << axis);
      EXPECT_GE(*low, -half);
      EXPECT_LE(*high, half);
      if (half == 0) {
        EXPECT_EQ(*low, 0.0f);
        EXPECT_EQ(*high, 0.0f);
      } else {
        EXPECT_LT(*low, -0.95f * half);
        EXPECT_GT(*high, 0.95f * half);
      }
    }
  }
}

TEST(PlacementRandom, BoxMirrorsNegativeSizesAndMatchesTheCube) {
  seed(9);
  auto box = layout::randomBoxPositions(500, 10, -4, 2);
  seed(9);
  auto mirrored = layout::randomBoxPositions(500, -10, 4, -2);
  const auto a = planesOf(*box);
  const auto b = planesOf(*mirrored);
  for (int axis = 0; axis < 3; ++axis) {
    for (std::size_t i = 0; i < a[axis].size(); ++i) {
      ASSERT_EQ(b[axis][i], -a[axis][i]) << "axis " << axis << " vertex " << i;
    }
  }

  seed(9);
  auto cube = layout::randomCubePositions(500);
  seed(9);
  auto box30 = layout::randomBoxPositions(500, 30, 30, 30);
  expectSamePositions(*box30, *cube);
}

TEST(PlacementRescale, SmallLayouts) {
  // Three points on the plane z = 5 spanning x 2..6 and y 1..3: M = 4.
  const std::vector<Point> plane = {{2, 1, 5}, {6, 3, 5}, {4, 2, 5}};
  struct Case {
    const char* what;
    std::vector<Point> input;
    std::array<float, 3> size;
    std::vector<Point> expected;
  };
  const std::vector<Case> cases = {
      {"one vertex goes to the origin", {{3, -4, 5}}, {10, 10, 10}, {{0, 0, 0}}},
      {"coincident vertices go to the origin",
       {{1, 1, 1}, {1, 1, 1}},
       {10, 10, 10},
       {{0, 0, 0}, {0, 0, 0}}},
      {"flat layout keeps its proportions",
       plane,
       {10, 10, 10},
       {{-5, -2.5, 0}, {5, 2.5, 0}, {0, 0, 0}}},
      {"each axis scales by its own size", plane, {10, 20, 7}, {{-5, -5, 0}, {5, 5, 0}, {0, 0, 0}}},
      {"a negative size mirrors its axis",
       plane,
       {-10, 10, 10},
       {{5, -2.5, 0}, {-5, 2.5, 0}, {0, 0, 0}}},
      {"no vertices", {}, {10, 10, 10}, {}},
  };
  for (const Case& c : cases) {
    auto result =
        layout::recentredAndRescaled(*positionsOf(c.input), c.size[0], c.size[1], c.size[2]);
    ASSERT_TRUE(result) << c.what;
    EXPECT_EQ(result->precision(), Precision::Float) << c.what;
    ASSERT_EQ(result->count(), c.expected.size()) << c.what;
    for (std::size_t i = 0; i < c.expected.size(); ++i) {
      const Point actual = result->vectorAtIndex(i);
      for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(actual[axis], c.expected[i][axis])
            << c.what << ": vertex " << i << " axis " << axis;
      }
    }
  }
}

TEST(PlacementRescale, NaNCoordinatesStayNaNAndBoundNothing) {
  // x = 0..8 on the x axis, then a vertex with NaN x and z: the box is
  // x 0..8, so x maps to (x - 4) * 10 / 8 and y, z to 0. The NaN comes last,
  // where a running bound that let it through would keep it.
  std::vector<Point> points;
  for (int x = 0; x <= 8; ++x) points.push_back({static_cast<double>(x), 0, 0});
  points.push_back({kNaN, 0, kNaN});
  auto result = layout::recentredAndRescaled(*positionsOf(points), 10, 10, 10);
  ASSERT_TRUE(result);
  ASSERT_EQ(result->count(), points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point actual = result->vectorAtIndex(i);
    if (std::isnan(points[i][0])) {
      EXPECT_TRUE(std::isnan(actual[0])) << "vertex " << i;
    } else {
      EXPECT_EQ(actual[0], (points[i][0] - 4) * 1.25) << "vertex " << i;
    }
    EXPECT_EQ(actual[1], 0.0) << "vertex " << i;
    EXPECT_EQ(std::isnan(actual[2]), std::isnan(points[i][2])) << "vertex " << i;
    if (!std::isnan(points[i][2])) {
      EXPECT_EQ(actual[2], 0.0) << "vertex " << i;
    }
  }
}

TEST(PlacementRescale, LongestExtentSpansItsSizeAndProportionsHold) {
  // Random points in a box of extents 8, 2 and 1 away from the origin.
  seed(3);
  const std::uint64_t V = 1000;
  auto unit = layout::randomBoxPositions(V, 0.5f, 0.5f, 0.5f);  // -0.5..0.5
  std::vector<Point> points;
  for (std::uint64_t i = 0; i < V; ++i) {
    const Point u = unit->vectorAtIndex(i);
    points.push_back({3 + 8 * u[0], -7 + 2 * u[1], 100 + u[2]});
  }
  auto input = positionsOf(points);
  const auto in = planesOf(*input);

  const float size = 40;
  auto result = layout::recentredAndRescaled(*input, size, size, size);
  ASSERT_TRUE(result);
  ASSERT_EQ(result->count(), V);
  const auto out = planesOf(*result);

  // Each axis: q' = (q - centre) / M * size, M the x extent (about 8).
  const auto [x0, x1] = std::minmax_element(in[0].begin(), in[0].end());
  const double M = *x1 - *x0;
  for (int axis = 0; axis < 3; ++axis) {
    const auto [low, high] = std::minmax_element(in[axis].begin(), in[axis].end());
    const double centre = (static_cast<double>(*low) + *high) / 2;
    for (std::uint64_t i = 0; i < V; ++i) {
      ASSERT_NEAR(out[axis][i], (in[axis][i] - centre) / M * size, 1e-5 * size)
          << "axis " << axis << " vertex " << i;
    }
  }
  const auto [y0, y1] = std::minmax_element(out[0].begin(), out[0].end());
  EXPECT_FLOAT_EQ(*y1 - *y0, size);
}

TEST(PlacementRescale, ExtremesLandExactlyOnTheHalfSizes) {
  // 2^24 - (-1) rounds to 2^24 in float, so the offsets from the minimum are
  // 0 and 2^24 = the extent, and the ends map to exactly -0.5 and 0.5 of the
  // size. Offsets taken in double would put the top end at 0.5 + 2^-24.
  auto input = positionsOf({{-1, 0, 0}, {16777216.0, 0, 0}});
  auto result = layout::recentredAndRescaled(*input, 1, 1, 1);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->xfv(), (std::vector<float>{-0.5f, 0.5f}));
}

TEST(PlacementRescale, DoubleInputGivesAFloatResultAndStaysUntouched) {
  const std::vector<Point> points = {{0.1, -3, 2}, {7.25, 1e-3, -2}, {4, 4, 4}, {-1, 0.5, 0}};
  auto input = positionsOf(points, Precision::Double);
  const std::string before = input->text();

  auto result = layout::recentredAndRescaled(*input, 6, 6, 6);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->precision(), Precision::Float);
  EXPECT_EQ(input->precision(), Precision::Double);
  EXPECT_EQ(input->text(), before);

  // The same layout held in floats rescales to the same result, and stays
  // untouched too.
  auto asFloats = QLOVector3dArray::initWithVector3dArray(*input, Precision::Float);
  const std::string floatsBefore = asFloats->text();
  auto fromFloats = layout::recentredAndRescaled(*asFloats, 6, 6, 6);
  expectSamePositions(*result, *fromFloats);
  EXPECT_EQ(asFloats->text(), floatsBefore);
}
