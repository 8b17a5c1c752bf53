// Fuzzes the GraphML reader: no input may crash it, a refusal must say why,
// and whatever it accepts must write and read back with the same shape. The
// first write may replace characters XML cannot carry, after which writing is
// stable: a second round trip gives the very same text.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz_checks.h"
#include "plexora/QLONetwork.h"
#include "plexora/formats.h"

namespace {

bool sameShape(const QLONetwork& a, const QLONetwork& b) {
  return a.countVertices() == b.countVertices() && a.countEdges() == b.countEdges() &&
         a.isDirected() == b.isDirected() && a.isEdgeWeighted() == b.isEdgeWeighted() &&
         a.isVertexWeighted() == b.isVertexWeighted();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadError error;
  auto network = plexora::readGraphml(text, "fuzz", &error);
  if (!network) {
    fuzzing::requireReason(error);
    return 0;
  }
  const std::string first = plexora::graphmlText(*network);
  auto copy = plexora::readGraphml(first, "first", &error);
  if (!copy || !sameShape(*network, *copy)) std::abort();
  const std::string second = plexora::graphmlText(*copy);
  auto again = plexora::readGraphml(second, "second", &error);
  if (!again || !sameShape(*copy, *again) || plexora::graphmlText(*again) != second) std::abort();
  return 0;
}
