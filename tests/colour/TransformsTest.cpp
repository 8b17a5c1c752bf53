// Scalar transforms: limits, each function's curve and constants, inverses.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "colour/transforms.h"

using namespace colour;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<float> forward(const std::vector<float>& values, std::string_view function,
                           TransformSettings settings = {}) {
  return newVectorFromVectorWithTransformFunction(values.data(), values.size(), function, settings);
}

std::vector<float> inverse(const std::vector<float>& values, std::string_view function,
                           float power = 2.0f) {
  return newVectorFromVectorWithInverseTransformFunction(values.data(), values.size(), function,
                                                         power);
}

}  // namespace

TEST(ResolveLimits, EachUnsetLimitComesFromTheData) {
  const std::vector<float> values{3.0f, -2.0f, 7.5f, 1.0f};
  struct Case {
    float min, max, wantMin, wantMax;
  };
  const Case cases[] = {
      {kUnsetLimit, kUnsetLimit, -2.0f, 7.5f},
      {0.0f, kUnsetLimit, 0.0f, 7.5f},
      {kUnsetLimit, 5.0f, -2.0f, 5.0f},
      // The sentinel is +FLT_MAX only; -FLT_MAX is an ordinary user limit.
      {-FLT_MAX, kUnsetLimit, -FLT_MAX, 7.5f},
  };
  for (const Case& c : cases) {
    const ScalarLimits limits = resolveLimits(values.data(), values.size(), {c.min, c.max, 2.0f});
    EXPECT_EQ(limits.min, c.wantMin);
    EXPECT_EQ(limits.max, c.wantMax);
  }
  // No values: the stored limits stay as they are.
  const ScalarLimits empty = resolveLimits(nullptr, 0, {});
  EXPECT_EQ(empty.min, kUnsetLimit);
  EXPECT_EQ(empty.max, kUnsetLimit);
  EXPECT_TRUE(forward({}, "Linear").empty());
}

TEST(ForwardTransform, LinearNormalisesWithoutClamping) {
  EXPECT_EQ(forward({2.0f, 4.0f, 3.0f, 10.0f}, "Linear"),
            (std::vector<float>{0.0f, 0.25f, 0.125f, 1.0f}));
  // User limits narrower than the data put values outside [0, 1].
  EXPECT_EQ(forward({0.0f, 5.0f, 20.0f}, "Linear", {4.0f, 8.0f, 2.0f}),
            (std::vector<float>{-1.0f, 0.25f, 4.0f}));
}

TEST(ForwardTransform, EqualValuesAndNaNGiveNaN) {
  for (const std::string& function : colorFunctionNames()) {
    SCOPED_TRACE(function);
    for (float t : forward({4.0f, 4.0f, 4.0f}, function)) EXPECT_TRUE(std::isnan(t));
    // A NaN value among others is passed on; the limits come from the rest.
    const std::vector<float> mixed = forward({0.0f, kNaN, 2.0f}, function);
    EXPECT_TRUE(std::isnan(mixed[1]));
    EXPECT_FALSE(std::isnan(mixed[0]));
    EXPECT_FALSE(std::isnan(mixed[2]));
  }
}

// Expected curves evaluated in double precision with the same constants, in
// Python: 1 + (0.003999956490252552 - 0.004000000189989805**t) * 1.004016064448547,
// 1 + (0.03999999910593033**t * -1.0416666656965388 + 0.041611315948452667).
TEST(ForwardTransform, ExponentialCurvesMatchTheirConstants) {
  // Property values chosen so that t = 0, 0.1, 0.5, 1, -0.2, 1.5 with limits [0, 10].
  const std::vector<float> values{0.0f, 1.0f, 5.0f, 10.0f, -2.0f, 15.0f};
  const TransformSettings limits{0.0f, 10.0f, 2.0f};
  struct Case {
    const char* function;
    std::vector<double> expected;
  };
  const Case cases[] = {
      {"Exponential", {-4.387524e-08, 0.425991, 0.9405165, 1.0, -2.025189, 1.003762}},
      {"Exponential10", {-5.534975e-05, 0.2866325, 0.833278, 0.9999447, -0.9413615, 1.033278}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.function);
    const std::vector<float> got = forward(values, c.function, limits);
    for (std::size_t i = 0; i < values.size(); ++i) {
      EXPECT_NEAR(got[i], c.expected[i], 3e-7 * std::max(1.0, std::fabs(c.expected[i])))
          << "t index " << i;
    }
  }
}

TEST(ForwardTransform, LogarithmicAndPower) {
  const std::vector<float> values{0.0f, 1.0f, 3.0f, 4.0f};  // t = 0, 0.25, 0.75, 1
  const std::vector<float> log = forward(values, "Logarithmic");
  EXPECT_FLOAT_EQ(log[1], std::log2(1.25f));
  EXPECT_FLOAT_EQ(log[3], 1.0f);
  const std::vector<float> cube = forward(values, "Power", {kUnsetLimit, kUnsetLimit, 3.0f});
  EXPECT_FLOAT_EQ(cube[1], 0.015625f);
  EXPECT_FLOAT_EQ(cube[2], 0.421875f);

  // Outside the interval: negative t under a fractional power and t below -1
  // under the logarithm are NaN; an integer power extrapolates.
  const TransformSettings narrow{10.0f, 11.0f, 0.5f};
  EXPECT_TRUE(std::isnan(forward({9.0f}, "Power", narrow)[0]));
  EXPECT_FLOAT_EQ(forward({9.0f}, "Power", {10.0f, 11.0f, 2.0f})[0], 1.0f);
  EXPECT_TRUE(std::isnan(forward({8.0f}, "Logarithmic", narrow)[0]));
  EXPECT_FLOAT_EQ(forward({12.0f}, "Logarithmic", narrow)[0], std::log2(3.0f));
}

// Expected inverses evaluated in double precision, in Python:
// 0 if 1 - y == 1 else math.log(1 - y + offset) * scale + shift, with the
// (offset, scale, shift) of each function.
TEST(InverseTransform, ExponentialInversesUseTheirConstants) {
  const std::vector<float> y{0.0f, 0.1f, 0.5f, 0.9f, 1.0f};
  struct Case {
    const char* function;
    std::vector<double> expected;
  };
  const Case cases[] = {
      {"Exponential", {0.0, 0.01426761, 0.12008, 0.4058854, 0.9952681}},
      {"Exponential10", {0.0, -0.0221314, 0.1496814, 0.5664301, 0.9469089}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.function);
    const std::vector<float> got = inverse(y, c.function);
    EXPECT_EQ(got[0], 0.0f);  // exactly
    for (std::size_t i = 1; i < y.size(); ++i) EXPECT_NEAR(got[i], c.expected[i], 3e-7);
    EXPECT_EQ(inverse({kNaN}, c.function)[0], 0.0f);  // unordered reads as 0
  }
}

TEST(InverseTransform, OtherFunctions) {
  EXPECT_FLOAT_EQ(inverse({1.0f}, "Logarithmic")[0], std::exp(1.0f));  // e, not 1
  EXPECT_FLOAT_EQ(inverse({0.125f}, "Power", 3.0f)[0], 0.5f);
  const std::vector<float> y{-0.5f, 0.3f, 2.0f};
  EXPECT_EQ(inverse(y, "Linear"), y);
  EXPECT_EQ(inverse(y, "Unknown"), y);
}
