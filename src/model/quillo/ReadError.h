#pragma once
// What went wrong when a file could not be read: the file, the line (1-based,
// 0 when the problem is not tied to a line) and a short description. Readers
// fill one in when they answer null so the caller can show the reason.
#include <cstdint>
#include <string>

struct ReadError {
  std::string file;
  std::uint64_t line = 0;
  std::string message;

  // "FILE, line N: MESSAGE" (or "FILE: MESSAGE" without a line), always
  // valid UTF-8 with control bytes shown as \xNN.
  std::string describe() const;
};

// How writers put a file in place. Atomic writes go to a temporary file beside
// the target that is renamed over it, so a failed write never leaves a
// truncated file where a good one was.
enum class WriteMode { Atomic, Direct };
