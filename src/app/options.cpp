#include "app/options.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <limits>
#include <string_view>

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

// The options followed by a value.
bool takesValue(std::string_view option) {
  static constexpr std::string_view kWithValue[] = {"--snapshot",   "--steps",    "--size",
                                                    "--run",        "--render",   "-o",
                                                    "--iterations", "--color-by", "--labels"};
  return std::find(std::begin(kWithValue), std::end(kWithValue), option) != std::end(kWithValue);
}

// The picture formats --render writes, by file extension.
bool isPictureName(const std::filesystem::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".png" || extension == ".pdf" || extension == ".svg";
}

// Which options appeared: the checks after the loop look at combinations.
struct Given {
  bool steps = false, iterations = false, size = false, output = false, colorBy = false;
  bool labels = false;
  bool snapshot = false, render = false;
  std::filesystem::path renderFile;
};

// Stores one option's value; an empty answer means accepted.
std::string takeValue(const std::string& option, const std::string& value, Options& options,
                      Given& given) {
  if (option == "--snapshot" || option == "--render" || option == "-o" || option == "--run") {
    if (value.empty()) return option + " needs a file name";
  }
  if (option == "--snapshot") {
    given.snapshot = true;
    options.snapshot = value;
  } else if (option == "--render") {
    given.render = true;
    given.renderFile = value;
  } else if (option == "-o") {
    given.output = true;
    options.output = value;
  } else if (option == "--run") {
    options.script = value;
  } else if (option == "--color-by") {
    if (value.empty()) return "--color-by needs a property name";
    given.colorBy = true;
    options.colorBy = value;
  } else if (option == "--labels") {
    // Nothing is selected in a render: its labels are all or none.
    if (value != "none" && value != "all") {
      return "--labels takes none or all, not " + value;
    }
    given.labels = true;
    options.labels = value;
  } else if (option == "--steps" || option == "--iterations") {
    const auto steps = parseNumber<std::uint64_t>(value);
    if (!steps) return option + " needs a whole number of steps, not " + value;
    options.steps = *steps;
    (option == "--steps" ? given.steps : given.iterations) = true;
  } else if (!parseSize(value, options.width, options.height)) {
    return "--size needs WIDTHxHEIGHT in pixels (1 to " + std::to_string(kMaxSide) +
           " each), not " + value;
  } else {
    given.size = true;
  }
  return {};
}

// The combinations refused once every option has been read; empty when the
// command line holds together.
std::string checkCombination(Options& options, const Given& given) {
  if (given.snapshot && given.render) return "--snapshot and --render cannot be combined";
  if (given.steps && !given.snapshot) return "--steps applies to --snapshot only";
  if (given.size && !given.snapshot && !given.render) {
    return "--size applies to --snapshot and --render only";
  }
  if ((given.iterations || given.output || given.colorBy || given.labels) && !given.render) {
    return "--iterations, -o, --color-by and --labels apply to --render only";
  }
  if (!options.script.empty() && (given.snapshot || given.render)) {
    return "--run applies to the window mode only, not to --snapshot or --render";
  }
  if (given.snapshot) {
    options.mode = RunMode::Snapshot;
    if (options.files.size() > 1) {
      return "--snapshot shows one network file (got " + options.files[0].string() + " and " +
             options.files[1].string() + ")";
    }
  }
  if (given.render) {
    options.mode = RunMode::Render;
    if (!options.files.empty()) {
      return "--render draws the one network file given with it (got " + options.files[0].string() +
             " as well)";
    }
    if (!given.output) return "--render needs -o OUT.png, OUT.pdf or OUT.svg";
    if (!isPictureName(options.output)) {
      return "-o " + options.output.string() +
             ": the picture's name must end in .png, .pdf or .svg";
    }
    options.files.push_back(given.renderFile);
  }
  return {};
}

}  // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  Given given;
  bool optionsEnded = false;
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
    if (arg == "-h" || arg == "--help" || arg == "--version") {
      options.mode = arg == "--version" ? RunMode::Version : RunMode::Help;
      return {options, {}};
    }
    // --option=VALUE is --option VALUE.
    const auto equals = arg.starts_with("--") ? arg.find('=') : std::string::npos;
    const std::string name = arg.substr(0, equals);
    if (!takesValue(name)) return refuse("unknown option " + arg);
    std::string value;
    if (equals != std::string::npos) {
      value = arg.substr(equals + 1);
    } else if (i + 1 < arguments.size()) {
      value = arguments[++i];
    } else {
      return refuse(arg + " needs a value");
    }
    if (std::string reason = takeValue(name, value, options, given); !reason.empty()) {
      return refuse(std::move(reason));
    }
  }
  if (std::string reason = checkCombination(options, given); !reason.empty()) {
    return refuse(std::move(reason));
  }
  return {options, {}};
}

std::string usageText() {
  return "Usage: plexview [--run SCRIPT.py] [FILE]...\n"
         "  or:  plexview --snapshot OUT.png [--steps N] [--size WxH] [FILE]\n"
         "  or:  plexview --render FILE -o OUT.png|OUT.pdf|OUT.svg [--iterations N]\n"
         "                [--size WxH] [--color-by PROPERTY] [--labels MODE]\n"
         "View complex networks in 3-D. Each FILE (Pajek, GraphML, GML, GEXF or an\n"
         "edge list; gzip-compressed or not) opens in a window of its own; without\n"
         "one a random network of 2000 vertices is generated.\n"
         "\n"
         "      --run SCRIPT.py      run a Python script once the first window is open\n"
         "      --snapshot OUT.png   lay the network out and write one frame as a PNG\n"
         "                           file, without showing a window\n"
         "      --steps N            layout steps before the snapshot (default 200)\n"
         "      --render FILE        lay FILE out, colour it and write a picture,\n"
         "                           without showing a window\n"
         "  -o OUT                   the picture --render writes (.png, .pdf or .svg)\n"
         "      --iterations N       layout steps before the render (default 200)\n"
         "      --color-by PROPERTY  the vertex property the render colours by\n"
         "                           (default: the degree)\n"
         "      --labels MODE        vertex names on the render: none (default) or all\n"
         "      --size WxH           picture size in pixels (default 800x600)\n"
         "  -h, --help               show this help and exit\n"
         "      --version            show the version and exit\n"
         "      --                   what follows are file names, not options\n"
         "\n"
         "--snapshot and --render draw with OpenGL and need a display; without one\n"
         "--render runs itself under xvfb-run when that is installed.\n"
         "Exit status: 0 when done, 1 when the run failed, 2 for a command line refused.\n";
}

std::string versionNumber() {
  return PLEXVIEW_VERSION;
}

std::string versionText() {
  return "plexview " + versionNumber() +
         "\n"
         "Copyright (C) 2026 the Plexview developers.\n"
         "There is NO WARRANTY, to the extent permitted by law.\n";
}

std::string tryHelpText() {
  return "Try 'plexview --help' for more information.\n";
}

}  // namespace app
