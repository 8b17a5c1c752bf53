// The view's drawing: fixed GL state, one frame, the frame's snapshot of the
// view's state, and the choice of the renderer that draws its passes
// (legacyrenderer, shaderrenderer). GL calls go into the caller's current
// context.
#include <GL/gl.h>
#include <GL/glu.h>

#include <cstdio>
#include <mutex>

#include "quillo/log.h"
#include "render/VXLNetworkView.h"
#include "render/renderers.h"
#include "render/scenecolours.h"
#include "render/vectorexport.h"
#include "render/viewframe.h"

using scene::Background;

void VXLNetworkView::initCommands() {
  std::lock_guard context(contextLock_);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_MULTISAMPLE);
  glEnable(GL_CULL_FACE);

  renderers_->legacy().prepare();  // light, material, shape lists
  const scene::Rgba clear = scene::kInitialClearColour;
  glClearColor(clear.r, clear.g, clear.b, clear.a);

  {
    std::lock_guard lock(lock_);
    camera::resetCamera(camera_, worldRotation_, origin_);
  }
  if (gl_.programObject == 0) createBlendingProgram();
}

void VXLNetworkView::resizeCommands(int width, int height) {
  std::lock_guard context(contextLock_);
  {
    std::lock_guard lock(lock_);
    camera_.viewWidth = width;
    camera_.viewHeight = height;
  }
  glViewport(0, 0, width, height);
  updateProjection();
  updateInfoString();
}

void VXLNetworkView::updateProjection() {
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(camera(), nearClipDistance(), farClipDistance()));
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(projection.data());
  glMatrixMode(GL_MODELVIEW);
  updateCameraString();
}

void VXLNetworkView::updateModelView() {
  // The rotation of a trackball drag in progress joins before the world's.
  const Matrix4 view =
      camera::modelView(camera(), navigationForFrame(), worldRotation(), objectRotation());
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(view.data());
  updateCameraString();
}

void VXLNetworkView::resizeGL(int width, int height) {
  const VXLCamera current = camera();
  if (width == current.viewWidth && height == current.viewHeight) return;
  resizeCommands(width, height);
  {
    std::lock_guard lock(lock_);
    fitLegendsHeight();
  }
  if (shader()) makeBlendingTextures(width, height);
}

void VXLNetworkView::clearToBackground() {
  const scene::Rgba clear =
      scene::clearColour(blackBackground() ? Background::Black : Background::White);
  glDepthMask(GL_TRUE);
  glClearColor(clear.r, clear.g, clear.b, clear.a);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void VXLNetworkView::drawRect(int width, int height) {
  std::lock_guard context(contextLock_);
  clearToBackground();

  resizeGL(width, height);
  updateModelView();
  drawCommands();
  if (shader()) {
    blendFrame();
  } else {
    gl_.firstTimeTex = 1;  // switching the pass on starts unblended
  }
  if (fInfo()) drawInfo();
  glFlush();
  reportGlError();
}

VXLNetworkView::Frame VXLNetworkView::takeFrame(FrameCopies& copies) {
  Frame frame;
  frame.serial = ++frameSerial_;
  frame.selecting = selectionMode_;
  frame.scale = scale();
  frame.showNodes = showNodes();
  frame.showEdges = showEdges();
  frame.simpleShapes = simpleShapes();
  frame.limitNodes = limitNodes();
  frame.limitEdges = limitEdges();
  frame.verticesDepthTest = verticesDepthTest();
  frame.edgesDepthTest = edgesDepthTest();
  frame.blendLines = blendLines();
  frame.lineWidth = lineWidth();
  frame.edgesIntensity = edgesIntensity();
  frame.background = blackBackground() ? Background::Black : Background::White;
  frame.minFilter = minFilterProperty();
  frame.maxFilter = maxFilterProperty();

  std::lock_guard lock(lock_);
  if (!network_ || !positions_ || positions_->count() != network_->countVertices()) return frame;
  const std::uint64_t V = network_->countVertices();
  const std::uint64_t E = network_->countEdges();
  frame.network = network_;
  frame.verticesCount = V;
  frame.edgesCount = E;
  frame.from = network_->edgeFromList;
  frame.to = network_->edgeToList;
  if (network_->isEdgeWeighted()) {
    if (weightThresholdData_ && weightThresholdData_->size() == E) {
      frame.weightsOwner = weightThresholdData_;
      frame.weights = weightThresholdData_->data();
    } else {
      frame.weights = network_->edgesWeights;
    }
  }
  styleEdges(frame);
  if (!selectedVertices_ || selectedVertices_->count() != V) resetSelection();
  frame.selectedOwner = selectedVertices_;
  frame.selected = selectedVertices_->data<std::uint8_t>();

  // The layout thread writes the positions as relaxed atomics: copy them.
  std::vector<float>& xyz = copies.positions;
  xyz.resize(3 * V);
  positions_->copyPlanesTo(xyz.data(), xyz.data() + V, xyz.data() + 2 * V);
  frame.x = xyz.data();
  frame.y = frame.x + V;
  frame.z = frame.y + V;
  if (!frame.selecting && colors_ && colors_->count() >= V) {
    const std::uint64_t n = colors_->count();
    std::vector<float>& rgb = copies.colours;
    rgb.resize(3 * n);
    colors_->copyPlanesTo(rgb.data(), rgb.data() + n, rgb.data() + 2 * n);
    frame.r = rgb.data();
    frame.g = frame.r + n;
    frame.b = frame.g + n;
  }
  if (hideSpecialVertices() && hiddenVertices_ && hiddenVertices_->count() >= V) {
    frame.hiddenOwner = hiddenVertices_;
    frame.hidden = hiddenVertices_->data<std::uint8_t>();
  }
  if (filterProperty_ && filterProperty_->size() == V) {
    frame.filterOwner = filterProperty_;
    frame.filter = filterProperty_->data();
  }
  refreshSizes();
  if (sizing_.sizes && sizing_.sizes->size() == V) {
    frame.sizesOwner = sizing_.sizes;
    frame.sizes = sizing_.sizes->data();
    frame.sizesVersion = sizing_.version;
  }
  return frame;
}

void VXLNetworkView::drawCommands() {
  std::lock_guard context(contextLock_);
  if (!selectionMode_) prepareFrame();
  const Frame frame = takeFrame(frameCopies_);
  if (!frame.selecting) glEnable(GL_BLEND);

  SceneRenderer& renderer = rendererFor(frame);
  glPushMatrix();
  if (frame.showNodes) {
    VertexCursor cursor;
    renderer.drawVertices(frame, cursor, frame.verticesCount);
  }
  if (frame.showEdges && !frame.selecting) renderer.drawEdges(frame, 0, frame.edgesCount);
  glEnable(GL_DEPTH_TEST);
  if (!frame.selecting) {
    glDisable(GL_LIGHTING);
    glDisable(GL_LIGHT0);
  }
  glPopMatrix();
}

SceneRenderer& VXLNetworkView::rendererFor(const Frame& frame) {
  // gl2ps records the fixed-function primitives, and selection mode names
  // each vertex as the fixed-function pass draws it.
  if (frame.selecting || vector_export::recording()) return renderers_->legacy();
  return renderers_->forPixels();
}

RenderPath VXLNetworkView::preferredRenderPath() const {
  return renderers_->preferred();
}

void VXLNetworkView::setPreferredRenderPath(RenderPath path) {
  noteChange();
  renderers_->setPreferred(path);
}

RenderPath VXLNetworkView::renderPath() const {
  return renderers_->inUse();
}

std::array<std::uint64_t, 2> VXLNetworkView::rendererBufferBytes() {
  const ShaderRenderer* shader =
      renderers_->preferred() == RenderPath::Shader ? renderers_->shaderRenderer() : nullptr;
  if (!shader) return {0, 0};
  return {shader->vertexBufferBytes(), shader->edgeBufferBytes()};
}

void VXLNetworkView::reportGlError() {
  const GLenum error = glGetError();
  if (error == GL_NO_ERROR) return;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - startTime_).count();
  char line[256];
  std::snprintf(line, sizeof line, "Error: %s (at time: %0.1f secs).",
                reinterpret_cast<const char*>(gluErrorString(error)), seconds);
  quillo::logLine(line);
  // Also shown over the scene, fading out (drawInfo).
  std::lock_guard lock(lock_);
  overlays_.errorText = line;
  overlays_.errorTime = seconds;
}
