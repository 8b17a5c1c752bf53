#include "io/webtexts.h"

#include <algorithm>
#include <charconv>

#include "plexora/QLONetwork.h"
#include "quillo/numbertext.h"

namespace io {
namespace {

char asciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Appends `text` with every line break (LF, VT, FF, CR, NEL, LS, PS) made
// one blank, so that one entry stays on one line.
void appendOnOneLine(std::string& out, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c >= '\n' && c <= '\r') {
      out += ' ';
    } else if (c == '\xC2' && i + 1 < text.size() && text[i + 1] == '\x85') {
      out += ' ';
      i += 1;
    } else if (c == '\xE2' && i + 2 < text.size() && text[i + 1] == '\x80' &&
               (text[i + 2] == '\xA8' || text[i + 2] == '\xA9')) {
      out += ' ';
      i += 2;
    } else {
      out += c;
    }
  }
}

// "(x, y, z)" in the array's own precision.
void appendVector(std::string& out, const QLOVector3dArray& vectors, std::uint64_t index) {
  const std::array<double, 3> v = vectors.vectorAtIndex(index);
  out += '(';
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (axis > 0) out += ", ";
    if (vectors.precision() == Precision::Float) {
      quillo::appendNumber(out, static_cast<float>(v[axis]));
    } else {
      quillo::appendNumber(out, v[axis]);
    }
  }
  out += ')';
}

}  // namespace

bool isDegreeName(std::string_view name) {
  return std::equal(name.begin(), name.end(), kDegreeName.begin(), kDegreeName.end(),
                    [](char a, char b) { return asciiLower(a) == asciiLower(b); });
}

std::string webStem(std::string_view name) {
  std::string stem(name);
  std::replace(stem.begin(), stem.end(), ' ', '_');
  return stem;
}

std::string edgesText(const QLONetwork& network) {
  // Two numbers of at most 20 digits, a blank and a line break per edge.
  constexpr std::size_t kLine = 2 * 20 + 2;
  const std::uint64_t edges = network.countEdges();
  std::string out(edges * kLine, '\0');
  char* at = out.data();
  for (std::uint64_t k = 0; k < edges; ++k) {
    char* end = at + kLine;
    at = std::to_chars(at, end, network.edgeFromList[k]).ptr;
    *at++ = ' ';
    at = std::to_chars(at, end, network.edgeToList[k]).ptr;
    *at++ = '\n';
  }
  out.resize(static_cast<std::size_t>(at - out.data()));
  return out;
}

std::string namesText(const QLONetwork& network) {
  const PropertyValue names = network.propertyForKey("Name");
  const std::uint64_t count = network.countVertices();
  std::string out;
  if (std::holds_alternative<std::monostate>(names)) {
    out.reserve(count * 8);
    for (std::uint64_t i = 0; i < count; ++i) {
      quillo::appendNumber(out, i);
      out += '\n';
    }
    return out;
  }
  const std::uint64_t n = propertyCount(names);
  if (const auto* texts = std::get_if<std::shared_ptr<TextList>>(&names)) {
    for (std::uint64_t i = 0; i < n; ++i) {
      if (i > 0) out += '\n';
      out += (**texts)[i];
    }
    return out;
  }
  for (std::uint64_t i = 0; i < n; ++i) {
    if (i > 0) out += '\n';
    out += propertyEntryText(propertyEntry(names, i));
  }
  return out;
}

std::string propertyText(const PropertyValue& property, std::uint64_t count) {
  const std::uint64_t n = std::min(count, propertyCount(property));
  std::string out;
  if (const auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&property)) {
    if (n == (*numbers)->count()) return (*numbers)->text();
    for (std::uint64_t i = 0; i < n; ++i) {
      out += (*numbers)->textAtIndex(i);
      out += '\n';
    }
  } else if (const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&property)) {
    out.reserve(n * 32);
    for (std::uint64_t i = 0; i < n; ++i) {
      appendVector(out, **vectors, i);
      out += '\n';
    }
  } else if (const auto* texts = std::get_if<std::shared_ptr<TextList>>(&property)) {
    for (std::uint64_t i = 0; i < n; ++i) {
      appendOnOneLine(out, (**texts)[i]);
      out += '\n';
    }
  }
  return out;
}

std::string propertiesJsonText(const std::vector<WebIndexEntry>& entries) {
  std::string out = "{\n";
  for (const WebIndexEntry& entry : entries) {
    out += "\t\"" + entry.stem + "\" : \"" + entry.name + "\",\n";
  }
  out += "\t\"ORDER\" : [";
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (i > 0) out += ", ";
    out += "\"" + entries[i].stem + "\"";
  }
  out += "]\n}\n";
  return out;
}

}  // namespace io
