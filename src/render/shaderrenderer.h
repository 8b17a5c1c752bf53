#pragma once
// The shader renderer: positions, colours, flags (and sizes) of the vertices and the
// index list of the edges live in GL buffers, refreshed only where a frame
// changed them; vertices are one instanced draw (sphere impostors or cube
// geometry, each with its selection shell), edges one indexed GL_LINES draw
// per width class (a geometry shader adds per-edge colours and arrow heads).
// Its GL objects belong to the context current when it was made.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "render/renderer.h"
#include "render/scenebuffers.h"

class QOpenGLContext;

class ShaderRenderer final : public SceneRenderer {
 public:
  // Builds the programs and buffers in the current context; null when the
  // context cannot run GLSL 3.30, with the reason in `reason`.
  static std::unique_ptr<ShaderRenderer> create(std::string& reason);
  // Deletes the GL objects when its context is current (else they go with it).
  ~ShaderRenderer() override;
  ShaderRenderer(const ShaderRenderer&) = delete;
  ShaderRenderer& operator=(const ShaderRenderer&) = delete;

  RenderPath path() const override { return RenderPath::Shader; }
  void drawVertices(const SceneFrame& frame, VertexCursor& cursor, std::uint64_t end) override;
  void drawEdges(const SceneFrame& frame, std::uint64_t begin, std::uint64_t end) override;

  // Bytes held in GL buffers for the last frame's vertices and edges.
  std::uint64_t vertexBufferBytes() const;
  std::uint64_t edgeBufferBytes() const;

 private:
  struct Program {
    unsigned int id = 0;
    int modelView = -1, projection = -1, scale = -1, size = -1, shellSize = -1, highlight = -1;
    int mul = -1, add = -1, selectedMul = -1, selectedAdd = -1;
    int perEdge = -1, firstPair = -1, edgeColours = -1;
    int targetRadius = -1, headLength = -1, headHalfWidth = -1;
  };
  ShaderRenderer() = default;
  bool build(std::string& reason);
  void upload(const SceneFrame& frame);
  void uploadPairColours(const SceneFrame& frame);
  void useProgram(const Program& program, const SceneFrame& frame);
  // Points the instanced attributes of the bound array at vertex `first`.
  void instanceAttributes(std::uint64_t first);
  // The per-vertex size of the bound array from vertex `first` (a constant 1
  // without sizes), and the sizes' buffer, replaced only when they changed.
  // Shapes take a size per instance, edge ends per vertex.
  enum class SizeStep { PerInstance, PerVertex };
  void sizeAttribute(const SceneFrame& frame, std::uint64_t first, SizeStep step);
  void uploadSizes(const SceneFrame& frame);
  // The edge colour rule and the edge colours' texture for an edge program.
  void useEdgeProgram(const Program& program, const SceneFrame& frame, bool perEdge);
  // Draws the pairs of the edges [begin, end), class by class, with the
  // program in use; `widths` sets each class's line width.
  enum class ClassWidths { Ignore, Set };
  void drawPairs(const Program& program, const SceneFrame& frame, std::uint64_t begin,
                 std::uint64_t end, ClassWidths widths);

  QOpenGLContext* context_ = nullptr;
  Program sphere_, cube_, edge_, styledEdge_, arrow_;
  unsigned int sphereArray_ = 0, cubeArray_ = 0, edgeArray_ = 0;
  unsigned int positions_ = 0, colours_ = 0, flags_ = 0, indices_ = 0, cubeCorners_ = 0;
  unsigned int sizes_ = 0;
  // The edges' own colours, r, g, b per pair, read as a buffer texture.
  unsigned int pairColours_ = 0, pairColourTexture_ = 0;
  int maxTextureBufferTexels_ = 0;

  // What the buffers hold, to upload only what changed.
  std::uint64_t serial_ = 0;
  bool uploaded_ = false;
  std::vector<float> positionData_, colourData_, scratch_;
  std::vector<std::uint8_t> flagData_, edgeEnds_, scratchBytes_;
  const std::uint64_t* edgesFrom_ = nullptr;
  const float* edgesWeights_ = nullptr;
  std::uint64_t edgesCount_ = 0;
  std::uint64_t sizesCount_ = 0, sizesVersion_ = 0;
  std::uint64_t edgeStyleSerial_ = 0;
  scene_buffers::EdgeList edges_;
  // Whether the pair colours' buffer holds the current list's colours.
  bool pairColoursReady_ = false;
};
