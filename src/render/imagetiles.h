#pragma once
// Splitting a picture larger than the GL implementation allows into tiles
// drawn one after another, each through its own window on the projection.
// Plain arithmetic, no GL.
#include <array>
#include <vector>

#include "render/VXLCamera.h"

struct ImageTile {
  int x = 0, y = 0;  // lower left corner in the whole picture, GL's origin
  int width = 0, height = 0;
  bool operator==(const ImageTile&) const = default;
};

// Tiles of at most maxSide x maxSide pixels covering width x height, row by
// row from the lower left corner; the last column and row take what is left.
// Empty when a size is not positive.
std::vector<ImageTile> imageTiles(int width, int height, int maxSide);

// The matrix that, applied after a projection for the whole width x height
// picture, maps the tile's part of the clip volume onto the whole clip
// volume, so a tile-sized viewport shows just that part.
Matrix4 tileWindow(const ImageTile& tile, int width, int height);

// The part of a width x height picture a window (as tileWindow makes it, or
// the identity for the whole picture) shows, in pixels with the origin at
// the top left: {left, top, width, height}.
std::array<double, 4> windowRegion(const Matrix4& window, double width, double height);
