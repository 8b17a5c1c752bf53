// The program's command line: the window, snapshot, render, help and version modes
// with their options, and the combinations refused with the reason.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/options.h"

namespace {

namespace fs = std::filesystem;

// Every option the parser fills in, in one line.
std::string summary(const app::Options& o) {
  static const char* const modes[] = {"window", "snapshot", "render", "help", "version"};
  std::ostringstream text;
  text << modes[static_cast<int>(o.mode)];
  for (const fs::path& file : o.files) text << ' ' << file.string();
  text << " | " << o.script.string() << " | " << o.snapshot.string() << " | " << o.output.string()
       << " | " << o.colorBy << ' ' << o.labels << " | " << o.steps << ' ' << o.width << 'x'
       << o.height;
  return text.str();
}

TEST(Options, AcceptedCommandLines) {
  const std::string D = summary(app::Options{}).substr(summary(app::Options{}).rfind(" | ") + 3);
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "window |  |  |  |  none | " + D},
      {{"--", "-dash.net", "a.net"}, "window -dash.net a.net |  |  |  |  none | " + D},
      {{"--snapshot=o=1.png", "--size=3x4", "--steps=5", "--", "--size=1x1"},
       "snapshot --size=1x1 |  | o=1.png |  |  none | 5 3x4"},
      {{"a.net", "--run", "s.py", "b.net"}, "window a.net b.net | s.py |  |  |  none | " + D},
      {{"--render", "a.net", "-o", "o.png"}, "render a.net |  |  | o.png |  none | " + D},
      {{"-o", "o.SVG", "--iterations", "0", "--render", "a.net", "--size", "30x20", "--color-by",
        "Node Strength", "--labels=all"},
       "render a.net |  |  | o.SVG | Node Strength all | 0 30x20"},
  };
  for (const auto& [args, expected] : cases) {
    const app::ParsedOptions parsed = app::parseOptions(args);
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(summary(*parsed.options), expected) << ::testing::PrintToString(args);
  }
}

TEST(Options, RefusedCombinationsSayWhy) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--bogus=1"}, "--bogus=1"},
      {{"--snapshot"}, "--snapshot"},
      {{"--snapshot", "o.png", "--steps", "12x"}, "12x"},
      {{"--snapshot", "o.png", "--size", "0x10"}, "0x10"},
      {{"--snapshot", "o.png", "--size", "20000x10"}, "20000x10"},
      {{"--steps", "10"}, "--snapshot"},
      {{"--snapshot", "o.png", "a.net", "b.net"}, "b.net"},
      {{"--render", "a.net"}, "-o"},
      {{"--render", "a.net", "-o", "o.jpg"}, "o.jpg"},
      {{"--render", "a.net", "-o", "o.png", "--iterations", "-3"}, "-3"},
      {{"--render", "a.net", "-o", "o.png", "--steps", "3"}, "--steps"},
      {{"--render", "a.net", "-o", "o.png", "--snapshot", "s.png"}, "--render"},
      {{"--snapshot", "s.png", "--run", "s.py"}, "--run"},
      {{"a.net", "-o", "o.png"}, "--render"},
      {{"--render", "a.net", "-o", "o.png", "--labels", "selected"}, "none or all"},
  };
  for (const auto& [args, reason] : cases) {
    const app::ParsedOptions parsed = app::parseOptions(args);
    EXPECT_FALSE(parsed.options) << ::testing::PrintToString(args);
    EXPECT_NE(parsed.error.find(reason), std::string::npos)
        << ::testing::PrintToString(args) << ": " << parsed.error;
  }
}

}  // namespace
