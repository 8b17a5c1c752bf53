// Octree construction (see octree.h): Morton codes, a parallel sort on
// (code, index), breadth-first splitting of the sorted order by successive
// octant bits, then the cells' moments from the leaves up.
#include "layout/octree.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "layout/parallel.h"

namespace layout {
namespace {

constexpr int kBitsPerAxis = 21;
constexpr std::uint32_t kMaxCoordinate = (1u << kBitsPerAxis) - 1;

// The 21 low bits of v spread out to every third bit.
std::uint64_t spreadBits(std::uint64_t v) {
  v &= 0x1fffff;
  v = (v | v << 32) & 0x1f00000000ffffULL;
  v = (v | v << 16) & 0x1f0000ff0000ffULL;
  v = (v | v << 8) & 0x100f00f00f00f00fULL;
  v = (v | v << 4) & 0x10c30c30c30c30c3ULL;
  v = (v | v << 2) & 0x1249249249249249ULL;
  return v;
}

struct Key {
  std::uint64_t code;
  std::uint32_t index;
  bool operator<(const Key& other) const {
    return code != other.code ? code < other.code : index < other.index;
  }
};

// Sorts the keys: blocks sorted in parallel, then merged pairwise in parallel
// rounds. The keys are unique, so the result does not depend on the split.
void sortKeys(std::vector<Key>& keys) {
  constexpr std::size_t kBlock = 1 << 15;
  const std::size_t n = keys.size();
  const std::size_t blocks = (n + kBlock - 1) / kBlock;
  detail::parallelRanges(blocks, 1, [&](std::size_t first, std::size_t last) {
    for (std::size_t b = first; b < last; ++b) {
      std::sort(keys.begin() + b * kBlock, keys.begin() + std::min(n, (b + 1) * kBlock));
    }
  });
  std::vector<Key> merged(blocks > 1 ? n : 0);
  for (std::size_t width = kBlock; width < n; width *= 2) {
    const std::size_t pairs = (n + 2 * width - 1) / (2 * width);
    detail::parallelRanges(pairs, 1, [&](std::size_t first, std::size_t last) {
      for (std::size_t p = first; p < last; ++p) {
        const auto begin = keys.begin() + p * 2 * width;
        const auto middle = keys.begin() + std::min(n, p * 2 * width + width);
        const auto end = keys.begin() + std::min(n, (p + 1) * 2 * width);
        std::merge(begin, middle, middle, end, merged.begin() + p * 2 * width);
      }
    });
    keys.swap(merged);
  }
}

// The bounding cube of the points: lower corner and quantisation scale.
struct Cube {
  float lo[3];
  double scale;
};

Cube boundingCube(const float* const p[3], const std::vector<std::uint32_t>& indices) {
  float lo[3] = {INFINITY, INFINITY, INFINITY};
  float hi[3] = {-INFINITY, -INFINITY, -INFINITY};
  for (std::uint32_t v : indices) {
    for (int a = 0; a < 3; ++a) {
      lo[a] = std::min(lo[a], p[a][v]);
      hi[a] = std::max(hi[a], p[a][v]);
    }
  }
  double extent = 0.0;
  for (int a = 0; a < 3; ++a) extent = std::max(extent, double(hi[a]) - double(lo[a]));
  return {{lo[0], lo[1], lo[2]}, extent > 0.0 ? double(kMaxCoordinate) / extent : 0.0};
}

std::uint32_t quantise(float value, float lo, double scale) {
  const double q = (double(value) - double(lo)) * scale;
  return static_cast<std::uint32_t>(std::clamp(q, 0.0, double(kMaxCoordinate)));
}

// Splits the cells breadth-first: a cell with more than leafSize points whose
// codes still differ below its level gets one child per non-empty octant.
void splitCells(const std::vector<Key>& keys, std::vector<OctreeCell>& cells,
                std::uint32_t leafSize) {
  std::vector<int> levels{0};
  for (std::size_t c = 0; c < cells.size(); ++c) {
    const std::uint32_t begin = cells[c].begin;
    const std::uint32_t end = cells[c].end;
    const int level = levels[c];
    cells[c].firstChild = static_cast<std::uint32_t>(cells.size());
    cells[c].childCount = 0;
    if (end - begin <= leafSize) continue;
    const auto addChild = [&](std::uint32_t first, std::uint32_t last, int childLevel) {
      OctreeCell child{};
      child.begin = first;
      child.end = last;
      cells.push_back(child);
      levels.push_back(childLevel);
      ++cells[c].childCount;
    };
    if (level == kBitsPerAxis) {
      // Points in one quantisation cell (coincident, or crowded next to a far
      // outlier): split by order into eight parts, so no leaf grows large.
      const std::uint32_t part = (end - begin + 7) / 8;
      for (std::uint32_t first = begin; first < end; first += part) {
        addChild(first, std::min(end, first + part), level);
      }
      continue;
    }
    const int shift = 3 * (kBitsPerAxis - 1 - level);
    std::uint32_t first = begin;
    for (std::uint64_t octant = 0; octant < 8 && first < end; ++octant) {
      const auto stop =
          std::partition_point(keys.begin() + first, keys.begin() + end,
                               [&](const Key& k) { return ((k.code >> shift) & 7) <= octant; });
      const auto last = static_cast<std::uint32_t>(stop - keys.begin());
      if (last == first) continue;
      addChild(first, last, level + 1);
      first = last;
    }
  }
}

float distance(double ax, double ay, double az, double bx, double by, double bz) {
  return static_cast<float>(
      std::sqrt((ax - bx) * (ax - bx) + (ay - by) * (ay - by) + (az - bz) * (az - bz)));
}

void leafMoments(const Octree& tree, OctreeCell& cell) {
  double sx = 0, sy = 0, sz = 0;
  for (int a = 0; a < 3; ++a) {
    cell.lo[a] = INFINITY;
    cell.hi[a] = -INFINITY;
  }
  for (std::uint32_t k = cell.begin; k < cell.end; ++k) {
    const float p[3] = {tree.x[k], tree.y[k], tree.z[k]};
    sx += p[0];
    sy += p[1];
    sz += p[2];
    for (int a = 0; a < 3; ++a) {
      cell.lo[a] = std::min(cell.lo[a], p[a]);
      cell.hi[a] = std::max(cell.hi[a], p[a]);
    }
  }
  const double n = cell.end - cell.begin;
  cell.mass = static_cast<float>(n);
  cell.cx = static_cast<float>(sx / n);
  cell.cy = static_cast<float>(sy / n);
  cell.cz = static_cast<float>(sz / n);
  float radius = 0.0f;
  for (std::uint32_t k = cell.begin; k < cell.end; ++k) {
    radius = std::max(radius, distance(tree.x[k], tree.y[k], tree.z[k], cell.cx, cell.cy, cell.cz));
  }
  // Rounded up a little so that the bound holds despite float rounding.
  cell.radius = radius * (1.0f + 1e-6f);
}

void innerMoments(const std::vector<OctreeCell>& cells, OctreeCell& cell) {
  double sx = 0, sy = 0, sz = 0, mass = 0;
  for (int a = 0; a < 3; ++a) {
    cell.lo[a] = INFINITY;
    cell.hi[a] = -INFINITY;
  }
  for (std::uint32_t c = cell.firstChild; c < cell.firstChild + cell.childCount; ++c) {
    const OctreeCell& child = cells[c];
    sx += double(child.cx) * child.mass;
    sy += double(child.cy) * child.mass;
    sz += double(child.cz) * child.mass;
    mass += child.mass;
    for (int a = 0; a < 3; ++a) {
      cell.lo[a] = std::min(cell.lo[a], child.lo[a]);
      cell.hi[a] = std::max(cell.hi[a], child.hi[a]);
    }
  }
  cell.mass = static_cast<float>(mass);
  cell.cx = static_cast<float>(sx / mass);
  cell.cy = static_cast<float>(sy / mass);
  cell.cz = static_cast<float>(sz / mass);
  // The smaller of two bounds: through the children's spheres and through
  // the corners of the box.
  float throughChildren = 0.0f;
  for (std::uint32_t c = cell.firstChild; c < cell.firstChild + cell.childCount; ++c) {
    const OctreeCell& child = cells[c];
    throughChildren =
        std::max(throughChildren,
                 distance(cell.cx, cell.cy, cell.cz, child.cx, child.cy, child.cz) + child.radius);
  }
  double corner = 0.0;
  const float centre[3] = {cell.cx, cell.cy, cell.cz};
  for (int a = 0; a < 3; ++a) {
    const double far = std::max(double(centre[a]) - cell.lo[a], double(cell.hi[a]) - centre[a]);
    corner += far * far;
  }
  cell.radius = std::min(throughChildren, static_cast<float>(std::sqrt(corner)) * (1.0f + 1e-6f));
}

// The groups under `cell`, depth first, so in curve order.
void collectGroups(Octree& tree, std::uint32_t cell, std::uint32_t groupSize) {
  const OctreeCell& c = tree.cells[cell];
  if (c.childCount == 0 || c.end - c.begin <= groupSize) {
    tree.groups.push_back(cell);
    return;
  }
  for (std::uint32_t child = c.firstChild; child < c.firstChild + c.childCount; ++child) {
    collectGroups(tree, child, groupSize);
  }
}

}  // namespace

void buildOctree(const float* px, const float* py, const float* pz,
                 const std::vector<std::uint32_t>& indices, Octree& tree, std::uint32_t leafSize,
                 std::uint32_t groupSize) {
  const std::size_t n = indices.size();
  tree.cells.clear();
  tree.leaves.clear();
  tree.groups.clear();
  tree.order.resize(n);
  tree.x.resize(n);
  tree.y.resize(n);
  tree.z.resize(n);
  if (n == 0) return;

  const float* const planes[3] = {px, py, pz};
  const Cube cube = boundingCube(planes, indices);
  std::vector<Key> keys(n);
  detail::parallelRanges(n, 4096, [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k != last; ++k) {
      const std::uint32_t v = indices[k];
      std::uint64_t code = 0;
      for (int a = 0; a < 3; ++a) {
        code |= spreadBits(quantise(planes[a][v], cube.lo[a], cube.scale)) << (2 - a);
      }
      keys[k] = {code, v};
    }
  });
  sortKeys(keys);
  detail::parallelRanges(n, 4096, [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k != last; ++k) {
      const std::uint32_t v = keys[k].index;
      tree.order[k] = v;
      tree.x[k] = px[v];
      tree.y[k] = py[v];
      tree.z[k] = pz[v];
    }
  });

  OctreeCell root{};
  root.begin = 0;
  root.end = static_cast<std::uint32_t>(n);
  tree.cells.push_back(root);
  splitCells(keys, tree.cells, std::max<std::uint32_t>(leafSize, 1));

  for (std::uint32_t c = 0; c < tree.cells.size(); ++c) {
    if (tree.cells[c].childCount == 0) tree.leaves.push_back(c);
  }
  std::sort(tree.leaves.begin(), tree.leaves.end(), [&](std::uint32_t a, std::uint32_t b) {
    return tree.cells[a].begin < tree.cells[b].begin;
  });
  detail::parallelRanges(tree.leaves.size(), 64, [&](std::size_t first, std::size_t last) {
    for (std::size_t l = first; l != last; ++l) leafMoments(tree, tree.cells[tree.leaves[l]]);
  });
  collectGroups(tree, 0, groupSize);
  // Children always come after their parent.
  for (std::size_t c = tree.cells.size(); c-- > 0;) {
    if (tree.cells[c].childCount != 0) innerMoments(tree.cells, tree.cells[c]);
  }
}

}  // namespace layout
