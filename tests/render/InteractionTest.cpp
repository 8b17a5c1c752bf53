// The view's mouse and keyboard state machine and its selection operations,
// without GL: clicks pick through an injected picker, and rotations are
// checked through the matrices they stand for.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "render/VXLNetworkView.h"

namespace {

constexpr int kSize = 200;

std::shared_ptr<QLONetwork> isolated(std::uint64_t vertices) {
  NetworkData data;
  data.verticesCount = vertices;
  return QLONetwork::make(std::move(data));
}

// A view of `vertices` isolated vertices on a kSize square surface, with a
// world rotation that is not the identity.
struct Fixture {
  VXLNetworkView view;
  std::vector<std::pair<double, double>> picks;  // where the clicks picked
  std::uint64_t picked = 0;                      // what the picker answers

  explicit Fixture(std::uint64_t vertices = 5) {
    view.setNetwork(isolated(vertices));
    VXLCamera camera = view.camera();
    camera.viewWidth = kSize;
    camera.viewHeight = kSize;
    view.setCamera(camera);
    view.setWorldRotation({30.0f, 0.0f, 0.0f, 1.0f});
    view.setPicker([this](double x, double y) {
      picks.emplace_back(x, y);
      return picked;
    });
  }
  void click(double x, double y, Modifiers modifiers = {}) {
    view.mouseDown(x, y, modifiers);
    view.mouseUp(x, y);
  }
};

double maxDifference(const Matrix4& a, const Matrix4& b) {
  double d = 0;
  for (std::size_t i = 0; i < a.size(); ++i) d = std::max(d, std::fabs(a[i] - b[i]));
  return d;
}

// --- Drags ---

TEST(InteractionDrag, TrackballRotatesWhileDraggedAndFoldsOnRelease) {
  Fixture f;
  const Rotation before = f.view.worldRotation();
  f.view.mouseDown(100, 100, {});
  EXPECT_EQ(f.view.drag(), VXLNetworkView::Drag::Trackball);
  f.view.mouseDragged(120, 100);
  f.view.mouseDragged(150, 100);
  // Moving right turns about +y, measured from the press (not the last event).
  const Rotation drag = f.view.trackBallRotation();
  EXPECT_GT(drag.angle, 0.0f);
  EXPECT_NEAR(drag.y, 1.0f, 1e-5);
  const auto ball = camera::trackballStart(kSize, kSize, 100, 100);
  EXPECT_FLOAT_EQ(drag.angle, camera::trackballRotation(ball, 150, 100)->angle);
  EXPECT_EQ(f.view.worldRotation(), before) << "folded before the release";

  f.view.mouseUp(150, 100);
  EXPECT_EQ(f.view.drag(), VXLNetworkView::Drag::None);
  EXPECT_EQ(f.view.trackBallRotation().angle, 0.0f);
  // The drag applies after the world rotation it was folded into.
  const Matrix4 expected =
      camera::multiply(camera::rotationMatrix(drag), camera::rotationMatrix(before));
  EXPECT_LT(maxDifference(camera::rotationMatrix(f.view.worldRotation()), expected), 1e-5);
  EXPECT_TRUE(f.picks.empty()) << "a rotation is not a click";
}

TEST(InteractionDrag, MovementWithinOnePixelChangesNothingAndIsAClick) {
  Fixture f;
  const Rotation before = f.view.worldRotation();
  f.view.mouseDown(100.2, 100.2, {});
  f.view.mouseDragged(100.9, 100.0005);
  EXPECT_EQ(f.view.trackBallRotation().angle, 0.0f);
  f.view.mouseUp(100.9, 100.0005);
  EXPECT_EQ(f.view.worldRotation(), before);
  EXPECT_EQ(f.picks.size(), 1u);
}

TEST(InteractionDrag, PanOrDollyPressEndsATrackballDragKeepingItsRotation) {
  struct Case {
    const char* name;
    std::function<void(VXLNetworkView&)> press;
    VXLNetworkView::Drag drag;
  };
  const Case cases[] = {
      {"right button", [](VXLNetworkView& v) { v.rightMouseDown(10, 10); },
       VXLNetworkView::Drag::Pan},
      {"Control", [](VXLNetworkView& v) { v.mouseDown(10, 10, Modifier::Control); },
       VXLNetworkView::Drag::Pan},
      {"other button", [](VXLNetworkView& v) { v.otherMouseDown(10, 10); },
       VXLNetworkView::Drag::Dolly},
      {"Option", [](VXLNetworkView& v) { v.mouseDown(10, 10, Modifier::Option); },
       VXLNetworkView::Drag::Dolly},
  };
  for (const Case& c : cases) {
    Fixture f;
    const Rotation before = f.view.worldRotation();
    f.view.mouseDown(100, 100, {});
    f.view.mouseDragged(100, 160);
    const Rotation drag = f.view.trackBallRotation();
    ASSERT_NE(drag.angle, 0.0f) << c.name;
    c.press(f.view);
    EXPECT_EQ(f.view.drag(), c.drag) << c.name;
    EXPECT_EQ(f.view.trackBallRotation().angle, 0.0f) << c.name;
    const Matrix4 expected =
        camera::multiply(camera::rotationMatrix(drag), camera::rotationMatrix(before));
    EXPECT_LT(maxDifference(camera::rotationMatrix(f.view.worldRotation()), expected), 1e-5)
        << c.name;
    const Rotation folded = f.view.worldRotation();
    f.view.mouseUp(10, 10);
    EXPECT_EQ(f.view.worldRotation(), folded) << c.name << ": folded twice";
    EXPECT_TRUE(f.picks.empty()) << c.name;
  }
}

TEST(InteractionDrag, DollyPanAndScrollMoveTheEyeWithinTheirLimits) {
  struct Case {
    const char* name;
    std::function<void(VXLNetworkView&)> act;
    Vec3d position;
  };
  const Case cases[] = {
      // Dolly: z changes by -0.01 z dy, never below 1.
      {"dolly out",
       [](VXLNetworkView& v) {
         v.otherMouseDown(50, 100);
         v.mouseDragged(50, 104);  // dy = -4: z grows by 4 %
         v.mouseDragged(50, 108);  // measured from the previous point
       },
       {0, 0, 75.0 * 1.04 * 1.04}},
      {"dolly far in",
       [](VXLNetworkView& v) {
         v.otherMouseDown(50, 100);
         v.mouseDragged(50, -900);
       },
       {0, 0, 1.0}},
      // Pan: x and y move by (start - current) z / 400.
      {"pan",
       [](VXLNetworkView& v) {
         v.rightMouseDown(100, 100);
         v.mouseDragged(92, 104);
       },
       {8 * 75.0 / 400, -4 * 75.0 / 400, 75}},
      // Scroll: z changes by -0.01 d z; at or below -1 it becomes 1.
      {"scroll out", [](VXLNetworkView& v) { v.scrollWheel(-3, -1, 0, {}); }, {0, 0, 75 * 1.04}},
      {"scroll in past the eye",
       [](VXLNetworkView& v) { v.scrollWheel(0, 101, 0, {}); },
       {0, 0, 75 * (1 - 1.01)}},
      {"scroll past -1", [](VXLNetworkView& v) { v.scrollWheel(0, 100, 4, {}); }, {0, 0, 1}},
      {"scroll far in", [](VXLNetworkView& v) { v.scrollWheel(0, 400, 0, {}); }, {0, 0, 1}},
  };
  for (const Case& c : cases) {
    Fixture f;
    c.act(f.view);
    const Vec3d p = f.view.camera().position;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(p[i], c.position[i], 1e-4) << c.name << i;
    EXPECT_EQ(f.view.camera().aperture, 65.0) << c.name;
  }
}

TEST(InteractionDrag, ShiftScrollKeepsTheApertureWithinBounds) {
  struct Case {
    double delta;
    double low, high;
  };
  const Case cases[] = {
      {10, 65 * 0.95 - 1e-4, 65 * 0.95 + 1e-4},
      {-10, 65 * 1.05 - 1e-4, 65 * 1.05 + 1e-4},
      {0, 65, 65},
      {1e4, 0.1, 0.1},
      {-1e4, 179.9, 179.9},
  };
  for (const Case& c : cases) {
    Fixture f;
    f.view.scrollWheel(0, c.delta, 0, Modifier::Shift);
    EXPECT_GE(f.view.camera().aperture, c.low) << c.delta;
    EXPECT_LE(f.view.camera().aperture, c.high) << c.delta;
    EXPECT_EQ(f.view.camera().position[2], 75.0) << c.delta;
  }
}

// --- Clicks ---

TEST(InteractionClick, ClickSelectsShiftTogglesEmptySpaceClears) {
  struct Case {
    const char* name;
    std::uint64_t picked;
    Modifiers modifiers;
    std::vector<std::uint64_t> selected;
    std::optional<std::uint64_t> shown;
  };
  // Before each click vertices 1 and 3 are selected.
  const Case cases[] = {
      {"vertex", 2, {}, {2}, 2},
      {"selected vertex", 3, {}, {3}, 3},
      {"Shift on a vertex", 2, Modifier::Shift, {1, 2, 3}, 2},
      {"Shift on a selected vertex", 3, Modifier::Shift, {1}, 3},
      {"nothing", VXLNetworkView::kNoVertex, {}, {}, std::nullopt},
      {"index of no vertex", 5, Modifier::Shift, {}, std::nullopt},
      {"Control", 2, Modifier::Control, {1, 3}, std::nullopt},
      {"Option", 2, Modifier::Option, {1, 3}, std::nullopt},
      {"Shift and Control", 2, Modifier::Shift | Modifier::Control, {1, 3}, std::nullopt},
  };
  for (const Case& c : cases) {
    Fixture f;
    f.view.setSelectedVertices({1, 3});
    f.picked = c.picked;
    f.click(42.5, 17.25, c.modifiers);
    EXPECT_EQ(f.view.selectedIndices(), c.selected) << c.name;
    EXPECT_EQ(f.view.vertexInfoIndex(), c.shown) << c.name;
    const bool plain = !c.modifiers.has(Modifier::Control) && !c.modifiers.has(Modifier::Option);
    ASSERT_EQ(f.picks.size(), plain ? 1u : 0u) << c.name;
    if (plain) {
      EXPECT_EQ(f.picks[0], std::make_pair(42.5, 17.25)) << c.name;
    }
  }
}

// --- Hover and keys ---

TEST(InteractionHover, HoverIsRecordedOnlyWithoutADrag) {
  Fixture f;
  f.view.mouseMoved(12, 34);
  EXPECT_TRUE(f.view.overVertex());
  EXPECT_EQ(f.view.overPosition(), (std::array<double, 2>{12, 34}));
  f.view.mouseDown(50, 50, {});
  f.view.mouseMoved(70, 80);
  EXPECT_FALSE(f.view.overVertex());
  EXPECT_EQ(f.view.overPosition(), (std::array<double, 2>{12, 34}));
  f.view.mouseUp(50, 50);
  f.view.mouseEntered(5, 6);
  EXPECT_TRUE(f.view.overVertex());
  EXPECT_EQ(f.view.overPosition(), (std::array<double, 2>{5, 6}));
  f.view.mouseExited();
  EXPECT_FALSE(f.view.overVertex());
}

TEST(InteractionKeys, SpaceTogglesStartPauseOtherKeysDoNothing) {
  Fixture f;
  const bool initially = f.view.fAnimate();
  for (char32_t key : {U'a', U'\0', U'\n', U'\u00a0'}) {
    f.view.keyDown(key);
    EXPECT_EQ(f.view.fAnimate(), initially) << static_cast<unsigned>(key);
  }
  f.view.keyDown(U' ');
  EXPECT_EQ(f.view.fAnimate(), !initially);
  f.view.keyDown(U' ');
  EXPECT_EQ(f.view.fAnimate(), initially);
}

// --- Selection operations ---

class RecordingHandler : public VXLSelectionHandler {
 public:
  void handleSelectionWithController(VXLController*, std::uint64_t index) override {
    calls.push_back(index);
  }
  std::vector<std::uint64_t> calls;
};

TEST(Selection, OperationsIgnoreIndicesPastTheEnd) {
  using Indices = std::vector<std::uint64_t>;
  struct Case {
    const char* name;
    std::function<void(VXLNetworkView&)> act;
    Indices selected;
    Indices handled;
  };
  const Case cases[] = {
      {"select alone", [](VXLNetworkView& v) { v.selectVertexWithIndex(4); }, {4}, {4}},
      {"select out of range clears", [](VXLNetworkView& v) { v.selectVertexWithIndex(5); }, {}, {}},
      {"add", [](VXLNetworkView& v) { v.addToSelectionVertexWithIndex(0); }, {0, 1, 3}, {}},
      {"add out of range",
       [](VXLNetworkView& v) { v.addToSelectionVertexWithIndex(9); },
       {1, 3},
       {}},
      {"remove", [](VXLNetworkView& v) { v.removeFromSelectionVertexWithIndex(3); }, {1}, {}},
      {"toggle on",
       [](VXLNetworkView& v) { v.toggleSelectionOfVertexWithIndex(2); },
       {1, 2, 3},
       {}},
      {"toggle off", [](VXLNetworkView& v) { v.toggleSelectionOfVertexWithIndex(1); }, {3}, {}},
      {"toggle out of range",
       [](VXLNetworkView& v) { v.toggleSelectionOfVertexWithIndex(5); },
       {1, 3},
       {}},
      {"vertex object",
       [](VXLNetworkView& v) { v.toggleSelectionOfVertex(v.network()->vertexAtIndex(3)); },
       {1},
       {}},
      {"select vertex object",
       [](VXLNetworkView& v) { v.selectVertex(v.network()->vertexAtIndex(0)); },
       {0},
       {0}},
      {"reset", [](VXLNetworkView& v) { v.resetSelection(); }, {}, {}},
      {"mask",
       [](VXLNetworkView& v) {
         // Any element type; a longer mask's extra entries are ignored.
         const float values[] = {0.0f, 0.5f, 0.0f, 0.0f, -2.0f, 1.0f, 1.0f};
         v.setSelectedNodesIndexes(*QLONumberArray::initWithFloats(values));
       },
       {1, 4},
       {}},
  };
  for (const Case& c : cases) {
    Fixture f;
    auto handler = std::make_shared<RecordingHandler>();
    f.view.setSelectionhandler(handler);
    f.view.setSelectedVertices({1, 3});
    c.act(f.view);
    EXPECT_EQ(f.view.selectedIndices(), c.selected) << c.name;
    EXPECT_EQ(handler->calls, c.handled) << c.name;
    // The mask always matches the network, so the kept listing is empty.
    EXPECT_TRUE(f.view.selectedVertices().empty()) << c.name;
  }
}

TEST(Selection, NewNetworkStartsWithAFreshEmptyMask) {
  Fixture f;
  f.view.setSelectedVertices({0, 4});
  f.view.setNetwork(isolated(8));
  auto mask = f.view.selectedNodesIndexes();
  ASSERT_TRUE(mask);
  EXPECT_EQ(mask->count(), 8u);
  EXPECT_TRUE(f.view.selectedIndices().empty());
  f.view.addToSelectionVertexWithIndex(7);
  EXPECT_EQ(f.view.selectedIndices(), std::vector<std::uint64_t>{7});
}

TEST(Selection, AHeldMaskKeepsTheSelectionItWasTakenWith) {
  Fixture f;
  f.view.setSelectedVertices({2});
  const auto held = f.view.selectedNodesIndexes();
  f.view.toggleSelectionOfVertexWithIndex(2);
  f.view.addToSelectionVertexWithIndex(0);
  EXPECT_TRUE(held->boolValueAtIndex(2));
  EXPECT_FALSE(held->boolValueAtIndex(0));
  EXPECT_EQ(f.view.selectedIndices(), std::vector<std::uint64_t>{0});
  EXPECT_NE(f.view.selectedNodesIndexes(), held);
}

// --- The nearest hit of a selection buffer ---

TEST(PickingHits, NearestRecordWinsTiesKeepTheFirst) {
  using Records = std::vector<std::uint32_t>;
  constexpr std::uint64_t V = 10;
  struct Case {
    const char* name;
    Records records;
    std::int64_t hits;
    std::uint64_t expected;
  };
  const Case cases[] = {
      {"no hit", {}, 0, VXLNetworkView::kNoVertex},
      {"nearer later", {1, 500, 600, 3, 1, 200, 900, 7}, 2, 7},
      {"nearer first", {1, 100, 600, 3, 1, 200, 300, 7}, 2, 3},
      {"tie keeps the first", {1, 200, 600, 3, 1, 200, 300, 7}, 2, 3},
      {"name V hides the farther after it",
       {1, 100, 200, 10, 1, 300, 400, 4},
       2,
       VXLNetworkView::kNoVertex},
      {"name V keeps an earlier farther vertex", {1, 300, 400, 4, 1, 100, 200, 10}, 2, 4},
      {"no name", {0, 100, 200, 1, 300, 400, 4}, 2, VXLNetworkView::kNoVertex},
      {"last name counts", {2, 100, 200, 5, 6}, 1, 6},
      {"count limits the walk", {1, 500, 600, 3, 1, 200, 900, 7}, 1, 3},
      {"overflow reads what fits", {1, 500, 600, 3, 1, 200, 900, 7, 1, 100}, -1, 7},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(VXLNetworkView::nearestHit(c.records, c.hits, V), c.expected) << c.name;
  }
}

}  // namespace
