// Choosing the reader of a network file: by the file name's extension, else by
// what the text starts with.
#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <utility>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"

namespace plexora {
namespace {

std::string lowerCase(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

constexpr std::array<std::pair<std::string_view, NetworkFormat>, 12> kExtensions{{
    {".graphml", NetworkFormat::Graphml},
    {".xml", NetworkFormat::Graphml},
    {".net", NetworkFormat::Pajek},
    {".paj", NetworkFormat::Pajek},
    {".pajek", NetworkFormat::Pajek},
    {".gml", NetworkFormat::Gml},
    {".gexf", NetworkFormat::Gexf},
    {".csv", NetworkFormat::EdgeList},
    {".tsv", NetworkFormat::EdgeList},
    {".edges", NetworkFormat::EdgeList},
    {".txt", NetworkFormat::EdgeList},
    {".edgelist", NetworkFormat::EdgeList},
}};

// The text after a byte order mark, blank space and '#' comment lines.
std::string_view startOf(std::string_view text) {
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  while (true) {
    const std::size_t first = text.find_first_not_of(" \t\r\n\f\v");
    if (first == std::string_view::npos) return {};
    text.remove_prefix(first);
    if (text.front() != '#') return text;
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
}

bool looksLikeGml(std::string_view head) {
  // Key-value pairs (Creator "...", Version 1) may come before "graph [".
  const std::size_t at = head.find("graph");
  if (at == std::string_view::npos) return false;
  const std::size_t next = head.find_first_not_of(" \t\r\n", at + 5);
  return next != std::string_view::npos && head[next] == '[';
}

}  // namespace

NetworkFormat networkFormatOf(const std::string& fileName, std::string_view text) {
  std::string name = lowerCase(fileName);
  if (name.size() > 3 && name.ends_with(".gz")) name.resize(name.size() - 3);
  const std::string extension = std::filesystem::path(name).extension().string();
  for (const auto& [known, format] : kExtensions) {
    if (extension == known) return format;
  }
  const std::string_view start = startOf(text);
  const std::string head = lowerCase(start.substr(0, 4096));
  if (head.starts_with("<")) {
    const std::size_t gexf = head.find("<gexf");
    const std::size_t graphml = head.find("<graphml");
    return gexf < graphml ? NetworkFormat::Gexf : NetworkFormat::Graphml;
  }
  if (head.starts_with("*")) return NetworkFormat::Pajek;
  if (looksLikeGml(head)) return NetworkFormat::Gml;
  return NetworkFormat::EdgeList;
}

std::shared_ptr<QLONetwork> readNetwork(NetworkFormat format, std::string_view text,
                                        const std::string& name, ReadError* error) {
  switch (format) {
    case NetworkFormat::Graphml:
      return readGraphml(text, name, error);
    case NetworkFormat::Pajek:
      return readPajek(text, name, error);
    case NetworkFormat::Gml:
      return readGml(text, name, error);
    case NetworkFormat::Gexf:
      return readGexf(text, name, error);
    case NetworkFormat::EdgeList:
      break;
  }
  return readEdgeList(text, name, error);
}

}  // namespace plexora

QLONetwork::Ptr QLONetwork::initWithContentsOfURL(const std::filesystem::path& file,
                                                  ReadError* error) {
  std::string text;
  if (!quillo::readWholeFile(file, text, error)) return nullptr;
  const std::string name = file.string();
  return plexora::readNetwork(plexora::networkFormatOf(file.filename().string(), text), text, name,
                              error);
}
