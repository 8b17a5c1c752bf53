#pragma once
// What one frame of the view draws, shared by the drawing passes and the
// window's piecewise presentation. Internal to src/render.
#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "render/VXLNetworkView.h"
#include "render/frameslices.h"
#include "render/frametargets.h"
#include "render/scenecolours.h"

// Taken once under the view's lock so a layout batch or a setter on another
// thread cannot change it halfway through the passes, however many pieces
// they are drawn in.
struct VXLNetworkView::Frame {
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

  // Owners of the arrays above.
  std::shared_ptr<QLONetwork> network;
  FloatsPtr weightsOwner;
  FloatsPtr filterOwner;
  std::shared_ptr<QLONumberArray> selectedOwner;
  std::shared_ptr<QLONumberArray> hiddenOwner;

  // A NaN filter value is never within the range.
  bool withinFilter(std::uint64_t v) const {
    return minFilter <= filter[v] && filter[v] <= maxFilter;
  }
  std::optional<scene::Rgb> colour(std::uint64_t v) const {
    if (!r) return std::nullopt;
    return scene::Rgb{r[v], g[v], b[v]};
  }
  scene::Colouring colouring() const {
    return r ? scene::Colouring::PerVertex : scene::Colouring::Fixed;
  }
};

// Where a vertex pass drawn in pieces stopped. Each vertex is translated
// relative to the one drawn before it, so a piece resumes from the
// model-view matrix the previous piece ended with, exactly as one pass would.
struct VXLNetworkView::VertexCursor {
  std::uint64_t next = 0;
  float px = 0, py = 0, pz = 0;
  std::optional<std::array<double, 16>> matrix;  // none: the frame's own
};

// A window's frame in the making (presentFrame): drawn off screen a piece at
// a time with the camera it started with, then shown until the next is done.
struct VXLNetworkView::Presenter {
  FrameTargets targets;
  FrameCopies copies;
  std::optional<Frame> frame;  // none: no frame in the making
  // The projection and model-view the frame was started with.
  std::array<Matrix4, 2> camera{};
  // Show the frame as it is drawn: it is of a network not shown yet, or it
  // was restarted for a camera the user is dragging.
  bool showPieces = false;
  int width = 0, height = 0;
  VertexCursor vertices;
  std::uint64_t nextEdge = 0;
  frame_slices::ItemCost vertexCost, edgeCost;
  std::shared_ptr<QLONetwork> shownNetwork;
};
