#include "quillo/log.h"

#include <cstdio>

namespace quillo {

void logLine(std::string_view message) {
  std::fprintf(stderr, "plexview: %.*s\n", static_cast<int>(message.size()), message.data());
}

}  // namespace quillo
