#include "render/shaderrenderer.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <QOpenGLContext>
#include <array>
#include <cmath>

#include "quillo/log.h"
#include "render/edgeshaders.h"
#include "render/edgestyle.h"
#include "render/passstate.h"
#include "render/sceneshaders.h"

namespace {

GLuint compile(GLenum kind, const char* source, std::string& reason) {
  const GLuint shader = glCreateShader(kind);
  glShaderSource(shader, 1, &source, nullptr);
  glCompileShader(shader);
  GLint ok = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
  if (ok == GL_TRUE) return shader;
  std::array<char, 1024> log{};
  glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), nullptr, log.data());
  reason = std::string("a shader did not compile: ") + log.data();
  glDeleteShader(shader);
  return 0;
}

// A program of a vertex, an optional geometry and a fragment shader.
GLuint link(const char* vertex, const char* geometry, const char* fragment, std::string& reason) {
  std::array<GLuint, 3> shaders{};
  const std::array<std::pair<GLenum, const char*>, 3> stages{
      {{GL_VERTEX_SHADER, vertex}, {GL_GEOMETRY_SHADER, geometry}, {GL_FRAGMENT_SHADER, fragment}}};
  auto release = [&] {
    for (GLuint shader : shaders) {
      if (shader) glDeleteShader(shader);
    }
  };
  for (std::size_t i = 0; i < stages.size(); ++i) {
    if (!stages[i].second) continue;
    shaders[i] = compile(stages[i].first, stages[i].second, reason);
    if (shaders[i] == 0) {
      release();
      return 0;
    }
  }
  const GLuint program = glCreateProgram();
  for (GLuint shader : shaders) {
    if (shader) glAttachShader(program, shader);
  }
  glLinkProgram(program);
  release();
  GLint ok = GL_FALSE;
  glGetProgramiv(program, GL_LINK_STATUS, &ok);
  if (ok == GL_TRUE) return program;
  std::array<char, 1024> log{};
  glGetProgramInfoLog(program, static_cast<GLsizei>(log.size()), nullptr, log.data());
  reason = std::string("a program did not link: ") + log.data();
  glDeleteProgram(program);
  return 0;
}

std::array<float, 3> normalised(std::array<float, 3> v) {
  const float n = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  return {v[0] / n, v[1] / n, v[2] / n};
}

// The fixed-function light and material as the lighting uniforms.
void setLighting(GLuint program) {
  using namespace scene_light;
  const std::array<float, 3> l =
      normalised({kLightPosition[0], kLightPosition[1], kLightPosition[2]});
  const std::array<float, 3> h = normalised({l[0], l[1], l[2] + 1.0f});  // infinite viewer
  glUseProgram(program);
  glUniform3fv(glGetUniformLocation(program, "lightDirection"), 1, l.data());
  glUniform3fv(glGetUniformLocation(program, "halfVector"), 1, h.data());
  std::array<float, 3> ambient{}, diffuse{}, specular{};
  for (std::size_t i = 0; i < 3; ++i) {
    ambient[i] = kModelAmbient[i] + kLightAmbient[i];
    diffuse[i] = kLightDiffuse[i];
    specular[i] = kMaterialSpecular[i] * kLightSpecular[i];
  }
  glUniform3fv(glGetUniformLocation(program, "ambient"), 1, ambient.data());
  glUniform3fv(glGetUniformLocation(program, "diffuse"), 1, diffuse.data());
  glUniform3fv(glGetUniformLocation(program, "specular"), 1, specular.data());
  glUniform1f(glGetUniformLocation(program, "shininess"), kShininess);
  glUseProgram(0);
}

// The unit cube (corners at +-0.5) as 12 counter-clockwise triangles with
// face normals, then again for the shell (corner w = 1).
std::vector<float> cubeCorners() {
  struct Face {
    std::array<float, 3> n, a, b;  // a x b = n
  };
  const Face faces[] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                        {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                        {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}};
  const float corners[6][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, -1}, {1, 1}, {-1, 1}};
  std::vector<float> out;  // x, y, z, shell, nx, ny, nz
  for (float shell : {0.0f, 1.0f}) {
    for (const Face& f : faces) {
      for (const auto& c : corners) {
        for (std::size_t i = 0; i < 3; ++i) {
          out.push_back(0.5f * (f.n[i] + c[0] * f.a[i] + c[1] * f.b[i]));
        }
        out.push_back(shell);
        out.insert(out.end(), f.n.begin(), f.n.end());
      }
    }
  }
  return out;
}

constexpr GLsizei kCubeStride = 7 * sizeof(float);

// Replaces a buffer's contents when they differ from `held`, which becomes
// `fresh` (swapped).
template <class T>
void refresh(GLenum target, GLuint buffer, std::vector<T>& held, std::vector<T>& fresh) {
  if (fresh == held) return;
  glBindBuffer(target, buffer);
  const auto bytes = static_cast<GLsizeiptr>(fresh.size() * sizeof(T));
  if (fresh.size() == held.size()) {
    glBufferSubData(target, 0, bytes, fresh.data());
  } else {
    glBufferData(target, bytes, fresh.data(), GL_DYNAMIC_DRAW);
  }
  held.swap(fresh);
}

const void* byteOffset(std::uint64_t bytes) {
  return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(bytes));
}

}  // namespace

std::unique_ptr<ShaderRenderer> ShaderRenderer::create(std::string& reason) {
  QOpenGLContext* context = QOpenGLContext::currentContext();
  if (!context) {
    reason = "no OpenGL context is current";
    return nullptr;
  }
  const QSurfaceFormat format = context->format();
  if (context->isOpenGLES() || format.version() < qMakePair(3, 3)) {
    reason = "OpenGL " + std::to_string(format.majorVersion()) + "." +
             std::to_string(format.minorVersion()) + " has no GLSL 3.30";
    return nullptr;
  }
  std::unique_ptr<ShaderRenderer> renderer(new ShaderRenderer);
  renderer->context_ = context;
  if (!renderer->build(reason)) return nullptr;
  return renderer;
}

bool ShaderRenderer::build(std::string& reason) {
  using namespace scene_shaders;
  sphere_.id = link(kSphereVertex, nullptr, kSphereFragment, reason);
  cube_.id = sphere_.id ? link(kCubeVertex, nullptr, kCubeFragment, reason) : 0;
  edge_.id = cube_.id ? link(kEdgeVertex, nullptr, kEdgeFragment, reason) : 0;
  styledEdge_.id = edge_.id ? link(kEdgeEndVertex, kStyledLineGeometry, kEdgeFragment, reason) : 0;
  arrow_.id = styledEdge_.id ? link(kEdgeEndVertex, kArrowGeometry, kEdgeFragment, reason) : 0;
  if (arrow_.id == 0) return false;
  for (Program* p : {&sphere_, &cube_, &edge_, &styledEdge_, &arrow_}) {
    auto at = [&](const char* name) { return glGetUniformLocation(p->id, name); };
    p->modelView = at("modelView");
    p->projection = at("projection");
    p->scale = at("scale");
    p->size = at("size");
    p->shellSize = at("shellSize");
    p->highlight = at("highlight");
    p->mul = at("mul");
    p->add = at("add");
    p->selectedMul = at("selectedMul");
    p->selectedAdd = at("selectedAdd");
    p->perEdge = at("perEdge");
    p->firstPair = at("firstPair");
    p->edgeColours = at("edgeColours");
    p->targetRadius = at("targetRadius");
    p->headLength = at("headLength");
    p->headHalfWidth = at("headHalfWidth");
  }
  setLighting(sphere_.id);
  setLighting(cube_.id);

  GLuint buffers[6];
  glGenBuffers(6, buffers);
  positions_ = buffers[0];
  colours_ = buffers[1];
  flags_ = buffers[2];
  indices_ = buffers[3];
  cubeCorners_ = buffers[4];
  sizes_ = buffers[5];
  glGenBuffers(1, &pairColours_);
  glGenTextures(1, &pairColourTexture_);
  glGetIntegerv(GL_MAX_TEXTURE_BUFFER_SIZE, &maxTextureBufferTexels_);
  const std::vector<float> cube = cubeCorners();
  glBindBuffer(GL_ARRAY_BUFFER, cubeCorners_);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(cube.size() * sizeof(float)), cube.data(),
               GL_STATIC_DRAW);

  GLuint arrays[3];
  glGenVertexArrays(3, arrays);
  sphereArray_ = arrays[0];
  cubeArray_ = arrays[1];
  edgeArray_ = arrays[2];
  // Spheres and cubes take the vertex attributes once per instance, edges
  // once per index.
  for (GLuint array : arrays) {
    glBindVertexArray(array);
    const GLuint divisor = array == edgeArray_ ? 0 : 1;
    for (GLuint a : {kCentre, kColour, kFlags}) {
      glEnableVertexAttribArray(a);
      glVertexAttribDivisor(a, divisor);
    }
  }
  glBindVertexArray(cubeArray_);
  glBindBuffer(GL_ARRAY_BUFFER, cubeCorners_);
  glEnableVertexAttribArray(kCorner);
  glVertexAttribPointer(kCorner, 4, GL_FLOAT, GL_FALSE, kCubeStride, byteOffset(0));
  glEnableVertexAttribArray(kNormal);
  glVertexAttribPointer(kNormal, 3, GL_FLOAT, GL_FALSE, kCubeStride, byteOffset(4 * sizeof(float)));
  glBindVertexArray(edgeArray_);
  glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices_);
  instanceAttributes(0);
  glBindVertexArray(0);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  return true;
}

ShaderRenderer::~ShaderRenderer() {
  if (!context_ || QOpenGLContext::currentContext() != context_) return;
  for (const Program& p : {sphere_, cube_, edge_, styledEdge_, arrow_}) {
    if (p.id) glDeleteProgram(p.id);
  }
  glDeleteTextures(1, &pairColourTexture_);
  glDeleteBuffers(1, &pairColours_);
  const GLuint arrays[] = {sphereArray_, cubeArray_, edgeArray_};
  glDeleteVertexArrays(3, arrays);
  const GLuint buffers[] = {positions_, colours_, flags_, indices_, cubeCorners_, sizes_};
  glDeleteBuffers(6, buffers);
}

void ShaderRenderer::instanceAttributes(std::uint64_t first) {
  using namespace scene_shaders;
  glBindBuffer(GL_ARRAY_BUFFER, positions_);
  glVertexAttribPointer(kCentre, 3, GL_FLOAT, GL_FALSE, 0, byteOffset(12 * first));
  glBindBuffer(GL_ARRAY_BUFFER, colours_);
  glVertexAttribPointer(kColour, 3, GL_FLOAT, GL_FALSE, 0, byteOffset(12 * first));
  glBindBuffer(GL_ARRAY_BUFFER, flags_);
  glVertexAttribIPointer(kFlags, 1, GL_UNSIGNED_BYTE, 0, byteOffset(first));
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void ShaderRenderer::sizeAttribute(const SceneFrame& frame, std::uint64_t first, SizeStep step) {
  using scene_shaders::kSizeFactor;
  if (!frame.sizes) {
    // Every vertex at the standard size: the shapes' sizes times exactly 1.
    glDisableVertexAttribArray(kSizeFactor);
    glVertexAttrib1f(kSizeFactor, 1.0f);
    return;
  }
  glEnableVertexAttribArray(kSizeFactor);
  glVertexAttribDivisor(kSizeFactor, step == SizeStep::PerInstance ? 1 : 0);
  glBindBuffer(GL_ARRAY_BUFFER, sizes_);
  glVertexAttribPointer(kSizeFactor, 1, GL_FLOAT, GL_FALSE, 0, byteOffset(4 * first));
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void ShaderRenderer::uploadSizes(const SceneFrame& frame) {
  // The sizes change only with their settings or the network: the frame's
  // version says when, so nothing is compared per vertex.
  const std::uint64_t count = frame.sizes ? frame.verticesCount : 0;
  if (count == sizesCount_ && (!frame.sizes || frame.sizesVersion == sizesVersion_)) return;
  glBindBuffer(GL_ARRAY_BUFFER, sizes_);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(count * sizeof(float)), frame.sizes,
               GL_DYNAMIC_DRAW);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  sizesCount_ = count;
  sizesVersion_ = frame.sizesVersion;
}

void ShaderRenderer::upload(const SceneFrame& frame) {
  if (uploaded_ && frame.serial == serial_) return;
  serial_ = frame.serial;
  uploaded_ = true;
  scene_buffers::packPositions(frame, scratch_);
  refresh(GL_ARRAY_BUFFER, positions_, positionData_, scratch_);
  scene_buffers::packColours(frame, scratch_);
  refresh(GL_ARRAY_BUFFER, colours_, colourData_, scratch_);
  scene_buffers::packFlags(frame, scratchBytes_);
  refresh(GL_ARRAY_BUFFER, flags_, flagData_, scratchBytes_);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  uploadSizes(frame);

  // The index list changes with the network, the weights, the vertices
  // whose edges may be drawn and the edge style (width classes, colours).
  scene_buffers::packEdgeEnds(frame, scratchBytes_);
  if (scratchBytes_ != edgeEnds_ || frame.from != edgesFrom_ || frame.weights != edgesWeights_ ||
      frame.edgesCount != edgesCount_ || frame.edgeStyleSerial != edgeStyleSerial_) {
    edgeEnds_.swap(scratchBytes_);
    edgesFrom_ = frame.from;
    edgesWeights_ = frame.weights;
    edgesCount_ = frame.edgesCount;
    edgeStyleSerial_ = frame.edgeStyleSerial;
    scene_buffers::buildEdgeList(frame, edgeEnds_, edges_);
    glBindVertexArray(edgeArray_);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                 static_cast<GLsizeiptr>(edges_.indices.size() * sizeof(std::uint32_t)),
                 edges_.indices.data(), GL_DYNAMIC_DRAW);
    glBindVertexArray(0);
    uploadPairColours(frame);
  }
}

void ShaderRenderer::uploadPairColours(const SceneFrame& frame) {
  scene_buffers::packPairColours(frame, edges_, scratch_);
  // A buffer texture holds a limited number of texels (at least 65,536):
  // past it, edges keep their endpoints' colours.
  const bool fits = scratch_.size() <= static_cast<std::size_t>(maxTextureBufferTexels_);
  if (!fits) {
    quillo::logLine("Edge colours: " + std::to_string(edges_.edgeOf.size()) +
                    " edges are more than this GL holds colours for; edges take their "
                    "endpoints' colours");
  }
  pairColoursReady_ = !scratch_.empty() && fits;
  if (!pairColoursReady_) return;
  glBindBuffer(GL_TEXTURE_BUFFER, pairColours_);
  glBufferData(GL_TEXTURE_BUFFER, static_cast<GLsizeiptr>(scratch_.size() * sizeof(float)),
               scratch_.data(), GL_DYNAMIC_DRAW);
  glBindBuffer(GL_TEXTURE_BUFFER, 0);
  glBindTexture(GL_TEXTURE_BUFFER, pairColourTexture_);
  glTexBuffer(GL_TEXTURE_BUFFER, GL_R32F, pairColours_);
  glBindTexture(GL_TEXTURE_BUFFER, 0);
}

void ShaderRenderer::useProgram(const Program& program, const SceneFrame& frame) {
  glUseProgram(program.id);
  std::array<float, 16> m{};
  glGetFloatv(GL_MODELVIEW_MATRIX, m.data());
  glUniformMatrix4fv(program.modelView, 1, GL_FALSE, m.data());
  glGetFloatv(GL_PROJECTION_MATRIX, m.data());
  glUniformMatrix4fv(program.projection, 1, GL_FALSE, m.data());
  glUniform1f(program.scale, frame.scale);
}

void ShaderRenderer::drawVertices(const SceneFrame& frame, VertexCursor& cursor,
                                  std::uint64_t end) {
  const std::uint64_t first = cursor.next;
  cursor.next = end;
  if (end <= first) return;
  upload(frame);
  pass_state::beginVertexPass(frame);
  const bool cubes = frame.simpleShapes;
  const Program& program = cubes ? cube_ : sphere_;
  useProgram(program, frame);
  glUniform1f(program.size, static_cast<float>(scene_shapes::kSize));
  glUniform1f(program.shellSize, static_cast<float>(scene_shapes::kShellSize));
  const scene::Rgb h = scene::selectionHighlight(frame.colouring(), frame.background);
  glUniform4f(program.highlight, h.r, h.g, h.b, scene::kHighlightAlpha);

  glBindVertexArray(cubes ? cubeArray_ : sphereArray_);
  instanceAttributes(first);
  sizeAttribute(frame, first, SizeStep::PerInstance);
  const auto count = static_cast<GLsizei>(end - first);
  if (cubes) {
    glDrawArraysInstanced(GL_TRIANGLES, 0, 72, count);
  } else {
    // The squares face the eye whatever their winding.
    const GLboolean culling = glIsEnabled(GL_CULL_FACE);
    glDisable(GL_CULL_FACE);
    glDrawArraysInstanced(GL_TRIANGLES, 0, 12, count);
    if (culling) glEnable(GL_CULL_FACE);
  }
  glBindVertexArray(0);
  glUseProgram(0);
}

void ShaderRenderer::useEdgeProgram(const Program& program, const SceneFrame& frame, bool perEdge) {
  useProgram(program, frame);
  const scene_buffers::EdgeColourRule rule = scene_buffers::edgeColourRule(frame);
  glUniform4fv(program.mul, 1, rule.mul.data());
  glUniform4fv(program.add, 1, rule.add.data());
  glUniform4fv(program.selectedMul, 1, rule.selectedMul.data());
  glUniform4fv(program.selectedAdd, 1, rule.selectedAdd.data());
  if (program.perEdge < 0) return;
  glUniform1i(program.perEdge, perEdge ? 1 : 0);
  glUniform1i(program.edgeColours, 0);
  glActiveTexture(GL_TEXTURE0);
  glBindTexture(GL_TEXTURE_BUFFER, perEdge ? pairColourTexture_ : 0);
}

void ShaderRenderer::drawPairs(const Program& program, const SceneFrame& frame, std::uint64_t begin,
                               std::uint64_t end, ClassWidths widths) {
  for (std::uint64_t c = 0; c < edges_.classes(); ++c) {
    const auto [first, last] = edges_.pairsOf(begin, end, c);
    if (last <= first) continue;
    if (widths == ClassWidths::Set && frame.edgeWidths) {
      glLineWidth(edge_style::classWidth(frame.lineWidth, static_cast<std::uint8_t>(c)));
    }
    if (program.firstPair >= 0) glUniform1i(program.firstPair, static_cast<GLint>(first));
    glDrawElements(GL_LINES, static_cast<GLsizei>(2 * (last - first)), GL_UNSIGNED_INT,
                   byteOffset(2 * sizeof(std::uint32_t) * first));
  }
}

void ShaderRenderer::drawEdges(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) {
  if (end <= begin) return;
  upload(frame);
  pass_state::beginEdgePass(frame);
  const bool perEdge = frame.edgeColours && pairColoursReady_;
  // Edges in their vertices' colours keep the plain program; per-edge
  // colours need the geometry shader, which sees the pair's index.
  useEdgeProgram(perEdge ? styledEdge_ : edge_, frame, perEdge);
  glBindVertexArray(edgeArray_);
  drawPairs(perEdge ? styledEdge_ : edge_, frame, begin, end, ClassWidths::Set);
  if (frame.edgeWidths) glLineWidth(frame.lineWidth);
  if (frame.arrows) {
    useEdgeProgram(arrow_, frame, perEdge);
    // The tip stops at the target's shape, scaled by the target's size.
    glUniform1f(arrow_.targetRadius, edge_style::targetRadius(frame));
    sizeAttribute(frame, 0, SizeStep::PerVertex);
    glUniform1f(arrow_.headLength, edge_style::kHeadLength);
    glUniform1f(arrow_.headHalfWidth, edge_style::kHeadHalfWidth);
    // The heads face the eye whatever their winding.
    const GLboolean culling = glIsEnabled(GL_CULL_FACE);
    glDisable(GL_CULL_FACE);
    drawPairs(arrow_, frame, begin, end, ClassWidths::Ignore);
    if (culling) glEnable(GL_CULL_FACE);
  }
  glBindTexture(GL_TEXTURE_BUFFER, 0);
  glBindVertexArray(0);
  glUseProgram(0);
}

std::uint64_t ShaderRenderer::vertexBufferBytes() const {
  return sizeof(float) * (positionData_.size() + colourData_.size() + sizesCount_) +
         flagData_.size();
}

std::uint64_t ShaderRenderer::edgeBufferBytes() const {
  const std::uint64_t colours = pairColoursReady_ ? 3 * sizeof(float) * edges_.edgeOf.size() : 0;
  return sizeof(std::uint32_t) * edges_.indices.size() + colours;
}
