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
// Networks other tools write, read by QLONetwork::initWithContentsOfURL and
// opened as untitled documents.
inline constexpr std::string_view kGmlNetworkType = "com.tarnwell.gmlNetwork";
inline constexpr std::string_view kGexfNetworkType = "com.tarnwell.gexfNetwork";
inline constexpr std::string_view kEdgeListType = "com.tarnwell.edgeList";
// What every file's type conforms to.
inline constexpr std::string_view kDataType = "public.data";

// The type of the file at `file`, as plexora::networkFormatOf tells it: by
// its extension (case-insensitive, a trailing ".gz" set aside) when it is one
// of ours, otherwise by how the text starts ('<' for the native type unless
// the root is <gexf, '*' for Pajek, "graph [" for GML, else an edge list).
// Nothing, with the file and the reason in `error`, when the file cannot be
// read (it is missing, unreadable, or not a regular file).
std::optional<std::string> typeOfFile(const std::filesystem::path& file, ReadError& error);

// Whether `type` is one of the other tools' network types.
bool isImportedNetworkType(std::string_view type);

// Whether `type` is `parent` or lies below it in the type tree. Unknown
// types conform only to themselves.
bool typeConformsTo(std::string_view type, std::string_view parent);

// The extensions (without the dot) of one of our types; empty for others.
std::vector<std::string> extensionsForType(std::string_view type);

}  // namespace app
