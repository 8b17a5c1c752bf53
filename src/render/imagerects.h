#pragma once
// An RGB picture as rectangles of one colour each, for documents that cannot
// carry pictures (gl2ps writes SVG images only when built with PNG support):
// each row's runs of one colour, runs of the same span and colour in rows
// that follow one another joined into one rectangle.
#include <array>
#include <vector>

namespace image_rects {

struct Rect {
  int x0, y0, x1, y1;  // pixels [x0, x1) × [y0, y1), rows counted as given
  std::array<float, 3> rgb;
};

// `rgb` holds width × height colours row after row. Pixels of the colour
// `skip` (the page's background) are left out.
std::vector<Rect> rectangles(int width, int height, const float* rgb,
                             const std::array<float, 3>& skip);

}  // namespace image_rects
