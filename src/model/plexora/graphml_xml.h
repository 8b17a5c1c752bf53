#pragma once
// Small pugixml helpers for the GraphML reader: element names without their
// namespace prefix, an element's text, and the line an offset falls on.
#include <pugixml.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace plexora::graphml {

// Equality of two NUL-terminated names; inlined, as the reader compares
// millions of short element and attribute names.
inline bool sameName(const char* a, const char* b) {
  while (*a != '\0' && *a == *b) {
    ++a;
    ++b;
  }
  return *a == *b;
}

// A name without its namespace prefix ("g:graph" -> "graph").
inline const char* localName(const char* name) {
  for (const char* p = name; *p != '\0'; ++p) {
    if (*p == ':') return p + 1;
  }
  return name;
}

// True when `node` is an element called `local`, with or without a namespace
// prefix ("graph" and "g:graph" both match "graph").
inline bool isElement(const pugi::xml_node& node, const char* local) {
  return node.type() == pugi::node_element && sameName(localName(node.name()), local);
}

// The first child element called `local`, or an empty node.
inline pugi::xml_node firstElement(const pugi::xml_node& parent, const char* local) {
  for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
    if (isElement(child, local)) return child;
  }
  return {};
}

// The character data of an element (text and CDATA sections joined, comments
// skipped). The document is parsed with parse_embed_pcdata, so leading text
// sits in the element's own value. The result points into the document or
// into `scratch`.
inline std::string_view elementText(const pugi::xml_node& element, std::string& scratch) {
  pugi::xml_node child = element.first_child();
  if (!child) return element.value();
  scratch = element.value();
  for (; child; child = child.next_sibling()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      scratch += child.value();
    }
  }
  return scratch;
}

// `text` without the XML white space (space, tab, CR, LF) around it.
inline std::string_view trimmed(std::string_view text) {
  auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  if (!text.empty() && !isSpace(text.front()) && !isSpace(text.back())) return text;
  constexpr std::string_view space = " \t\r\n";
  const std::size_t first = text.find_first_not_of(space);
  if (first == std::string_view::npos) return {};
  const std::size_t last = text.find_last_not_of(space);
  return text.substr(first, last - first + 1);
}

// The 1-based line of a byte offset into `text` (LF, CR LF and a lone CR each
// end a line); 0 when the offset is unknown. Offsets past the end count as the
// last line.
inline std::uint64_t lineAtOffset(std::string_view text, std::ptrdiff_t offset) {
  if (offset < 0) return 0;
  const std::size_t end = std::min(text.size(), static_cast<std::size_t>(offset));
  std::uint64_t line = 1;
  for (std::size_t i = 0; i < end; ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n'))) {
      ++line;
    }
  }
  return line;
}

}  // namespace plexora::graphml
