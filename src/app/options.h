#pragma once
// The plexview command line:
//   plexview [FILE...]                                       a window per file
//   plexview --snapshot OUT.png [--steps N] [--size WxH] [FILE]  one frame, no window
// FILE is a Pajek or GraphML network; without one a random network is generated.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace app {

enum class RunMode { Window, Snapshot, Help };

struct Options {
  RunMode mode = RunMode::Window;
  std::vector<std::filesystem::path> files;  // none: a generated network
  std::filesystem::path snapshot;            // the PNG written in Snapshot mode
  std::uint64_t steps = 200;                 // layout steps before the snapshot
  int width = 800;                           // snapshot size in pixels
  int height = 600;
};

// Either options or the reason the arguments were refused.
struct ParsedOptions {
  std::optional<Options> options;
  std::string error;
};

// `arguments` excludes the program name.
ParsedOptions parseOptions(const std::vector<std::string>& arguments);

std::string usageText();

}  // namespace app
