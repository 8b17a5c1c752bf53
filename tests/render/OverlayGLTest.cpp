// The text overlays over a frame: where they land, the flags that hide them,
// and the GL state they leave behind.
#include <GL/gl.h>

#include <string>

#include "offscreen_gl.h"

namespace {

using namespace gltest;

class Overlay : public OffscreenGL {
 protected:
  // A black view, one vertex at the centre, texts on (the message sits at
  // the top left, away from the regions looked at).
  void SetUp() override {
    OffscreenGL::SetUp();
    install(view_, network(1, {}), {{0, 0, 0}});
    view_.setBlackBackground(true);
    view_.setFInfo(true);  // as a window does
    aim(view_, 20);
  }

  // Pixels brighter than the black background, y measured from the top.
  static int lit(const Image& image, int x0, int y0, int x1, int y1) {
    auto bright = [](const Pixel& p) { return std::max({p.r, p.g, p.b}) > 16; };
    return countFromTop(image, bright, x0, y0, x1, y1);
  }

  VXLNetworkView view_;
};

TEST_F(Overlay, CameraTextAtTheTopRightOnlyWhenEnabled) {
  view_.setCameraInfo(false);
  const Image off = frame(view_);
  EXPECT_EQ(lit(off, 120, 10, 190, 30), 0);
  view_.setCameraInfo(true);
  const Image on = frame(view_);
  EXPECT_GT(lit(on, 120, 10, 190, 30), 50);
  EXPECT_EQ(lit(on, 120, 0, 200, 9), 0);    // 10 pixels from the top edge
  EXPECT_EQ(lit(on, 191, 0, 200, 200), 0);  // and from the right edge
}

TEST_F(Overlay, VertexDetailsAtTheBottomRightAfterASelection) {
  EXPECT_EQ(lit(frame(view_), 120, 160, 190, 190), 0);
  view_.selectVertexWithIndex(0);
  const Image shown = frame(view_);
  EXPECT_GT(lit(shown, 120, 160, 190, 190), 50);
  EXPECT_EQ(lit(shown, 120, 191, 200, 200), 0);  // 10 pixels above the bottom edge
  view_.setVertexInfo(false);
  EXPECT_EQ(lit(frame(view_), 120, 160, 190, 190), 0);
  view_.setVertexInfo(true);
  view_.setFInfo(false);  // no overlays at all
  EXPECT_EQ(lit(frame(view_), 120, 160, 190, 190), 0);
}

TEST_F(Overlay, DrawingTextsLeavesTheSceneStateAsItWas) {
  view_.setFInfo(false);
  const Image plain = frame(view_);
  view_.setFInfo(true);
  view_.setCameraInfo(true);
  view_.selectVertexWithIndex(0);
  view_.setSelectedVertices({});  // the details stay, the shell goes
  frame(view_);
  EXPECT_FALSE(glIsEnabled(GL_TEXTURE_RECTANGLE));
  EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
  GLint blendSource = 0;
  glGetIntegerv(GL_BLEND_SRC, &blendSource);
  EXPECT_NE(blendSource, GL_ONE);
  GLint depth = 0;
  glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth);
  EXPECT_EQ(depth, 1);
  glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
  EXPECT_EQ(depth, 1);
  // The next frame's vertex looks as it does without any texts.
  const Image after = frame(view_);
  for (int y = 90; y < 110; ++y) {
    for (int x = 90; x < 110; ++x) {
      ASSERT_TRUE(near(after.at(x, y), plain.at(x, y), 0))
          << x << "," << y << ": " << after.at(x, y) << " vs " << plain.at(x, y);
    }
  }
  EXPECT_GT(lit(after, 95, 95, 105, 105), 50);
}

TEST_F(Overlay, CapabilityReportIsDrawnAtTheTopRight) {
  EXPECT_EQ(lit(frame(view_), 120, 10, 190, 30), 0);
  view_.setFDrawCaps(true);
  EXPECT_GT(lit(frame(view_), 120, 10, 190, 30), 50);
}

}  // namespace
