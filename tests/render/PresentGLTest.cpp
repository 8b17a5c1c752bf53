// Frames drawn in pieces: the finished picture is the one drawRect makes, the
// last whole frame stays until the next is done, and a new network shows as
// it is drawn.
#include <chrono>
#include <functional>

#include "offscreen_gl.h"

namespace {

using namespace gltest;
using std::chrono::milliseconds;

constexpr milliseconds kOnePiece{0};  // a zero budget draws one piece a call
constexpr milliseconds kWhole{100000};

// n vertices scattered through a box of side `side` centred at (cx, 0, 0),
// each joined to the next two: vertices and edges overlap in depth.
struct Scatter {
  std::shared_ptr<QLONetwork> net;
  std::vector<Vec3d> at;
};
Scatter scatter(std::uint64_t n, double cx, double side) {
  std::vector<std::array<std::uint64_t, 2>> edges;
  std::vector<Vec3d> at;
  std::uint64_t state = 12345;
  auto next = [&] {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state >> 11) / 9007199254740992.0 - 0.5;
  };
  for (std::uint64_t i = 0; i < n; ++i) {
    at.push_back({cx + side * next(), side * next(), side * next()});
    edges.push_back({i, (i + 1) % n});
    edges.push_back({i, (i + 2) % n});
  }
  return {network(n, edges), at};
}

// Pixels in columns [x0, x1) and rows [y0, kSize) (from the bottom) that are
// not background.
int coloured(const Image& image, int x0 = 0, int x1 = kSize, int y0 = 0) {
  int count = 0;
  for (int y = y0; y < image.height; ++y) {
    for (int x = x0; x < x1; ++x) count += !white(image.at(x, y));
  }
  return count;
}

class Present : public OffscreenGL {
 protected:
  Image present(VXLNetworkView& view, milliseconds budget, int size = kSize) {
    view.presentFrame(size, size, budget);
    return read();
  }
  // Shows the scatter's whole frame, looking from 60.
  Image showWhole(VXLNetworkView& view, const Scatter& s) {
    install(view, s.net, s.at);
    aim(view, 60);
    return present(view, kWhole);
  }
  // One piece a call until the frame is shown; `between` runs after each.
  Image finish(VXLNetworkView& view, const std::function<void()>& between = {}) {
    do {
      view.presentFrame(kSize, kSize, kOnePiece);
      if (between) between();
    } while (view.framePending());
    return read();
  }
};

TEST_F(Present, PiecesAddUpToExactlyTheWholeFrame) {
  const Scatter s = scatter(6000, 0, 30);  // several vertex and many edge pieces
  for (const bool plain : {false, true}) {
    SCOPED_TRACE(plain ? "cubes, blended lines, no depth test" : "defaults");
    VXLNetworkView view;
    install(view, s.net, s.at);
    view.setSelectedVertices({7, 4500, 5999});  // shells in a later piece
    view.setSimpleShapes(plain);
    view.setBlendLines(plain);
    view.setEdgesDepthTest(!plain);
    const Image whole = look(view, 60);
    int calls = 0;
    // A click between pieces draws for picking in the same context.
    const Image pieced =
        finish(view, [&] { ++calls, view.pickAt(kSize / 2.0, kSize / 2.0, 3, 3); });
    EXPECT_GT(calls, 10);
    EXPECT_EQ(view.presentedNetwork(), s.net);
    EXPECT_TRUE(pieced.rgba == whole.rgba);
    EXPECT_TRUE(frame(view).rgba == whole.rgba);  // drawRect still draws afterwards
  }
}

TEST_F(Present, TheLastWholeFrameStaysUntilTheNextIsDone) {
  // Network a lies right of the centre, network b left of it.
  const Scatter a = scatter(6000, 12, 8), b = scatter(6000, -12, 8);
  VXLNetworkView view;
  const Image first = showWhole(view, a);
  ASSERT_GT(coloured(first, kSize / 2), 200);
  ASSERT_EQ(coloured(first, 0, kSize / 2 - 20), 0);

  // The layout moved: the old frame shows until the new one is complete.
  std::vector<Vec3d> moved = a.at;
  for (Vec3d& p : moved) p[1] += 2;
  view.setPositions(vectors(moved));
  EXPECT_TRUE(present(view, kOnePiece).rgba == first.rgba);
  EXPECT_TRUE(view.framePending() && !view.showsPartialFrame());
  const Image movedWhole = finish(view);
  EXPECT_FALSE(movedWhole.rgba == first.rgba);
  EXPECT_TRUE(frame(view).rgba == movedWhole.rgba);

  // Another network shows from its first piece, without the one before.
  install(view, b.net, b.at);
  const Image partial = present(view, kOnePiece);
  ASSERT_TRUE(view.framePending() && view.showsPartialFrame());
  EXPECT_EQ(view.presentedNetwork(), a.net);
  EXPECT_GT(coloured(partial, 0, kSize / 2), 0);
  EXPECT_EQ(coloured(partial, kSize / 2 + 20), 0);
  finish(view);
  EXPECT_EQ(view.presentedNetwork(), b.net);
}

TEST_F(Present, DraggingTheCameraRestartsTheFrameAndShowsItsPieces) {
  VXLNetworkView view;
  const int whole = coloured(showWhole(view, scatter(6000, 0, 30)));
  view.mouseDown(100, 100, {});
  view.mouseDragged(120, 100);
  present(view, kOnePiece);
  view.mouseDragged(140, 110);
  // The camera moved on: the frame starts again and its first piece shows.
  const int firstPiece = coloured(present(view, kOnePiece));
  EXPECT_GT(firstPiece, 0);
  EXPECT_LT(firstPiece, whole / 2);
  EXPECT_GT(coloured(present(view, kOnePiece)), firstPiece);
  EXPECT_TRUE(finish(view).rgba == frame(view).rgba);
  view.mouseUp(140, 110);
}

TEST_F(Present, AFrameOfAnEarlierSizeShowsOverTheBackground) {
  VXLNetworkView view;
  ASSERT_GT(coloured(showWhole(view, scatter(6000, 0, 30)), kSize / 2, kSize, kSize / 2), 0);
  present(view, kWhole, kSize / 2);
  // Grown again: the smaller frame sits at the lower left over background.
  const Image grown = present(view, kOnePiece);
  ASSERT_TRUE(view.framePending());
  EXPECT_EQ(coloured(grown, kSize / 2, kSize, kSize / 2), 0);
  EXPECT_GT(coloured(grown, 0, kSize / 2), 0);
}

}  // namespace
