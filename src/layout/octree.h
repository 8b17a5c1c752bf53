#pragma once
// An octree over a set of points, rebuilt from scratch for every step of the
// approximate repulsion. Points are ordered along a Morton (Z-order) curve of
// their positions quantised in the bounding cube; ties keep the index order,
// so the order, and with it the tree, depends only on the input. Every cell
// holds a contiguous range of that order; a cell of at most `leafSize` points
// (or one that can no longer be split) is a leaf.
#include <cstdint>
#include <vector>

namespace layout {

struct OctreeCell {
  float cx, cy, cz;          // centre of mass
  float mass;                // number of points
  float radius;              // no point of the cell is farther than this from the centre of mass
  float lo[3], hi[3];        // tight bounding box of the points
  std::uint32_t begin, end;  // range of the order
  std::uint32_t firstChild;  // children are stored next to each other
  std::uint32_t childCount;  // 0 for a leaf
};

struct Octree {
  // order[k] is the index of the k-th point along the curve; x, y, z hold the
  // positions in that order.
  std::vector<std::uint32_t> order;
  std::vector<float> x, y, z;
  // cells[0] is the root (when there is a point); a cell's children follow
  // it in breadth-first order.
  std::vector<OctreeCell> cells;
  // The leaves, in curve order.
  std::vector<std::uint32_t> leaves;
  // The largest cells of at most `groupSize` points (or leaves), in curve
  // order: they cover every point once.
  std::vector<std::uint32_t> groups;
};

inline constexpr std::uint32_t kOctreeLeafSize = 64;
inline constexpr std::uint32_t kOctreeGroupSize = 64;

// Builds the tree over the points `indices` (their positions read from the
// planes px, py, pz, all finite). `tree` is reused to spare allocations.
void buildOctree(const float* px, const float* py, const float* pz,
                 const std::vector<std::uint32_t>& indices, Octree& tree,
                 std::uint32_t leafSize = kOctreeLeafSize,
                 std::uint32_t groupSize = kOctreeGroupSize);

}  // namespace layout
