#pragma once
// Which renderer draws a view's frames: the shader renderer of the current
// context when the shader path is asked for and the context runs GLSL 3.30,
// else the fixed-function one. Each context gets its own shader renderer
// (vertex arrays are not shared between contexts), dropped when the context
// goes. Main thread (wherever the view draws).
#include <atomic>
#include <map>
#include <memory>

#include "render/legacyrenderer.h"
#include "render/shaderrenderer.h"

class QOpenGLContext;

class Renderers {
 public:
  Renderers();
  ~Renderers();
  Renderers(const Renderers&) = delete;
  Renderers& operator=(const Renderers&) = delete;

  // The path asked for; requestedRenderPath() at first.
  RenderPath preferred() const { return preferred_.load(); }
  void setPreferred(RenderPath path) { preferred_.store(path); }
  // The path of the renderer forPixels last answered (before any: the one
  // asked for).
  RenderPath inUse() const { return inUse_.load(); }

  LegacyRenderer& legacy() { return legacy_; }
  // The renderer for a frame drawn into pixels in the current context.
  SceneRenderer& forPixels();
  // The current context's shader renderer, if it has one (null otherwise).
  ShaderRenderer* shaderRenderer();

 private:
  struct PerContext;
  std::atomic<RenderPath> preferred_;
  std::atomic<RenderPath> inUse_;
  LegacyRenderer legacy_;
  // Shared with the contexts' destruction handlers, which may outlive it.
  std::shared_ptr<PerContext> contexts_;
};
