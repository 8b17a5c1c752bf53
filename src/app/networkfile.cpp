#include "app/networkfile.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string>

namespace app {
namespace {

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

// Whether the first character that is not white space (after an optional
// UTF-8 byte order mark) opens an XML tag.
bool startsLikeXml(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string head(512, '\0');
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(in.gcount()));
  std::size_t i = head.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0;
  while (i < head.size() && std::isspace(static_cast<unsigned char>(head[i]))) ++i;
  return i < head.size() && head[i] == '<';
}

}  // namespace

QLONetwork::Ptr openNetworkFile(const std::filesystem::path& file, ReadError& error) {
  const std::string ext = lowerCase(file.extension().string());
  const bool pajek = ext == ".net" || ext == ".paj";
  const bool graphml = ext == ".graphml" || ext == ".xml";
  if (graphml || (!pajek && startsLikeXml(file))) {
    return QLONetwork::initWithContentsOfURL(file, &error);
  }
  return QLONetwork::initWithContentsOfPajekURL(file, &error);
}

QLONetwork::Ptr generatedNetwork() {
  return QLONetwork::initRandomNetworkWithNumberOfVertices(kGeneratedVertices, kGeneratedDegree);
}

}  // namespace app
