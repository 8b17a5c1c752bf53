#pragma once
// Text-level readers and writers behind QLONetwork's file messages. Readers
// work on text in memory (so fuzzers and tests need no files); `name` is the
// file name used in error messages.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/GraphmlExtras.h"
#include "quillo/ReadError.h"

class QLONetwork;
class QLOVector3dArray;

namespace plexora {

std::shared_ptr<QLONetwork> readPajek(std::string_view text, const std::string& name,
                                      ReadError* error);
// `layout`, when given, stands in for the network's "Position" (so that an
// export shows the layout as it is without storing it in the network).
std::string pajekText(const QLONetwork& network,
                      std::shared_ptr<QLOVector3dArray> layout = nullptr);
// One "from to" line per edge (vertex numbers from 0), with " weight" added
// when the network is edge-weighted.
std::string edgesText(const QLONetwork& network);

std::shared_ptr<QLONetwork> readGraphml(std::string_view text, const std::string& name,
                                        ReadError* error);
// With `settings`, the document carries them as Plexview's own settings;
// without, the settings the network's document was read with.
std::string graphmlText(const QLONetwork& network,
                        const std::vector<DocumentSetting>* settings = nullptr);

std::shared_ptr<QLONetwork> readGml(std::string_view text, const std::string& name,
                                    ReadError* error);
std::shared_ptr<QLONetwork> readGexf(std::string_view text, const std::string& name,
                                     ReadError* error);
// CSV, TSV or blank-separated "source target [weight]" lines.
std::shared_ptr<QLONetwork> readEdgeList(std::string_view text, const std::string& name,
                                         ReadError* error);

// GEXF 1.3 and GML. `layout` and `colors` (r, g, b in 0..1), when given, stand
// in for the network's "Position" and "Color".
std::string gexfText(const QLONetwork& network, std::shared_ptr<QLOVector3dArray> layout = nullptr,
                     std::shared_ptr<QLOVector3dArray> colors = nullptr);
std::string gmlText(const QLONetwork& network, std::shared_ptr<QLOVector3dArray> layout = nullptr);

enum class NetworkFormat { Graphml, Pajek, Gml, Gexf, EdgeList };
// The format of a file: by its extension (any case, a trailing ".gz" set
// aside) when that names one, otherwise by the start of `text`.
NetworkFormat networkFormatOf(const std::string& fileName, std::string_view text);
// The reader of a format.
std::shared_ptr<QLONetwork> readNetwork(NetworkFormat format, std::string_view text,
                                        const std::string& name, ReadError* error);

// The largest vertex count a reader accepts from a file (a declared count such
// as "*Vertices n" is checked against it before anything is allocated).
std::uint64_t maxReadVertices();
void setMaxReadVertices(std::uint64_t limit);

// What a file may make a reader allocate, so that memory stays proportional
// to what the file holds. A file of `bytes` bytes may declare at most
// 10^7 vertices plus 16 per byte (and never more than maxReadVertices()):
// vertices need not be listed, but a few bytes cannot stand for billions of
// them. Per-vertex properties (labels, positions, attributes laid out for
// every vertex) may take at most 256 MiB plus 64 bytes per byte.
inline constexpr std::uint64_t kFreeVertices = 10'000'000;
inline constexpr std::uint64_t kVerticesPerByte = 16;
inline constexpr std::uint64_t kFreePropertyBytes = std::uint64_t{256} << 20;
inline constexpr std::uint64_t kPropertyBytesPerByte = 64;
std::uint64_t vertexLimitForText(std::uint64_t bytes);
std::uint64_t propertyBudgetForText(std::uint64_t bytes);

}  // namespace plexora
