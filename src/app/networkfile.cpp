#include "app/networkfile.h"

#include "app/doctypes.h"

namespace app {

QLONetwork::Ptr openNetworkFile(const std::filesystem::path& file, ReadError& error) {
  const auto type = typeOfFile(file, error);
  if (!type) return nullptr;
  if (typeConformsTo(*type, kComplexNetworkType) || isImportedNetworkType(*type)) {
    return QLONetwork::initWithContentsOfURL(file, &error);
  }
  return QLONetwork::initWithContentsOfPajekURL(file, &error);
}

QLONetwork::Ptr generatedNetwork() {
  return QLONetwork::initRandomNetworkWithNumberOfVertices(kGeneratedVertices, kGeneratedDegree);
}

}  // namespace app
