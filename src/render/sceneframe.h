#pragma once
// What one frame draws, as plain values: the vertices' positions, colours
// and masks, the edges, and the drawing options. The view fills one in under
// its lock; the renderers and picking read it and nothing else of the view.
#include <array>
#include <cstdint>
#include <optional>

#include "render/scenecolours.h"

struct SceneFrame {
  // Increases with every frame the view takes: a renderer uploads what
  // changed once per frame however many pieces it is drawn in.
  std::uint64_t serial = 0;
  std::uint64_t verticesCount = 0;
  std::uint64_t edgesCount = 0;
  const std::uint64_t* from = nullptr;
  const std::uint64_t* to = nullptr;
  const float* weights = nullptr;  // null: the network is not edge-weighted
  const float* x = nullptr;
  const float* y = nullptr;
  const float* z = nullptr;
  const float* r = nullptr;  // null: no per-vertex colours this frame
  const float* g = nullptr;
  const float* b = nullptr;
  const std::uint8_t* selected = nullptr;  // one byte per vertex
  const std::uint8_t* hidden = nullptr;    // null: nothing hidden
  const float* filter = nullptr;           // null: no filter values
  // Each vertex's size as a multiple of the shapes' (null: all at 1), and a
  // number that changes whenever the sizes do.
  const float* sizes = nullptr;
  std::uint64_t sizesVersion = 0;
  float minFilter = 0;
  float maxFilter = 0;
  float scale = 1;
  scene::Background background = scene::Background::White;
  bool selecting = false;

  // The drawing options the passes read.
  bool showNodes = true, showEdges = true, simpleShapes = false;
  bool limitNodes = false, limitEdges = false;
  bool verticesDepthTest = true, edgesDepthTest = true, blendLines = false;
  float lineWidth = 1, edgesIntensity = 1;

  // Edge styling (edgestyle.h). A colour per edge replaces each end's
  // vertex colour in the edge colour rule; a width class per edge scales the
  // line width. Both are fixed while edgeStyleSerial stays the same.
  const float* edgeColours = nullptr;        // r, g, b per edge; null: the ends' colours
  const std::uint8_t* edgeWidths = nullptr;  // class per edge; null: all lineWidth
  std::uint64_t edgeStyleSerial = 0;
  bool arrows = false;  // heads at the target ends (directed networks)

  // A NaN filter value is never within the range.
  bool withinFilter(std::uint64_t v) const {
    return minFilter <= filter[v] && filter[v] <= maxFilter;
  }
  // Whether vertex v is drawn: not outside the filter range (when the range
  // applies to vertices) and not hidden.
  bool vertexShown(std::uint64_t v) const {
    if (limitNodes && filter && !withinFilter(v)) return false;
    return !(hidden && hidden[v]);
  }
  // Whether an edge ending at v may be drawn (the other end must pass too).
  bool edgeEndShown(std::uint64_t v) const {
    if (limitEdges && filter && !withinFilter(v)) return false;
    return !(hidden && hidden[v]);
  }
  std::optional<scene::Rgb> colour(std::uint64_t v) const {
    if (!r) return std::nullopt;
    return scene::Rgb{r[v], g[v], b[v]};
  }
  scene::Colouring colouring() const {
    return r ? scene::Colouring::PerVertex : scene::Colouring::Fixed;
  }
  float sizeFactor(std::uint64_t v) const { return sizes ? sizes[v] : 1.0f; }
  scene::LineBlending lineBlending() const {
    return blendLines ? scene::LineBlending::On : scene::LineBlending::Off;
  }
};

// Where a vertex pass drawn in pieces stopped. The fixed-function pass
// translates each vertex relative to the one drawn before it, so a piece
// resumes from the model-view matrix the previous piece ended with, exactly
// as one pass would.
struct VertexCursor {
  std::uint64_t next = 0;
  float px = 0, py = 0, pz = 0;
  std::optional<std::array<double, 16>> matrix;  // none: the frame's own
};

// The vertex shapes, in world units (the drawing scale moves the vertices,
// not their size): a sphere of radius 0.7 or a cube of edge 0.7, and over a
// selected vertex a shell of 0.8. The values are the floats widened.
namespace scene_shapes {
inline constexpr double kSize = static_cast<double>(0.7f);
inline constexpr double kShellSize = static_cast<double>(0.8f);
}  // namespace scene_shapes
