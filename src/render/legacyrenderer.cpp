#include "render/legacyrenderer.h"

#include <GL/freeglut.h>
#include <GL/gl.h>

#include <array>
#include <cstdlib>
#include <mutex>

#include "quillo/log.h"
#include "render/edgestyle.h"
#include "render/passstate.h"
#include "render/vectorexport.h"

namespace {

void setColour(const scene::Rgba& c) {
  glColor4f(c.r, c.g, c.b, c.a);
}

// Weights of 0 or less, and ends outside the filter or hidden, drop an edge.
bool edgeDrawn(const SceneFrame& frame, std::uint64_t k) {
  if (frame.weights && 0.0f >= frame.weights[k]) return false;
  return frame.edgeEndShown(frame.to[k]) && frame.edgeEndShown(frame.from[k]);
}

// Edge k's colour at its end v: the edge's own colour in place of the
// vertex's when it has one.
scene::Rgba endColour(const SceneFrame& frame, std::uint64_t k, std::uint64_t v) {
  const auto selection =
      frame.selected[v] ? scene::Selection::Selected : scene::Selection::NotSelected;
  const std::optional<scene::Rgb> colour =
      frame.edgeColours
          ? std::optional(scene::Rgb{frame.edgeColours[3 * k], frame.edgeColours[3 * k + 1],
                                     frame.edgeColours[3 * k + 2]})
          : frame.colour(v);
  return scene::edgeEndpointColour(colour, selection, frame.lineBlending(), frame.background,
                                   frame.edgesIntensity);
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

}  // namespace

void LegacyRenderer::prepare() {
  using namespace scene_light;
  // The light's direction is taken in eye space: set it under the identity.
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glLightfv(GL_LIGHT0, GL_AMBIENT, kLightAmbient);
  glLightfv(GL_LIGHT0, GL_DIFFUSE, kLightDiffuse);
  glLightfv(GL_LIGHT0, GL_SPECULAR, kLightSpecular);
  glLightfv(GL_LIGHT0, GL_POSITION, kLightPosition);
  glPopMatrix();
  glMaterialfv(GL_FRONT, GL_AMBIENT, kMaterialAmbient);
  glMaterialfv(GL_FRONT, GL_DIFFUSE, kMaterialDiffuse);
  glMaterialfv(GL_FRONT, GL_SPECULAR, kMaterialSpecular);
  glMaterialf(GL_FRONT, GL_SHININESS, kShininess);

  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  glDepthFunc(GL_LESS);
  glEnable(GL_COLOR_MATERIAL);  // the current colour drives the material
  if (!listCreated_) makeShapeLists();
}

void LegacyRenderer::makeShapeLists() {
  const bool shapes = initialiseFreeglut();
  const GLuint first = glGenLists(4);
  listCube_ = first;
  listSphere_ = first + 1;
  listCubeHD_ = first + 2;
  listSphereHD_ = first + 3;
  auto record = [shapes](GLuint list, auto draw) {
    glNewList(list, GL_COMPILE);
    if (shapes) draw();
    glEndList();
  };
  using namespace scene_shapes;
  record(listCube_, [&] { glutSolidCube(kSize); });
  record(listSphere_, [&] { glutSolidSphere(kSize, 12, 12); });
  record(listCubeHD_, [&] { glutSolidCube(kShellSize); });
  record(listSphereHD_, [&] { glutSolidSphere(kShellSize, 20, 20); });
  listCreated_ = true;
}

void LegacyRenderer::drawVertices(const SceneFrame& frame, VertexCursor& cursor,
                                  std::uint64_t end) {
  pass_state::beginVertexPass(frame);
  if (!frame.selecting) {
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
  }
  const bool cubes = frame.simpleShapes;
  const GLuint shape = cubes ? listCube_ : listSphere_;
  const GLuint shell = cubes ? listCubeHD_ : listSphereHD_;
  const scene::Rgb highlight = scene::selectionHighlight(frame.colouring(), frame.background);
  const float s = frame.scale;

  // Scaled shapes keep unit normals for the lighting.
  if (frame.sizes) glEnable(GL_RESCALE_NORMAL);
  // One pushed matrix for all vertices: each translation is relative to the
  // previous drawn vertex, instead of a push and pop per vertex.
  glPushMatrix();
  if (cursor.matrix) glLoadMatrixd(cursor.matrix->data());
  float px = cursor.px, py = cursor.py, pz = cursor.pz;
  for (std::uint64_t i = cursor.next; i < end; ++i) {
    if (!frame.vertexShown(i)) continue;
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
    // A vertex of its own size scales its shapes (and their shell) about its
    // centre; the translations to the next vertex stay unscaled.
    const bool sized = frame.sizes != nullptr;
    if (sized) {
      glPushMatrix();
      glScalef(frame.sizes[i], frame.sizes[i], frame.sizes[i]);
    }
    glCallList(shape);
    if (frame.selected[i]) {
      // A larger, finer, translucent shell over a selected vertex.
      if (frame.selecting) {
        glLoadName(name);
      } else {
        glColor4f(highlight.r, highlight.g, highlight.b, scene::kHighlightAlpha);
      }
      glCallList(shell);
    }
    if (sized) glPopMatrix();
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
  if (frame.sizes) glDisable(GL_RESCALE_NORMAL);
}

void LegacyRenderer::drawEdges(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) {
  glPushMatrix();
  const scene::Rgb base = scene::kEdgePassColour;
  glColor3f(base.r, base.g, base.b);
  glDisable(GL_LIGHTING);
  glDisable(GL_LIGHT0);
  pass_state::beginEdgePass(frame);

  const float s = frame.scale;
  auto endpoint = [&](std::uint64_t k, std::uint64_t v) {
    setColour(endColour(frame, k, v));
    glVertex3f(frame.x[v] * s, frame.y[v] * s, frame.z[v] * s);
  };
  auto lines = [&](auto inClass) {
    glBegin(GL_LINES);
    for (std::uint64_t k = begin; k < end; ++k) {
      if (!edgeDrawn(frame, k) || !inClass(k)) continue;
      endpoint(k, frame.to[k]);
      endpoint(k, frame.from[k]);
    }
    glEnd();
  };
  if (!frame.edgeWidths) {
    lines([](std::uint64_t) { return true; });
  } else {
    for (std::uint8_t c = 0; c < edge_style::kWidthClasses; ++c) {
      const float width = edge_style::classWidth(frame.lineWidth, c);
      glLineWidth(width);
      vector_export::lineWidthMarker(width);
      lines([&](std::uint64_t k) { return frame.edgeWidths[k] == c; });
    }
    glLineWidth(frame.lineWidth);
  }
  if (frame.arrows) drawArrows(frame, begin, end);
  glPopMatrix();
}

void LegacyRenderer::drawArrows(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) {
  // The heads face the eye: they are worked out in eye space and drawn there.
  std::array<double, 16> m{};
  glGetDoublev(GL_MODELVIEW_MATRIX, m.data());
  const double s = frame.scale;
  auto eye = [&](std::uint64_t v) {
    const double x = frame.x[v] * s, y = frame.y[v] * s, z = frame.z[v] * s;
    edge_style::Point p{};
    for (std::size_t i = 0; i < 3; ++i) {
      p[i] = static_cast<float>(m[i] * x + m[4 + i] * y + m[8 + i] * z + m[12 + i]);
    }
    return p;
  };
  const float radius = edge_style::targetRadius(frame);
  const GLboolean culling = glIsEnabled(GL_CULL_FACE);
  glDisable(GL_CULL_FACE);
  glPushMatrix();
  glLoadIdentity();
  glBegin(GL_TRIANGLES);
  for (std::uint64_t k = begin; k < end; ++k) {
    if (!edgeDrawn(frame, k)) continue;
    const std::uint64_t t = frame.to[k];
    const float size = frame.sizes ? frame.sizes[t] : 1.0f;
    const auto head = edge_style::arrowHead(eye(frame.from[k]), eye(t), radius * size);
    if (!head) continue;
    setColour(endColour(frame, k, t));
    for (const edge_style::Point& p : {head->tip, head->left, head->right}) glVertex3fv(p.data());
  }
  glEnd();
  glPopMatrix();
  if (culling) glEnable(GL_CULL_FACE);
}
