#include "plexora/QLORandomGenerator.h"

#include <cstdlib>

#include "quillo/QLONumberArray.h"
#include "quillo/numbertext.h"

QLORandomGenerator::QLORandomGenerator() {
  const char* text = std::getenv("PLEXVIEW_SEED");
  std::optional<std::uint64_t> seed;
  if (text) seed = quillo::parseUInt64(text);
  if (seed) {
    engine_.seed(*seed);
  } else {
    std::random_device device;
    engine_.seed((static_cast<std::uint64_t>(device()) << 32) ^ device());
  }
}

QLORandomGenerator& QLORandomGenerator::sharedRandomGenerator() {
  static QLORandomGenerator instance;
  return instance;
}

void QLORandomGenerator::setSeed(std::uint64_t seed) {
  std::lock_guard lock(mutex_);
  engine_.seed(seed);
}

std::shared_ptr<QLONumberArray> QLORandomGenerator::newRandomFloatArrayWithCount(
    std::uint64_t count) {
  auto array = QLONumberArray::initWithCount(count, NumberType::Float);
  float* values = array->data<float>();
  std::lock_guard lock(mutex_);
  for (std::uint64_t i = 0; i < count; ++i) values[i] = unitFloat(engine_());
  return array;
}

std::int64_t QLORandomGenerator::randomIntegerFrom(std::int64_t lower, std::int64_t upper) {
  if (upper <= lower) return lower;
  std::uniform_int_distribution<std::int64_t> distribution(lower, upper);
  std::lock_guard lock(mutex_);
  return distribution(engine_);
}

double QLORandomGenerator::randomDouble() {
  std::lock_guard lock(mutex_);
  return unitDouble(engine_());
}

std::uint64_t QLORandomGenerator::nextSeed() {
  std::lock_guard lock(mutex_);
  return engine_();
}
