#pragma once
// Text taken from a Pajek file as UTF-8. Files come from tools that write
// UTF-8 as well as from older ones that write Latin-1; a text that is not
// well-formed UTF-8 is read as Latin-1.
#include <cstddef>
#include <string>
#include <string_view>

namespace plexora::pajek {

// Well-formed UTF-8: no stray continuation bytes, overlong forms, surrogates
// or code points beyond U+10FFFF.
inline bool isValidUtf8(std::string_view text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  const std::size_t n = text.size();
  std::size_t i = 0;
  while (i < n) {
    const unsigned char lead = bytes[i];
    if (lead < 0x80) {
      ++i;
      continue;
    }
    std::size_t length = 0;
    unsigned char low = 0x80;   // bounds of the second byte rule out overlong
    unsigned char high = 0xBF;  // forms, surrogates and values past U+10FFFF
    if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      return false;
    }
    if (n - i < length) return false;
    if (bytes[i + 1] < low || bytes[i + 1] > high) return false;
    for (std::size_t k = 2; k < length; ++k) {
      if (bytes[i + k] < 0x80 || bytes[i + k] > 0xBF) return false;
    }
    i += length;
  }
  return true;
}

// Stores `text` in `out` as UTF-8: unchanged when it is valid UTF-8, otherwise
// each byte taken as the Latin-1 code point of the same value.
inline void assignAsUtf8(std::string& out, std::string_view text) {
  if (isValidUtf8(text)) {
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
