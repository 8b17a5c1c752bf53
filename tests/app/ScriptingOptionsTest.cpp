// The command line of the scripted modes: --run for the window mode and
// --render with its picture options, accepted and refused combinations.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/options.h"

namespace {

namespace fs = std::filesystem;
using app::RunMode;

TEST(ScriptingOptions, RunAndRenderCommandLines) {
  const app::Options defaults;
  const std::uint64_t S = defaults.steps;
  const int W = defaults.width, H = defaults.height;
  struct Case {
    std::vector<std::string> args;
    RunMode mode;
    std::vector<fs::path> files;
    std::string script, output, colorBy;
    std::uint64_t steps;
    int width, height;
  };
  const Case cases[] = {
      {{"--run", "s.py"}, RunMode::Window, {}, "s.py", "", "", S, W, H},
      {{"a.net", "--run", "s.py", "b.net"},
       RunMode::Window,
       {"a.net", "b.net"},
       "s.py",
       "",
       "",
       S,
       W,
       H},
      {{"--render", "a.net", "-o", "o.png"}, RunMode::Render, {"a.net"}, "", "o.png", "", S, W, H},
      {{"-o", "o.SVG", "--iterations", "0", "--render", "a.net", "--size", "30x20", "--color-by",
        "Node Strength"},
       RunMode::Render,
       {"a.net"},
       "",
       "o.SVG",
       "Node Strength",
       0,
       30,
       20},
      {{"--render", "-dash.net", "-o", "x.pdf"},
       RunMode::Render,
       {"-dash.net"},
       "",
       "x.pdf",
       "",
       S,
       W,
       H},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.args));
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    ASSERT_TRUE(parsed.options) << parsed.error;
    const app::Options& o = *parsed.options;
    EXPECT_EQ(o.mode, c.mode);
    EXPECT_EQ(o.files, c.files);
    EXPECT_EQ(o.script, fs::path(c.script));
    EXPECT_EQ(o.output, fs::path(c.output));
    EXPECT_EQ(o.colorBy, c.colorBy);
    EXPECT_EQ(o.steps, c.steps);
    EXPECT_EQ(o.width, c.width);
    EXPECT_EQ(o.height, c.height);
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
