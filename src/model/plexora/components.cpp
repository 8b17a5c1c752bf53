// The largest connected component. Direction is ignored (weak connectivity);
// of two equally large components the one holding the lowest-numbered vertex
// is kept; kept vertices keep their relative order and are renumbered from 0;
// kept edges keep their order; every property is cut down to the kept
// vertices, and so is what the GraphML document held for them.
#include <algorithm>
#include <numeric>

#include "plexora/QLONetwork.h"

namespace {

class DisjointSets {
 public:
  explicit DisjointSets(std::uint64_t n) : parent_(n) {
    std::iota(parent_.begin(), parent_.end(), std::uint64_t{0});
  }
  std::uint64_t find(std::uint64_t x) {
    while (parent_[x] != x) {
      parent_[x] = parent_[parent_[x]];  // path halving
      x = parent_[x];
    }
    return x;
  }
  void unite(std::uint64_t a, std::uint64_t b) {
    a = find(a);
    b = find(b);
    if (a == b) return;
    // Smaller root index wins: keeps the trees shallow enough with halving and
    // needs no rank array.
    if (a < b) {
      parent_[b] = a;
    } else {
      parent_[a] = b;
    }
  }

 private:
  std::vector<std::uint64_t> parent_;
};

PropertyValue cutProperty(const PropertyValue& value, const std::vector<std::uint64_t>& kept) {
  const std::uint64_t n = kept.size();
  if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
    const QLONumberArray& source = **numbers;
    auto result = QLONumberArray::initWithCount(n, source.numberArrayType());
    const std::size_t size = numberTypeSize(source.numberArrayType());
    const auto* in = static_cast<const unsigned char*>(source.QLO_dataPointer());
    auto* out = static_cast<unsigned char*>(result->QLO_dataPointer());
    for (std::uint64_t i = 0; i < n; ++i) {
      std::copy_n(in + kept[i] * size, size, out + i * size);
    }
    return result;
  }
  if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
    const QLOVector3dArray& source = **vectors;
    auto result = QLOVector3dArray::initWithSize(n, source.precision());
    for (std::uint64_t i = 0; i < n; ++i) result->setVector(source.vectorAtIndex(kept[i]), i);
    return result;
  }
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
    auto result = std::make_shared<TextList>();
    result->reserve(n);
    for (std::uint64_t index : kept) result->push_back((**texts)[index]);
    return result;
  }
  return value;
}

}  // namespace

QLONetwork::Ptr QLONetwork::largestConnectedSubNetwork() const {
  const std::uint64_t V = verticesCount;
  DisjointSets sets(V);
  for (std::uint64_t k = 0; k < edgesCount; ++k) sets.unite(from_[k], to_[k]);

  std::vector<std::uint64_t> size(V, 0);
  for (std::uint64_t v = 0; v < V; ++v) ++size[sets.find(v)];
  std::uint64_t bestRoot = 0;
  std::uint64_t bestSize = 0;
  for (std::uint64_t v = 0; v < V; ++v) {
    // Roots are the lowest vertex of their set, so scanning in vertex order and
    // keeping only strictly larger sets prefers the lowest-numbered vertex.
    if (sets.find(v) == v && size[v] > bestSize) {
      bestRoot = v;
      bestSize = size[v];
    }
  }

  NetworkData data;
  data.directed = directed_;
  data.edgeWeighted = edgeWeighted_;
  data.vertexWeighted = vertexWeighted_;
  data.title = title_;
  std::vector<std::uint64_t> kept;
  kept.reserve(bestSize);
  std::vector<std::uint64_t> newIndex(V, UINT64_MAX);
  for (std::uint64_t v = 0; v < V; ++v) {
    if (sets.find(v) == bestRoot) {
      newIndex[v] = kept.size();
      kept.push_back(v);
    }
  }
  data.verticesCount = kept.size();
  std::vector<std::uint64_t> keptEdges;
  for (std::uint64_t k = 0; k < edgesCount; ++k) {
    if (newIndex[from_[k]] == UINT64_MAX) continue;
    keptEdges.push_back(k);
    data.from.push_back(newIndex[from_[k]]);
    data.to.push_back(newIndex[to_[k]]);
    data.weights.push_back(weights_[k]);
  }
  for (const auto& [name, value] : propertiesOfVertices()) {
    data.properties.emplace_back(name, cutProperty(value, kept));
  }
  // What the document held beyond the model follows the kept vertices and edges.
  if (graphml_) data.graphml = graphml_->subset(kept, keptEdges);
  return make(std::move(data));
}
