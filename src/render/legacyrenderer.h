#pragma once
// The fixed-function renderer: each vertex a display-list sphere or cube
// under a translation relative to the vertex drawn before it, each edge two
// immediate-mode vertices in one GL_LINES block (one per width class when
// widths follow weights), arrow heads as triangles. gl2ps records exactly these
// primitives, and GL selection mode names each vertex (selecting frames).
#include "render/renderer.h"

class LegacyRenderer final : public SceneRenderer {
 public:
  RenderPath path() const override { return RenderPath::FixedFunction; }
  // Light, material and the four shape lists (once; the lists are shared by
  // the contexts that share objects with the one they were made in).
  void prepare();
  void drawVertices(const SceneFrame& frame, VertexCursor& cursor, std::uint64_t end) override;
  void drawEdges(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) override;

 private:
  void makeShapeLists();
  void drawArrows(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end);
  bool listCreated_ = false;
  unsigned int listSphere_ = 0, listCube_ = 0, listSphereHD_ = 0, listCubeHD_ = 0;
};
