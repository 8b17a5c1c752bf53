#pragma once
// The process-wide random source. Seeded from the PLEXVIEW_SEED environment
// variable when it holds a number, otherwise from the system's entropy; tests
// and scripts call setSeed for reproducible runs.
#include <cstdint>
#include <memory>
#include <mutex>
#include <random>

class QLONumberArray;

class QLORandomGenerator {
 public:
  static QLORandomGenerator& sharedRandomGenerator();

  void setSeed(std::uint64_t seed);

  // `count` floats drawn uniformly from [0, 1).
  std::shared_ptr<QLONumberArray> newRandomFloatArrayWithCount(std::uint64_t count);
  // A uniform integer n with lower <= n <= upper; lower when upper < lower.
  std::int64_t randomIntegerFrom(std::int64_t lower, std::int64_t upper);
  // A uniform double in [0, 1).
  double randomDouble();
  // A fresh 64-bit seed for work that runs its own engine (the generators), so
  // a seeded shared source makes their results reproducible too.
  std::uint64_t nextSeed();

 private:
  QLORandomGenerator();

  std::mutex mutex_;
  std::mt19937_64 engine_;
};

// Uniform [0, 1) values from 64 random bits: exact multiples of 2^-24 and
// 2^-53, never 1.
inline float unitFloat(std::uint64_t bits) {
  return static_cast<float>(bits >> 40) * 0x1.0p-24f;
}
inline double unitDouble(std::uint64_t bits) {
  return static_cast<double>(bits >> 11) * 0x1.0p-53;
}
