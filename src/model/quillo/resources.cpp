#include "quillo/resources.h"

#include <cstdlib>
#include <system_error>

namespace quillo {
namespace {

bool isFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  return std::filesystem::is_directory(folder, ignored);
}

// The folder of the running program (for the Python module, the interpreter's).
std::filesystem::path programFolder() {
  std::error_code failed;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
  return failed ? std::filesystem::path{} : program.parent_path();
}

}  // namespace

std::filesystem::path resourceFolder() {
  if (const char* chosen = std::getenv("PLEXVIEW_RESOURCES"); chosen && *chosen) return chosen;
  if (const auto program = programFolder(); !program.empty()) {
    const auto installed = (program / ".." / "share" / "plexview").lexically_normal();
    if (isFolder(installed)) return installed;
  }
  if (isFolder(PLEXVIEW_BUILD_RESOURCES)) return PLEXVIEW_BUILD_RESOURCES;
  return PLEXVIEW_SOURCE_RESOURCES;
}

std::filesystem::path resourcePath(const std::filesystem::path& name) {
  return resourceFolder() / name;
}

}  // namespace quillo
