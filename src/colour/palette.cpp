#include "colour/palette.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "colour/hexcolour.h"
#include "quillo/ReadError.h"
#include "quillo/fileio.h"
#include "quillo/log.h"
#include "quillo/numbertext.h"

namespace colour {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool isHexColour(std::string_view token) {
  return token.size() == 7 && token[0] == '#' &&
         std::all_of(token.begin() + 1, token.end(),
                     [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; });
}

// Calls fn(lineNumber, line) for each line, splitting at CR, LF and CRLF.
template <class Fn>
void forEachTextLine(std::string_view text, Fn&& fn) {
  std::uint64_t number = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) end = text.size();
    fn(++number, text.substr(start, end - start));
    if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') ++end;
    start = end + 1;
  }
}

}  // namespace

ColorList ColorList::readFromFile(const std::filesystem::path& file) {
  ColorList list;
  std::string text;
  ReadError error;
  if (!quillo::readWholeFile(file, text, &error)) {
    quillo::logLine(error.describe());
    return list;
  }
  forEachTextLine(text, [&](std::uint64_t number, std::string_view line) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#') return;
    const std::size_t split = line.find_last_of(" \t");
    const std::string_view colour =
        split == std::string_view::npos ? std::string_view{} : line.substr(split + 1);
    const std::string_view key =
        split == std::string_view::npos ? line : trimmed(line.substr(0, split));
    if (key.empty() || !isHexColour(colour)) {
      quillo::logLine(
          ReadError{file.string(), number,
                    "expected a key and a #RRGGBB colour, found " + quillo::quoted(line)}
              .describe());
      return;
    }
    list.setColor(std::string(key), colorFromHexadecimalValue(colour));
  });
  return list;
}

void ColorList::setColor(std::string key, const Rgba& color) {
  for (NamedColor& entry : entries_) {
    if (entry.key == key) {
      entry.color = color;
      return;
    }
  }
  entries_.push_back({std::move(key), color});
}

const Rgba* ColorList::colorWithKey(std::string_view key) const {
  for (const NamedColor& entry : entries_) {
    if (entry.key == key) return &entry.color;
  }
  return nullptr;
}

void ColorList::removeColorWithKey(std::string_view key) {
  std::erase_if(entries_, [key](const NamedColor& entry) { return entry.key == key; });
}

CategoryPalette categoryPalette(std::string_view orderText, const ColorList& list,
                                const std::string& orderName) {
  CategoryPalette palette;
  palette.named = list;
  ColorList unused = list;
  forEachTextLine(orderText, [&](std::uint64_t number, std::string_view line) {
    line = trimmed(line);
    if (line.empty()) return;
    if (line.front() == '#') {
      palette.ordered.push_back(colorFromHexadecimalValue(line));
    } else if (const Rgba* colour = unused.colorWithKey(line)) {
      palette.ordered.push_back(*colour);
    } else {
      quillo::logLine(ReadError{
          orderName, number,
          "no colour named " + quillo::quoted(line) + " in " + std::string(kColorListFile)}
                          .describe());
      return;
    }
    unused.removeColorWithKey(line);
  });
  for (const NamedColor& entry : unused.entries()) palette.spare.push_back(entry.color);
  return palette;
}

CategoryPalette loadCategoryPalette(const std::filesystem::path& folder) {
  const ColorList list = ColorList::readFromFile(folder / kColorListFile);
  const std::filesystem::path orderFile = folder / kColorOrderFile;
  std::string order;
  std::error_code failed;
  if (std::filesystem::exists(orderFile, failed)) {
    ReadError error;
    if (!quillo::readWholeFile(orderFile, order, &error)) quillo::logLine(error.describe());
  }
  return categoryPalette(order, list, orderFile.string());
}

}  // namespace colour
