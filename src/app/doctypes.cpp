#include "app/doctypes.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "quillo/fileio.h"

namespace app {
namespace {

// Each type with its parent; the root has none.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kParents{{
    {kComplexNetworkType, "public.xml"},
    {kPajekNetworkType, "public.plain-text"},
    {"public.xml", "public.text"},
    {"public.plain-text", "public.text"},
    {"public.text", kDataType},
    {kDataType, "public.item"},
    {"public.item", ""},
}};

struct Extensions {
  std::string_view type;
  std::array<std::string_view, 3> names;
};
constexpr std::array<Extensions, 2> kExtensions{{
    {kComplexNetworkType, {"graphml", "xml", ""}},
    {kPajekNetworkType, {"net", "paj", "pajek"}},
}};

std::string_view parentOf(std::string_view type) {
  for (const auto& [child, parent] : kParents) {
    if (child == type) return parent;
  }
  return {};
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

bool typeConformsTo(std::string_view type, std::string_view parent) {
  if (type.empty() || parent.empty()) return false;
  // The tree is a handful of entries deep; the bound guards against a cycle.
  for (std::size_t depth = 0; !type.empty() && depth <= kParents.size(); ++depth) {
    if (type == parent) return true;
    type = parentOf(type);
  }
  return false;
}

std::vector<std::string> extensionsForType(std::string_view type) {
  std::vector<std::string> out;
  for (const Extensions& e : kExtensions) {
    if (e.type != type) continue;
    for (std::string_view name : e.names) {
      if (!name.empty()) out.emplace_back(name);
    }
  }
  return out;
}

std::optional<std::string> typeOfFile(const std::filesystem::path& file, ReadError& error) {
  // Reading the start also checks that the file can be read at all; a
  // compressed file is judged by its inflated text.
  std::string head;
  if (!quillo::readFileStart(file, 512, head, &error)) return std::nullopt;
  std::string extension = lowerCase(quillo::withoutCompressionSuffix(file).extension().string());
  if (!extension.empty()) extension.erase(0, 1);
  for (const Extensions& e : kExtensions) {
    if (std::find(e.names.begin(), e.names.end(), extension) != e.names.end() &&
        !extension.empty()) {
      return std::string(e.type);
    }
  }
  // Not one of our names: the content decides.
  std::size_t i = head.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0;
  while (i < head.size() && std::isspace(static_cast<unsigned char>(head[i]))) ++i;
  const bool xml = i < head.size() && head[i] == '<';
  return std::string(xml ? kComplexNetworkType : kPajekNetworkType);
}

}  // namespace app
