// The approximate repulsion pass (see barneshut.h): participants, octree,
// then tasks over the octree's groups, each group gathering its sources by a
// walk of the tree and summing the forces on its own vertices.
#include "layout/barneshut.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "layout/barneshut_kernel.h"
#include "layout/kernel_dispatch.h"
#include "layout/parallel.h"

namespace layout {
namespace detail {
namespace {

struct Scratch {
  std::vector<float> nearX, nearY, nearZ;
  std::vector<float> farX, farY, farZ, farMass;
  std::vector<std::uint32_t> stack;
  std::vector<Force3> forces;

  void appendNear(const Octree& tree, const OctreeCell& cell) {
    nearX.insert(nearX.end(), tree.x.begin() + cell.begin, tree.x.begin() + cell.end);
    nearY.insert(nearY.end(), tree.y.begin() + cell.begin, tree.y.begin() + cell.end);
    nearZ.insert(nearZ.end(), tree.z.begin() + cell.begin, tree.z.begin() + cell.end);
  }
  void appendFar(const OctreeCell& cell) {
    farX.push_back(cell.cx);
    farY.push_back(cell.cy);
    farZ.push_back(cell.cz);
    farMass.push_back(cell.mass);
  }
  LeafSources sources(std::size_t ownCount) const {
    return {nearX.data(), nearY.data(), nearZ.data(), ownCount,       nearX.size(),
            farX.data(),  farY.data(),  farZ.data(),  farMass.data(), farX.size()};
  }
};

// Squared distance from a point to a box (0 inside it).
float squaredDistanceToBox(const float p[3], const float lo[3], const float hi[3]) {
  float sum = 0.0f;
  for (int a = 0; a < 3; ++a) {
    const float d = std::max({lo[a] - p[a], 0.0f, p[a] - hi[a]});
    sum += d * d;
  }
  return sum;
}

// Collects the sources of a group of vertices: its own vertices, the vertices
// of every leaf too close to take whole, and the cells far enough to take
// whole.
void gatherSources(const Octree& tree, const OctreeCell& group, float theta, Scratch& scratch) {
  for (auto* list : {&scratch.nearX, &scratch.nearY, &scratch.nearZ, &scratch.farX, &scratch.farY,
                     &scratch.farZ, &scratch.farMass}) {
    list->clear();
  }
  scratch.appendNear(tree, group);
  scratch.stack.assign(1, 0);
  while (!scratch.stack.empty()) {
    const OctreeCell& cell = tree.cells[scratch.stack.back()];
    scratch.stack.pop_back();
    // The group itself: already first in the near list.
    if (group.begin <= cell.begin && cell.end <= group.end) continue;
    const bool holdsGroup = cell.begin <= group.begin && group.end <= cell.end;
    if (!holdsGroup) {
      const float centre[3] = {cell.cx, cell.cy, cell.cz};
      const float d2 = squaredDistanceToBox(centre, group.lo, group.hi);
      if (d2 * theta * theta > cell.radius * cell.radius) {
        scratch.appendFar(cell);
        continue;
      }
      if (cell.childCount == 0) {
        scratch.appendNear(tree, cell);
        continue;
      }
    }
    for (std::uint32_t c = cell.firstChild + cell.childCount; c-- > cell.firstChild;) {
      scratch.stack.push_back(c);
    }
  }
}

using LeafKernel = void (*)(const LeafSources&, float, float, Force3*);

void leafKernelBaseline(const LeafSources& src, float s, float minusR, Force3* out) {
  for (std::size_t k = 0; k < src.ownCount; ++k) out[k] = leafVertexForce(src, k, s, minusR);
}

__attribute__((target("avx2,fma"))) void leafKernelAvx2Fma(const LeafSources& src, float s,
                                                           float minusR, Force3* out) {
  for (std::size_t k = 0; k < src.ownCount; ++k) out[k] = leafVertexForce(src, k, s, minusR);
}

bool finite(const PassInputs& in, std::uint32_t v) {
  return std::isfinite(in.x[v]) && std::isfinite(in.y[v]) && std::isfinite(in.z[v]);
}

}  // namespace

void barnesHutRepulsionPassWith(InstructionSet set, const PassInputs& in, float theta,
                                ForceAccumulator& out, BarnesHutWorkspace& workspace) {
  std::vector<std::uint32_t>& participants = workspace.participants;
  participants.clear();
  bool allFinite = true;
  for (std::uint64_t v = 0; v < in.verticesCount; ++v) {
    if (in.filter != nullptr && !participates(in.filter[v], in.minFilter, in.maxFilter)) continue;
    participants.push_back(static_cast<std::uint32_t>(v));
    allFinite = allFinite && finite(in, static_cast<std::uint32_t>(v));
  }
  if (!allFinite) {
    // A non-finite position makes every pair with it, and so every force, NaN.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (std::uint32_t v : participants) out.x[v] = out.y[v] = out.z[v] = nan;
    return;
  }

  const Octree& tree = workspace.tree;
  buildOctree(in.x, in.y, in.z, participants, workspace.tree);
  const float s = in.softening;
  const float minusR = -in.repulsive;
  const float gravity = in.gravitational * std::sqrt(static_cast<float>(in.verticesCount));
  const LeafKernel kernel = set == InstructionSet::Avx2Fma ? leafKernelAvx2Fma : leafKernelBaseline;
  parallelRanges(tree.groups.size(), 8, [&](std::size_t first, std::size_t last) {
    Scratch scratch;
    for (std::size_t l = first; l < last; ++l) {
      const OctreeCell& leaf = tree.cells[tree.groups[l]];
      gatherSources(tree, leaf, theta, scratch);
      const std::size_t own = leaf.end - leaf.begin;
      scratch.forces.resize(own);
      kernel(scratch.sources(own), s, minusR, scratch.forces.data());
      for (std::size_t k = 0; k < own; ++k) {
        const float px = scratch.nearX[k];
        const float py = scratch.nearY[k];
        const float pz = scratch.nearZ[k];
        const float c = std::sqrt(px * px + py * py + pz * pz + s);
        const Force3& f = scratch.forces[k];
        const std::uint32_t v = tree.order[leaf.begin + k];
        out.x[v] += static_cast<double>(-(f.x + gravity * px / c));
        out.y[v] += static_cast<double>(-(f.y + gravity * py / c));
        out.z[v] += static_cast<double>(-(f.z + gravity * pz / c));
      }
    }
  });
}

}  // namespace detail

void barnesHutRepulsionPass(const PassInputs& in, float theta, ForceAccumulator& out,
                            BarnesHutWorkspace& workspace) {
  static const detail::InstructionSet best = detail::supportedInstructionSets().back();
  detail::barnesHutRepulsionPassWith(best, in, theta, out, workspace);
}

}  // namespace layout
