#include "render/imagetiles.h"

#include <algorithm>

std::vector<ImageTile> imageTiles(int width, int height, int maxSide) {
  std::vector<ImageTile> tiles;
  if (width <= 0 || height <= 0 || maxSide <= 0) return tiles;
  for (int y = 0; y < height; y += maxSide) {
    for (int x = 0; x < width; x += maxSide) {
      tiles.push_back({x, y, std::min(maxSide, width - x), std::min(maxSide, height - y)});
    }
  }
  return tiles;
}

Matrix4 tileWindow(const ImageTile& tile, int width, int height) {
  // In normalised device coordinates the tile spans [x0, x1] x [y0, y1];
  // scale that span to [-1, 1] and move its centre to the origin. The
  // translation sits in the last column, so it is scaled by w and the
  // mapping holds for perspective projections too.
  const double W = width, H = height;
  const double x0 = 2.0 * tile.x / W - 1.0, x1 = 2.0 * (tile.x + tile.width) / W - 1.0;
  const double y0 = 2.0 * tile.y / H - 1.0, y1 = 2.0 * (tile.y + tile.height) / H - 1.0;
  const double sx = 2.0 / (x1 - x0), sy = 2.0 / (y1 - y0);
  Matrix4 m{};
  m[0] = sx;
  m[5] = sy;
  m[10] = 1.0;
  m[15] = 1.0;
  m[12] = -sx * (x0 + x1) / 2.0;
  m[13] = -sy * (y0 + y1) / 2.0;
  return m;
}

std::array<double, 4> windowRegion(const Matrix4& window, double width, double height) {
  // The window maps [x0, x1] to [-1, 1] by x' = sx x + tx; likewise for y.
  const double x0 = (-1 - window[12]) / window[0], x1 = (1 - window[12]) / window[0];
  const double y0 = (-1 - window[13]) / window[5], y1 = (1 - window[13]) / window[5];
  const double left = (x0 + 1) / 2 * width, right = (x1 + 1) / 2 * width;
  const double top = (1 - y1) / 2 * height, bottom = (1 - y0) / 2 * height;
  return {left, top, right - left, bottom - top};
}
