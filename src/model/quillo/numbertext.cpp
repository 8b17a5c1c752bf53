#include "quillo/numbertext.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace quillo {
namespace {

template <class T>
void appendChars(std::string& out, T value) {
  char buffer[64];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

template <class T>
void appendFloating(std::string& out, T value) {
  if (std::isnan(value)) {
    out += "nan";
  } else if (std::isinf(value)) {
    out += value < 0 ? "-inf" : "inf";
  } else {
    appendChars(out, value);
  }
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) != b[i]) return false;
  }
  return true;
}

// Special values handled by hand so the accepted spellings do not depend on
// the standard library's choices.
template <class T>
std::optional<T> parseSpecial(std::string_view token) {
  bool negative = false;
  if (!token.empty() && (token[0] == '-' || token[0] == '+')) {
    negative = token[0] == '-';
    token.remove_prefix(1);
  }
  if (equalsIgnoringCase(token, "nan")) return std::numeric_limits<T>::quiet_NaN();
  if (equalsIgnoringCase(token, "inf") || equalsIgnoringCase(token, "infinity")) {
    return negative ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::infinity();
  }
  return std::nullopt;
}

template <class T>
std::optional<T> parseFloating(std::string_view token) {
  if (token.empty()) return std::nullopt;
  std::string_view digits = token;
  if (digits[0] == '+') {
    digits.remove_prefix(1);
    if (digits.empty() || digits[0] == '-' || digits[0] == '+') return std::nullopt;
  }
  T value{};
  auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::general);
  if (ec == std::errc() && ptr == digits.data() + digits.size()) return value;
  if (ec == std::errc::result_out_of_range) return std::nullopt;
  return parseSpecial<T>(token);
}

template <class T>
std::optional<T> parseInteger(std::string_view token) {
  if (!token.empty() && token[0] == '+') token.remove_prefix(1);
  if (token.empty() || token[0] == '+') return std::nullopt;
  T value{};
  auto [ptr, ec] = std::from_chars(token.data(), token.data() + token.size(), value);
  if (ec != std::errc() || ptr != token.data() + token.size()) return std::nullopt;
  return value;
}

}  // namespace

void appendNumber(std::string& out, float value) {
  appendFloating(out, value);
}
void appendNumber(std::string& out, double value) {
  appendFloating(out, value);
}
void appendNumber(std::string& out, std::int64_t value) {
  appendChars(out, value);
}
void appendNumber(std::string& out, std::uint64_t value) {
  appendChars(out, value);
}

std::string quoted(std::string_view token, std::size_t limit) {
  std::string out;
  out.reserve(limit + 5);
  out += '\'';
  out.append(token.substr(0, limit));
  if (token.size() > limit) out += "...";
  out += '\'';
  return out;
}

std::string numberText(float value) {
  std::string out;
  appendNumber(out, value);
  return out;
}

std::string numberText(double value) {
  std::string out;
  appendNumber(out, value);
  return out;
}

std::optional<double> parseDouble(std::string_view token) {
  return parseFloating<double>(token);
}
std::optional<float> parseFloat(std::string_view token) {
  return parseFloating<float>(token);
}
std::optional<std::int64_t> parseInt64(std::string_view token) {
  return parseInteger<std::int64_t>(token);
}
std::optional<std::uint64_t> parseUInt64(std::string_view token) {
  return parseInteger<std::uint64_t>(token);
}

}  // namespace quillo
