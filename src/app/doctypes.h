#pragma once
// Document types: the identifiers of the files a window opens, the file name
// extensions that carry them, and a small conformance tree so that "is this
// a network file of kind T" is asked by conformance, not by string equality.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillo/ReadError.h"

namespace app {

// The native network document (GraphML).
inline constexpr std::string_view kComplexNetworkType = "com.tarnwell.complexNetwork";
// A Pajek network file.
inline constexpr std::string_view kPajekNetworkType = "com.tarnwell.pajekNetwork";
// What every file's type conforms to.
inline constexpr std::string_view kDataType = "public.data";

// The type of the file at `file`: by its extension (case-insensitive, under a
// ".gz" ending for compressed files) when it is one of ours, otherwise by its first character that
// is not white space (after a UTF-8 byte order mark): '<' for the native type, anything else Pajek.
// Nothing, with the file and the reason in `error`, when the file cannot be read (it is missing,
// unreadable, or not a regular file).
std::optional<std::string> typeOfFile(const std::filesystem::path& file, ReadError& error);

// Whether `type` is `parent` or lies below it in the type tree. Unknown
// types conform only to themselves.
bool typeConformsTo(std::string_view type, std::string_view parent);

// The extensions (without the dot) of one of our types; empty for others.
std::vector<std::string> extensionsForType(std::string_view type);

}  // namespace app
