#pragma once
// The scene renderer interface: draws the vertex and edge passes of a frame
// into the framebuffer, viewport and camera matrices current in GL. Two
// implementations: the shader renderer (GL buffers and GLSL 3.30, for
// everything drawn into pixels) and the fixed-function one (display lists
// and immediate mode, for gl2ps's vector recording and GL below 3.3).
#include <cstdint>
#include <string>

#include "render/sceneframe.h"

enum class RenderPath { Shader, FixedFunction };

// "shader" or "fixed-function".
std::string renderPathName(RenderPath path);
// The path asked for by the environment: PLEXVIEW_GL=legacy selects the
// fixed-function one, anything else (or nothing) the shader one.
RenderPath requestedRenderPath();

class SceneRenderer {
 public:
  virtual ~SceneRenderer() = default;
  virtual RenderPath path() const = 0;
  // Vertices from cursor.next up to `end`; the cursor ends at `end`.
  virtual void drawVertices(const SceneFrame& frame, VertexCursor& cursor, std::uint64_t end) = 0;
  // Edges [begin, end) in edge order.
  virtual void drawEdges(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) = 0;
};

// The light and material both renderers use: light 0 is directional from
// (1, 1, 1) in eye space, and the current colour drives the material's
// ambient and diffuse terms.
namespace scene_light {
inline constexpr float kLightAmbient[4] = {0.8f, 0.8f, 0.8f, 1.0f};
inline constexpr float kLightDiffuse[4] = {0.5f, 0.5f, 0.5f, 1.0f};
inline constexpr float kLightSpecular[4] = {0.5f, 0.5f, 0.5f, 1.0f};
inline constexpr float kLightPosition[4] = {1.0f, 1.0f, 1.0f, 0.0f};
inline constexpr float kMaterialAmbient[4] = {0.8f, 0.8f, 0.8f, 1.0f};
inline constexpr float kMaterialDiffuse[4] = {0.6f, 0.6f, 0.6f, 1.0f};
inline constexpr float kMaterialSpecular[4] = {0.3f, 0.3f, 0.3f, 1.0f};
inline constexpr float kShininess = 75.0f;
// GL's default global ambient light.
inline constexpr float kModelAmbient[4] = {0.2f, 0.2f, 0.2f, 1.0f};
}  // namespace scene_light
