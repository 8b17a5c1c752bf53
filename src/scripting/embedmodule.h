#pragma once
// The plexview module compiled into the program: everything the extension
// module offers, and what only the running program can do (end the event
// loop, render a frame through the window layer).
#include <filesystem>
#include <functional>
#include <string>

class VXLNetworkView;

namespace scripting {

// What the program lends the module; unset services raise RuntimeError.
struct ProgramServices {
  // Writes one frame of the view as a PNG of width x height pixels; answers
  // an empty string when written, else the reason.
  std::function<std::string(VXLNetworkView& view, const std::filesystem::path& file, int width,
                            int height)>
      writeSnapshot;
};

// Call before the interpreter starts.
void setProgramServices(ProgramServices services);

}  // namespace scripting
