// A window's frames drawn in pieces: the finished picture is exactly the one
// frame drawRect makes, the last whole frame stays shown while the next is
// drawn, and a newly installed network shows as it is drawn.
#include <GL/gl.h>

#include <chrono>

#include "offscreen_gl.h"

namespace {

using namespace gltest;
using std::chrono::milliseconds;

// A zero budget draws exactly one piece per call.
constexpr milliseconds kOnePiece{0};
constexpr milliseconds kWhole{100000};

class Present : public OffscreenGL {
 protected:
  Image read() {
    Image image;
    image.width = kSize;
    image.height = kSize;
    image.rgba.resize(4 * static_cast<std::size_t>(kSize) * kSize);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, kSize, kSize, GL_RGBA, GL_UNSIGNED_BYTE, image.rgba.data());
    return image;
  }
  Image present(VXLNetworkView& view, milliseconds budget) {
    view.presentFrame(kSize, kSize, budget);
    return read();
  }
  // Calls presentFrame one piece at a time until the frame is shown.
  int presentInPieces(VXLNetworkView& view) {
    int calls = 0;
    do {
      view.presentFrame(kSize, kSize, kOnePiece);
      ++calls;
    } while (view.framePending());
    return calls;
  }
};

// The pixels of `image` in columns [x0, x1) that are not background.
int coloured(const Image& image, int x0 = 0, int x1 = kSize) {
  int count = 0;
  for (int y = 0; y < image.height; ++y) {
    for (int x = x0; x < x1; ++x) count += white(image.at(x, y)) ? 0 : 1;
  }
  return count;
}

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

TEST_F(Present, PiecesAddUpToExactlyTheWholeFrame) {
  // 6,000 vertices and 12,000 edges: several vertex pieces (the shells of
  // the selected vertices fall in the second) and many edge pieces.
  const Scatter s = scatter(6000, 0, 30);
  for (const bool plain : {false, true}) {
    SCOPED_TRACE(plain ? "cubes, blended lines, no depth test" : "defaults");
    VXLNetworkView view;
    install(view, s.net, s.at);
    view.setSelectedVertices({7, 4500, 5999});
    view.setSimpleShapes(plain);
    view.setBlendLines(plain);
    view.setEdgesDepthTest(!plain);
    const Image whole = look(view, 60);

    int calls = 0;
    do {
      view.presentFrame(kSize, kSize, kOnePiece);
      ++calls;
      // A click between pieces draws the scene for picking in the same context.
      view.pickAt(kSize / 2.0, kSize / 2.0, 3, 3);
    } while (view.framePending());
    EXPECT_GT(calls, 10);
    EXPECT_EQ(view.presentedNetwork(), s.net);
    const Image pieced = read();
    EXPECT_TRUE(pieced.rgba == whole.rgba) << "the pieced frame differs from one drawRect";
    // drawRect still draws right after a presented frame.
    EXPECT_TRUE(frame(view).rgba == whole.rgba);
  }
}

TEST_F(Present, TheLastWholeFrameStaysUntilTheNextIsDone) {
  // Network a lies right of the centre, network b left of it.
  const Scatter a = scatter(6000, 12, 8), b = scatter(6000, -12, 8);
  VXLNetworkView view;
  install(view, a.net, a.at);
  prepare(view);
  lookFrom(view, 60);
  const Image first = present(view, kWhole);
  EXPECT_FALSE(view.framePending());
  ASSERT_GT(coloured(first, kSize / 2, kSize), 200);
  ASSERT_EQ(coloured(first, 0, kSize / 2 - 20), 0);

  // The layout moved: the old frame is shown until the new one is complete.
  std::vector<Vec3d> moved = a.at;
  for (Vec3d& p : moved) p[1] += 2;
  view.setPositions(vectors(moved));
  EXPECT_TRUE(present(view, kOnePiece).rgba == first.rgba);
  EXPECT_TRUE(view.framePending());
  EXPECT_FALSE(view.showsPartialFrame());
  presentInPieces(view);
  const Image movedWhole = read();
  EXPECT_FALSE(movedWhole.rgba == first.rgba);
  EXPECT_TRUE(frame(view).rgba == movedWhole.rgba);

  // Another network appears as it is drawn: the first piece already shows
  // some of it, and none of the network before.
  install(view, b.net, b.at);
  const Image partial = present(view, kOnePiece);
  ASSERT_TRUE(view.framePending());
  EXPECT_TRUE(view.showsPartialFrame());
  EXPECT_EQ(view.presentedNetwork(), a.net);
  EXPECT_GT(coloured(partial, 0, kSize / 2), 0);
  EXPECT_EQ(coloured(partial, kSize / 2 + 20, kSize), 0);
  presentInPieces(view);
  EXPECT_EQ(view.presentedNetwork(), b.net);
}

TEST_F(Present, DraggingTheCameraRestartsTheFrameAndShowsItsPieces) {
  const Scatter s = scatter(6000, 0, 30);
  VXLNetworkView view;
  install(view, s.net, s.at);
  prepare(view);
  lookFrom(view, 60);
  const int whole = coloured(present(view, kWhole));

  view.mouseDown(100, 100, {});
  view.mouseDragged(120, 100);
  present(view, kOnePiece);  // a frame with the camera of this moment
  view.mouseDragged(140, 110);
  // The camera moved on: the frame starts again and its first piece shows.
  const int firstPiece = coloured(present(view, kOnePiece));
  EXPECT_GT(firstPiece, 0);
  EXPECT_LT(firstPiece, whole / 2);
  // Holding the mouse still lets the frame finish, still shown as it grows.
  view.presentFrame(kSize, kSize, kOnePiece);
  EXPECT_GT(coloured(read()), firstPiece);
  presentInPieces(view);
  EXPECT_TRUE(read().rgba == frame(view).rgba);
  view.mouseUp(140, 110);
}

TEST_F(Present, AFrameOfAnEarlierSizeShowsOverTheBackground) {
  const Scatter s = scatter(6000, 0, 30);
  VXLNetworkView view;
  install(view, s.net, s.at);
  prepare(view);
  lookFrom(view, 60);
  const Image large = present(view, kWhole);
  view.presentFrame(kSize / 2, kSize / 2, kWhole);
  // Grown again: until the frame of the new size is done, the smaller one
  // sits at the lower left and the rest is background, not what was there.
  const Image grown = present(view, kOnePiece);
  ASSERT_TRUE(view.framePending());
  int leftOver = 0;
  for (int y = kSize / 2; y < kSize; ++y) {
    for (int x = kSize / 2; x < kSize; ++x) leftOver += white(grown.at(x, y)) ? 0 : 1;
  }
  EXPECT_EQ(leftOver, 0);
  EXPECT_GT(coloured(large, kSize / 2, kSize), 0);
  EXPECT_GT(coloured(grown, 0, kSize / 2), 0);
}

}  // namespace
