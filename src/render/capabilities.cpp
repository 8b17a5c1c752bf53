// Reading and formatting the capability report.
#include "render/capabilities.h"

#include <GL/gl.h>

#include <sstream>

namespace capabilities {
namespace {

std::string glText(GLenum name) {
  const auto* text = reinterpret_cast<const char*>(glGetString(name));
  return text ? text : "";
}

int glInteger(GLenum name) {
  GLint value = 0;
  glGetIntegerv(name, &value);
  return value;
}

}  // namespace

GlCapabilities currentCapabilities() {
  GlCapabilities caps;
  caps.version = glText(GL_VERSION);
  if (caps.version.empty()) return caps;  // no current context
  caps.renderer = glText(GL_RENDERER);
  caps.vendor = glText(GL_VENDOR);
  caps.shadingLanguage = glText(GL_SHADING_LANGUAGE_VERSION);
  caps.maxTextureSize = glInteger(GL_MAX_TEXTURE_SIZE);
  GLint viewport[2] = {0, 0};
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
  caps.maxViewportWidth = viewport[0];
  caps.maxViewportHeight = viewport[1];
  caps.maxLights = glInteger(GL_MAX_LIGHTS);
  caps.maxRectangleTextureSize = glInteger(GL_MAX_RECTANGLE_TEXTURE_SIZE);
  caps.samples = glInteger(GL_SAMPLES);
  // A compatibility context answers the whole list as one string.
  std::istringstream names(glText(GL_EXTENSIONS));
  for (std::string name; names >> name;) caps.extensions.push_back(name);
  return caps;
}

std::string capabilitiesText(const GlCapabilities& caps, std::size_t lineWidth) {
  std::string text;
  auto line = [&](const char* label, const std::string& value) {
    text += label;
    text += value;
    text += '\n';
  };
  line("Renderer: ", caps.renderer);
  line("Vendor: ", caps.vendor);
  line("Version: ", caps.version);
  line("Shading language: ", caps.shadingLanguage);
  line("Max texture size: ", std::to_string(caps.maxTextureSize));
  std::string viewport = std::to_string(caps.maxViewportWidth);
  viewport += " x ";
  viewport += std::to_string(caps.maxViewportHeight);
  line("Max viewport: ", viewport);
  line("Max lights: ", std::to_string(caps.maxLights));
  line("Max rectangle texture size: ", std::to_string(caps.maxRectangleTextureSize));
  line("Samples: ", std::to_string(caps.samples));
  if (!caps.sceneRenderer.empty()) line("Scene renderer: ", caps.sceneRenderer);
  text += "Extensions (";
  text += std::to_string(caps.extensions.size());
  text += "):";
  std::size_t column = lineWidth;  // start a new line before the first name
  for (const std::string& name : caps.extensions) {
    if (column + 1 + name.size() > lineWidth) {
      text += '\n';
      column = 0;
    } else {
      text += ' ';
      ++column;
    }
    text += name;
    column += name.size();
  }
  return text;
}

}  // namespace capabilities
