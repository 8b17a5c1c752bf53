#include "plexora/QLONetwork.h"

#include <algorithm>
#include <atomic>

#include "plexora/formats.h"
#include "quillo/utf8.h"

namespace plexora {
namespace {
std::atomic<std::uint64_t> gMaxReadVertices{std::uint64_t{1} << 28};
}
std::uint64_t maxReadVertices() {
  return gMaxReadVertices.load(std::memory_order_relaxed);
}
void setMaxReadVertices(std::uint64_t limit) {
  gMaxReadVertices.store(limit, std::memory_order_relaxed);
}
}  // namespace plexora

namespace {

// Every text a network holds is UTF-8, whatever a reader or caller handed in:
// bytes that are not become U+FFFD, in a copy (the caller's list is left as
// it was), so Python and the views can always show the text.
std::shared_ptr<TextList> asValidText(const std::shared_ptr<TextList>& texts) {
  const auto bad = std::find_if(texts->begin(), texts->end(),
                                [](const std::string& text) { return !quillo::isValidUtf8(text); });
  if (bad == texts->end()) return texts;
  auto valid = std::make_shared<TextList>(*texts);
  for (std::string& text : *valid) {
    if (!quillo::isValidUtf8(text)) text = quillo::validUtf8(text);
  }
  return valid;
}

}  // namespace

QLONetwork::Ptr QLONetwork::make(NetworkData&& data, std::string* error) {
  auto fail = [&](const std::string& why) -> Ptr {
    if (error) *error = why;
    return nullptr;
  };
  const std::uint64_t V = data.verticesCount;
  if (data.from.size() != data.to.size()) return fail("edge end lists differ in length");
  if (!data.weights.empty() && data.weights.size() != data.from.size()) {
    return fail("the weight list does not match the edges");
  }
  for (std::size_t k = 0; k < data.from.size(); ++k) {
    if (data.from[k] >= V || data.to[k] >= V) {
      return fail("edge " + std::to_string(k) + " names a vertex beyond the " + std::to_string(V) +
                  " vertices");
    }
  }
  for (std::size_t i = 0; i < data.properties.size(); ++i) {
    const auto& [name, value] = data.properties[i];
    if (value.index() == 0) return fail("property \"" + name + "\" has no value");
    if (propertyCount(value) != V) {
      return fail("property \"" + name + "\" has " + std::to_string(propertyCount(value)) +
                  " entries for " + std::to_string(V) + " vertices");
    }
    for (std::size_t j = 0; j < i; ++j) {
      if (data.properties[j].first == name) return fail("property \"" + name + "\" appears twice");
    }
  }
  if (data.weights.empty()) data.weights.assign(data.from.size(), 1.0f);
  for (auto& [name, value] : data.properties) {
    if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) *texts = asValidText(*texts);
  }
  return Ptr(new QLONetwork(std::move(data)));
}

QLONetwork::QLONetwork(NetworkData&& data)
    : verticesCount(data.verticesCount),
      edgesCount(data.from.size()),
      edgeFromList(data.from.data()),
      edgeToList(data.to.data()),
      edgesWeights(data.weights.data()),
      from_(std::move(data.from)),
      to_(std::move(data.to)),
      weights_(std::move(data.weights)),
      degrees_(data.verticesCount, 0),
      directed_(data.directed),
      edgeWeighted_(data.edgeWeighted),
      vertexWeighted_(data.vertexWeighted),
      graphml_(std::move(data.graphml)),
      title_(std::move(data.title)),
      properties_(std::move(data.properties)) {
  // Moving a vector keeps its buffer, so the public pointers taken above stay
  // valid for the members that now own the storage.
  for (std::uint64_t k = 0; k < edgesCount; ++k) {
    ++degrees_[from_[k]];
    ++degrees_[to_[k]];
  }
}

std::shared_ptr<QLONumberArray> QLONetwork::calcDegrees() const {
  auto result = QLONumberArray::initWithCount(verticesCount, NumberType::Double);
  double* out = result->data<double>();
  for (std::uint64_t v = 0; v < verticesCount; ++v) out[v] = static_cast<double>(degrees_[v]);
  return result;
}

std::shared_ptr<QLONumberArray> QLONetwork::calcInDegrees() const {
  if (!directed_) return calcDegrees();
  auto result = QLONumberArray::initWithCount(verticesCount, NumberType::Double);
  double* out = result->data<double>();
  for (std::uint64_t k = 0; k < edgesCount; ++k) out[to_[k]] += 1.0;
  return result;
}

std::shared_ptr<QLONumberArray> QLONetwork::calcStrengths() const {
  auto result = QLONumberArray::initWithCount(verticesCount, NumberType::Double);
  double* out = result->data<double>();
  for (std::uint64_t k = 0; k < edgesCount; ++k) {
    const double w = static_cast<double>(weights_[k]);
    out[from_[k]] += w;
    out[to_[k]] += w;
  }
  return result;
}

std::shared_ptr<QLONumberArray> QLONetwork::calcInStrengths() const {
  if (!directed_) return calcStrengths();
  auto result = QLONumberArray::initWithCount(verticesCount, NumberType::Double);
  double* out = result->data<double>();
  for (std::uint64_t k = 0; k < edgesCount; ++k) out[to_[k]] += static_cast<double>(weights_[k]);
  return result;
}

PropertyTable QLONetwork::propertiesOfVertices() const {
  std::lock_guard lock(propertiesMutex_);
  return properties_;
}

PropertyValue QLONetwork::propertyForKey(const std::string& name) const {
  std::lock_guard lock(propertiesMutex_);
  for (const auto& [key, value] : properties_) {
    if (key == name) return value;
  }
  return std::monostate{};
}

std::vector<std::string> QLONetwork::keysForPropertiesOfVertices() const {
  std::lock_guard lock(propertiesMutex_);
  std::vector<std::string> keys;
  keys.reserve(properties_.size());
  for (const auto& entry : properties_) keys.push_back(entry.first);
  return keys;
}

bool QLONetwork::setPropertiesOfVertices(const PropertyValue& value, const std::string& name) {
  if (value.index() == 0 || propertyCount(value) != verticesCount) return false;
  PropertyValue stored = value;
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&stored)) *texts = asValidText(*texts);
  std::lock_guard lock(propertiesMutex_);
  for (auto& entry : properties_) {
    if (entry.first == name) {
      entry.second = std::move(stored);
      return true;
    }
  }
  properties_.emplace_back(name, std::move(stored));
  return true;
}

QLOVertex QLONetwork::vertexAtIndex(std::uint64_t index) const {
  return QLOVertex(shared_from_this(), index);
}

std::vector<QLOVertex> QLONetwork::vertices() const {
  std::vector<QLOVertex> all;
  all.reserve(verticesCount);
  auto self = shared_from_this();
  for (std::uint64_t v = 0; v < verticesCount; ++v) all.emplace_back(self, v);
  return all;
}

std::string QLONetwork::vertexName(std::uint64_t index) const {
  PropertyValue names = propertyForKey("Name");
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&names)) {
    if (index < (*texts)->size()) return (**texts)[index];
  }
  return std::to_string(index);
}

std::string QLOVertex::name() const {
  return network_->vertexName(index_);
}

std::int64_t QLOVertex::countEdges() const {
  return static_cast<std::int64_t>(network_->degreeOfVertex(index_));
}

std::map<std::string, PropertyEntry> QLOVertex::properties() const {
  std::map<std::string, PropertyEntry> entries;
  for (const auto& [name, value] : network_->propertiesOfVertices()) {
    entries[name] = propertyEntry(value, index_);
  }
  return entries;
}
