// The view's drawing: fixed GL state and the vertex shapes, one frame, and
// the vertex and edge passes. GL calls go into the caller's current context.
#include <GL/freeglut.h>
#include <GL/gl.h>
#include <GL/glu.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "quillo/log.h"
#include "render/VXLNetworkView.h"
#include "render/scenecolours.h"
#include "render/vectorexport.h"
#include "render/viewframe.h"

using scene::Background;

namespace {

void setColour(const scene::Rgba& c) {
  glColor4f(c.r, c.g, c.b, c.a);
}

// freeglut's solid shapes need glutInit, which connects to the X display; it
// draws no window, the shapes only emit GL calls into the current context.
bool initialiseFreeglut() {
  static bool ready = false;
  static std::once_flag once;
  std::call_once(once, [] {
    const char* display = std::getenv("DISPLAY");
    if (!display || !*display) {
      quillo::logLine("freeglut needs an X display: vertices are not drawn");
      return;
    }
    int argc = 1;
    char name[] = "plexview";
    char* argv[] = {name, nullptr};
    glutInit(&argc, argv);
    ready = true;
  });
  return ready;
}

void setEdgeBlend(scene::EdgeBlend blend) {
  switch (blend) {
    case scene::EdgeBlend::Additive:
      glBlendFunc(GL_SRC_ALPHA, GL_ONE);
      break;
    case scene::EdgeBlend::Over:
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      break;
    case scene::EdgeBlend::OverKeepAlpha:
      glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
      break;
  }
}

}  // namespace

void VXLNetworkView::initCommands() {
  std::lock_guard context(contextLock_);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_MULTISAMPLE);
  glEnable(GL_CULL_FACE);

  const GLfloat lightAmbient[] = {0.8f, 0.8f, 0.8f, 1.0f};
  const GLfloat lightDiffuse[] = {0.5f, 0.5f, 0.5f, 1.0f};
  const GLfloat lightSpecular[] = {0.5f, 0.5f, 0.5f, 1.0f};
  const GLfloat lightPosition[] = {1.0f, 1.0f, 1.0f, 0.0f};  // directional
  glLightfv(GL_LIGHT0, GL_AMBIENT, lightAmbient);
  glLightfv(GL_LIGHT0, GL_DIFFUSE, lightDiffuse);
  glLightfv(GL_LIGHT0, GL_SPECULAR, lightSpecular);
  glLightfv(GL_LIGHT0, GL_POSITION, lightPosition);

  const GLfloat materialAmbient[] = {0.8f, 0.8f, 0.8f, 1.0f};
  const GLfloat materialDiffuse[] = {0.6f, 0.6f, 0.6f, 1.0f};
  const GLfloat materialSpecular[] = {0.3f, 0.3f, 0.3f, 1.0f};
  glMaterialfv(GL_FRONT, GL_AMBIENT, materialAmbient);
  glMaterialfv(GL_FRONT, GL_DIFFUSE, materialDiffuse);
  glMaterialfv(GL_FRONT, GL_SPECULAR, materialSpecular);
  glMaterialf(GL_FRONT, GL_SHININESS, 75.0f);

  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  glDepthFunc(GL_LESS);
  glEnable(GL_COLOR_MATERIAL);  // the current colour drives the material

  if (!gl_.listCreated) makeShapeLists();
  const scene::Rgba clear = scene::kInitialClearColour;
  glClearColor(clear.r, clear.g, clear.b, clear.a);

  {
    std::lock_guard lock(lock_);
    camera::resetCamera(camera_, worldRotation_, origin_);
  }
  if (gl_.programObject == 0) createBlendingProgram();
}

void VXLNetworkView::makeShapeLists() {
  const bool shapes = initialiseFreeglut();
  const GLuint first = glGenLists(4);
  gl_.listCube = first;
  gl_.listSphere = first + 1;
  gl_.listCubeHD = first + 2;
  gl_.listSphereHD = first + 3;
  // The sizes are the float values 0.7 and 0.8 widened, not the doubles.
  const double size = static_cast<double>(0.7f);
  const double sizeHD = static_cast<double>(0.8f);
  auto record = [shapes](GLuint list, auto draw) {
    glNewList(list, GL_COMPILE);
    if (shapes) draw();
    glEndList();
  };
  record(gl_.listCube, [&] { glutSolidCube(size); });
  record(gl_.listSphere, [&] { glutSolidSphere(size, 12, 12); });
  record(gl_.listCubeHD, [&] { glutSolidCube(sizeHD); });
  record(gl_.listSphereHD, [&] { glutSolidSphere(sizeHD, 20, 20); });
  gl_.listCreated = true;
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
  return frame;
}

void VXLNetworkView::drawCommands() {
  std::lock_guard context(contextLock_);
  if (!selectionMode_) prepareFrame();
  const Frame frame = takeFrame(frameCopies_);
  if (!frame.selecting) glEnable(GL_BLEND);

  glPushMatrix();
  if (frame.showNodes) {
    VertexCursor cursor;
    drawVertexPass(frame, cursor, frame.verticesCount);
  }
  if (frame.showEdges && !frame.selecting) drawEdgePass(frame, 0, frame.edgesCount);
  glEnable(GL_DEPTH_TEST);
  if (!frame.selecting) {
    glDisable(GL_LIGHTING);
    glDisable(GL_LIGHT0);
  }
  glPopMatrix();
}

void VXLNetworkView::drawVertexPass(const Frame& frame, VertexCursor& cursor, std::uint64_t end) {
  if (!frame.selecting) {
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
  }
  glDepthMask(frame.verticesDepthTest ? GL_TRUE : GL_FALSE);
  const bool cubes = frame.simpleShapes;
  const GLuint shape = cubes ? gl_.listCube : gl_.listSphere;
  const GLuint shell = cubes ? gl_.listCubeHD : gl_.listSphereHD;
  const scene::Rgb highlight = scene::selectionHighlight(frame.colouring(), frame.background);
  const bool limit = frame.limitNodes && frame.filter;
  const float s = frame.scale;

  // One pushed matrix for all vertices: each translation is relative to the
  // previous drawn vertex, instead of a push and pop per vertex.
  glPushMatrix();
  if (cursor.matrix) glLoadMatrixd(cursor.matrix->data());
  float px = cursor.px, py = cursor.py, pz = cursor.pz;
  for (std::uint64_t i = cursor.next; i < end; ++i) {
    if (limit && !frame.withinFilter(i)) continue;
    if (frame.hidden && frame.hidden[i]) continue;
    glTranslatef((frame.x[i] - px) * s, (frame.y[i] - py) * s, (frame.z[i] - pz) * s);
    px = frame.x[i];
    py = frame.y[i];
    pz = frame.z[i];
    const auto name = static_cast<GLuint>(i);
    if (frame.selecting) {
      glLoadName(name);
    } else if (frame.r) {
      glColor4f(frame.r[i], frame.g[i], frame.b[i], 1.0f);
    } else {
      const scene::Rgb c = scene::kDefaultVertexColour;
      glColor4f(c.r, c.g, c.b, 1.0f);
    }
    glCallList(shape);
    if (!frame.selected[i]) continue;
    // A larger, finer, translucent shell over a selected vertex.
    if (frame.selecting) {
      glLoadName(name);
    } else {
      glColor4f(highlight.r, highlight.g, highlight.b, scene::kHighlightAlpha);
    }
    glCallList(shell);
  }
  if (end < frame.verticesCount) {
    cursor.matrix.emplace();
    glGetDoublev(GL_MODELVIEW_MATRIX, cursor.matrix->data());
  }
  cursor.next = end;
  cursor.px = px;
  cursor.py = py;
  cursor.pz = pz;
  glPopMatrix();
}

void VXLNetworkView::drawEdgePass(const Frame& frame, std::uint64_t begin, std::uint64_t end) {
  glPushMatrix();
  const scene::Rgb base = scene::kEdgePassColour;
  glColor3f(base.r, base.g, base.b);
  glDisable(GL_LIGHTING);
  glDisable(GL_LIGHT0);
  glDepthMask(frame.edgesDepthTest ? GL_TRUE : GL_FALSE);
  glEnable(GL_BLEND);
  const auto blending = frame.blendLines ? scene::LineBlending::On : scene::LineBlending::Off;
  // GL's feedback carries neither blending nor line widths: a vector export
  // being recorded gets them as markers.
  if (blending == scene::LineBlending::On) vector_export::beginBlendMarker();
  setEdgeBlend(scene::edgeBlend(blending, frame.background));
  glLineWidth(frame.lineWidth);
  vector_export::lineWidthMarker(frame.lineWidth);

  const float intensity = frame.edgesIntensity;
  const bool limit = frame.limitEdges && frame.filter;
  const float s = frame.scale;
  auto endpoint = [&](std::uint64_t v) {
    const auto selection =
        frame.selected[v] ? scene::Selection::Selected : scene::Selection::NotSelected;
    setColour(scene::edgeEndpointColour(frame.colour(v), selection, blending, frame.background,
                                        intensity));
    glVertex3f(frame.x[v] * s, frame.y[v] * s, frame.z[v] * s);
  };

  glBegin(GL_LINES);
  for (std::uint64_t k = begin; k < end; ++k) {
    if (frame.weights && 0.0f >= frame.weights[k]) continue;
    const std::uint64_t t = frame.to[k];
    const std::uint64_t f = frame.from[k];
    if (limit && (!frame.withinFilter(t) || !frame.withinFilter(f))) continue;
    if (frame.hidden && (frame.hidden[t] || frame.hidden[f])) continue;
    endpoint(t);
    endpoint(f);
  }
  glEnd();
  glPopMatrix();
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
