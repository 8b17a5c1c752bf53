// Hexadecimal colour text in both directions, including text that is not a
// colour.
#include <gtest/gtest.h>

#include <limits>

#include "colour/hexcolour.h"

using namespace colour;

TEST(ColorFromHexadecimalValue, ScansLikeAHexadecimalNumber) {
  struct Case {
    const char* text;
    unsigned rgb;  // expected 0xRRGGBB
  };
  const Case cases[] = {
      {"#1F77B4", 0x1F77B4},
      {"ff7f0e", 0xFF7F0E},  // "#" and case are optional
      {"", 0},
      {"#zz1234", 0},               // no leading digit: nothing scanned
      {"#80FF7F0E", 0xFF7F0E},      // eight digits: the first byte is dropped
      {"#123456789ABC", 0xFFFFFF},  // too large for 32 bits: all bits set
      {"#0x2CA02C", 0x2CA02C},      // a "0x" prefix is read as such
      {"#abc", 0x000ABC},           // three digits are a number, not a shorthand
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const Rgba got = colorFromHexadecimalValue(c.text);
    EXPECT_EQ(got.r, static_cast<float>(((c.rgb >> 16) & 0xFF) * 0.00392156862745098));
    EXPECT_EQ(got.g, static_cast<float>(((c.rgb >> 8) & 0xFF) * 0.00392156862745098));
    EXPECT_EQ(got.b, static_cast<float>((c.rgb & 0xFF) * 0.00392156862745098));
    EXPECT_EQ(got.a, 1.0f);
  }
}

TEST(HexadecimalValue, LowerCaseTwoDigitsEachAndRoundTrips) {
  EXPECT_EQ(hexadecimalValue(colorFromHexadecimalValue("#1F77B4")), "#1f77b4");
  EXPECT_EQ(hexadecimalValue({0.0f, 0.0f, 0.0f, 0.0f}), "#000000");
  // Every byte survives the trip through a float colour, in every channel.
  for (unsigned byte = 0; byte < 256; ++byte) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", byte, 255 - byte, byte ^ 0x5A);
    ASSERT_EQ(hexadecimalValue(colorFromHexadecimalValue(text)), text);
  }
  // Components just below a step truncate rather than round.
  EXPECT_EQ(hexadecimalValue({0.999f, 0.5f, 0.0039f, 1.0f}), "#ff7f00");
  // Out of range components stay two digits.
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(hexadecimalValue({-0.2f, 1.7f, nan, 1.0f}), "#00ff00");
}
