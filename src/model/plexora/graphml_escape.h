#pragma once
// Text made safe for an XML 1.0 document. Markup characters become entity
// references; characters XML 1.0 cannot carry at all (control characters other
// than tab, line feed and carriage return, U+FFFE, U+FFFF) and bytes that are
// not valid UTF-8 become U+FFFD, so the document always parses.
#include <cstdint>
#include <string>
#include <string_view>

namespace plexora::graphml {

enum class XmlPlace { Content, Attribute };

namespace detail {

inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// Length of the valid UTF-8 sequence starting at text[i] (a byte >= 0x80), or
// 0 when it is malformed, overlong, a surrogate or outside Unicode.
inline std::size_t utf8SequenceLength(std::string_view text, std::size_t i) {
  auto byte = [&](std::size_t k) -> unsigned {
    return k < text.size() ? static_cast<unsigned char>(text[k]) : 0u;
  };
  auto continuation = [&](std::size_t k, unsigned low, unsigned high) {
    const unsigned b = byte(k);
    return k < text.size() && b >= low && b <= high;
  };
  const unsigned lead = byte(i);
  if (lead >= 0xC2 && lead <= 0xDF) return continuation(i + 1, 0x80, 0xBF) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {
    const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : 0xBF;
    return continuation(i + 1, low, high) && continuation(i + 2, 0x80, 0xBF) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
    return continuation(i + 1, low, high) && continuation(i + 2, 0x80, 0xBF) &&
                   continuation(i + 3, 0x80, 0xBF)
               ? 4
               : 0;
  }
  return 0;
}

}  // namespace detail

// Appends `text` escaped for element content or for a double-quoted attribute.
// Carriage returns are written as &#13; (a raw one would read back as a line
// feed); in attributes tabs and line feeds are escaped too, since a parser
// turns raw ones into spaces there.
inline void appendEscaped(std::string& out, std::string_view text, XmlPlace place) {
  std::size_t i = 0;
  const std::size_t n = text.size();
  while (i < n) {
    // Copy the longest run of characters that need no attention in one go.
    std::size_t start = i;
    while (i < n) {
      const unsigned char c = static_cast<unsigned char>(text[i]);
      if (c < 0x20 || c >= 0x80 || c == '<' || c == '>' || c == '&' || c == '"') break;
      ++i;
    }
    out.append(text.data() + start, i - start);
    if (i == n) break;
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c >= 0x80) {
      const std::size_t length = detail::utf8SequenceLength(text, i);
      // U+FFFE and U+FFFF (EF BF BE, EF BF BF) are not XML characters.
      const bool nonCharacter = length == 3 && c == 0xEF && text[i + 1] == '\xBF' &&
                                (text[i + 2] == '\xBE' || text[i + 2] == '\xBF');
      if (length == 0 || nonCharacter) {
        out += detail::kReplacement;
        i += length == 0 ? 1 : length;
      } else {
        out.append(text.data() + i, length);
        i += length;
      }
      continue;
    }
    switch (c) {
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '&':
        out += "&amp;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\r':
        out += "&#13;";
        break;
      case '\n':
        if (place == XmlPlace::Attribute) {
          out += "&#10;";
        } else {
          out += '\n';
        }
        break;
      case '\t':
        if (place == XmlPlace::Attribute) {
          out += "&#9;";
        } else {
          out += '\t';
        }
        break;
      default:
        out += detail::kReplacement;
        break;
    }
    ++i;
  }
}

// True when appendEscaped replaces no character of `text`.
inline bool carriesAsIs(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      if (c < 0x20 && c != '\t' && c != '\n' && c != '\r') return false;
      ++i;
      continue;
    }
    const std::size_t length = detail::utf8SequenceLength(text, i);
    if (length == 0 || (length == 3 && c == 0xEF && text[i + 1] == '\xBF' &&
                        (text[i + 2] == '\xBE' || text[i + 2] == '\xBF'))) {
      return false;
    }
    i += length;
  }
  return true;
}

// Appends ` name="value"`.
inline void appendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out += ' ';
  out += name;
  out += "=\"";
  appendEscaped(out, value, XmlPlace::Attribute);
  out += '"';
}

}  // namespace plexora::graphml
