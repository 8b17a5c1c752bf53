#pragma once
// The categorical palette, read from two resource files:
//   "somecolors.clr"  named colours, one "key #RRGGBB" a line, in list order;
//   "colororder.txt"  the colouring order, one entry a line: a "#RRGGBB"
//                     colour or the key of a colour of the list.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "colour/rgba.h"

namespace colour {

inline constexpr std::string_view kColorListFile = "somecolors.clr";
inline constexpr std::string_view kColorOrderFile = "colororder.txt";

struct NamedColor {
  std::string key;
  Rgba color;
};

// A named colour list in its file's order.
class ColorList {
 public:
  // Reads a list file. Empty lines and lines starting with "#" are skipped;
  // a line that is not a key followed by a "#RRGGBB" colour is logged with its
  // file and line and skipped; a repeated key replaces the earlier colour in
  // its place. A missing or unreadable file is logged and gives an empty list.
  static ColorList readFromFile(const std::filesystem::path& file);

  void setColor(std::string key, const Rgba& color);
  // Null when the list has no such key.
  const Rgba* colorWithKey(std::string_view key) const;
  void removeColorWithKey(std::string_view key);
  const std::vector<NamedColor>& entries() const { return entries_; }

 private:
  std::vector<NamedColor> entries_;
};

struct CategoryPalette {
  std::vector<Rgba> ordered;  // the order file's colours, in its order
  std::vector<Rgba> spare;    // list colours the order file does not name, in list order
  ColorList named;            // the whole list, for the per-network key file
};

// Builds the palette from an order text and a colour list. Lines are split at
// any of CR, LF; spaces and tabs around an entry are dropped. A "#" entry is a
// hexadecimal colour; any other entry takes the list's colour of that key, and
// either way the key leaves the spare pool. Empty lines and keys the list does
// not hold (or no longer holds: a key named twice) are skipped; unknown keys
// are logged with `orderName` and the line.
CategoryPalette categoryPalette(std::string_view orderText, const ColorList& list,
                                const std::string& orderName = std::string(kColorOrderFile));

// The palette from the two files in `folder`. A missing order file gives an
// empty ordered palette, so every colour of the list is spare.
CategoryPalette loadCategoryPalette(const std::filesystem::path& folder);

}  // namespace colour
