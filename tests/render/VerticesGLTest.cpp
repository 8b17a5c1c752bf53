// The background and the vertex pass, checked on rendered pixels. Where a
// sphere's surface faces away from the light only the ambient terms light it,
// and they add up to exactly the vertex colour; points are chosen there when
// a colour is checked exactly.
#include <functional>

#include "offscreen_gl.h"
#include "render/scenecolours.h"

namespace {

using namespace gltest;

class Vertices : public OffscreenGL {};

Pixel opaque(const scene::Rgb& c) {
  return {byte(c.r), byte(c.g), byte(c.b), 255};
}

Pixel background(bool black) {
  return black ? Pixel{0, 0, 0, 255} : Pixel{255, 255, 255, 255};
}

// On the sphere's lower left, facing away from the light (1, 1, 1).
const Vec3d kShadowSide{-0.4, -0.4, 0};
// Between the sphere (radius 0.7) and the selection shell (radius 0.8).
const Vec3d kShellRim{-0.77, 0, 0};

TEST_F(Vertices, BackgroundIsClearedWithOrWithoutANetwork) {
  for (bool black : {false, true}) {
    for (bool empty : {false, true}) {
      VXLNetworkView view;
      if (empty) install(view, network(0, {}), {});
      view.setBlackBackground(black);
      prepare(view);
      const Image image = frame(view);
      for (int y = 0; y < kSize; y += 7) {
        for (int x = 0; x < kSize; x += 7) {
          ASSERT_TRUE(near(image.at(x, y), background(black), 0))
              << "black " << black << " empty " << empty << " at " << x << "," << y;
        }
      }
    }
  }
}

TEST_F(Vertices, VertexColourDefaultPerVertexOrIgnoredWhenShort) {
  const scene::Rgb own{0.1f, 0.3f, 0.8f};
  struct Case {
    const char* name;
    std::vector<Vec3d> colours;
    scene::Rgb expected;
  };
  const Case cases[] = {
      {"none", {}, scene::kDefaultVertexColour},
      {"per vertex", {{0.9, 0.9, 0.9}, {own.r, own.g, own.b}}, own},
      {"shorter than the vertices", {{own.r, own.g, own.b}}, scene::kDefaultVertexColour},
  };
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(2, {}), {{50, 50, 50}, {0, 0, 0}});
    if (!c.colours.empty()) view.setColors(vectors(c.colours));
    prepare(view);
    lookFrom(view, 3);
    const Image image = frame(view);
    const Pixel expected = opaque(c.expected);
    const Pixel shadow = pixelAt(image, view, kShadowSide);
    EXPECT_TRUE(near(shadow, expected)) << c.name << ": " << shadow << " vs " << expected;
    // Facing the viewer the light adds to each channel: never darker, and the
    // channels keep their order.
    const Pixel lit = pixelAt(image, view, {0, 0, 0});
    EXPECT_GE(lit.r, expected.r - 2) << c.name;
    EXPECT_GE(lit.g, expected.g - 2) << c.name;
    EXPECT_GE(lit.b, expected.b - 2) << c.name;
    EXPECT_GT(lit.g + lit.b + lit.r, shadow.r + shadow.g + shadow.b) << c.name;
    EXPECT_EQ(lit.r > lit.b, expected.r > expected.b) << c.name;
    EXPECT_TRUE(near(pixelAt(image, view, {0.9, 0, 0}), background(false), 0)) << c.name;
  }
}

TEST_F(Vertices, SelectedVertexWearsATranslucentShell) {
  struct Case {
    bool black;
    bool colours;
    scene::Rgb highlight;
  };
  const Case cases[] = {
      {true, true, {1.0f, 1.0f, 0.1f}},
      {true, false, {1.0f, 0.3f, 0.1f}},
      {false, false, {0.4f, 0.1f, 0.0f}},
  };
  for (const Case& c : cases) {
    for (bool selected : {false, true}) {
      VXLNetworkView view;
      install(view, network(1, {}), {{0, 0, 0}});
      if (c.colours) view.setColors(vectors({{0.2, 0.5, 0.9}}));
      if (selected) view.setSelectedVertices({0});
      view.setBlackBackground(c.black);
      prepare(view);
      lookFrom(view, 3);
      const Pixel rim = pixelAt(frame(view), view, kShellRim);
      const double bg = c.black ? 0.0 : 1.0;
      const double a = scene::kHighlightAlpha;
      const Pixel expected =
          selected ? Pixel{byte(a * c.highlight.r + (1 - a) * bg),
                           byte(a * c.highlight.g + (1 - a) * bg),
                           byte(a * c.highlight.b + (1 - a) * bg), byte(a * a + (1 - a))}
                   : background(c.black);
      EXPECT_TRUE(near(rim, expected))
          << "black " << c.black << " colours " << c.colours << " selected " << selected << ": "
          << rim << " vs " << expected;
    }
  }
}

TEST_F(Vertices, SimpleShapesDrawCubes) {
  // The cube (edge 0.7) reaches 0.35 from the centre, the sphere 0.7.
  for (bool cubes : {false, true}) {
    VXLNetworkView view;
    install(view, network(1, {}), {{0, 0, 0}});
    view.setSimpleShapes(cubes);
    prepare(view);
    lookFrom(view, 3);
    const Image image = frame(view);
    EXPECT_FALSE(near(pixelAt(image, view, {0.25, 0, 0}), background(false), 0)) << cubes;
    EXPECT_EQ(near(pixelAt(image, view, {0.55, 0, 0}), background(false), 0), cubes);
  }
}

TEST_F(Vertices, SkippedVerticesKeepTheOthersInPlaceAndScaleApplies) {
  // Vertex 1 is skipped or not; vertex 2 must land at twice its position
  // either way (the translations are relative from one drawn vertex to the
  // next).
  struct Case {
    const char* name;
    std::function<void(VXLNetworkView&)> setUp;
    bool middleDrawn;
  };
  auto hide = [](std::uint64_t count) {
    return [count](VXLNetworkView& view) {
      auto mask = QLONumberArray::initWithCount(count, NumberType::Bool);
      mask->setBoolValue(true, 1);
      view.setHiddenVertices(mask);
      view.setHideSpecialVertices(true);
    };
  };
  auto filter = [](bool limit) {
    return [limit](VXLNetworkView& view) {
      view.setLimitNodes(limit);
      view.prepareFrame();              // degrees 1, 2, 1: the range is [1, 2]
      view.setMaxFilterProperty(1.5f);  // vertex 1 (degree 2) is outside
    };
  };
  const Case cases[] = {
      {"nothing skipped", [](VXLNetworkView&) {}, true}, {"hidden", hide(3), false},
      {"hidden mask too short", hide(2), true},          {"filtered", filter(true), false},
      {"filter range not applied", filter(false), true},
  };
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(3, {{0, 1}, {1, 2}}), {{-2, 0, 0}, {0, 0, 0}, {2, 0, 0}});
    view.setShowEdges(false);
    view.setScale(2);
    c.setUp(view);
    prepare(view);
    lookFrom(view, 20);
    const Image image = frame(view);
    const Pixel bg = background(false);
    EXPECT_EQ(near(pixelAt(image, view, {0, 0, 0}), bg, 0), !c.middleDrawn) << c.name;
    EXPECT_FALSE(near(pixelAt(image, view, {4, 0, 0}), bg, 0)) << c.name;
    EXPECT_FALSE(near(pixelAt(image, view, {-4, 0, 0}), bg, 0)) << c.name;
    EXPECT_TRUE(near(pixelAt(image, view, {2, 0, 0}), bg, 0)) << c.name;
  }
}

TEST_F(Vertices, ResizeSetsViewportAndAspect) {
  VXLNetworkView view;
  install(view, network(1, {}), {{6, 4, 0}});
  prepare(view);
  lookFrom(view, 30);
  frame(view);
  const auto square = project(view, {6, 4, 0});
  const Image image = frame(view, kSize, kSize / 2);
  EXPECT_EQ(view.camera().viewWidth, kSize);
  EXPECT_EQ(view.camera().viewHeight, kSize / 2);
  const auto wide = project(view, {6, 4, 0});
  ASSERT_GT(std::hypot(wide[0] - square[0], wide[1] - square[1]), 10.0);
  EXPECT_FALSE(near(pixelAt(image, view, {6, 4, 0}), background(false), 0));
  EXPECT_TRUE(near(image.at(static_cast<int>(square[0]), static_cast<int>(square[1])),
                   background(false), 0));
}

}  // namespace
