// One frame beyond the passes: the frame-blending pass, drawing for picking,
// the GL error report, what a frame prepares (filter cache, selection mask),
// and the log lines of the background setters.
#include <GL/gl.h>
#include <GL/glu.h>

#include <functional>
#include <regex>

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
  prepare(view);
  lookFrom(view, 20);
  const Image plainHere = frame(view);
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
  const Image third = frame(view);
  EXPECT_LE(blendError(third, plainThere, second, 0.5), 2);
  // The trail really is there: vertex "here" still shows, dimmed.
  const Pixel trail = pixelAt(third, view, here[0]);
  const Pixel original = pixelAt(plainHere, view, here[0]);
  EXPECT_GT(trail.r, 0);
  EXPECT_LT(trail.r, original.r);

  // A frame with the pass off resets it.
  view.setShader(false);
  frame(view);
  view.setShader(true);
  view.setPositions(vectors(here));
  EXPECT_LE(blendError(frame(view), plainHere, plainHere, 1.0), 1);
}

TEST_F(Frame, PickingDrawsVertexIndicesAsNames) {
  VXLNetworkView view;
  install(view, network(3, {{0, 1}, {1, 2}}), {{-4, 0, 0}, {0, 0, 0}, {4, 0, 0}});
  prepare(view);
  frame(view);  // sizes the camera
  for (const std::uint64_t target : {0, 2}) {
    for (const bool selected : {false, true}) {
      if (selected) view.setSelectedVertices({target});
      const auto point = project(view, {target == 0 ? -4.0 : 4.0, 0, 0});
      GLuint buffer[64];
      glSelectBuffer(64, buffer);
      glRenderMode(GL_SELECT);
      glInitNames();
      glPushName(~0u);
      GLint viewport[4];
      glGetIntegerv(GL_VIEWPORT, viewport);
      glMatrixMode(GL_PROJECTION);
      glLoadIdentity();
      gluPickMatrix(point[0], point[1], 3, 3, viewport);
      const Matrix4 frustum = camera::frustumMatrix(
          camera::frustum(view.camera(), view.nearClipDistance(), view.farClipDistance()));
      glMultMatrixd(frustum.data());
      view.updateModelView();
      view.setSelectionMode(true);
      view.drawCommands();
      view.setSelectionMode(false);
      const GLint hits = glRenderMode(GL_RENDER);
      view.updateProjection();

      // Records: name count, depth range, names. A selected vertex is hit
      // twice (its shape and its shell).
      std::vector<GLuint> names;
      for (GLint h = 0, at = 0; h < hits; ++h) {
        const GLuint count = buffer[at];
        for (GLuint n = 0; n < count; ++n) names.push_back(buffer[at + 3 + static_cast<GLint>(n)]);
        at += 3 + static_cast<GLint>(count);
      }
      EXPECT_EQ(names, (std::vector<GLuint>(selected ? 2u : 1u, static_cast<GLuint>(target))))
          << "vertex " << target << " selected " << selected;
    }
  }
}

TEST_F(Frame, GlErrorsAreReportedAfterTheFrame) {
  VXLNetworkView view;
  prepare(view);
  frame(view);
  glEnable(0x1234);  // not a capability: GL_INVALID_ENUM
  testing::internal::CaptureStderr();
  frame(view);
  const std::string report = testing::internal::GetCapturedStderr();
  const std::regex line(R"(plexview: Error: invalid enumerant \(at time: \d+\.\d secs\)\.\n)");
  EXPECT_TRUE(std::regex_match(report, line)) << report;
  testing::internal::CaptureStderr();
  frame(view);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Frame, FrameFillsTheFilterCacheAndFitsTheSelectionMask) {
  VXLNetworkView view;
  install(view, network(3, {}), {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
  prepare(view);
  // Installing the network already fitted an empty selection to it.
  ASSERT_NE(view.selectedNodesIndexes(), nullptr);
  EXPECT_EQ(view.selectedNodesIndexes()->count(), 3u);
  EXPECT_EQ(view.filterProperty(), nullptr);
  frame(view);
  ASSERT_NE(view.filterProperty(), nullptr);
  EXPECT_EQ(view.filterProperty()->size(), 3u);
  ASSERT_NE(view.selectedNodesIndexes(), nullptr);
  EXPECT_EQ(view.selectedNodesIndexes()->count(), 3u);

  view.setSelectedVertices({1, 7});
  auto mask = view.selectedNodesIndexes();
  EXPECT_EQ(mask->count(), 3u);
  EXPECT_TRUE(mask->boolValueAtIndex(1));
  frame(view);
  EXPECT_EQ(view.selectedNodesIndexes(), mask);  // a valid mask is kept

  install(view, network(5, {}), {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}});
  frame(view);
  EXPECT_EQ(view.filterProperty()->size(), 5u);
  mask = view.selectedNodesIndexes();
  ASSERT_EQ(mask->count(), 5u);
  EXPECT_EQ(mask->numberArrayType(), NumberType::Bool);
  for (std::uint64_t i = 0; i < 5; ++i) EXPECT_FALSE(mask->boolValueAtIndex(i)) << i;
}

TEST(ViewBackground, SettersLogTheBlackBackgroundFlag) {
  VXLNetworkView view;
  struct Step {
    std::function<void()> action;
    const char* line;
  };
  const Step steps[] = {
      {[&] { view.setBlackBackground(true); }, "plexview: blackBackground:YES\n"},
      // The transparency setter reports the black flag, not its own value.
      {[&] { view.setTransparentBackground(false); }, "plexview: transparentBackground:YES\n"},
      {[&] { view.setBlackBackground(false); }, "plexview: blackBackground:NO\n"},
      {[&] { view.setTransparentBackground(true); }, "plexview: transparentBackground:NO\n"},
  };
  for (const Step& step : steps) {
    testing::internal::CaptureStderr();
    step.action();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), step.line);
  }
  EXPECT_TRUE(view.transparentBackground());
  EXPECT_FALSE(view.blackBackground());
}

}  // namespace
