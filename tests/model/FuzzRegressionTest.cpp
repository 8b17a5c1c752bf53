// Replays hostile inputs kept under tests/fuzz/regressions (adversarial sizes,
// entity expansion, deep nesting, binary bytes, text that is not UTF-8,
// non-finite numbers, damaged gzip, and anything a fuzzer ever found) at the
// readers' real limits. Each must either read, hand out only finite
// positions and survive a write and a second read, or be refused with a
// printable reason.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "quillo/fileio.h"
#include "quillo/utf8.h"

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

void expectReason(const ReadError& error) {
  EXPECT_FALSE(error.message.empty());
  EXPECT_TRUE(quillo::isValidUtf8(error.describe())) << error.describe();
}

void expectFinite(const PropertyValue& value) {
  const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value);
  if (!vectors) return;
  for (std::uint64_t i = 0; i < (*vectors)->count(); ++i) {
    for (double c : (*vectors)->vectorAtIndex(i)) EXPECT_TRUE(std::isfinite(c)) << i;
  }
}

}  // namespace

// Read from memory; what reads must survive a write and a second read.
TEST(FuzzRegressions, NetworkInputs) {
  using Read = QLONetwork::Ptr (*)(std::string_view, const std::string&, ReadError*);
  using Write = std::string (*)(const QLONetwork&);
  const std::tuple<const char*, Read, Write> readers[] = {
      {"pajek", plexora::readPajek, [](const QLONetwork& n) { return plexora::pajekText(n); }},
      {"graphml", plexora::readGraphml,
       [](const QLONetwork& n) { return plexora::graphmlText(n); }},
  };
  for (const auto& [folder, read, write] : readers) {
    for (const auto& file : inputs(folder)) {
      SCOPED_TRACE(file.string());
      ReadError error;
      auto network = read(contents(file), "input", &error);
      if (!network) {
        expectReason(error);
        continue;
      }
      expectFinite(network->propertyForKey("Position"));
      auto back = read(write(*network), "input", &error);
      ASSERT_TRUE(back) << error.describe();
      EXPECT_EQ(back->countVertices(), network->countVertices());
      EXPECT_EQ(back->countEdges(), network->countEdges());
    }
  }
}

TEST(FuzzRegressions, TextArrayInputs) {
  for (const auto& file : inputs("text")) {
    SCOPED_TRACE(file.string());
    std::string text = contents(file);
    ReadError error;
    if (!QLONumberArray::initWithText(text, NumberType::Float, "input", &error)) {
      expectReason(error);
    }
    error = {};
    if (auto vectors = QLOVector3dArray::initWithText(text, Precision::Float, "input", &error)) {
      expectFinite(vectors);
    } else {
      expectReason(error);
    }
  }
}

// Read by path, through the file layer (gzip, size checks), by every reader.
TEST(FuzzRegressions, FileInputs) {
  for (const auto& file : inputs("files")) {
    SCOPED_TRACE(file.string());
    ReadError error;
    if (auto network = QLONetwork::initWithContentsOfPajekURL(file, &error)) {
      expectFinite(network->propertyForKey("Position"));
    } else {
      expectReason(error);
    }
    if (!QLONumberArray::initWithContentsOfURL(file, NumberType::Float, &error)) {
      expectReason(error);
    }
    if (auto vectors = QLOVector3dArray::initWithContentsOfURL(file, Precision::Float, &error)) {
      expectFinite(vectors);
    } else {
      expectReason(error);
    }
  }
}
