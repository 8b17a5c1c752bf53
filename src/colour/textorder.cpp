#include "colour/textorder.h"

#include <cstddef>

namespace colour {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

int sign(int value) {
  return (value > 0) - (value < 0);
}

// The digit run of `text` that starts at `i`, without its leading zeros;
// `i` moves past the run.
std::string_view digitRun(std::string_view text, std::size_t& i) {
  const std::size_t start = i;
  while (i < text.size() && isDigit(text[i])) ++i;
  std::size_t first = start;
  while (first + 1 < i && text[first] == '0') ++first;
  return text.substr(first, i - first);
}

}  // namespace

int compareNumerically(std::string_view a, std::string_view b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (isDigit(a[i]) && isDigit(b[j])) {
      const std::string_view x = digitRun(a, i), y = digitRun(b, j);
      if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
      if (const int order = x.compare(y); order != 0) return sign(order);
      continue;
    }
    const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[j]);
    if (x != y) return x < y ? -1 : 1;
    ++i;
    ++j;
  }
  if (i < a.size()) return 1;
  if (j < b.size()) return -1;
  return sign(a.compare(b));
}

}  // namespace colour
