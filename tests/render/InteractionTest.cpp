// The view's mouse and keyboard state machine and its selection operations,
// without GL: clicks pick through an injected picker.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "../support/networks.h"
#include "render/VXLNetworkView.h"

namespace {

constexpr int kSize = 200;
using Indices = std::vector<std::uint64_t>;

std::shared_ptr<QLONetwork> isolated(std::uint64_t vertices) {
  return testing_support::makeNetwork(vertices, {});
}

// Five isolated vertices on a kSize square, the world turned away from identity.
struct Fixture {
  VXLNetworkView view;
  std::vector<std::pair<double, double>> picks;  // where the clicks picked
  std::uint64_t picked = 0;                      // what the picker answers
  Rotation before{30.0f, 0.0f, 0.0f, 1.0f};

  Fixture() {
    view.setNetwork(isolated(5));
    VXLCamera camera = view.camera();
    camera.viewWidth = kSize;
    camera.viewHeight = kSize;
    view.setCamera(camera);
    view.setWorldRotation(before);
    view.setPicker([this](double x, double y) {
      picks.emplace_back(x, y);
      return picked;
    });
  }
  void click(double x, double y, Modifiers modifiers = {}) {
    view.mouseDown(x, y, modifiers);
    view.mouseUp(x, y);
  }
  // Whether the world rotation is `drag` applied after the starting one.
  bool foldedOnce(const Rotation& drag) const {
    const Matrix4 want =
        camera::multiply(camera::rotationMatrix(drag), camera::rotationMatrix(before));
    const Matrix4 got = camera::rotationMatrix(view.worldRotation());
    return std::ranges::equal(got, want,
                              [](double a, double b) { return std::fabs(a - b) < 1e-5; });
  }
};

TEST(InteractionDrag, TrackballTurnsUntilReleasedOrEndedByAPanPress) {
  using enum VXLNetworkView::Drag;
  // Drags from x = 100.2 to `toX` (within a pixel: a click), with or
  // without a Control press before the release that turns them into a pan.
  for (const auto& [toX, panPress] : {std::pair{150.0, false}, {100.9, false}, {150.0, true}}) {
    Fixture f;
    const bool tiny = toX < 101;
    f.view.mouseDown(100.2, 100, {});
    if (!tiny) f.view.mouseDragged(120, 100);  // measured from the press, not from here
    f.view.mouseDragged(toX, 100);
    const Rotation drag = f.view.trackBallRotation();
    const auto ball = camera::trackballStart(kSize, kSize, 100.2, 100);
    EXPECT_EQ(drag, tiny ? Rotation{} : *camera::trackballRotation(ball, toX, 100));
    EXPECT_EQ(f.view.worldRotation(), f.before) << "folded before the drag ended";
    if (panPress) f.view.mouseDown(10, 10, Modifier::Control);
    EXPECT_EQ(f.view.drag(), panPress ? Pan : Trackball);
    f.view.mouseUp(toX, 100);
    EXPECT_EQ(f.view.drag(), None);
    EXPECT_EQ(f.view.trackBallRotation().angle, 0.0f);
    EXPECT_TRUE(f.foldedOnce(drag)) << toX << " " << panPress;
    EXPECT_EQ(f.picks.size(), tiny ? 1u : 0u) << "only a drag within a pixel is a click";
  }
}

TEST(InteractionDrag, DollyPanAndScrollMoveTheEyeOrTheAperture) {
  struct Case {
    Modifiers modifiers;                      // of the press or of the scroll
    std::vector<std::array<double, 2>> path;  // a press and its drags, or none for a scroll
    std::array<double, 3> scroll;
    Vec3d eye;
    double aperture;
  };
  const Case cases[] = {
      // Dolly: z changes by -0.01 z dy, measured from the previous point.
      {Modifier::Option, {{50, 100}, {50, 104}, {50, 108}}, {}, {0, 0, 75 * 1.04 * 1.04}, 65},
      // Pan: x and y move by (start - current) z / 400.
      {Modifier::Control, {{100, 100}, {92, 104}}, {}, {8 * 75.0 / 400, -4 * 75.0 / 400, 75}, 65},
      // Scroll: the deltas add up; z changes by -0.01 d z, or with Shift the aperture.
      {{}, {}, {-3, -1, 0.5}, {0, 0, 75 * 1.035}, 65},
      {Modifier::Shift, {}, {0, 10, 0}, {0, 0, 75}, 65 * 0.95},
  };
  for (const Case& c : cases) {
    Fixture f;
    for (std::size_t i = 0; i < c.path.size(); ++i) {
      if (i == 0) f.view.mouseDown(c.path[i][0], c.path[i][1], c.modifiers);
      if (i > 0) f.view.mouseDragged(c.path[i][0], c.path[i][1]);
    }
    if (c.path.empty()) f.view.scrollWheel(c.scroll[0], c.scroll[1], c.scroll[2], c.modifiers);
    const Vec3d p = f.view.camera().position;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(p[i], c.eye[i], 1e-4) << (&c - cases) << i;
    EXPECT_NEAR(f.view.camera().aperture, c.aperture, 1e-4) << (&c - cases);
  }
}

TEST(InteractionClick, ClickSelectsShiftTogglesEmptySpaceClears) {
  struct Case {
    const char* name;
    std::uint64_t picked;
    Modifiers modifiers;
    Indices selected;
    std::optional<std::uint64_t> shown;
  };
  // Before each click vertices 1 and 3 are selected.
  const Case cases[] = {
      {"vertex", 2, {}, {2}, 2},
      {"Shift on a selected vertex", 3, Modifier::Shift, {1}, 3},
      {"nothing", VXLNetworkView::kNoVertex, {}, {}, std::nullopt},
      {"index of no vertex", 5, Modifier::Shift, {}, std::nullopt},
      {"Control", 2, Modifier::Control, {1, 3}, std::nullopt},
  };
  for (const Case& c : cases) {
    Fixture f;
    f.view.setSelectedVertices({1, 3});
    f.picked = c.picked;
    f.click(42.5, 17.25, c.modifiers);
    EXPECT_EQ(f.view.selectedIndices(), c.selected) << c.name;
    EXPECT_EQ(f.view.vertexInfoIndex(), c.shown) << c.name;
    const bool picks = !c.modifiers.has(Modifier::Control);
    EXPECT_EQ(f.picks, (picks ? decltype(f.picks){{42.5, 17.25}} : decltype(f.picks){})) << c.name;
  }
}

TEST(InteractionHoverAndKeys, HoverIsRecordedOnlyWithoutADragAndSpaceTogglesTheLayout) {
  Fixture f;
  using Point = std::array<double, 2>;
  f.view.mouseMoved(12, 34);
  EXPECT_TRUE(f.view.overVertex());
  f.view.mouseDown(50, 50, {});
  f.view.mouseMoved(70, 80);
  EXPECT_FALSE(f.view.overVertex());
  EXPECT_EQ(f.view.overPosition(), (Point{12, 34}));
  f.view.mouseUp(50, 50);
  f.view.mouseExited();
  EXPECT_FALSE(f.view.overVertex());

  const bool initially = f.view.fAnimate();
  f.view.keyDown(U'a');
  EXPECT_EQ(f.view.fAnimate(), initially);
  f.view.keyDown(U' ');
  EXPECT_NE(f.view.fAnimate(), initially);
}

constexpr float kMask[] = {0.0f, 0.5f, 0.0f, 0.0f, -2.0f, 1.0f, 1.0f};

class RecordingHandler : public VXLSelectionHandler {
 public:
  void handleSelectionWithController(VXLController*, std::uint64_t index) override {
    calls.push_back(index);
  }
  std::vector<std::uint64_t> calls;
};

TEST(Selection, OperationsIgnoreIndicesPastTheEnd) {
  using V = VXLNetworkView;
  struct Case {
    std::function<void(V&)> act;
    Indices selected, handled;
  };
  auto on = [](void (V::*op)(std::uint64_t), std::uint64_t index) {
    return [=](V& v) { (v.*op)(index); };
  };
  // Before each operation vertices 1 and 3 of 0..4 are selected.
  const Case cases[] = {
      {on(&V::selectVertexWithIndex, 4), {4}, {4}},
      {on(&V::selectVertexWithIndex, 5), {}, {}},
      {on(&V::addToSelectionVertexWithIndex, 5), {1, 3}, {}},
      {on(&V::removeFromSelectionVertexWithIndex, 3), {1}, {}},
      {on(&V::toggleSelectionOfVertexWithIndex, 2), {1, 2, 3}, {}},
      {on(&V::toggleSelectionOfVertexWithIndex, 5), {1, 3}, {}},
      // Any element type; a longer mask's extra entries are ignored.
      {[](V& v) { v.setSelectedNodesIndexes(*QLONumberArray::initWithFloats(kMask)); }, {1, 4}, {}},
  };
  for (const Case& c : cases) {
    Fixture f;
    auto handler = std::make_shared<RecordingHandler>();
    f.view.setSelectionhandler(handler);
    f.view.setSelectedVertices({1, 3});
    c.act(f.view);
    EXPECT_EQ(f.view.selectedIndices(), c.selected) << (&c - cases);
    EXPECT_EQ(handler->calls, c.handled) << (&c - cases);
    // The mask always matches the network, so the kept listing is empty.
    EXPECT_TRUE(f.view.selectedVertices().empty()) << (&c - cases);
  }
}

TEST(Selection, HeldMaskKeepsItsSelectionAndANewNetworkStartsEmpty) {
  Fixture f;
  f.view.setSelectedVertices({2});
  const auto held = f.view.selectedNodesIndexes();
  f.view.toggleSelectionOfVertexWithIndex(2);
  f.view.addToSelectionVertexWithIndex(0);
  EXPECT_TRUE(held->boolValueAtIndex(2));
  EXPECT_EQ(f.view.selectedIndices(), Indices{0});

  f.view.setNetwork(isolated(8));
  EXPECT_TRUE(f.view.selectedIndices().empty());
  f.view.addToSelectionVertexWithIndex(7);
  EXPECT_EQ(f.view.selectedIndices(), Indices{7});
}

}  // namespace
