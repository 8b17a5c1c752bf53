#pragma once
// Text-level readers and writers behind QLONetwork's file messages. Readers
// work on text in memory (so fuzzers and tests need no files); `name` is the
// file name used in error messages.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "quillo/ReadError.h"

class QLONetwork;

namespace plexora {

std::shared_ptr<QLONetwork> readPajek(std::string_view text, const std::string& name,
                                      ReadError* error);
std::string pajekText(const QLONetwork& network);
// One "from to" line per edge (vertex numbers from 0), with " weight" added
// when the network is edge-weighted.
std::string edgesText(const QLONetwork& network);

std::shared_ptr<QLONetwork> readGraphml(std::string_view text, const std::string& name,
                                        ReadError* error);
std::string graphmlText(const QLONetwork& network);

// The largest vertex count a reader accepts from a file (a declared count such
// as "*Vertices n" is checked against it before anything is allocated).
// Fuzzers lower it to keep their memory small.
std::uint64_t maxReadVertices();
void setMaxReadVertices(std::uint64_t limit);

}  // namespace plexora
