// Picking by rays from the drawn frame, clicks that pick for real, and the
// drag rotation in the drawn frame.
#include <functional>

#include "offscreen_gl.h"

namespace {

using namespace gltest;

// Picking uses the size and camera a frame set: each view draws one first.
class Picking : public OffscreenGL {
 protected:
  static std::uint64_t pickOver(VXLNetworkView& view, const Vec3d& p) {
    const auto w = project(view, p);
    return view.pickAt(w[0], w[1], 3, 3);
  }
};

TEST_F(Picking, NearerOfOverlappingVerticesUnlessItIsNotDrawn) {
  // Vertex `near` at z = 2 covers vertex `far` at z = 0 from the eye at z = 20.
  struct Case {
    const char* name;
    std::uint64_t nearIndex;
    std::function<void(VXLNetworkView&)> setUp;
    bool nearDrawn;
  };
  auto hideNear = [](VXLNetworkView& view) {
    auto mask = QLONumberArray::initWithCount(3, NumberType::Bool);
    mask->setBoolValue(true, 1);
    view.setHiddenVertices(mask);
    view.setHideSpecialVertices(true);
  };
  auto filterNear = [](VXLNetworkView& view) {
    // Degrees: vertex 0 has 2, the others 1; the range keeps degree 1 only.
    view.setLimitNodes(true);
    view.prepareFrame();
    view.setMaxFilterProperty(1.5f);
  };
  const Case cases[] = {
      {"near drawn last", 1, [](VXLNetworkView&) {}, true},
      {"near hidden", 1, hideNear, false},
      {"near filtered out", 0, filterNear, false},
  };
  for (const Case& c : cases) {
    VXLNetworkView view;
    const std::uint64_t farIndex = 1 - c.nearIndex;
    std::vector<Vec3d> positions(3, Vec3d{8, 8, 0});
    positions[c.nearIndex] = {0, 0, 2};
    positions[farIndex] = {0, 0, 0};
    // Vertex 0 has degree 2, so the filter removes it wherever it sits.
    install(view, network(3, {{0, 1}, {0, 2}}), positions);
    c.setUp(view);
    look(view, 20);
    EXPECT_EQ(pickOver(view, {0, 0, 0}), c.nearDrawn ? c.nearIndex : farIndex) << c.name;
    EXPECT_EQ(pickOver(view, {8, 8, 0}), 2u) << c.name;
  }
}

TEST_F(Picking, EmptySpaceAnswersNoVertex) {
  VXLNetworkView view;
  install(view, network(2, {{0, 1}}), {{-3, 0, 0}, {3, 0, 0}});
  look(view, 20);
  // On their edge between the vertices: edges are not picked.
  EXPECT_GE(pickOver(view, {0, 0, 0}), 2u);
  EXPECT_EQ(pickOver(view, {3, 0, 0}), 1u);
  // A region wide enough to reach a vertex finds it.
  const auto mid = project(view, {0, 0, 0});
  EXPECT_LT(view.pickAt(mid[0], mid[1], kSize / 2, 10), 2u);
}

TEST_F(Picking, DragRotationShowsOnlyWhileDraggingAndClicksPick) {
  VXLNetworkView view;
  install(view, network(1, {}), {{5, 0, 0}});
  look(view, 20);
  const auto atRest = project(view, {5, 0, 0});
  ASSERT_EQ(view.pickAt(atRest[0], atRest[1], 3, 3), 0u);

  // A long horizontal drag turns the scene about the vertical axis.
  view.mouseDown(kSize / 2, kSize / 2, {});
  view.mouseDragged(kSize / 2 + 70, kSize / 2);
  const Rotation drag = view.trackBallRotation();
  ASSERT_GT(drag.angle, 20.0f);
  const Image dragged = frame(view);
  EXPECT_TRUE(white(dragged.at(static_cast<int>(atRest[0]), static_cast<int>(atRest[1]))));
  EXPECT_EQ(view.pickAt(atRest[0], atRest[1], 3, 3), VXLNetworkView::kNoVertex);

  // Released, the rotation lives on in the world rotation.
  view.mouseUp(kSize / 2 + 70, kSize / 2);
  EXPECT_FALSE(white(pixelAt(frame(view), view, {5, 0, 0})));
  EXPECT_EQ(pickOver(view, {5, 0, 0}), 0u);

  // Without a picker of its own a click picks through the view.
  for (const auto& [p, selected] : {std::pair{Vec3d{5, 0, 0}, true}, {Vec3d{0, 3, 0}, false}}) {
    const auto w = project(view, p);
    view.mouseDown(w[0], w[1], {});
    view.mouseUp(w[0], w[1]);
    EXPECT_EQ(view.selectedIndices().size(), selected ? 1u : 0u);
  }
}

}  // namespace
