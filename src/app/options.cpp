#include "app/options.h"

#include <charconv>
#include <limits>

namespace app {
namespace {

// The largest snapshot side: what GL implementations commonly allow for a
// framebuffer, and far more than a screenshot needs.
constexpr int kMaxSide = 16384;

template <typename T>
std::optional<T> parseNumber(std::string_view text) {
  T value{};
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  if (ec != std::errc() || ptr != end || text.empty()) return std::nullopt;
  return value;
}

// "WxH" with both sides in 1..kMaxSide.
bool parseSize(std::string_view text, int& width, int& height) {
  const auto x = text.find_first_of("xX");
  if (x == std::string_view::npos) return false;
  const auto w = parseNumber<int>(text.substr(0, x));
  const auto h = parseNumber<int>(text.substr(x + 1));
  if (!w || !h || *w < 1 || *h < 1 || *w > kMaxSide || *h > kMaxSide) return false;
  width = *w;
  height = *h;
  return true;
}

ParsedOptions refuse(std::string reason) {
  ParsedOptions parsed;
  parsed.error = std::move(reason);
  return parsed;
}

}  // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool stepsGiven = false, sizeGiven = false, optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& arg = arguments[i];
    const bool isOption = !optionsEnded && arg.size() > 1 && arg[0] == '-';
    if (!isOption) {
      options.files.emplace_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
      continue;
    }
    if (arg == "-h" || arg == "--help") {
      options.mode = RunMode::Help;
      return {options, {}};
    }
    const bool takesValue = arg == "--snapshot" || arg == "--steps" || arg == "--size";
    if (!takesValue) {
      std::string reason = "unknown option ";
      reason += arg;
      return refuse(std::move(reason));
    }
    if (i + 1 >= arguments.size()) {
      std::string reason = arg;
      reason += " needs a value";
      return refuse(std::move(reason));
    }
    const std::string& value = arguments[++i];
    if (arg == "--snapshot") {
      if (value.empty()) return refuse("--snapshot needs a file name");
      options.mode = RunMode::Snapshot;
      options.snapshot = value;
    } else if (arg == "--steps") {
      const auto steps = parseNumber<std::uint64_t>(value);
      if (!steps) {
        std::string reason = "--steps needs a whole number of steps, not ";
        reason += value;
        return refuse(std::move(reason));
      }
      options.steps = *steps;
      stepsGiven = true;
    } else {
      if (!parseSize(value, options.width, options.height)) {
        std::string reason = "--size needs WIDTHxHEIGHT in pixels (1 to ";
        reason += std::to_string(kMaxSide);
        reason += " each), not ";
        reason += value;
        return refuse(std::move(reason));
      }
      sizeGiven = true;
    }
  }
  if (options.mode != RunMode::Snapshot && (stepsGiven || sizeGiven)) {
    return refuse("--steps and --size apply to --snapshot only");
  }
  if (options.mode == RunMode::Snapshot && options.files.size() > 1) {
    std::string reason = "--snapshot shows one network file (got ";
    reason += options.files[0].string();
    reason += " and ";
    reason += options.files[1].string();
    reason += ")";
    return refuse(std::move(reason));
  }
  return {options, {}};
}

std::string usageText() {
  return "usage: plexview [FILE...]\n"
         "       plexview --snapshot OUT.png [--steps N] [--size WxH] [FILE]\n"
         "FILE is a Pajek (.net, .paj) or GraphML network, each opened in a window of\n"
         "its own; without one a random network of 2000 vertices is generated.\n"
         "--snapshot lays the network out for N steps (default 200) and writes one\n"
         "frame of WxH pixels (default 800x600) without showing a window.\n";
}

}  // namespace app
