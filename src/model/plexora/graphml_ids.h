#pragma once
// Node ids to vertex numbers. Our own documents call the nodes n0, n1, ... in
// order, which needs no lookup table; any other naming goes through a hash
// map over the ids held by the document.
#include <pugixml.hpp>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace plexora::graphml {

// True when `id` is exactly "n" followed by `index` in decimal.
inline bool isCanonicalId(const char* id, std::uint64_t index) {
  if (id[0] != 'n') return false;
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, index).ptr;
  const auto length = static_cast<std::size_t>(end - digits);
  return std::strncmp(id + 1, digits, length) == 0 && id[1 + length] == '\0';
}

// The k of an id "n<k>" written without leading zeros, or nothing.
inline std::optional<std::uint64_t> canonicalIndex(const char* id) {
  if (id[0] != 'n' || id[1] < '0' || id[1] > '9' || (id[1] == '0' && id[2] != '\0')) {
    return std::nullopt;
  }
  std::uint64_t value = 0;
  int digits = 0;
  for (const char* p = id + 1; *p != '\0'; ++p) {
    if (*p < '0' || *p > '9' || ++digits > 19) return std::nullopt;
    value = value * 10 + static_cast<std::uint64_t>(*p - '0');
  }
  return value;
}

class NodeIds {
 public:
  enum class Problem { None, MissingId, DuplicateId };
  struct Outcome {
    Problem problem = Problem::None;
    std::size_t node = 0;  // the offending node
  };

  // Takes the ids of `nodes` (vertex v is nodes[v]); the ids must outlive this.
  Outcome index(const std::vector<pugi::xml_node>& nodes) {
    ids_.reserve(nodes.size());
    for (std::size_t v = 0; v < nodes.size(); ++v) {
      const pugi::xml_attribute id = nodes[v].attribute("id");
      if (!id) return {Problem::MissingId, v};
      ids_.push_back(id.value());
      if (canonical_ && !isCanonicalId(id.value(), v)) canonical_ = false;
    }
    if (canonical_) return {};
    lookup_.reserve(ids_.size());
    for (std::size_t v = 0; v < ids_.size(); ++v) {
      if (!lookup_.emplace(ids_[v], v).second) return {Problem::DuplicateId, v};
    }
    return {};
  }

  std::optional<std::uint64_t> vertexOf(const char* id) const {
    if (canonical_) {
      auto index = canonicalIndex(id);
      if (index && *index < ids_.size()) return index;
      return std::nullopt;
    }
    auto found = lookup_.find(id);
    if (found == lookup_.end()) return std::nullopt;
    return found->second;
  }

  // True when the ids are n0, n1, ... in order.
  bool canonical() const { return canonical_; }
  const std::vector<const char*>& ids() const { return ids_; }

 private:
  std::vector<const char*> ids_;
  bool canonical_ = true;
  std::unordered_map<std::string_view, std::uint64_t> lookup_;
};

}  // namespace plexora::graphml
