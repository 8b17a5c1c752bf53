#pragma once
// Elements and attributes the model does not hold, kept as XML text so that
// the writer can put them back as they were.
#include <pugixml.hpp>

#include <string>
#include <string_view>

#include "plexora/graphml_escape.h"

namespace plexora::graphml {

namespace detail {
struct AppendingWriter : pugi::xml_writer {
  explicit AppendingWriter(std::string& target) : out(target) {}
  void write(const void* data, std::size_t size) override {
    out.append(static_cast<const char*>(data), size);
  }
  std::string& out;
};
}  // namespace detail

// Appends `node` and everything inside it as XML text on one line.
inline void appendXml(std::string& out, const pugi::xml_node& node) {
  detail::AppendingWriter writer(out);
  node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
}

// The "prefix:" under which the document declares Plexview's namespace, or ""
// when it does not.
inline std::string plexviewPrefixOf(const pugi::xml_node& root, std::string_view ns) {
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    if (name.starts_with("xmlns:") && attribute.value() == ns) {
      std::string prefix(name.substr(6));
      prefix += ':';
      return prefix;
    }
  }
  return {};
}

}  // namespace plexora::graphml
