// Picking: rays from the eye through the pick region against the shapes of
// the vertices the frame would draw, with the view's own camera (pickray).
#include <mutex>

#include "render/VXLNetworkView.h"
#include "render/pickray.h"
#include "render/viewframe.h"

std::uint64_t VXLNetworkView::pickAt(double x, double y, double dx, double dy) {
  std::lock_guard context(contextLock_);
  const VXLCamera view = camera();
  pick_ray::View camera;
  camera.projection =
      camera::frustumMatrix(camera::frustum(view, nearClipDistance(), farClipDistance()));
  camera.modelView = camera::modelView(view, dragRotation(), worldRotation(), objectRotation());
  camera.width = view.viewWidth;
  camera.height = view.viewHeight;
  // The vertices, shapes and masks a frame drawn now would show.
  selectionMode_ = true;
  const Frame frame = takeFrame(pickCopies_);
  selectionMode_ = false;
  if (!frame.showNodes) return kNoVertex;
  return pick_ray::nearestVertex(frame, camera, {x, y, dx, dy});
}
