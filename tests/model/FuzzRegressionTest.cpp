// Replays hostile inputs kept under tests/fuzz/regressions (adversarial sizes,
// entity expansion, deep nesting, binary bytes, and anything a fuzzer ever
// found). Each must either read, and then survive a write and a second read,
// or be refused with a message.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "quillo/fileio.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> inputs(const std::string& reader) {
  std::vector<fs::path> files;
  fs::path dir = fs::path(PLEXVIEW_FUZZ_REGRESSIONS) / reader;
  if (!fs::is_directory(dir)) return files;
  for (const auto& entry : fs::directory_iterator(dir)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  EXPECT_FALSE(files.empty()) << "no inputs under " << dir;
  return files;
}

std::string contents(const fs::path& file) {
  std::string text;
  EXPECT_TRUE(quillo::readWholeFile(file, text, nullptr)) << file;
  return text;
}

template <class Read, class Write>
void replay(const std::string& reader, Read read, Write write) {
  for (const auto& file : inputs(reader)) {
    SCOPED_TRACE(file.string());
    ReadError error;
    auto network = read(contents(file), error);
    if (!network) {
      EXPECT_FALSE(error.message.empty());
      continue;
    }
    ReadError again;
    auto back = read(write(*network), again);
    ASSERT_TRUE(back) << again.describe();
    EXPECT_EQ(back->countVertices(), network->countVertices());
    EXPECT_EQ(back->countEdges(), network->countEdges());
  }
}

}  // namespace

TEST(FuzzRegressions, PajekInputs) {
  plexora::setMaxReadVertices(100000);
  replay(
      "pajek",
      [](const std::string& text, ReadError& e) { return plexora::readPajek(text, "input", &e); },
      [](const QLONetwork& n) { return plexora::pajekText(n); });
  plexora::setMaxReadVertices(std::uint64_t{1} << 28);
}

TEST(FuzzRegressions, GraphmlInputs) {
  plexora::setMaxReadVertices(100000);
  replay(
      "graphml",
      [](const std::string& text, ReadError& e) { return plexora::readGraphml(text, "input", &e); },
      [](const QLONetwork& n) { return plexora::graphmlText(n); });
  plexora::setMaxReadVertices(std::uint64_t{1} << 28);
}

TEST(FuzzRegressions, TextArrayInputs) {
  for (const auto& file : inputs("text")) {
    SCOPED_TRACE(file.string());
    std::string text = contents(file);
    ReadError error;
    if (!QLONumberArray::initWithText(text, NumberType::Float, "input", &error)) {
      EXPECT_FALSE(error.message.empty());
    }
    error = {};
    if (!QLOVector3dArray::initWithText(text, Precision::Float, "input", &error)) {
      EXPECT_FALSE(error.message.empty());
    }
  }
}
