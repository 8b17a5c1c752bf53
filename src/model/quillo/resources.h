#pragma once
// Where the application's resource files (palettes, the start-up script) live.
#include <filesystem>

namespace quillo {

// The resource folder, looked up afresh at every call:
//   1. the folder named by the environment variable PLEXVIEW_RESOURCES, if set
//      and not empty (whether or not it exists, so a wrong setting shows);
//   2. share/plexview beside the installed program (<program dir>/../share/plexview)
//      if that folder exists;
//   3. the copy of resources/ in the build tree, if it exists;
//   4. the source tree's resources/ folder.
std::filesystem::path resourceFolder();

// resourceFolder() / name.
std::filesystem::path resourcePath(const std::filesystem::path& name);

}  // namespace quillo
