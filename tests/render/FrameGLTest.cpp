// A frame beyond the passes: frame blending, the GL error report, and what a
// frame prepares.
#include <GL/gl.h>

#include "offscreen_gl.h"

namespace {

using namespace gltest;

class Frame : public OffscreenGL {};

// Largest channel difference between `got` and nw * next + pw * previous.
int blendError(const Image& got, const Image& next, const Image& previous, double nw) {
  int worst = 0;
  for (std::size_t i = 0; i < got.rgba.size(); ++i) {
    const double want = nw * next.rgba[i] + (1 - nw) * previous.rgba[i];
    worst = std::max(worst, static_cast<int>(std::lround(std::abs(got.rgba[i] - want))));
  }
  return worst;
}

TEST_F(Frame, BlendingLeavesAFadingTrail) {
  VXLNetworkView view;
  const std::vector<Vec3d> here = {{-3, 0, 0}}, there = {{3, 1, 0}};
  install(view, network(1, {}), here);
  view.setBlackBackground(true);
  const Image plainHere = look(view, 20);
  view.setPositions(vectors(there));
  const Image plainThere = frame(view);

  // Switching the pass on starts from the new frame alone.
  view.setShader(true);
  view.setPositions(vectors(here));
  const Image first = frame(view);
  EXPECT_LE(blendError(first, plainHere, plainHere, 1.0), 1);

  view.setPositions(vectors(there));
  const Image second = frame(view);
  EXPECT_LE(blendError(second, plainThere, first, 0.2), 2);
  view.setMotionBlurFactor(0.5f);
  EXPECT_LE(blendError(frame(view), plainThere, second, 0.5), 2);
  // A frame with the pass off resets it.
  view.setShader(false);
  frame(view);
  view.setShader(true);
  view.setPositions(vectors(here));
  EXPECT_LE(blendError(frame(view), plainHere, plainHere, 1.0), 1);
}

TEST_F(Frame, GlErrorsAreReportedAfterTheFrameAndKeptAsText) {
  VXLNetworkView view;
  view.setFInfo(true);  // the error text is drawn with the overlays
  prepare(view);
  frame(view);
  glEnable(0x1234);  // not a capability: GL_INVALID_ENUM
  testing::internal::CaptureStderr();
  frame(view);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("invalid enumerant"), std::string::npos);
  EXPECT_NE(view.errorString().find("invalid enumerant"), std::string::npos);
  // Drawing the error text raises no other.
  testing::internal::CaptureStderr();
  frame(view);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Frame, FrameFillsTheFilterCacheAndKeepsAFittingSelectionMask) {
  VXLNetworkView view;
  for (std::uint64_t n : {3, 5}) {
    install(view, network(n, {}), std::vector<Vec3d>(n, Vec3d{}));
    prepare(view);
    view.setSelectedVertices({1, 7});
    const auto mask = view.selectedNodesIndexes();
    frame(view);
    ASSERT_NE(view.filterProperty(), nullptr);
    EXPECT_EQ(view.filterProperty()->size(), n);
    EXPECT_EQ(view.selectedNodesIndexes(), mask);
  }
}

}  // namespace
