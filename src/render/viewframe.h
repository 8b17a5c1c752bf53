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
#include "render/renderer.h"
#include "render/sceneframe.h"

// Taken once under the view's lock so a layout batch or a setter on another
// thread cannot change it halfway through the passes, however many pieces
// they are drawn in. The arrays it points to are kept alive by the owners.
struct VXLNetworkView::Frame : SceneFrame {
  std::shared_ptr<QLONetwork> network;
  FloatsPtr weightsOwner;
  FloatsPtr filterOwner;
  FloatsPtr sizesOwner;
  std::shared_ptr<QLONumberArray> selectedOwner;
  std::shared_ptr<QLONumberArray> hiddenOwner;
  std::shared_ptr<const edge_style::EdgeArrays> edgeArraysOwner;
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
