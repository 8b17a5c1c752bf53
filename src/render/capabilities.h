#pragma once
// The graphics capability report: what the current GL context says about
// its renderer, a few limits and its extensions, as text for the view's
// overlay, the window and scripts.
#include <string>
#include <vector>

namespace capabilities {

struct GlCapabilities {
  std::string renderer, vendor, version, shadingLanguage;
  int maxTextureSize = 0;
  int maxViewportWidth = 0, maxViewportHeight = 0;
  int maxLights = 0;
  int maxRectangleTextureSize = 0;
  int samples = 0;
  std::vector<std::string> extensions;
  // The scene renderer drawing with this context ("shader", "fixed-function";
  // filled in by the view, empty when unknown).
  std::string sceneRenderer;
};

// GL: reads the current context; empty strings and zeros without one.
GlCapabilities currentCapabilities();

// One line per item, then the extensions, several to a line, each line at
// most `lineWidth` characters unless one name alone is longer.
std::string capabilitiesText(const GlCapabilities& caps, std::size_t lineWidth = 96);

}  // namespace capabilities
