// Fuzzes the one-number-per-line and three-numbers-per-line array readers: no
// input may crash them, and whatever they accept must write and read back to
// the same bits (any NaN reads back as a NaN; its sign and payload are not
// kept).
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fuzz_checks.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace {}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadError error;
  if (auto numbers = QLONumberArray::initWithText(text, NumberType::Float, "fuzz", &error)) {
    auto back = QLONumberArray::initWithText(numbers->text(), NumberType::Float, "again", &error);
    if (!back || back->count() != numbers->count()) std::abort();
    for (std::uint64_t i = 0; i < numbers->count(); ++i) {
      if (!fuzzing::sameFloat(back->data<float>()[i], numbers->data<float>()[i])) std::abort();
    }
  } else {
    fuzzing::requireReason(error);
  }
  if (auto vectors = QLOVector3dArray::initWithText(text, Precision::Float, "fuzz", &error)) {
    fuzzing::requireFinite(*vectors);
    auto back = QLOVector3dArray::initWithText(vectors->text(), Precision::Float, "again", &error);
    if (!back || back->count() != vectors->count()) std::abort();
    for (std::uint64_t i = 0; i < vectors->count(); ++i) {
      if (!fuzzing::sameFloat(back->pointerForX()[i], vectors->pointerForX()[i]) ||
          !fuzzing::sameFloat(back->pointerForY()[i], vectors->pointerForY()[i]) ||
          !fuzzing::sameFloat(back->pointerForZ()[i], vectors->pointerForZ()[i])) {
        std::abort();
      }
    }
  } else {
    fuzzing::requireReason(error);
  }
  return 0;
}
