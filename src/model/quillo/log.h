#pragma once
// Diagnostics: one line per message on standard error, through this one
// function so the format and destination can change in one place.
#include <string_view>

namespace quillo {

void logLine(std::string_view message);

}  // namespace quillo
