// The window's frames: the scene is drawn into an off-screen framebuffer a
// piece at a time, each piece bounded by measured time, and the last complete
// frame is shown with the current overlays. With a slow GL (software
// rendering of a million edges takes seconds) the window keeps answering
// between pieces; with a quick one a whole frame is drawn and shown at once.
#include <GL/gl.h>

#include <algorithm>
#include <mutex>

#include "render/VXLNetworkView.h"
#include "render/viewframe.h"

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

void VXLNetworkView::presentFrame(int width, int height, std::chrono::milliseconds budget) {
  std::lock_guard context(contextLock_);
  const Clock::time_point deadline = Clock::now() + budget;
  GLint target = 0, samples = 0;
  glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &target);
  glGetIntegerv(GL_SAMPLES, &samples);
  if (!presenter_) presenter_ = std::make_unique<Presenter>();
  Presenter& p = *presenter_;
  // A new size restarts the frame in the making; the old one stays shown.
  if (p.frame && (p.width != width || p.height != height)) p.frame.reset();
  // So does a drag of the camera, and then the frame shows as it is drawn:
  // the first pieces follow the mouse instead of the picture waiting for a
  // whole frame with the camera the drag started from.
  bool dragged = false;
  if (p.frame && drag() != Drag::None && cameraMatrices() != p.camera) {
    p.frame.reset();
    dragged = true;
  }
  if (!p.targets.prepare(width, height, samples)) {
    p.frame.reset();
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(target));
    drawRect(width, height);
    return;
  }

  if (!p.frame) {
    startPresentedFrame(width, height);
    // A network just installed appears as it is drawn rather than after the
    // whole frame; a moving layout keeps showing whole frames.
    p.showPieces = dragged || p.frame->network != p.shownNetwork;
  }
  if (drawPresentedPieces(deadline)) {
    finishPresentedFrame();
  } else if (p.showPieces) {
    p.targets.resolve();
  }

  glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(target));
  glViewport(0, 0, width, height);
  // A frame of another size (the window was resized since) covers only part
  // of the window: the rest shows the background.
  if (!p.targets.shownIs(width, height)) clearToBackground();
  if (p.targets.hasShown()) {
    p.targets.drawShown();
    updateProjection();  // drawRect, a pick or an export may follow
  }
  if (fInfo()) drawInfo();
  glFlush();
  reportGlError();
}

bool VXLNetworkView::framePending() const {
  return presenter_ && presenter_->frame.has_value();
}

bool VXLNetworkView::showsPartialFrame() const {
  return framePending() && presenter_->showPieces;
}

std::shared_ptr<QLONetwork> VXLNetworkView::presentedNetwork() const {
  return presenter_ ? presenter_->shownNetwork : nullptr;
}

void VXLNetworkView::releasePresentation() {
  std::lock_guard context(contextLock_);
  if (!presenter_) return;
  presenter_->frame.reset();
  presenter_->targets.clear();
  presenter_->shownNetwork.reset();
}

std::array<Matrix4, 2> VXLNetworkView::cameraMatrices() const {
  const VXLCamera view = camera();
  return {camera::frustumMatrix(camera::frustum(view, nearClipDistance(), farClipDistance())),
          camera::modelView(view, dragRotation(), worldRotation(), objectRotation())};
}

void VXLNetworkView::startPresentedFrame(int width, int height) {
  Presenter& p = *presenter_;
  p.targets.bindDrawing();
  clearToBackground();

  // The camera as drawRect would set it, kept for every piece of the frame.
  resizeGL(width, height);
  updateProjection();
  updateModelView();
  p.camera = cameraMatrices();
  p.width = width;
  p.height = height;

  prepareFrame();
  p.frame = takeFrame(p.copies);
  p.vertices = VertexCursor{};
  p.nextEdge = 0;
  if (!p.frame->showNodes) p.vertices.next = p.frame->verticesCount;
  if (!p.frame->showEdges) p.nextEdge = p.frame->edgesCount;
}

bool VXLNetworkView::drawPresentedPieces(Clock::time_point deadline) {
  Presenter& p = *presenter_;
  const Frame& frame = *p.frame;
  bool drewAPiece = false;
  while (p.vertices.next < frame.verticesCount || p.nextEdge < frame.edgesCount) {
    const double left = std::chrono::duration<double>(deadline - Clock::now()).count();
    if (drewAPiece && left <= 0) return false;

    // Anything else drawn since the last piece (a pick, an export, the
    // overlays) may have changed the bindings and the state: set them again.
    p.targets.bindDrawing();
    glViewport(0, 0, p.width, p.height);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(p.camera[0].data());
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(p.camera[1].data());
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);

    const Clock::time_point start = Clock::now();
    if (p.vertices.next < frame.verticesCount) {
      const std::uint64_t items =
          p.vertexCost.itemsWithin(left, frame.verticesCount - p.vertices.next);
      rendererFor(frame).drawVertices(frame, p.vertices, p.vertices.next + items);
      glFinish();
      p.vertexCost.record(items, secondsSince(start));
    } else {
      const std::uint64_t items = p.edgeCost.itemsWithin(left, frame.edgesCount - p.nextEdge);
      rendererFor(frame).drawEdges(frame, p.nextEdge, p.nextEdge + items);
      p.nextEdge += items;
      glFinish();
      p.edgeCost.record(items, secondsSince(start));
    }
    drewAPiece = true;
  }
  return true;
}

void VXLNetworkView::finishPresentedFrame() {
  Presenter& p = *presenter_;
  glEnable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glDisable(GL_LIGHT0);
  p.targets.resolve();
  if (shader()) {
    glViewport(0, 0, p.width, p.height);
    blendFrame();
  } else {
    gl_.firstTimeTex = 1;  // switching the pass on starts unblended
  }
  p.shownNetwork = p.frame->network;
  p.frame.reset();
}
