// Fuzzes the readers through the file layer: each input is written to a file
// and read back by path, so gzip inputs are inflated (within the limit) and
// the size checks run. Every reader must accept the file or refuse it with a
// printable reason.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz_checks.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

namespace {

const std::filesystem::path& inputFile() {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() /
      ("plexview-fuzz-" + std::to_string(::getpid()) + ".net.gz");
  return file;
}

template <class Ptr>
void requireReadOrReason(const Ptr& read, const ReadError& error) {
  if (!read) fuzzing::requireReason(error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  {
    std::ofstream out(inputFile(), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    if (!out) std::abort();
  }
  ReadError error;
  auto network = QLONetwork::initWithContentsOfPajekURL(inputFile(), &error);
  requireReadOrReason(network, error);
  if (network) fuzzing::requireFinitePositions(*network);
  auto numbers = QLONumberArray::initWithContentsOfURL(inputFile(), NumberType::Float, &error);
  requireReadOrReason(numbers, error);
  auto vectors = QLOVector3dArray::initWithContentsOfURL(inputFile(), Precision::Float, &error);
  requireReadOrReason(vectors, error);
  if (vectors) fuzzing::requireFinite(*vectors);
  return 0;
}
