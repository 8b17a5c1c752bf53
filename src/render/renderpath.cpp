#include <cstdlib>
#include <string_view>

#include "render/renderer.h"

std::string renderPathName(RenderPath path) {
  return path == RenderPath::Shader ? "shader" : "fixed-function";
}

RenderPath requestedRenderPath() {
  const char* value = std::getenv("PLEXVIEW_GL");
  return value && std::string_view(value) == "legacy" ? RenderPath::FixedFunction
                                                      : RenderPath::Shader;
}
