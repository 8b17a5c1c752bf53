// Fuzzes the GML, GEXF and edge-list readers (the input's first byte picks
// one): no input may crash them or escape with anything but a refusal that
// has a printable reason, and whatever they accept is written back by our
// GML and GEXF writers and read again to the same counts, edges and flags.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz_checks.h"
#include "plexora/QLONetwork.h"
#include "plexora/formats.h"

namespace {

constexpr std::uint64_t kLargestRoundTrip = 20000;

using Reader = std::shared_ptr<QLONetwork> (*)(std::string_view, const std::string&, ReadError*);
using Writer = std::string (*)(const QLONetwork&);

void checkReadsBack(const QLONetwork& network, Writer write, Reader read) {
  ReadError error;
  auto back = read(write(network), "written", &error);
  if (!back) std::abort();
  if (back->verticesCount != network.verticesCount || back->edgesCount != network.edgesCount ||
      back->isDirected() != network.isDirected()) {
    std::abort();
  }
  for (std::uint64_t k = 0; k < network.edgesCount; ++k) {
    if (back->edgeFromList[k] != network.edgeFromList[k] ||
        back->edgeToList[k] != network.edgeToList[k]) {
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const Reader readers[] = {plexora::readGml, plexora::readGexf, plexora::readEdgeList};
  const Reader read = readers[data[0] % 3];
  std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  ReadError error;
  if (auto network = read(text, "fuzz", &error)) {
    fuzzing::requireFinitePositions(*network);
    if (network->countVertices() <= kLargestRoundTrip) {
      checkReadsBack(
          *network, [](const QLONetwork& n) { return plexora::gmlText(n); }, plexora::readGml);
      checkReadsBack(
          *network, [](const QLONetwork& n) { return plexora::gexfText(n); }, plexora::readGexf);
    }
  } else {
    fuzzing::requireReason(error);
  }
  return 0;
}
