#include "colour/hexcolour.h"

#include <cstdint>
#include <cstdio>
#include <limits>

namespace colour {
namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// A hexadecimal unsigned 32-bit number at the start of `text`; 0 when there
// is none, the largest value when it does not fit.
std::uint32_t scanHex(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && isBlank(text[i])) ++i;
  const bool prefixed = i + 2 < text.size() && text[i] == '0' &&
                        (text[i + 1] == 'x' || text[i + 1] == 'X') && hexDigit(text[i + 2]) >= 0;
  if (prefixed) i += 2;
  std::uint64_t value = 0;
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
  for (; i < text.size(); ++i) {
    const int digit = hexDigit(text[i]);
    if (digit < 0) break;
    value = value * 16 + static_cast<std::uint64_t>(digit);
    if (value > kLargest) value = kLargest + 1;  // stays beyond range, cannot wrap
  }
  return value > kLargest ? static_cast<std::uint32_t>(kLargest)
                          : static_cast<std::uint32_t>(value);
}

float channel(std::uint32_t bits, int shift) {
  return static_cast<float>(static_cast<double>((bits >> shift) & 0xFFu) * 0.00392156862745098);
}

unsigned byteOf(float component) {
  if (!(component > 0.0f)) return 0;  // also NaN
  if (component >= 1.0f) return 255;
  return static_cast<unsigned>(double{component} * 255.99998474121094);
}

}  // namespace

Rgba colorFromHexadecimalValue(std::string_view text) {
  if (!text.empty() && text.front() == '#') text.remove_prefix(1);
  const std::uint32_t bits = scanHex(text);
  return Rgba{channel(bits, 16), channel(bits, 8), channel(bits, 0), 1.0f};
}

std::string hexadecimalValue(const Rgba& colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byteOf(colour.r), byteOf(colour.g),
                byteOf(colour.b));
  return text;
}

}  // namespace colour
