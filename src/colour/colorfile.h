#pragma once
// Colour files: a per-vertex property in a plain text file, one vertex a line.
// The first line decides the kind:
//   three numbers        -> colours, one "r g b" a line (a QLOVector3dArray)
//   exactly one number   -> numbers, one a line (a Float QLONumberArray)
//   anything else (two numbers, text, nothing) -> categories, one a line
// Numbers are scanned as sign, digits, decimal point, fraction and exponent,
// with only spaces and tabs between them.
#include <filesystem>
#include <string>
#include <string_view>

#include "plexora/PropertyValue.h"
#include "quillo/ReadError.h"

namespace colour {

enum class ColorFileKind { Colors, Numbers, Categories };

ColorFileKind classifyColorFile(std::string_view text);

// One category per non-empty line, spaces and tabs at its start dropped (the
// rest kept as it stands, trailing blanks included). Lines end at LF, CR or
// CRLF.
TextList categoryLines(std::string_view text);

// Bytes of a text file as UTF-8: a byte-order mark picks UTF-8/16/32; text
// without one is taken as UTF-8 when valid and as Latin-1 otherwise. Line
// breaks come out as LF.
std::string decodeText(std::string_view bytes);

struct ColorFile {
  enum class Status {
    Read,         // `value` holds the property
    Unreachable,  // the file could not be opened or read; `error` says why
    Unreadable    // a number or colour file the readers refused; `error` says where
  };
  Status status = Status::Read;
  std::string name;  // the file's name without its extension
  PropertyValue value;
  ReadError error;
};

// A colour file's property from its (decoded) text; `file` names it.
ColorFile colorFileFromText(std::string_view text, const std::filesystem::path& file);
// Reads and decodes the file, then as colorFileFromText.
ColorFile readColorFile(const std::filesystem::path& file);

}  // namespace colour
