#include "app/doctypes.h"

#include <array>
#include <utility>

#include "plexora/formats.h"
#include "quillo/fileio.h"

namespace app {
namespace {

// Each type with its parent; the root has none.
constexpr std::array<std::pair<std::string_view, std::string_view>, 10> kParents{{
    {kComplexNetworkType, "public.xml"},
    {kPajekNetworkType, "public.plain-text"},
    {kGmlNetworkType, "public.plain-text"},
    {kGexfNetworkType, "public.xml"},
    {kEdgeListType, "public.plain-text"},
    {"public.xml", "public.text"},
    {"public.plain-text", "public.text"},
    {"public.text", kDataType},
    {kDataType, "public.item"},
    {"public.item", ""},
}};

struct Extensions {
  std::string_view type;
  std::array<std::string_view, 5> names;
};
constexpr std::array<Extensions, 5> kExtensions{{
    {kComplexNetworkType, {"graphml", "xml"}},
    {kPajekNetworkType, {"net", "paj", "pajek"}},
    {kGmlNetworkType, {"gml"}},
    {kGexfNetworkType, {"gexf"}},
    {kEdgeListType, {"csv", "tsv", "edges", "txt", "edgelist"}},
}};

std::string_view typeOfFormat(plexora::NetworkFormat format) {
  switch (format) {
    case plexora::NetworkFormat::Graphml:
      return kComplexNetworkType;
    case plexora::NetworkFormat::Pajek:
      return kPajekNetworkType;
    case plexora::NetworkFormat::Gml:
      return kGmlNetworkType;
    case plexora::NetworkFormat::Gexf:
      return kGexfNetworkType;
    case plexora::NetworkFormat::EdgeList:
      break;
  }
  return kEdgeListType;
}

std::string_view parentOf(std::string_view type) {
  for (const auto& [child, parent] : kParents) {
    if (child == type) return parent;
  }
  return {};
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
  // Reading the start also checks that the file can be read at all (it
  // exists, is a regular file, is readable); a compressed file is judged by
  // its inflated text. The extension decides when it is one of ours, the
  // start of the text otherwise.
  std::string head;
  if (!quillo::readFileStart(file, 4096, head, &error)) return std::nullopt;
  return std::string(typeOfFormat(plexora::networkFormatOf(file.filename().string(), head)));
}

bool isImportedNetworkType(std::string_view type) {
  return typeConformsTo(type, kGmlNetworkType) || typeConformsTo(type, kGexfNetworkType) ||
         typeConformsTo(type, kEdgeListType);
}

}  // namespace app
