#pragma once
// Vertex numbers of the names a file gives its vertices, in order of first
// appearance. Names that are small decimal numbers ("0", "17", the common
// case) are looked up in a flat table; others in a hash table whose keys must
// outlive it (they point into the file's text or into kept copies).
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace plexora::detail {

class VertexIds {
 public:
  // Numbers below `denseLimit` use the flat table (4 bytes per number up to
  // the largest seen). Readers pass a bound proportional to the file's size,
  // so a short file cannot make the table large; vertex numbers must stay
  // below 2^32 - 1 (the readers' vertex limit is far lower).
  explicit VertexIds(std::uint64_t denseLimit) : denseLimit_(denseLimit) {}

  // The vertex of `name`, or `next` (which it becomes) when the name is new.
  std::pair<std::uint64_t, bool> insert(std::string_view name, std::uint64_t next) {
    if (const auto number = smallNumber(name)) {
      if (slots_.size() <= *number)
        slots_.resize(std::max<std::size_t>(*number + 1, slots_.size() * 2), 0);
      std::uint32_t& slot = slots_[*number];
      if (slot != 0) return {slot - 1, false};
      slot = static_cast<std::uint32_t>(next + 1);
      return {next, true};
    }
    const auto [at, added] = others_.try_emplace(name, next);
    return {at->second, added};
  }

  std::optional<std::uint64_t> find(std::string_view name) const {
    if (const auto number = smallNumber(name)) {
      if (*number < slots_.size() && slots_[*number] != 0) return slots_[*number] - 1;
      return std::nullopt;
    }
    const auto found = others_.find(name);
    if (found == others_.end()) return std::nullopt;
    return found->second;
  }

  // Re-keys a name whose text is about to go away onto a kept copy.
  void rekey(std::string_view old, std::string_view kept) {
    if (smallNumber(old)) return;
    const auto found = others_.find(old);
    if (found == others_.end()) return;
    const std::uint64_t vertex = found->second;
    others_.erase(found);
    others_.emplace(kept, vertex);
  }

 private:
  // "0" or digits without a leading zero (so "01" stays a name of its own),
  // below the limit.
  std::optional<std::uint64_t> smallNumber(std::string_view name) const {
    if (name.empty() || name.size() > 9 || (name[0] == '0' && name.size() > 1)) return std::nullopt;
    std::uint64_t value = 0;
    for (char c : name) {
      if (c < '0' || c > '9') return std::nullopt;
      value = value * 10 + static_cast<std::uint64_t>(c - '0');
    }
    if (value >= denseLimit_) return std::nullopt;
    return value;
  }

  std::uint64_t denseLimit_;
  std::vector<std::uint32_t> slots_;  // vertex + 1, 0 for a number not seen
  std::unordered_map<std::string_view, std::uint64_t> others_;
};

}  // namespace plexora::detail
