#pragma once
// What the GL tests share: an off-screen context and framebuffer, its
// read-back, small networks, and a point's pixel through the view's camera.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QSurfaceFormat>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <ostream>
#include <vector>

#include "../support/networks.h"
#include "render/VXLCamera.h"
#include "render/VXLNetworkView.h"
#include "render/fit.h"

namespace gltest {

inline constexpr int kSize = 200;

struct Pixel {
  int r = 0, g = 0, b = 0, a = 0;
};
inline std::ostream& operator<<(std::ostream& os, const Pixel& p) {
  return os << "(" << p.r << ", " << p.g << ", " << p.b << ", " << p.a << ")";
}

// 8-bit value of a colour component in [0, 1], clamped as GL stores it.
inline int byte(double v) {
  return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
}

inline bool near(const Pixel& p, const Pixel& expected, int tolerance = 3) {
  return std::abs(p.r - expected.r) <= tolerance && std::abs(p.g - expected.g) <= tolerance &&
         std::abs(p.b - expected.b) <= tolerance && std::abs(p.a - expected.a) <= tolerance;
}

inline bool white(const Pixel& p) {
  return near(p, {255, 255, 255, 255}, 0);
}

// RGBA rows, bottom row first (GL's window coordinates).
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgba;
  Pixel at(int x, int y) const {
    const std::size_t i = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                               static_cast<std::size_t>(x));
    return {rgba[i], rgba[i + 1], rgba[i + 2], rgba[i + 3]};
  }
};

// Pixels passing `test` within [x0, x1) x [y0, y1), y from the top.
template <class Test>
int countFromTop(const Image& image, Test test, int x0, int y0, int x1, int y1) {
  int n = 0;
  for (int y = y0; y < y1; ++y) {
    for (int x = x0; x < x1; ++x) n += test(image.at(x, image.height - 1 - y));
  }
  return n;
}

// Window coordinates (from the lower left) of a world point through the
// view's camera, or that camera at another size when one is given.
inline std::array<double, 2> project(const VXLNetworkView& view, const Vec3d& p, int width = 0,
                                     int height = 0) {
  VXLCamera camera = view.camera();
  if (width > 0) {
    camera.viewWidth = width;
    camera.viewHeight = height;
  }
  const camera::Projected q = camera::project(
      camera::frustumMatrix(
          camera::frustum(camera, view.nearClipDistance(), view.farClipDistance())),
      camera::modelView(camera, std::nullopt, view.worldRotation(), view.objectRotation()), p);
  return {(q.x + 1) * 0.5 * camera.viewWidth, (q.y + 1) * 0.5 * camera.viewHeight};
}

inline Pixel pixelAt(const Image& image, const VXLNetworkView& view, const Vec3d& p) {
  const auto w = project(view, p);
  return image.at(static_cast<int>(std::floor(w[0])), static_cast<int>(std::floor(w[1])));
}

// Weighted when weights are given.
inline std::shared_ptr<QLONetwork> network(std::uint64_t vertices,
                                           const testing_support::EdgeList& edges,
                                           std::vector<float> weights = {}) {
  return testing_support::makeNetwork(vertices, edges, std::move(weights));
}

inline std::shared_ptr<QLOVector3dArray> vectors(const std::vector<Vec3d>& values) {
  return testing_support::vectorArray(values);
}

inline void install(VXLNetworkView& view, std::shared_ptr<QLONetwork> net,
                    const std::vector<Vec3d>& positions) {
  view.setNetwork(std::move(net));
  view.setPositions(vectors(positions));
}

// A compatibility context (2.1 or later, depth 24) current on an off-screen
// surface, with a kSize x kSize framebuffer object bound.
class OffscreenGL : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  static void prepare(VXLNetworkView& view) { view.initCommands(); }
  // The whole bound framebuffer.
  static Image read();
  // Draws one frame of the given size and reads it back.
  Image frame(VXLNetworkView& view, int width = kSize, int height = kSize) {
    view.drawRect(width, height);
    return read();
  }
  // Prepares the view and looks at the origin from (0, 0, distance), untilted.
  static void aim(VXLNetworkView& view, double distance) {
    prepare(view);
    VXLCamera camera = view.camera();
    camera.position = {0, 0, distance};
    camera.direction = {-0.0, -0.0, -distance};
    view.setCamera(camera);
    view.setWorldRotation({});
  }
  Image look(VXLNetworkView& view, double distance) {
    aim(view, distance);
    return frame(view);
  }
  // Draws with the renderer asked for, which must be the one drawing.
  Image drawWith(VXLNetworkView& view, RenderPath path) {
    view.setPreferredRenderPath(path);
    Image image = frame(view);
    EXPECT_EQ(view.renderPath(), path);
    return image;
  }

  std::unique_ptr<QOffscreenSurface> surface_;
  std::unique_ptr<QOpenGLContext> context_;
  std::unique_ptr<QOpenGLFramebufferObject> fbo_;
};

}  // namespace gltest
