#pragma once
// Whole-file reads and safe writes used by every reader and writer.
#include <filesystem>
#include <string>
#include <string_view>

#include "quillo/ReadError.h"

namespace quillo {

// Reads the file into `out`. On failure answers false and fills `error`
// (which may be null) with the file name and the system's reason.
bool readWholeFile(const std::filesystem::path& file, std::string& out, ReadError* error);

// Writes `contents` to `file`. In Atomic mode the text goes to a temporary file
// in the same folder that is flushed and renamed over the target; on any
// failure the temporary file is removed and the target is left as it was.
// Answers false with a reason in `error` (which may be null) on failure.
bool writeWholeFile(const std::filesystem::path& file, std::string_view contents, WriteMode mode,
                    std::string* error);

}  // namespace quillo
