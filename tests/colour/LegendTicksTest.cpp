// Readable legend ticks: round linear steps, decades, labels free of
// floating-point noise, and their places on the bar.
#include <gtest/gtest.h>

#include <vector>

#include "colour/legendticks.h"

using namespace colour;

namespace {

std::vector<std::string> labels(const std::vector<Tick>& ticks) {
  std::vector<std::string> out;
  for (const Tick& t : ticks) out.push_back(t.label);
  return out;
}

}  // namespace

TEST(ReadableTicks, RangesGiveRoundLabels) {
  struct Case {
    double lo, hi;
    TickScale scale;
    std::vector<std::string> expected;
  };
  const TickScale lin = TickScale::Linear, log = TickScale::Logarithmic;
  const Case cases[] = {
      {0, 10, lin, {"0", "2", "4", "6", "8", "10"}},
      {0, 1, lin, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}},
      {0.1f, 0.3f, lin, {"0.10", "0.15", "0.20", "0.25", "0.30"}},  // float limits
      {-7.5, -1.2, lin, {"-7", "-6", "-5", "-4", "-3", "-2"}},
      {10, 0, lin, {"0", "2", "4", "6", "8", "10"}},  // either order
      {1, 1.0000004, lin, {"1.0000000", "1.0000001", "1.0000002", "1.0000003", "1.0000004"}},
      {0.00001, 0.00005, lin, {"1e-05", "2e-05", "3e-05", "4e-05", "5e-05"}},
      {0, 25e6, lin, {"0", "5e+06", "1e+07", "1.5e+07", "2e+07", "2.5e+07"}},
      {4.2, 4.2, lin, {"4.2"}},
      {1, 1000, log, {"1", "", "", "", "",    "", "", "", "", "10", "", "", "", "",
                      "",  "", "", "", "100", "", "", "", "", "",   "", "", "", "1000"}},
      {0.01, 0.5, log, {"0.01", "", "", "", "", "", "", "", "", "0.1", "", "", "", ""}},
      {1, 1e12, log, {"1", "100", "10000", "1e6", "1e8", "1e10", "1e12"}},
      {2, 8, log, {"2", "3", "4", "5", "6", "7", "8"}},      // < 1 decade: linear
      {-5, 100, log, {"0", "20", "40", "60", "80", "100"}},  // not positive: linear
  };
  for (const Case& c : cases) {
    EXPECT_EQ(labels(readableTicks(c.lo, c.hi, c.scale)), c.expected) << c.lo << " .. " << c.hi;
  }
}

TEST(ReadableTicks, ValuesAreInsideTheRangeAndAscend) {
  const double ranges[][2] = {{0.13, 0.91}, {-1234.5, 987.6}, {3.3, 3.31}, {1e-9, 7e-9}, {5, 1e5}};
  for (const auto& r : ranges) {
    for (const TickScale scale : {TickScale::Linear, TickScale::Logarithmic}) {
      const std::vector<Tick> ticks = readableTicks(r[0], r[1], scale);
      ASSERT_FALSE(ticks.empty());
      int labelled = 0;
      for (std::size_t i = 0; i < ticks.size(); ++i) {
        EXPECT_GE(ticks[i].value, r[0] * (1 - 1e-9));
        EXPECT_LE(ticks[i].value, r[1] * (1 + 1e-9));
        if (i > 0) {
          EXPECT_GT(ticks[i].value, ticks[i - 1].value);
        }
        labelled += !ticks[i].label.empty();
      }
      if (scale == TickScale::Linear) {
        EXPECT_GE(labelled, 4) << r[0];
        EXPECT_LE(labelled, 7) << r[0];
      }
    }
  }
}

TEST(LegendBarTicks, PlacedWhereTheirColourIs) {
  const std::vector<BarTick> linear = legendBarTicks({0, 10}, ColorFunction::Linear, 2);
  ASSERT_EQ(linear.size(), 6u);
  EXPECT_FLOAT_EQ(linear[1].at, 0.2f);
  EXPECT_EQ(linear[1].label, "2");
  // Squared: the value 6 of 0..10 sits at 0.6 squared.
  const std::vector<BarTick> power = legendBarTicks({0, 10}, ColorFunction::Power, 2);
  EXPECT_FLOAT_EQ(power[3].at, 0.36f);
  EXPECT_EQ(legendBarTicks({3, 3}, ColorFunction::Linear, 2).front().at, 0.5f);
}
