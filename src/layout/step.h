#pragma once
// One layout step: the two force passes on a snapshot of the positions, then
// integration of every vertex (with the mode's clamps and NaN rules) and
// re-centring of the layout on its mean.
#include <cstdint>

#include "layout/barneshut.h"
#include "layout/incidence.h"
#include "layout/kernels.h"

namespace layout {

// Three planes of V floats.
struct Planes {
  float* x;
  float* y;
  float* z;
};
struct ConstPlanes {
  const float* x;
  const float* y;
  const float* z;
};

struct StepSettings {
  LayoutMode mode = LayoutMode::Plain;
  float viscosity = 0.05f;  // eta
  // 0: the all-pairs repulsion. Above 0: the octree approximation with this
  // opening angle, and springs summed by vertex, so the step gives the same
  // positions whatever the number of threads.
  float barnesHutTheta = 0.0f;
};

// What the approximate step keeps from one step to the next.
struct StepWorkspace {
  BarnesHutWorkspace barnesHut;
  EdgeIncidence incidence;
};

// Adds the accumulated force to every vertex's speed and the speed to its
// position, in vertex order, with the clamps of the mode:
//   force:  |F|^2 > 400 -> |F| = 10 (plain) or 15 (weighted modes);
//           NaN |F|^2 -> F = 0 (plain) or v = 0 (weighted modes);
//   v += F; v -= v * eta;
//   speed:  q = |v|^2 > L^2 + 100 -> |v| = 5 (plain); q > 100 -> |v| = 7.5
//           (weighted modes); NaN q -> v = 0;
//   p += v.
// `positions` and `speeds` are updated in place.
void integrate(const StepSettings& settings, float preferredDistance,
               const ForceAccumulator& forces, std::uint64_t verticesCount, Planes positions,
               Planes speeds);

// Moves the mean position (in double precision, every vertex counted) to the
// origin. Nothing happens for V = 0.
void recentre(std::uint64_t verticesCount, Planes positions);

// A whole step: both passes over `inputs` (whose x, y, z planes are the
// snapshot of the positions at the start of the step, which nothing writes
// during the passes), then integration into `positions` and `speeds` (the
// arrays being updated: copies of the current positions and speeds, distinct
// from the snapshot), then re-centring.
void step(const StepSettings& settings, const PassInputs& inputs, Planes positions, Planes speeds);
void step(const StepSettings& settings, const PassInputs& inputs, Planes positions, Planes speeds,
          StepWorkspace& workspace);

}  // namespace layout
