// Fuzzes the one-number-per-line and three-numbers-per-line array readers: no
// input may crash them, and whatever they accept must write and read back to
// the same bits.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadError error;
  if (auto numbers = QLONumberArray::initWithText(text, NumberType::Float, "fuzz", &error)) {
    auto back = QLONumberArray::initWithText(numbers->text(), NumberType::Float, "again", &error);
    if (!back || back->count() != numbers->count() ||
        std::memcmp(back->QLO_dataPointer(), numbers->QLO_dataPointer(),
                    numbers->count() * sizeof(float)) != 0) {
      std::abort();
    }
  } else if (error.message.empty()) {
    std::abort();
  }
  if (auto vectors = QLOVector3dArray::initWithText(text, Precision::Float, "fuzz", &error)) {
    auto back = QLOVector3dArray::initWithText(vectors->text(), Precision::Float, "again", &error);
    if (!back || back->count() != vectors->count()) std::abort();
    for (std::uint64_t i = 0; i < vectors->count(); ++i) {
      if (std::memcmp(&back->pointerForX()[i], &vectors->pointerForX()[i], sizeof(float)) != 0 ||
          std::memcmp(&back->pointerForZ()[i], &vectors->pointerForZ()[i], sizeof(float)) != 0) {
        std::abort();
      }
    }
  } else if (error.message.empty()) {
    std::abort();
  }
  return 0;
}
