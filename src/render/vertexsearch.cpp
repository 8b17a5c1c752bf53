#include "render/vertexsearch.h"

#include <QString>
#include <algorithm>

namespace search {

std::vector<std::uint64_t> findVertices(const PropertyTable& properties, std::uint64_t count,
                                        const std::string& text) {
  std::vector<char> hit(count, 0);
  const QString needle = QString::fromStdString(text);
  if (needle.isEmpty()) return {};
  // Without names a vertex is shown by its number, so the number is searched.
  const bool named = std::any_of(properties.begin(), properties.end(), [&](const auto& entry) {
    return entry.first == "Name" && propertyCount(entry.second) >= count;
  });
  if (!named) {
    for (std::uint64_t v = 0; v < count; ++v) {
      hit[v] = QString::number(v).contains(needle) ? 1 : 0;
    }
  }
  for (const auto& [name, value] : properties) {
    const bool isText = std::holds_alternative<std::shared_ptr<TextList>>(value);
    if (name != "Name" && !isText) continue;
    const std::uint64_t n = std::min(count, propertyCount(value));
    for (std::uint64_t v = 0; v < n; ++v) {
      if (hit[v]) continue;
      const std::string entry = propertyEntryText(propertyEntry(value, v));
      if (QString::fromStdString(entry).contains(needle, Qt::CaseInsensitive)) hit[v] = 1;
    }
  }
  std::vector<std::uint64_t> found;
  for (std::uint64_t v = 0; v < count; ++v) {
    if (hit[v]) found.push_back(v);
  }
  return found;
}

}  // namespace search
