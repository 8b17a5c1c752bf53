#pragma once
// The in-memory graph: V vertices numbered 0..V-1, E edges stored as three
// parallel contiguous arrays (from, to, weight), three flags fixed at creation
// and an ordered table of per-vertex properties.
//
// The edge arrays never move or change once the network exists, so layout and
// drawing threads read them through the public fields without a lock. Only the
// property table changes later (setPropertiesOfVertices), guarded by a mutex.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "plexora/GraphmlExtras.h"
#include "plexora/PropertyValue.h"
#include "plexora/QLOVertex.h"
#include "quillo/QLONumberArray.h"
#include "quillo/ReadError.h"

// Everything a network is made from; readers and generators fill one in.
struct NetworkData {
  std::uint64_t verticesCount = 0;
  std::vector<std::uint64_t> from;
  std::vector<std::uint64_t> to;
  std::vector<float> weights;  // empty means every weight is 1
  bool directed = false;
  bool edgeWeighted = false;
  bool vertexWeighted = false;
  PropertyTable properties;
  // What the GraphML document it was read from held beyond the model; null
  // for networks made otherwise.
  std::shared_ptr<const plexora::GraphmlExtras> graphml;
  std::string title;  // the network's own name in its file, if it has one
};

class QLONetwork : public std::enable_shared_from_this<QLONetwork> {
 public:
  using Ptr = std::shared_ptr<QLONetwork>;

  // Validates and adopts `data`: every endpoint below V, as many weights as
  // edges (or none), every property with V entries. Null with a reason in
  // `error` (which may be null) otherwise.
  static Ptr make(NetworkData&& data, std::string* error = nullptr);

  // Readers: null on failure, with the file, line and reason in `error`.
  // initWithContentsOfURL reads GraphML, Pajek, GML, GEXF and edge lists,
  // chosen by the extension or else by the content (plexora::networkFormatOf).
  static Ptr initWithContentsOfURL(const std::filesystem::path& file, ReadError* error = nullptr);
  static Ptr initWithContentsOfPajekURL(const std::filesystem::path& file,
                                        ReadError* error = nullptr);

  // Generators, drawing on the shared random source.
  static Ptr initRandomNetworkWithNumberOfVertices(std::uint64_t vertices, double degree);
  static Ptr initBarabasiNetworkWitNumberOfVertices(std::uint64_t vertices,
                                                    std::uint64_t approximateDegree);

  QLONetwork(const QLONetwork&) = delete;
  QLONetwork& operator=(const QLONetwork&) = delete;

  // Direct access for the layout and drawing code. Edge k joins
  // edgeFromList[k] and edgeToList[k]; edgesWeights[k] is its weight (1 when
  // the network is not edge-weighted).
  const std::uint64_t verticesCount;
  const std::uint64_t edgesCount;
  const std::uint64_t* const edgeFromList;
  const std::uint64_t* const edgeToList;
  const float* const edgesWeights;

  std::uint64_t countVertices() const { return verticesCount; }
  std::uint64_t countEdges() const { return edgesCount; }
  bool isDirected() const { return directed_; }
  bool isEdgeWeighted() const { return edgeWeighted_; }
  bool isVertexWeighted() const { return vertexWeighted_; }
  // The name the file gave the network (Pajek's "*Network NAME"), or "".
  const std::string& title() const { return title_; }

  // Per-vertex measures as fresh arrays of V doubles. A self-loop counts twice
  // at its vertex. For an undirected network the in-measures equal the plain
  // ones (every edge arrives at both ends).
  std::shared_ptr<QLONumberArray> calcDegrees() const;
  std::shared_ptr<QLONumberArray> calcInDegrees() const;
  std::shared_ptr<QLONumberArray> calcStrengths() const;
  std::shared_ptr<QLONumberArray> calcInStrengths() const;

  // The property table.
  PropertyTable propertiesOfVertices() const;
  PropertyValue propertyForKey(const std::string& name) const;
  std::vector<std::string> keysForPropertiesOfVertices() const;
  // Stores `value` under `name` (replacing an earlier value in its place in the
  // order). Answers false and changes nothing unless the value has V entries.
  bool setPropertiesOfVertices(const PropertyValue& value, const std::string& name);

  QLOVertex vertexAtIndex(std::uint64_t index) const;
  std::vector<QLOVertex> vertices() const;
  // The label of a vertex: its "Name" entry, or its number when the network
  // has no text "Name" property.
  std::string vertexName(std::uint64_t index) const;
  std::uint64_t degreeOfVertex(std::uint64_t index) const { return degrees_[index]; }

  // What the GraphML document held beyond the model (null when the network
  // was not read from one); the GraphML writer puts it back.
  const std::shared_ptr<const plexora::GraphmlExtras>& graphmlExtras() const { return graphml_; }
  // Read from a document that Plexview's own writer made.
  bool isPlexviewDocument() const { return graphml_ && graphml_->plexviewDocument; }

  // The largest weakly connected component as a network of its own (see
  // components.cpp for the rules).
  Ptr largestConnectedSubNetwork() const;

  // Writers: false with a reason in `error` on failure.
  bool writeToURL(const std::filesystem::path& file, WriteMode mode,
                  std::string* error = nullptr) const;  // GraphML document
  bool writeToPajekURL(const std::filesystem::path& file, WriteMode mode,
                       std::string* error = nullptr) const;
  bool writeToEdgesURL(const std::filesystem::path& file, WriteMode mode,
                       std::string* error = nullptr) const;
  bool writeToGexfURL(const std::filesystem::path& file, WriteMode mode,
                      std::string* error = nullptr) const;  // GEXF 1.3
  bool writeToGmlURL(const std::filesystem::path& file, WriteMode mode,
                     std::string* error = nullptr) const;

 private:
  explicit QLONetwork(NetworkData&& data);

  std::vector<std::uint64_t> from_;
  std::vector<std::uint64_t> to_;
  std::vector<float> weights_;
  std::vector<std::uint64_t> degrees_;
  bool directed_;
  bool edgeWeighted_;
  bool vertexWeighted_;
  std::shared_ptr<const plexora::GraphmlExtras> graphml_;
  const std::string title_;

  mutable std::mutex propertiesMutex_;
  PropertyTable properties_;
};
