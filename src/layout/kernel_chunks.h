#pragma once
// How a force pass runs its 128 chunks: each chunk sums into a private buffer
// of single-precision forces and adds it, widened to double, into the shared
// accumulator under the merge mutex.
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "layout/kernels.h"

namespace layout::detail {

// The mutex every chunk merges under, one for the process. It is constant-
// initialised, so no thread writes it before locking it: a mutex made by the
// caller for each pass would be written by the caller and then locked by
// oneTBB's threads with no order ThreadSanitizer can see. A merge is short, so
// passes of different views running at the same time hardly contend.
inline constinit std::mutex mergeMutex;

// Three planes of single-precision forces for the vertices [first, first + size),
// zeroed. A chunk only ever touches such a window, so the buffer need not span
// all V vertices (the merged result is the same).
class PrivateForces {
 public:
  PrivateForces(std::uint64_t first, std::uint64_t size)
      : first_(first), size_(size), values_(3 * size, 0.0f) {}

  // The planes of the window: element v - first() belongs to vertex v.
  std::uint64_t first() const { return first_; }
  float* x() { return values_.data(); }
  float* y() { return values_.data() + size_; }
  float* z() { return values_.data() + 2 * size_; }

  // Adds the window to `out` (each float widened to double) while holding the
  // merge mutex.
  void mergeInto(ForceAccumulator& out) {
    const float* px = x();
    const float* py = y();
    const float* pz = z();
    const std::lock_guard lock(mergeMutex);
    for (std::uint64_t k = 0; k < size_; ++k) {
      out.x[first_ + k] += static_cast<double>(px[k]);
      out.y[first_ + k] += static_cast<double>(py[k]);
      out.z[first_ + k] += static_cast<double>(pz[k]);
    }
  }

 private:
  std::uint64_t first_;
  std::uint64_t size_;
  std::vector<float> values_;
};

// Runs chunk(k) for k = 0..127 in parallel, one chunk per task.
//
// oneTBB orders the caller's writes before the tasks and the tasks before the
// return of parallel_for, but through its own synchronisation, which lives in
// an uninstrumented library ThreadSanitizer cannot see. So the caller takes
// the merge mutex once before and once after the loop, and every chunk takes it
// once at its start: the chunks' reads of the inputs are then visibly ordered
// after the caller's writes, and every merge before the caller's reads of the
// accumulator.
template <class Chunk>
void runChunks(const Chunk& chunk) {
  { const std::lock_guard lock(mergeMutex); }
  tbb::parallel_for(
      tbb::blocked_range<std::size_t>(0, kChunkCount, 1),
      [&](const tbb::blocked_range<std::size_t>& range) {
        for (std::size_t k = range.begin(); k != range.end(); ++k) {
          { const std::lock_guard lock(mergeMutex); }
          chunk(k);
        }
      },
      tbb::simple_partitioner());
  { const std::lock_guard lock(mergeMutex); }
}

}  // namespace layout::detail
