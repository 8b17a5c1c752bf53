#pragma once
// The web bundle: a folder of plain files describing a network, its layout,
// its vertex names and chosen vertex properties with their colours, for a
// separate viewer:
//
//   edges.dat        "from to" per edge          names.dat     the vertex names
//   positions.dat    the layout, "x y z" per vertex
//   degree.property  the degrees                 degree.colors their colours
//   Node_Strength.property   the strengths (edge-weighted networks only)
//   STEM.property    a chosen property's values  STEM.colors   its colours
//   properties.json  the index: stem to display name and the order of stems
//
// Every file is written through a temporary file renamed into place, so a
// failure never leaves a truncated file; later files are still attempted.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "plexora/QLONetwork.h"
#include "quillo/QLOVector3dArray.h"

namespace io {

// The colours of the named property under the transform function of the
// given code; null when the name gives no colours.
using ColoursForProperty =
    std::function<std::shared_ptr<QLOVector3dArray>(const std::string& name, std::int64_t code)>;

// A property chosen for the bundle with its transform function code.
struct WebColourChoice {
  std::string name;
  std::int64_t function = 1;
};

struct WebBundleSource {
  std::shared_ptr<const QLONetwork> network;
  std::shared_ptr<const QLOVector3dArray> positions;  // no positions.dat when null
  std::vector<WebColourChoice> choices;               // in the order of the index
  ColoursForProperty colours;
};

// Creates `folder` (with any missing parents) and writes the bundle into it,
// replacing files already there. Answers one "file: reason" line per file
// that could not be written (empty when all were).
std::vector<std::string> writeWebBundle(const std::filesystem::path& folder,
                                        const WebBundleSource& source);

}  // namespace io
