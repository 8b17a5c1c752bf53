#pragma once
// Line and field scanning for the Pajek reader. Everything works on
// views into the text in memory; nothing here allocates.
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace plexora::pajek {

inline bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

inline std::string_view trimLeft(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && isBlank(text[i])) ++i;
  return text.substr(i);
}

// Compares `text` with a lower-case ASCII word, ignoring the case of `text`.
inline bool equalsWord(std::string_view text, std::string_view lowerWord) {
  if (text.size() != lowerWord.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(text[i])) != lowerWord[i]) return false;
  }
  return true;
}

// Hands out the lines of a text one at a time, without their line breaks. A
// line ends at LF, CRLF or a lone CR. Line numbers count from 1.
class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : rest_(text) {}

  bool next(std::string_view& line) {
    if (rest_.empty()) return false;
    ++lineNumber_;
    const char* begin = rest_.data();
    const auto* lf = static_cast<const char*>(std::memchr(begin, '\n', rest_.size()));
    std::size_t length = lf ? static_cast<std::size_t>(lf - begin) : rest_.size();
    std::size_t skip = lf ? length + 1 : length;
    if (const auto* cr = static_cast<const char*>(std::memchr(begin, '\r', length))) {
      const std::size_t at = static_cast<std::size_t>(cr - begin);
      // A CR right before the LF belongs to a CRLF; any other CR ends the line.
      if (at + 1 != length) skip = at + 1;
      length = at;
    }
    line = rest_.substr(0, length);
    rest_.remove_prefix(skip);
    return true;
  }

  std::uint64_t lineNumber() const { return lineNumber_; }

 private:
  std::string_view rest_;
  std::uint64_t lineNumber_ = 0;
};

// One field of a line: a run of non-blank characters, or the characters
// between a pair of double quotes (which may be none, or include blanks). A
// quote left open runs to the end of the line.
class FieldCursor {
 public:
  explicit FieldCursor(std::string_view line) : rest_(line) {}

  bool next(std::string_view& field) {
    rest_ = trimLeft(rest_);
    if (rest_.empty()) return false;
    if (rest_.front() == '"') {
      const std::size_t close = rest_.find('"', 1);
      if (close == std::string_view::npos) {
        field = rest_.substr(1);
        rest_ = {};
      } else {
        field = rest_.substr(1, close - 1);
        rest_.remove_prefix(close + 1);
      }
      return true;
    }
    std::size_t end = 1;
    while (end < rest_.size() && !isBlank(rest_[end])) ++end;
    field = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return true;
  }

  // What is left of the line after the fields handed out so far.
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

// True when the field is a run of decimal digits (after an optional '+'):
// a whole number, perhaps too large for any integer type.
inline bool isDigitRun(std::string_view field) {
  if (!field.empty() && field.front() == '+') field.remove_prefix(1);
  if (field.empty()) return false;
  for (char c : field) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

}  // namespace plexora::pajek
