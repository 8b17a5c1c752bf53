// Fuzzes the Pajek reader at its real size limits: no input may crash it or
// escape with anything but a refusal, and whatever it accepts must be written
// and read back to the same vertices, labels, edges, weights and flags.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz_checks.h"
#include "plexora/QLONetwork.h"
#include "plexora/formats.h"

namespace {

constexpr std::uint64_t kLargestRoundTrip = 100000;

// The label as the writer puts it between quotes.
std::string writtenLabel(std::string label) {
  for (char& c : label) {
    if (c == '"') c = '\'';
    if (c == '\r' || c == '\n' || c == '\t') c = ' ';
  }
  return label;
}

void checkReadsBack(const QLONetwork& network) {
  ReadError error;
  auto back = plexora::readPajek(plexora::pajekText(network), "written", &error);
  if (!back) std::abort();
  if (back->verticesCount != network.verticesCount || back->edgesCount != network.edgesCount ||
      back->isDirected() != network.isDirected() ||
      back->isEdgeWeighted() != network.isEdgeWeighted()) {
    std::abort();
  }
  for (std::uint64_t k = 0; k < network.edgesCount; ++k) {
    if (back->edgeFromList[k] != network.edgeFromList[k] ||
        back->edgeToList[k] != network.edgeToList[k] ||
        !fuzzing::sameFloat(back->edgesWeights[k], network.edgesWeights[k])) {
      std::abort();
    }
  }
  for (std::uint64_t v = 0; v < network.verticesCount; ++v) {
    if (back->vertexName(v) != writtenLabel(network.vertexName(v))) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadError error;
  if (auto network = plexora::readPajek(text, "fuzz", &error)) {
    fuzzing::requireFinitePositions(*network);
    // Writing out millions of declared vertices would only slow the run; the
    // read itself is what the limits are about.
    if (network->countVertices() <= kLargestRoundTrip) checkReadsBack(*network);
  } else {
    fuzzing::requireReason(error);
  }
  return 0;
}
