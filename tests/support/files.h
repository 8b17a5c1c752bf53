#pragma once
// A file's bytes as one string (empty when it cannot be read).
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace testing_support {

inline std::string contentsOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace testing_support
