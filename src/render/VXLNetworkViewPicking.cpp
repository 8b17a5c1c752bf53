// Picking: the scene is drawn once more in GL's selection mode through a pick
// matrix around the point, each vertex under its own name, and the nearest
// hit record names the vertex.
#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <climits>
#include <limits>
#include <memory>

#include "render/VXLNetworkView.h"

namespace {

// Every record carries one name (the name stack holds only the current
// vertex), so it takes 4 entries. A drawn vertex loads its name once, and a
// selected one again for its shell: at most 2 V records, plus one for the
// name pushed before the vertices and one when selection mode ends.
std::size_t selectionBufferSize(std::uint64_t V) {
  const std::uint64_t entries = 4 * (2 * V + 2);
  // Past GL's size type the buffer overflows; the records that fit are read.
  return static_cast<std::size_t>(std::min<std::uint64_t>(entries, INT_MAX));
}

}  // namespace

std::uint64_t VXLNetworkView::pickAt(double x, double y, double dx, double dy) {
  std::lock_guard context(contextLock_);
  const std::shared_ptr<QLONetwork> current = network();
  const std::uint64_t V = current ? current->countVertices() : 0;
  const VXLCamera view = camera();

  const std::size_t size = selectionBufferSize(V);
  auto buffer = std::make_unique_for_overwrite<GLuint[]>(size);
  glSelectBuffer(static_cast<GLsizei>(size), buffer.get());
  glRenderMode(GL_SELECT);
  glInitNames();

  // The view's own projection and model-view, so a pick does not depend on
  // what else drew into the context since the last frame.
  GLint viewport[4] = {0, 0, view.viewWidth, view.viewHeight};
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  gluPickMatrix(x, y, dx, dy, viewport);
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(view, nearClipDistance(), farClipDistance()));
  glMultMatrixd(projection.data());
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  const Matrix4 modelView =
      camera::modelView(view, dragRotation(), worldRotation(), objectRotation());
  glLoadMatrixd(modelView.data());

  // V names no vertex: whatever is drawn before the first vertex carries it.
  glPushName(static_cast<GLuint>(std::min<std::uint64_t>(V, UINT_MAX)));
  selectionMode_ = true;
  drawCommands();
  selectionMode_ = false;
  const GLint hits = glRenderMode(GL_RENDER);

  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
  return nearestHit({buffer.get(), size}, hits, V);
}

std::uint64_t VXLNetworkView::nearestHit(std::span<const std::uint32_t> records, std::int64_t hits,
                                         std::uint64_t V) {
  std::uint32_t nearest = std::numeric_limits<std::uint32_t>::max();
  std::uint64_t result = kNoVertex;
  std::size_t at = 0;
  // A negative count means the buffer overflowed: read the records that fit.
  for (std::int64_t k = 0; (hits < 0 || k < hits) && at + 3 <= records.size(); ++k) {
    const std::uint32_t names = records[at];
    const std::uint32_t minDepth = records[at + 1];
    const std::size_t end = at + 3 + names;
    if (end > records.size()) break;
    // Strictly nearer only: on a tie the first record stays. A nearer record
    // without a vertex name still hides the farther ones after it.
    if (minDepth < nearest) {
      if (names != 0 && records[end - 1] < V) result = records[end - 1];
      nearest = minDepth;
    }
    at = end;
  }
  return result;
}
