#pragma once
// Text taken from a Pajek file as UTF-8. Files come from tools that write
// UTF-8 as well as from older ones that write Latin-1; a text that is not
// well-formed UTF-8 is read as Latin-1.
#include <cstddef>
#include <string>
#include <string_view>

#include "quillo/utf8.h"

namespace plexora::pajek {

// Stores `text` in `out` as UTF-8: unchanged when it is valid UTF-8, otherwise
// each byte taken as the Latin-1 code point of the same value.
inline void assignAsUtf8(std::string& out, std::string_view text) {
  if (quillo::isValidUtf8(text)) {
    out.assign(text);
    return;
  }
  out.clear();
  out.reserve(text.size() * 2);
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      out += c;
    } else {
      out += static_cast<char>(0xC0 | (byte >> 6));
      out += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
}

}  // namespace plexora::pajek
