#pragma once
// The GL side of a raster export: the contexts it draws in and the pixels it
// reads back. A context must be current for every call but the constructors.
#include <QImage>
#include <QSurfaceFormat>
#include <functional>
#include <memory>
#include <string>

class QOpenGLContext;
class QOffscreenSurface;
class QOpenGLFramebufferObject;
class QSurface;

namespace export_gl {

// The view's own context for the length of an export: the one current on
// entry (a window or a test drawing the view), else the one `makeCurrent`
// provides, else a process-wide off-screen context kept for the life of the
// process so the view's display lists and textures outlive one export.
// Leaves things as they were on destruction.
class ViewContext {
 public:
  struct Host {
    std::function<bool()> makeCurrent;
    std::function<void()> doneCurrent;
  };
  explicit ViewContext(const Host& host);
  ~ViewContext();
  ViewContext(const ViewContext&) = delete;
  ViewContext& operator=(const ViewContext&) = delete;

  // False (with the reason in error()) when no context could be had.
  bool valid() const { return context_ != nullptr; }
  const std::string& error() const { return error_; }
  // Whether its bound framebuffer holds a frame the view drew (false for the
  // process-wide context, which never shows one).
  bool showsFrame() const { return showsFrame_; }
  QOpenGLContext* context() const { return context_; }
  // Makes it current again after another context was.
  void makeCurrent();

 private:
  enum class Origin { Current, Host, Headless };
  Origin origin_ = Origin::Current;
  Host host_;
  QOpenGLContext* context_ = nullptr;
  QSurface* surface_ = nullptr;
  bool showsFrame_ = false;
  std::string error_;
};

// A compatibility context made for the export (depth 24, 8 samples) sharing
// objects with another, current on an off-screen surface.
class OffscreenContext {
 public:
  OffscreenContext();
  ~OffscreenContext();
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;
  // False when the format cannot be had, the context cannot be made current
  // or such contexts are refused (setOffscreenContexts).
  bool create(QOpenGLContext* shareWith);

 private:
  std::unique_ptr<QOpenGLContext> context_;
  std::unique_ptr<QOffscreenSurface> surface_;
};

// Whether OffscreenContext::create may make a context at all. Tests refuse
// them to exercise the export's fallback to the view's own context, which a
// driver without off-screen surfaces would take.
enum class OffscreenContexts { Allowed, Refused };
void setOffscreenContexts(OffscreenContexts contexts);

// The GL surface the view draws into: a compatibility profile (it draws
// with the fixed-function pipeline and display lists), a 24-bit depth buffer
// and `samples` samples.
QSurfaceFormat compatibilitySurfaceFormat(int samples);
// The format of the export's context and framebuffers: the same with alpha.
QSurfaceFormat exportSurfaceFormat();

// The largest side of a framebuffer this context can draw into in one go:
// the smaller of the renderbuffer and viewport limits, further bounded by
// setMaxTileSide when that is set.
int maxTileSide();
// 0 restores GL's own limit. Tests use it to exercise tiling at small sizes;
// it can also keep a memory-starved driver to modest framebuffers.
void setMaxTileSide(int side);

// A multisampled framebuffer of up to side x side pixels that tiles are
// drawn into, with a single-sampled one its samples are resolved into.
class TileTarget {
 public:
  TileTarget(int width, int height);
  ~TileTarget();
  bool valid() const;
  // Binds the multisampled framebuffer for drawing.
  void bind();
  // Resolves the lower left width x height pixels and reads them into
  // `rows` (RGBA, 8 bits, bottom row first, `rowLength` pixels a row).
  void read(int width, int height, uchar* rows, int rowLength);
  void release();

 private:
  std::unique_ptr<QOpenGLFramebufferObject> drawn_, resolved_;
};

// Reads the lower left width x height pixels of the framebuffer bound for
// reading (resolving it first when multisampled) as GL's rows, bottom first.
QImage readBoundFrame(int width, int height);

}  // namespace export_gl
