#pragma once
// Start layouts and the recentre-and-rescale action.
#include <cstdint>
#include <memory>

class QLOVector3dArray;

namespace layout {

// V positions drawn from the shared random source, uniform in the cube
// -30..30 on each axis (60 u - 30), at float precision.
std::shared_ptr<QLOVector3dArray> randomCubePositions(std::uint64_t verticesCount);

// V positions uniform in the box -X..X, -Y..Y, -Z..Z (u (X + X) - X per axis).
// A size of 0 collapses the axis; a negative size mirrors it.
std::shared_ptr<QLOVector3dArray> randomBoxPositions(std::uint64_t verticesCount, float sizeX,
                                                     float sizeY, float sizeZ);

// The layout moved so that its bounding box is centred on the origin and
// scaled so that its longest extent spans the size of its own axis:
// q' = ((q - min_a) - e_a / 2) / M * size_a, the first difference in single
// precision, the rest in double. All vertices at one point (or one vertex)
// go to the origin. Works on a snapshot of `positions`, so a layout batch may
// be writing them meanwhile.
std::shared_ptr<QLOVector3dArray> recentredAndRescaled(const QLOVector3dArray& positions,
                                                       float sizeX, float sizeY, float sizeZ);

}  // namespace layout
