#pragma once
// A handle on one vertex of a network; keeps its network alive.
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "plexora/PropertyValue.h"

class QLONetwork;

class QLOVertex {
 public:
  QLOVertex(std::shared_ptr<const QLONetwork> network, std::uint64_t index)
      : network_(std::move(network)), index_(index) {}

  std::uint64_t identification() const { return index_; }
  std::string name() const;
  std::int64_t countEdges() const;
  // This vertex's entry of every property, by property name.
  std::map<std::string, PropertyEntry> properties() const;
  const std::shared_ptr<const QLONetwork>& network() const { return network_; }

 private:
  std::shared_ptr<const QLONetwork> network_;
  std::uint64_t index_;
};
