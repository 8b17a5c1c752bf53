// The background and the vertex pass on pixels. Facing away from the light a
// sphere shows exactly its colour (the ambient terms add up to it).
#include "offscreen_gl.h"
#include "render/scenecolours.h"

namespace {

using namespace gltest;

class Vertices : public OffscreenGL {};

Pixel opaque(const scene::Rgb& c) {
  return {byte(c.r), byte(c.g), byte(c.b), 255};
}

// On the sphere's lower left, facing away from the light (1, 1, 1).
const Vec3d kShadowSide{-0.4, -0.4, 0};
// Between the sphere (radius 0.7) and the selection shell (radius 0.8).
const Vec3d kShellRim{-0.77, 0, 0};

TEST_F(Vertices, BackgroundIsClearedWithAnEmptyNetwork) {
  VXLNetworkView view;
  install(view, network(0, {}), {});
  view.setBlackBackground(true);
  prepare(view);
  const Image image = frame(view);
  for (int i = 0; i < kSize * kSize; i += 97) {  // a scattered sample
    ASSERT_TRUE(near(image.at(i % kSize, i / kSize), {0, 0, 0, 255}, 0)) << i;
  }
}

TEST_F(Vertices, ColourDefaultPerVertexOrIgnoredWhenShortAndASelectedOneWearsAShell) {
  // Vertex 1 sits at the origin; vertex 0 is out of sight.
  const Vec3d own{0.1, 0.3, 0.8};
  struct Case {
    std::vector<Vec3d> colours;  // covering both vertices, or too short to apply
    bool black, selected;
    scene::Rgb expected;  // the colour, or the highlight when selected
  };
  const Case cases[] = {
      {{{0.9, 0.9, 0.9}, own}, false, false, {0.1f, 0.3f, 0.8f}},
      {{own}, false, false, scene::kDefaultVertexColour},
      {{own, own}, true, true, {1.0f, 1.0f, 0.1f}},
      {{}, false, true, {0.4f, 0.1f, 0.0f}},
  };
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(2, {}), {{50, 50, 50}, {0, 0, 0}});
    if (!c.colours.empty()) view.setColors(vectors(c.colours));
    if (c.selected) view.setSelectedVertices({1});
    view.setBlackBackground(c.black);
    const Image image = look(view, 3);
    const double bg = c.black ? 0.0 : 1.0;
    const double a = c.selected ? scene::kHighlightAlpha : 0.0;
    auto over = [&](float h) { return byte(a * h + (1 - a) * bg); };
    const Pixel rim = pixelAt(image, view, kShellRim);
    const Pixel shell{over(c.expected.r), over(c.expected.g), over(c.expected.b),
                      byte(a * a + (1 - a))};
    EXPECT_TRUE(near(rim, shell)) << (&c - cases) << ": " << rim << " vs " << shell;
    if (c.selected) continue;
    const Pixel want = opaque(c.expected);
    const Pixel shadow = pixelAt(image, view, kShadowSide);
    EXPECT_TRUE(near(shadow, want)) << (&c - cases) << ": " << shadow << " vs " << want;
    // Facing the viewer the light adds to each channel.
    const Pixel lit = pixelAt(image, view, {0, 0, 0});
    EXPECT_TRUE(lit.r >= want.r - 2 && lit.g >= want.g - 2 && lit.b >= want.b - 2 &&
                lit.r + lit.g + lit.b > shadow.r + shadow.g + shadow.b)
        << (&c - cases) << ": " << lit;
  }
}

TEST_F(Vertices, SimpleShapesDrawCubes) {
  // The cube (edge 0.7) reaches 0.35 from the centre, the sphere 0.7.
  for (bool cubes : {false, true}) {
    VXLNetworkView view;
    install(view, network(1, {}), {{0, 0, 0}});
    view.setSimpleShapes(cubes);
    const Image image = look(view, 3);
    EXPECT_FALSE(white(pixelAt(image, view, {0.25, 0, 0}))) << cubes;
    EXPECT_EQ(white(pixelAt(image, view, {0.55, 0, 0})), cubes);
  }
}

TEST_F(Vertices, SkippedVerticesKeepTheOthersInPlaceAndScaleApplies) {
  // Vertex 1 skipped or not, vertex 2 lands at twice its position (each
  // translation is relative to the vertex drawn before).
  struct Case {
    std::uint64_t hiddenMask;  // entries of a mask hiding vertex 1, if any
    bool range, limit;         // a filter range leaving vertex 1 out, applied or not
    bool middleDrawn;
  };
  const Case cases[] = {{3, false, false, false}, {0, true, true, false}};
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(3, {{0, 1}, {1, 2}}), {{-2, 0, 0}, {0, 0, 0}, {2, 0, 0}});
    view.setShowEdges(false);
    view.setScale(2);
    if (c.hiddenMask > 0) {
      auto mask = QLONumberArray::initWithCount(c.hiddenMask, NumberType::Bool);
      mask->setBoolValue(true, 1);
      view.setHiddenVertices(mask);
      view.setHideSpecialVertices(true);
    }
    if (c.range) {
      view.setLimitNodes(c.limit);
      view.prepareFrame();              // degrees 1, 2, 1: the range is [1, 2]
      view.setMaxFilterProperty(1.5f);  // vertex 1 (degree 2) is outside
    }
    const Image image = look(view, 20);
    EXPECT_EQ(white(pixelAt(image, view, {0, 0, 0})), !c.middleDrawn) << (&c - cases);
    EXPECT_FALSE(white(pixelAt(image, view, {4, 0, 0})) || white(pixelAt(image, view, {-4, 0, 0})))
        << (&c - cases);
    EXPECT_TRUE(white(pixelAt(image, view, {2, 0, 0}))) << (&c - cases);
  }
}

TEST_F(Vertices, ResizeSetsViewportAndAspect) {
  VXLNetworkView view;
  install(view, network(1, {}), {{6, 4, 0}});
  look(view, 30);
  const auto square = project(view, {6, 4, 0});
  const Image image = frame(view, kSize, kSize / 2);
  EXPECT_EQ(view.camera().viewWidth, kSize);
  EXPECT_EQ(view.camera().viewHeight, kSize / 2);
  const auto wide = project(view, {6, 4, 0});
  ASSERT_GT(std::hypot(wide[0] - square[0], wide[1] - square[1]), 10.0);
  EXPECT_FALSE(white(pixelAt(image, view, {6, 4, 0})));
  EXPECT_TRUE(white(image.at(static_cast<int>(square[0]), static_cast<int>(square[1]))));
}

}  // namespace
