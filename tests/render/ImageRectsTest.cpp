// A picture turned into rectangles for documents that carry no pictures.
#include <gtest/gtest.h>

#include <vector>

#include "render/imagerects.h"

namespace {

using image_rects::rectangles;
using Rgb = std::array<float, 3>;
constexpr Rgb kWhite{1, 1, 1};

std::vector<float> picture(int width, int height, Rgb (*colourAt)(int x, int y)) {
  std::vector<float> rgb;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Rgb c = colourAt(x, y);
      rgb.insert(rgb.end(), c.begin(), c.end());
    }
  }
  return rgb;
}

// Swatches on white with a gradient bar below: every pixel not white is
// covered by exactly one rectangle of its colour, and white by none.
TEST(ImageRects, CoverEveryPixelOnceWithItsColour) {
  constexpr int w = 23, h = 17;
  const auto colourAt = [](int x, int y) -> Rgb {
    if (y >= 12) return {static_cast<float>(x) / 22.0f, 0.5f, 0.0f};  // the bar
    if (y % 4 == 0 || x % 6 == 0) return kWhite;                      // gaps
    return {0.1f * static_cast<float>(y / 4), 0.2f * static_cast<float>(x / 6), 1.0f};
  };
  const std::vector<float> rgb = picture(w, h, colourAt);
  std::vector<int> covered(w * h, 0);
  for (const auto& r : rectangles(w, h, rgb.data(), kWhite)) {
    ASSERT_TRUE(0 <= r.x0 && r.x0 < r.x1 && r.x1 <= w && 0 <= r.y0 && r.y0 < r.y1 && r.y1 <= h);
    for (int y = r.y0; y < r.y1; ++y) {
      for (int x = r.x0; x < r.x1; ++x) {
        EXPECT_EQ(r.rgb, colourAt(x, y)) << x << "," << y;
        ++covered[static_cast<std::size_t>(y * w + x)];
      }
    }
  }
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      EXPECT_EQ(covered[static_cast<std::size_t>(y * w + x)], colourAt(x, y) == kWhite ? 0 : 1)
          << x << "," << y;
    }
  }
}

// Rows alike join: a bar of 5 columns and 3 rows is 5 rectangles, a block
// of one colour is one, however the rows below it end.
TEST(ImageRects, RowsAlikeJoinIntoOneRectangle) {
  const auto bar = picture(5, 3, [](int x, int) -> Rgb { return {0.2f * float(x), 0, 0}; });
  EXPECT_EQ(rectangles(5, 3, bar.data(), kWhite).size(), 5u);
  const auto block = picture(4, 4, [](int x, int y) -> Rgb {
    return y == 3 && x == 0 ? kWhite : Rgb{0, 0, 1};
  });
  EXPECT_EQ(rectangles(4, 4, block.data(), kWhite).size(), 2u)
      << "three rows, then 1..4 of the last";
}

}  // namespace
