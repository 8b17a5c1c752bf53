#pragma once
// Opening a network file by its kind, and the network shown when no file is
// given.
#include <filesystem>

#include "plexora/QLONetwork.h"
#include "quillo/ReadError.h"

namespace app {

// Reads the file with the reader of its type (app/doctypes.h: the extension,
// else the first character). Null with the reason in `error` when the file
// cannot be read.
QLONetwork::Ptr openNetworkFile(const std::filesystem::path& file, ReadError& error);

// The network a window opens on without a file: random, 2000 vertices of
// average degree 4.
inline constexpr std::uint64_t kGeneratedVertices = 2000;
inline constexpr double kGeneratedDegree = 4.0;
QLONetwork::Ptr generatedNetwork();

}  // namespace app
