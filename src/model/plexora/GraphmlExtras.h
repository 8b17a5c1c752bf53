#pragma once
// What a GraphML document held beyond the network model: other tools' keys and
// their data, node ids, edge ids, descriptions, graph-level data. The reader
// keeps it as XML text, the network carries it, and the writer puts it back,
// so saving a document read from another tool drops nothing of it.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace plexora {

// A setting of Plexview's own kept in a document (how its window shows the
// network): a graph-level key marked plexview:setting="NAME" and its value.
struct DocumentSetting {
  std::string name;
  std::string type;  // the key's attr.type
  std::string value;
  bool operator==(const DocumentSetting&) const = default;
};

struct GraphmlExtras {
  // The key a vertex property was read from; the writer declares the property
  // with it again while the property still holds values of the declared type.
  struct SourceKey {
    std::string property;
    std::string id;
    std::string name;        // attr.name
    std::string type;        // attr.type as declared (empty when absent)
    std::string attributes;  // every attribute of the declaration, as XML text
    std::string children;    // <default>, <desc>, ... as XML text
    bool hasDefault = false;
    // A vector property read from a key of a vector type: how many numbers
    // each value held (2 or 3); 0 for other keys.
    int vectorComponents = 0;
  };

  // The document carries Plexview's own marker: Plexview's writer made it.
  bool plexviewDocument = false;
  // Plexview's own settings the document carried, in document order.
  std::vector<DocumentSetting> settings;

  // Attributes of <graphml> other than those the writer always puts there
  // (namespace declarations of other tools, say), as ` name="value"` text.
  std::string rootAttributes;
  // Children of <graphml> other than the keys and the graph read, before and
  // after that graph (a <desc>, later graphs).
  std::string rootBefore;
  std::string rootAfter;
  // Declarations of keys whose data was not turned into the network (edge and
  // graph attributes, an editor's graphics keys, ...), in document order.
  std::string keys;
  // The ids of those keys and of any key a kept <data> names; the writer's
  // own keys avoid them.
  std::vector<std::string> keyIds;
  std::vector<SourceKey> propertyKeys;
  // The edge weight's key, when the document had one.
  bool hasWeightKey = false;
  SourceKey weightKey;

  // Attributes of <graph> other than edgedefault and parse hints, and its
  // children other than nodes, edges and the flags read (<desc>, <data>, ...).
  std::string graphAttributes;
  std::string graphChildren;

  // Per vertex, empty when nothing of the kind was kept: the node's id (only
  // when the ids are not n0, n1, ... in order), its other attributes and its
  // children that are not vertex properties.
  std::vector<std::string> nodeIds;
  std::vector<std::string> nodeAttributes;
  std::vector<std::string> nodeChildren;
  // Per edge, the same: attributes other than source and target (an id, ...)
  // and children other than the weight.
  std::vector<std::string> edgeAttributes;
  std::vector<std::string> edgeChildren;

  // The record for a network cut down to `vertices` and `edges` (indices into
  // this one's, in their new order).
  std::shared_ptr<const GraphmlExtras> subset(const std::vector<std::uint64_t>& vertices,
                                              const std::vector<std::uint64_t>& edges) const;
};

}  // namespace plexora
