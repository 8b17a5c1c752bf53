#pragma once
// The approximate repulsion pass: the same pair force, softening, gravity and
// participation rule as repulsionPass, with the far field of an octree of the
// participating vertices taken cell by cell at the cell's centre of mass.
//
// A cell is taken whole for a leaf of vertices when the leaf's bounding box
// lies farther from the cell's centre of mass than radius / theta (radius:
// the distance from the centre of mass to the cell's farthest vertex); smaller
// theta opens more cells, and a theta near 0 computes every pair directly.
//
// Deterministic: every vertex's force is summed by one task, in an order that
// depends only on the positions, so the result is the same whatever the
// number of threads.
#include <cstdint>
#include <vector>

#include "layout/kernels.h"
#include "layout/octree.h"

namespace layout {

// Buffers reused from step to step.
struct BarnesHutWorkspace {
  Octree tree;
  std::vector<std::uint32_t> participants;
};

// Adds repulsion and gravity to `out` (which holds V entries). When a
// participating vertex has a non-finite position, every participating vertex
// gets a NaN force, as in the all-pairs pass; integration discards them.
void barnesHutRepulsionPass(const PassInputs& in, float theta, ForceAccumulator& out,
                            BarnesHutWorkspace& workspace);

namespace detail {
enum class InstructionSet;
// The pass with the inner loops compiled for the given instruction set.
void barnesHutRepulsionPassWith(InstructionSet set, const PassInputs& in, float theta,
                                ForceAccumulator& out, BarnesHutWorkspace& workspace);
}  // namespace detail

}  // namespace layout
