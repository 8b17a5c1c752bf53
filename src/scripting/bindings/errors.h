#pragma once
// C++ exceptions the bindings throw for failed reads and writes. A translator
// registered by bindErrors() turns them into plexview.ReadError (a ValueError
// carrying `file`, `line` and `reason`) and OSError. They hold no Python
// objects, so they may be thrown while the GIL is released.
#include <stdexcept>
#include <string>

#include "quillo/ReadError.h"

namespace plexview {

class ReadFailure : public std::runtime_error {
 public:
  explicit ReadFailure(ReadError error)
      : std::runtime_error(error.describe()), error_(std::move(error)) {}
  const ReadError& error() const { return error_; }

 private:
  ReadError error_;
};

class WriteFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// How Python's `atomically` flag maps onto the writers' mode.
inline WriteMode writeModeFor(bool atomically) {
  return atomically ? WriteMode::Atomic : WriteMode::Direct;
}

}  // namespace plexview
