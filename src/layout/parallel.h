#pragma once
// A parallel loop whose ordering ThreadSanitizer can see. oneTBB orders the
// caller's writes before the tasks and the tasks before the return of
// parallel_for through its own synchronisation, inside an uninstrumented
// library; so the caller takes a mutex before and after the loop and every
// task takes it at its start and at its end. The mutex is constant-initialised
// (see kernel_chunks.h for why) and held only for an instant.
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cstddef>
#include <mutex>

namespace layout::detail {

inline constinit std::mutex loopFenceMutex;

// Runs body(begin, end) over [0, count) split into ranges of about `grain`
// elements, in parallel. The body must write only what its range owns.
template <class Body>
void parallelRanges(std::size_t count, std::size_t grain, const Body& body) {
  { const std::lock_guard lock(loopFenceMutex); }
  tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, grain == 0 ? 1 : grain),
                    [&](const tbb::blocked_range<std::size_t>& range) {
                      { const std::lock_guard lock(loopFenceMutex); }
                      body(range.begin(), range.end());
                      { const std::lock_guard lock(loopFenceMutex); }
                    });
  { const std::lock_guard lock(loopFenceMutex); }
}

}  // namespace layout::detail
