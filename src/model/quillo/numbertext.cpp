#include "quillo/numbertext.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "quillo/utf8.h"

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
  return '\'' + printable(token, limit) + '\'';
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
FiniteFloat parseFiniteFloat(std::string_view token) {
  // The common case in one parse; the double parse only tells apart what the
  // float parse refused.
  if (const std::optional<float> exact = parseFloating<float>(token)) {
    if (std::isfinite(*exact)) return {*exact, FloatProblem::None};
    return {0.0f, FloatProblem::NotFinite};
  }
  const std::optional<double> wide = parseFloating<double>(token);
  if (!wide) {
    // Text beyond the double range ("1e999") is still a number, only too big.
    const bool numeric = !token.empty() &&
                         token.find_first_not_of("+-.0123456789eE") == std::string_view::npos &&
                         token.find_first_of("0123456789") != std::string_view::npos;
    return {0.0f, numeric ? FloatProblem::OutOfRange : FloatProblem::NotANumber};
  }
  if (!std::isfinite(*wide)) return {0.0f, FloatProblem::NotFinite};
  if (std::fabs(*wide) > static_cast<double>(std::numeric_limits<float>::max())) {
    return {0.0f, FloatProblem::OutOfRange};
  }
  return {static_cast<float>(*wide), FloatProblem::None};  // below the float range
}

std::string floatProblemText(std::string_view token, FloatProblem problem) {
  switch (problem) {
    case FloatProblem::None:
      break;
    case FloatProblem::NotANumber:
      return quoted(token) + " is not a number";
    case FloatProblem::NotFinite:
      return quoted(token) + " is not a finite number";
    case FloatProblem::OutOfRange:
      return quoted(token) + " is out of range for a 32-bit float";
  }
  return {};
}

std::optional<std::int64_t> parseInt64(std::string_view token) {
  return parseInteger<std::int64_t>(token);
}
std::optional<std::uint64_t> parseUInt64(std::string_view token) {
  return parseInteger<std::uint64_t>(token);
}

}  // namespace quillo
