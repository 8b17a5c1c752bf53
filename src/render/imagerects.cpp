#include "render/imagerects.h"

#include <cstddef>

namespace image_rects {

namespace {

std::array<float, 3> colourAt(const float* rgb, std::size_t pixel) {
  return {rgb[3 * pixel], rgb[3 * pixel + 1], rgb[3 * pixel + 2]};
}

}  // namespace

std::vector<Rect> rectangles(int width, int height, const float* rgb,
                             const std::array<float, 3>& skip) {
  std::vector<Rect> done;
  std::vector<Rect> open;  // the previous row's runs, still growing downwards
  std::vector<Rect> row;
  for (int y = 0; y < height; ++y) {
    row.clear();
    const std::size_t start = static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    for (int x = 0; x < width;) {
      const auto colour = colourAt(rgb, start + static_cast<std::size_t>(x));
      int end = x + 1;
      while (end < width && colourAt(rgb, start + static_cast<std::size_t>(end)) == colour) ++end;
      if (colour != skip) row.push_back({x, y, end, y + 1, colour});
      x = end;
    }
    // Both lists are ordered by x0: one pass pairs a run with the open
    // rectangle of the same span and colour, if any.
    std::vector<Rect> next;
    next.reserve(row.size());
    std::size_t o = 0;
    for (const Rect& run : row) {
      while (o < open.size() && open[o].x0 < run.x0) done.push_back(open[o++]);
      if (o < open.size() && open[o].x0 == run.x0 && open[o].x1 == run.x1 &&
          open[o].rgb == run.rgb) {
        Rect grown = open[o++];
        grown.y1 = y + 1;
        next.push_back(grown);
      } else {
        next.push_back(run);
      }
    }
    while (o < open.size()) done.push_back(open[o++]);
    open.swap(next);
  }
  done.insert(done.end(), open.begin(), open.end());
  return done;
}

}  // namespace image_rects
