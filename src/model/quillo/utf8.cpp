#include "quillo/utf8.h"

#include <cstdint>

namespace quillo {
namespace {

// The length of the well-formed UTF-8 sequence at `i`, or 0.
std::size_t sequenceLength(std::string_view text, std::size_t i) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  const std::size_t n = text.size();
  const unsigned char lead = bytes[i];
  if (lead < 0x80) return 1;
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
    return 0;
  }
  if (n - i < length) return 0;
  if (bytes[i + 1] < low || bytes[i + 1] > high) return 0;
  for (std::size_t k = 2; k < length; ++k) {
    if (bytes[i + k] < 0x80 || bytes[i + k] > 0xBF) return 0;
  }
  return length;
}

void appendEscaped(std::string& out, unsigned char byte) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  out += "\\x";
  out += kHex[byte >> 4];
  out += kHex[byte & 0xF];
}

void appendCodePoint(std::string& out, std::uint32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::string utf16ToUtf8(std::string_view bytes, bool bigEndian) {
  constexpr std::uint32_t kReplacement = 0xFFFD;
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 2);
  auto unit = [&](std::size_t i) {
    const auto a = static_cast<unsigned char>(bytes[i]);
    const auto b = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(bigEndian ? (a << 8) | b : (b << 8) | a);
  };
  std::size_t i = 0;
  while (i + 1 < bytes.size()) {
    const std::uint32_t first = unit(i);
    i += 2;
    if (first < 0xD800 || first > 0xDFFF) {
      appendCodePoint(out, first);
    } else if (first <= 0xDBFF && i + 1 < bytes.size() && unit(i) >= 0xDC00 && unit(i) <= 0xDFFF) {
      appendCodePoint(out, 0x10000 + ((first - 0xD800) << 10) + (unit(i) - 0xDC00));
      i += 2;
    } else {
      appendCodePoint(out, kReplacement);
    }
  }
  if (i < bytes.size()) appendCodePoint(out, kReplacement);  // an odd last byte
  return out;
}

}  // namespace

bool isValidUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = sequenceLength(text, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

std::string validUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 8);
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = sequenceLength(text, i);
    if (length == 0) {
      out += "\xEF\xBF\xBD";
      ++i;
    } else {
      out.append(text.substr(i, length));
      i += length;
    }
  }
  return out;
}

std::string printable(std::string_view text, std::size_t limit) {
  std::string out;
  out.reserve(text.size() < 256 ? text.size() + 8 : 256);
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (characters++ == limit) {
      out += "...";
      break;
    }
    const auto byte = static_cast<unsigned char>(text[i]);
    const std::size_t length = sequenceLength(text, i);
    if (length == 0 || byte < 0x20 || byte == 0x7F) {
      appendEscaped(out, byte);
      ++i;
    } else {
      out.append(text.substr(i, length));
      i += length;
    }
  }
  return out;
}

TextEncoding encodingOfText(std::string_view bytes) {
  if (bytes.starts_with(std::string_view("\xFF\xFE\0\0", 4)) ||
      bytes.starts_with(std::string_view("\0\0\xFE\xFF", 4))) {
    return TextEncoding::Utf32;
  }
  if (bytes.starts_with("\xFF\xFE")) return TextEncoding::Utf16LittleEndian;
  if (bytes.starts_with("\xFE\xFF")) return TextEncoding::Utf16BigEndian;
  return TextEncoding::Utf8;
}

bool textAsUtf8(std::string_view bytes, std::string& storage, std::string_view& text,
                std::string& why) {
  switch (encodingOfText(bytes)) {
    case TextEncoding::Utf32:
      why = "the text is UTF-32, which is not read; save it as UTF-8";
      return false;
    case TextEncoding::Utf16LittleEndian:
    case TextEncoding::Utf16BigEndian:
      storage = utf16ToUtf8(bytes.substr(2), encodingOfText(bytes) == TextEncoding::Utf16BigEndian);
      text = storage;
      return true;
    case TextEncoding::Utf8:
      text = bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes;
      return true;
  }
  return true;
}

}  // namespace quillo
