#pragma once
// Finding vertices by text: a case-insensitive substring of the "Name"
// property (in any form) or of any text property; of the vertex number too
// when the network has no names (the labels then show the numbers).
#include <cstdint>
#include <string>
#include <vector>

#include "plexora/PropertyValue.h"

namespace search {

// The vertices (below `count`) with a match, in increasing order; nothing
// for empty text.
std::vector<std::uint64_t> findVertices(const PropertyTable& properties, std::uint64_t count,
                                        const std::string& text);

}  // namespace search
