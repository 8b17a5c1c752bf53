#pragma once
// The two off-screen framebuffers a window's frames pass through: the one a
// frame is drawn into, piece by piece, with the window's samples; and the
// resolved one the window shows until the next frame is complete. A context
// must be current for every call, the same one each time.
#include <memory>

class QOpenGLFramebufferObject;

class FrameTargets {
 public:
  FrameTargets();
  ~FrameTargets();
  FrameTargets(const FrameTargets&) = delete;
  FrameTargets& operator=(const FrameTargets&) = delete;

  // Makes the drawing framebuffer width x height with `samples` samples
  // (again only when either changed). False when GL cannot make it.
  bool prepare(int width, int height, int samples);
  // Binds the drawing framebuffer.
  void bindDrawing();
  // Resolves the drawing framebuffer into the shown one and binds that.
  void resolve();
  bool hasShown() const { return shown_ != nullptr; }
  // Whether the shown frame is width x height (false when there is none).
  bool shownIs(int width, int height) const;
  // Draws the shown frame into the bound framebuffer, pixel for pixel at its
  // lower left, with the identity matrices; leaves blending and lighting off.
  void drawShown();
  // Deletes both (their context current, or already destroyed).
  void clear();

 private:
  int samples_ = 0;
  std::unique_ptr<QOpenGLFramebufferObject> drawing_, shown_;
};
