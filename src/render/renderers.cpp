#include "render/renderers.h"

#include <QObject>
#include <QOpenGLContext>
#include <mutex>

#include "quillo/log.h"

struct Renderers::PerContext {
  std::mutex mutex;
  // Null: the context cannot run the shader renderer.
  std::map<QOpenGLContext*, std::unique_ptr<ShaderRenderer>> renderers;
};

namespace {

// The path in use is logged when it is first known and whenever it changes.
void logPath(RenderPath path, const std::string& why) {
  static std::atomic<int> logged{-1};
  const int now = static_cast<int>(path);
  if (logged.exchange(now) == now) return;
  quillo::logLine("drawing with the " + renderPathName(path) + " renderer" +
                  (why.empty() ? "" : " (" + why + ")"));
}

}  // namespace

Renderers::Renderers()
    : preferred_(requestedRenderPath()),
      inUse_(requestedRenderPath()),
      contexts_(std::make_shared<PerContext>()) {}

Renderers::~Renderers() {
  // Renderers of the current context delete their GL objects; the others
  // leave them to their contexts.
  std::lock_guard lock(contexts_->mutex);
  contexts_->renderers.clear();
}

ShaderRenderer* Renderers::shaderRenderer() {
  QOpenGLContext* context = QOpenGLContext::currentContext();
  if (!context) return nullptr;
  std::unique_lock lock(contexts_->mutex);
  auto found = contexts_->renderers.find(context);
  if (found != contexts_->renderers.end()) return found->second.get();
  std::string reason;
  std::unique_ptr<ShaderRenderer> made = ShaderRenderer::create(reason);
  if (!made) logPath(RenderPath::FixedFunction, reason);
  ShaderRenderer* renderer = made.get();
  contexts_->renderers.emplace(context, std::move(made));
  std::weak_ptr<PerContext> owner = contexts_;
  QObject::connect(context, &QOpenGLContext::aboutToBeDestroyed, context, [owner, context] {
    if (auto alive = owner.lock()) {
      std::lock_guard guard(alive->mutex);
      alive->renderers.erase(context);
    }
  });
  return renderer;
}

SceneRenderer& Renderers::forPixels() {
  SceneRenderer* chosen = &legacy_;
  std::string why;
  if (preferred() == RenderPath::Shader) {
    if (ShaderRenderer* shader = shaderRenderer()) chosen = shader;
  } else {
    why = "PLEXVIEW_GL=legacy or asked for";
  }
  inUse_.store(chosen->path());
  logPath(chosen->path(), why);
  return *chosen;
}
