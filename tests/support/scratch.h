#pragma once
// A fresh folder per test, removed afterwards, and a way to fill files in it.
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "plexview-test-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // Writes the bytes as they stand and answers the file's path.
  std::filesystem::path write(const std::string& name, std::string_view bytes) const {
    const std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<long>(bytes.size()));
    return file;
  }

 private:
  std::filesystem::path path_;
};
