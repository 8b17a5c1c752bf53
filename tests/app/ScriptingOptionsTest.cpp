// The command line of the scripted modes: --run for the window mode and
// --render with its picture options, accepted and refused combinations.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/options.h"

namespace {

namespace fs = std::filesystem;
using app::RunMode;

// Every option the parser fills in, in one line.
std::string summary(const app::Options& o) {
  std::ostringstream text;
  text << (o.mode == RunMode::Window ? "window" : o.mode == RunMode::Render ? "render" : "other");
  for (const fs::path& file : o.files) text << ' ' << file.string();
  text << " | " << o.script.string() << " | " << o.output.string() << " | " << o.colorBy << " | "
       << o.steps << ' ' << o.width << 'x' << o.height;
  return text.str();
}

TEST(ScriptingOptions, RunAndRenderCommandLines) {
  const app::Options defaults;
  const std::string D = summary(defaults).substr(summary(defaults).rfind(" | ") + 3);
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--run", "s.py"}, "window | s.py |  |  | " + D},
      {{"a.net", "--run", "s.py", "b.net"}, "window a.net b.net | s.py |  |  | " + D},
      {{"--render", "a.net", "-o", "o.png"}, "render a.net |  | o.png |  | " + D},
      {{"-o", "o.SVG", "--iterations", "0", "--render", "a.net", "--size", "30x20", "--color-by",
        "Node Strength"},
       "render a.net |  | o.SVG | Node Strength | 0 30x20"},
      {{"--render", "-dash.net", "-o", "x.pdf"}, "render -dash.net |  | x.pdf |  | " + D},
  };
  for (const auto& [args, expected] : cases) {
    const app::ParsedOptions parsed = app::parseOptions(args);
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(summary(*parsed.options), expected) << ::testing::PrintToString(args);
  }
}

TEST(ScriptingOptions, RefusedCombinationsSayWhy) {
  struct Case {
    std::vector<std::string> args;
    std::string reasonMentions;
  };
  const Case cases[] = {
      {{"--render", "a.net"}, "-o"},
      {{"--render", "a.net", "-o", "o.jpg"}, "o.jpg"},
      {{"--render", "a.net", "-o", "png"}, ".png"},
      {{"--render", "a.net", "-o", ""}, "-o"},
      {{"--render", "a.net", "-o"}, "-o"},
      {{"--render", "a.net", "b.net", "-o", "o.png"}, "b.net"},
      {{"--render", "a.net", "-o", "o.png", "--iterations", "-3"}, "-3"},
      {{"--render", "a.net", "-o", "o.png", "--steps", "3"}, "--steps"},
      {{"--render", "a.net", "-o", "o.png", "--color-by", ""}, "--color-by"},
      {{"--render", "a.net", "-o", "o.png", "--snapshot", "s.png"}, "--render"},
      {{"--render", "a.net", "-o", "o.png", "--run", "s.py"}, "--run"},
      {{"--snapshot", "s.png", "--run", "s.py"}, "--run"},
      {{"--snapshot", "s.png", "--iterations", "5"}, "--render"},
      {{"a.net", "-o", "o.png"}, "--render"},
      {{"--color-by", "Name"}, "--render"},
      {{"--run"}, "--run"},
      {{"--run", ""}, "--run"},
  };
  for (const Case& c : cases) {
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    EXPECT_FALSE(parsed.options) << ::testing::PrintToString(c.args);
    EXPECT_NE(parsed.error.find(c.reasonMentions), std::string::npos)
        << ::testing::PrintToString(c.args) << ": " << parsed.error;
  }
}

}  // namespace
