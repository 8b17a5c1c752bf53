#include "layout/placement.h"

#include <algorithm>
#include <array>
#include <vector>

#include "plexora/QLORandomGenerator.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace layout {
namespace {

// Rewrites each uniform draw u of `plane` as u * scale - shift.
void mapUniform(QLONumberArray& plane, float scale, float shift) {
  float* values = plane.data<float>();
  const std::uint64_t n = plane.count();
  for (std::uint64_t i = 0; i < n; ++i) values[i] = values[i] * scale - shift;
}

// Three draws of V uniforms from the shared source, always in the order X, Y,
// Z, so a seeded source gives the same layout every time.
std::shared_ptr<QLOVector3dArray> drawPositions(std::uint64_t verticesCount,
                                                const std::array<float, 3>& scales,
                                                const std::array<float, 3>& shifts) {
  QLORandomGenerator& random = QLORandomGenerator::sharedRandomGenerator();
  std::array<std::shared_ptr<QLONumberArray>, 3> planes;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    planes[axis] = random.newRandomFloatArrayWithCount(verticesCount);
    mapUniform(*planes[axis], scales[axis], shifts[axis]);
  }
  return QLOVector3dArray::initWithX(*planes[0], *planes[1], *planes[2], Precision::Float);
}

struct Bounds {
  float minimum = 1e20f;
  float maximum = -1e20f;
  float extent() const { return maximum - minimum; }
};

void widen(Bounds& bounds, float q) {
  // Plain comparisons, so a NaN coordinate never becomes a bound.
  bounds.minimum = q < bounds.minimum ? q : bounds.minimum;
  bounds.maximum = q > bounds.maximum ? q : bounds.maximum;
}

Bounds boundsOf(const float* values, std::uint64_t n) {
  // Eight independent running bounds instead of one long chain of
  // dependent comparisons, so the processor can overlap them (about 3x
  // faster on a million vertices). Only the sign of a zero bound can depend
  // on the order, which moves no coordinate.
  constexpr std::uint64_t kLanes = 8;
  std::array<Bounds, kLanes> lanes;
  std::uint64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) {
    for (std::uint64_t lane = 0; lane < kLanes; ++lane) widen(lanes[lane], values[i + lane]);
  }
  for (; i < n; ++i) widen(lanes[0], values[i]);
  Bounds bounds;
  for (const Bounds& lane : lanes) {
    bounds.minimum = lane.minimum < bounds.minimum ? lane.minimum : bounds.minimum;
    bounds.maximum = lane.maximum > bounds.maximum ? lane.maximum : bounds.maximum;
  }
  return bounds;
}

// Fresh float copies of the coordinates, read element by element as relaxed
// atomics: a layout batch may be writing the live planes while the action
// runs, and the bounds and the rescaling must see the same coordinates.
std::array<std::vector<float>, 3> snapshotOf(const QLOVector3dArray& positions) {
  std::array<std::vector<float>, 3> planes;
  for (auto& plane : planes) plane.resize(positions.count());
  positions.copyPlanesTo(planes[0].data(), planes[1].data(), planes[2].data());
  return planes;
}

// q' = ((q - min) - e / 2) / M * size: the offset from the minimum is taken in
// float, as the coordinates are; the centring and scaling in double.
void rescaleAxis(const float* values, std::uint64_t n, const Bounds& bounds, float longest,
                 float size, float* out) {
  const double halfExtent = static_cast<double>(bounds.extent()) / 2.0;
  const double M = static_cast<double>(longest);
  const double scale = static_cast<double>(size);
  const float minimum = bounds.minimum;
  for (std::uint64_t i = 0; i < n; ++i) {
    const float offset = values[i] - minimum;
    out[i] = static_cast<float>((static_cast<double>(offset) - halfExtent) / M * scale);
  }
}

}  // namespace

std::shared_ptr<QLOVector3dArray> randomCubePositions(std::uint64_t verticesCount) {
  return drawPositions(verticesCount, {60.0f, 60.0f, 60.0f}, {30.0f, 30.0f, 30.0f});
}

std::shared_ptr<QLOVector3dArray> randomBoxPositions(std::uint64_t verticesCount, float sizeX,
                                                     float sizeY, float sizeZ) {
  return drawPositions(verticesCount, {sizeX + sizeX, sizeY + sizeY, sizeZ + sizeZ},
                       {sizeX, sizeY, sizeZ});
}

std::shared_ptr<QLOVector3dArray> recentredAndRescaled(const QLOVector3dArray& positions,
                                                       float sizeX, float sizeY, float sizeZ) {
  const std::uint64_t V = positions.count();
  auto result = QLOVector3dArray::initWithSize(V, Precision::Float);
  const auto planes = snapshotOf(positions);
  std::array<Bounds, 3> bounds;
  for (std::size_t axis = 0; axis < 3; ++axis) bounds[axis] = boundsOf(planes[axis].data(), V);
  const float longest = std::max({bounds[0].extent(), bounds[1].extent(), bounds[2].extent()});
  // A single point (or no vertex) has no extent to scale: it stays at the
  // origin, which initWithSize has already written.
  if (!(longest > 0.0f) || V == 0) return result;

  const std::array<float, 3> sizes = {sizeX, sizeY, sizeZ};
  const std::array<float*, 3> out = {result->pointerForX(), result->pointerForY(),
                                     result->pointerForZ()};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    rescaleAxis(planes[axis].data(), V, bounds[axis], longest, sizes[axis], out[axis]);
  }
  return result;
}

}  // namespace layout
