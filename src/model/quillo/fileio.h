#pragma once
// Whole-file reads and safe writes used by every reader and writer.
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "quillo/ReadError.h"

namespace quillo {

// Reads the file into `out`. Only regular files are read (a FIFO is never
// opened, a device never read). A file whose size changes while it is read is
// refused, and gzip-compressed contents are inflated, up to
// maxDecompressedBytes(). On failure answers false and fills `error` (which
// may be null) with the file name and the reason.
bool readWholeFile(const std::filesystem::path& file, std::string& out, ReadError* error);

// The first `count` bytes of the file's text (inflated when it is gzip), for
// telling formats apart. The same checks as readWholeFile.
bool readFileStart(const std::filesystem::path& file, std::size_t count, std::string& out,
                   ReadError* error);

// The file name without a ".gz" ending (any case), whose extension then names
// the format of the compressed text: "a/net.net.gz" gives "a/net.net".
std::filesystem::path withoutCompressionSuffix(const std::filesystem::path& file);

// The most text a compressed file may inflate to (2 GiB); tests lower it.
std::size_t maxDecompressedBytes();
void setMaxDecompressedBytes(std::size_t limit);

// Writes `contents` to `file`. In Atomic mode the text goes to a temporary file
// in the same folder (".NAME.plexview-save-N") that is flushed and renamed
// over the target; on any failure the temporary file is removed and the target
// is left as it was. The new file keeps the old one's permissions, a symbolic
// link stays a link (the file it points to is replaced), and temporaries a
// killed save of the same file left behind are removed.
// Answers false with a reason in `error` (which may be null) on failure.
bool writeWholeFile(const std::filesystem::path& file, std::string_view contents, WriteMode mode,
                    std::string* error);

}  // namespace quillo
