#pragma once
// Number <-> text conversions shared by every reader and writer. Floats are
// written in the shortest form that reads back to the very same value.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

// Appends the shortest round-trip text of a value ("nan", "inf", "-inf" for
// the special values).
void appendNumber(std::string& out, float value);
void appendNumber(std::string& out, double value);
void appendNumber(std::string& out, std::int64_t value);
void appendNumber(std::string& out, std::uint64_t value);

std::string numberText(float value);
std::string numberText(double value);

// Parses a whole token as a number. Accepts a leading '+', decimal and
// exponent forms, "nan", "inf" and "infinity" in any case. Surrounding white
// space is not accepted; out-of-range values are rejected.
std::optional<double> parseDouble(std::string_view token);
std::optional<float> parseFloat(std::string_view token);
std::optional<std::int64_t> parseInt64(std::string_view token);
std::optional<std::uint64_t> parseUInt64(std::string_view token);

// A number that must be a finite 32-bit float: positions, colours, weights.
// Decimal and exponent forms only; "nan", "inf" and values beyond the float
// range are refused (values too small for a float become 0 or a subnormal).
enum class FloatProblem { None, NotANumber, NotFinite, OutOfRange };
struct FiniteFloat {
  float value = 0.0f;
  FloatProblem problem = FloatProblem::None;
};
FiniteFloat parseFiniteFloat(std::string_view token);
// Why `token` was refused: "'nan' is not a finite number", ...
std::string floatProblemText(std::string_view token, FloatProblem problem);

// A token quoted for an error message ('...'), cut to `limit` characters,
// with control bytes and bytes that are not UTF-8 shown as \xNN.
std::string quoted(std::string_view token, std::size_t limit = 40);

// Calls fn(lineNumber, line) for every line ending in LF (or at the end of
// the text), numbered from 1; stops early when fn answers false. Answers
// whether every call answered true.
template <class Fn>
bool forEachLine(std::string_view text, Fn&& fn) {
  std::uint64_t lineNumber = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    if (!fn(++lineNumber, text.substr(start, end - start))) return false;
    start = end + 1;
  }
  return true;
}

// Splits on spaces and tabs (and a trailing CR), skipping empty fields.
template <class Fn>
void forEachField(std::string_view line, Fn&& fn) {
  std::size_t i = 0;
  const std::size_t n = line.size();
  while (i < n) {
    while (i < n && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
    std::size_t start = i;
    while (i < n && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') ++i;
    if (i > start) fn(line.substr(start, i - start));
  }
}

}  // namespace quillo
