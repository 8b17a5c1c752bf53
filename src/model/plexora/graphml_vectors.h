#pragma once
// Values of graph-tool's vector keys ("0.5, 1.25, -3"): two or three numbers
// separated by commas and/or blanks, read into a vector property.
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "plexora/PropertyValue.h"
#include "quillo/numbertext.h"

namespace plexora::graphml {

// The numbers of one value (at most three); nothing when a part is not a
// number or there are more than three. `count` answers how many were found.
inline std::optional<std::array<double, 3>> vectorValue(std::string_view text, int& count) {
  std::array<double, 3> value{0.0, 0.0, 0.0};
  count = 0;
  std::size_t i = 0;
  auto separator = [](char c) {
    return c == ',' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
  };
  while (i < text.size()) {
    while (i < text.size() && separator(text[i])) ++i;
    if (i >= text.size()) break;
    std::size_t end = i;
    while (end < text.size() && !separator(text[end])) ++end;
    const auto number = quillo::parseDouble(text.substr(i, end - i));
    if (!number || count == 3) return std::nullopt;
    value[static_cast<std::size_t>(count++)] = *number;
    i = end;
  }
  return value;
}

// The texts as vectors when every non-empty one holds exactly `components`
// numbers (empty texts read as zero vectors); null otherwise.
inline std::shared_ptr<QLOVector3dArray> textVectors(const TextList& texts, int components,
                                                     Precision precision) {
  auto vectors = QLOVector3dArray::initWithSize(texts.size(), precision);
  for (std::size_t v = 0; v < texts.size(); ++v) {
    if (texts[v].empty()) continue;
    int count = 0;
    const auto value = vectorValue(texts[v], count);
    if (!value || count != components) return nullptr;
    vectors->setVector(*value, v);
  }
  return vectors;
}

// The first vertex whose vector has a non-finite component, or -1.
inline std::int64_t firstNonFinite(const QLOVector3dArray& vectors) {
  for (std::uint64_t v = 0; v < vectors.count(); ++v) {
    const auto value = vectors.vectorAtIndex(v);
    if (!std::isfinite(value[0]) || !std::isfinite(value[1]) || !std::isfinite(value[2])) {
      return static_cast<std::int64_t>(v);
    }
  }
  return -1;
}

}  // namespace plexora::graphml
