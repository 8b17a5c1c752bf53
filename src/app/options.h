#pragma once
// The plexview command line:
//   plexview [--run SCRIPT.py] [FILE...]                     a window per file
//   plexview --snapshot OUT.png [--steps N] [--size WxH] [FILE]  one frame, no window
//   plexview --render FILE -o OUT.{png,pdf,svg} [--iterations N] [--size WxH]
//            [--color-by PROPERTY] [--labels MODE]            a picture, no window
//   plexview --help | --version                               text, then exit
// Long options also take their value as --option=VALUE.
// FILE is a network in any format the program reads; without one a random
// network is generated.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace app {

enum class RunMode { Window, Snapshot, Render, Help, Version };

struct Options {
  RunMode mode = RunMode::Window;
  std::vector<std::filesystem::path> files;  // none: a generated network (Render: exactly one)
  std::filesystem::path snapshot;            // the PNG written in Snapshot mode
  std::filesystem::path output;              // the picture written in Render mode
  std::filesystem::path script;              // run once the first window exists (Window mode)
  std::string colorBy;                       // the property a render colours by; empty: default
  std::string labels = "none";               // the vertex labels a render draws
  std::uint64_t steps = 200;                 // layout steps before the snapshot or render
  int width = 800;                           // picture size in pixels
  int height = 600;
};

// Either options or the reason the arguments were refused.
struct ParsedOptions {
  std::optional<Options> options;
  std::string error;
};

// `arguments` excludes the program name.
ParsedOptions parseOptions(const std::vector<std::string>& arguments);

// --help: the usage with every option.
std::string usageText();

// The program's version, "0.1" (plexview.__version__ in Python).
std::string versionNumber();

// --version: "plexview VERSION" and the copyright lines.
std::string versionText();

// The short hint after a refused command line.
std::string tryHelpText();

}  // namespace app
