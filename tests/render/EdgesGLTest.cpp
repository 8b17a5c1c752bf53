// The edge pass on pixels: which edges are drawn, and the colour a line
// leaves (edges are unlit, so pixels follow the colour rule and the blend).
#include <functional>

#include "offscreen_gl.h"
#include "render/scenecolours.h"

namespace {

using namespace gltest;

class Edges : public OffscreenGL {};

// The pixel at the origin shows only the line between these two.
const std::vector<Vec3d> kEnds = {{-20, 0, 0}, {20, 0, 0}};

struct Rgba {
  double r, g, b, a;
};

enum class Blend { Additive, Over, OverKeepAlpha };

Rgba blendOnce(const Rgba& dst, const scene::Rgba& src, Blend blend) {
  const double a = src.a;
  const double keep = blend == Blend::Additive ? 1.0 : 1.0 - a;
  const double alpha = blend == Blend::OverKeepAlpha ? dst.a : a * a + dst.a * keep;
  auto mix = [&](double s, double d) { return std::min(1.0, s * a + d * keep); };
  return {mix(src.r, dst.r), mix(src.g, dst.g), mix(src.b, dst.b), std::min(1.0, alpha)};
}

TEST_F(Edges, LineColourAndBlending) {
  struct Case {
    bool black, blendLines, colours, selected, depthWrites;
    Blend blend;
  };
  // Two coincident edges: the second line blends over the first, so the
  // blend functions show; with depth writes on it fails the depth test.
  const Case cases[] = {
      {false, false, true, true, false, Blend::OverKeepAlpha},
      {false, true, true, false, false, Blend::Over},
      {false, true, true, false, true, Blend::Over},
      {true, true, true, false, false, Blend::Additive},
      {true, false, false, true, false, Blend::Additive},
  };
  const scene::Rgb colour{0.2f, 0.7f, 0.4f};
  const float intensity = 0.45f;
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(2, {{0, 1}, {0, 1}}), kEnds);
    view.setBlackBackground(c.black);
    view.setBlendLines(c.blendLines);
    view.setEdgesIntensity(intensity);
    view.setEdgesDepthTest(c.depthWrites);
    if (c.colours) view.setColors(vectors({{0.2, 0.7, 0.4}, {0.2, 0.7, 0.4}}));
    if (c.selected) view.setSelectedVertices({0, 1});
    prepare(view);
    const Pixel got = pixelAt(frame(view), view, {0, 0, 0});

    const scene::Rgba line = scene::edgeEndpointColour(
        c.colours ? std::optional(colour) : std::nullopt,
        c.selected ? scene::Selection::Selected : scene::Selection::NotSelected,
        c.blendLines ? scene::LineBlending::On : scene::LineBlending::Off,
        c.black ? scene::Background::Black : scene::Background::White, intensity);
    const double bg = c.black ? 0 : 1;
    Rgba expected{bg, bg, bg, 1};
    for (int pass = 0; pass < (c.depthWrites ? 1 : 2); ++pass) {
      expected = blendOnce(expected, line, c.blend);
    }
    const Pixel want{byte(expected.r), byte(expected.g), byte(expected.b), byte(expected.a)};
    EXPECT_TRUE(near(got, want)) << "case " << (&c - cases) << ": " << got << " vs " << want;
  }
}

TEST_F(Edges, WhichEdgesAreDrawn) {
  struct Case {
    const char* name;
    std::vector<float> weights;  // of the edge 0-1 and of an edge 2-3 out of the way
    std::function<void(VXLNetworkView&)> setUp;
    bool drawn;
  };
  auto nothing = [](VXLNetworkView&) {};
  auto threshold = [](VXLNetworkView& view) { view.setWeightMinThreshold(0.5f); };
  // Vertex `out` gets filter value 5, the others 1; the range is [0, 3].
  auto range = [](std::uint64_t out, bool limitEdges) {
    return [out, limitEdges](VXLNetworkView& view) {
      std::vector<float> values(4, 1.0f);
      values[out] = 5;
      view.network()->setPropertiesOfVertices(QLONumberArray::initWithFloats(values), "Level");
      view.setFilterPropertyName("Level");
      view.prepareFrame();
      view.setMinFilterProperty(0);
      view.setMaxFilterProperty(3);
      view.setLimitNodes(true);
      view.setLimitEdges(limitEdges);
    };
  };
  // Hides vertex `which` through a mask of `count` entries.
  auto hide = [](std::uint64_t which, std::uint64_t count, bool hiding) {
    return [=](VXLNetworkView& view) {
      auto mask = QLONumberArray::initWithCount(count, NumberType::Bool);
      mask->setBoolValue(true, which);
      view.setHiddenVertices(mask);
      view.setHideSpecialVertices(hiding);
    };
  };
  const Case cases[] = {
      {"zero weight", {0, 1}, nothing, false},
      {"weight cut by the threshold", {0.3f, 1}, threshold, false},
      {"second end outside the filter range", {}, range(1, true), false},
      {"filter range not applied to edges", {}, range(1, false), true},
      {"second end hidden", {}, hide(1, 4, true), false},
      {"edges off", {}, [](VXLNetworkView& view) { view.setShowEdges(false); }, false},
      {"drawn for picking", {}, [](VXLNetworkView& view) { view.setSelectionMode(true); }, false},
  };
  for (const Case& c : cases) {
    VXLNetworkView view;
    install(view, network(4, {{0, 1}, {2, 3}}, c.weights),
            {kEnds[0], kEnds[1], {0, 30, 0}, {5, 30, 0}});
    c.setUp(view);
    prepare(view);
    EXPECT_EQ(!white(pixelAt(frame(view), view, {0, 0, 0})), c.drawn) << c.name;
  }
}

TEST_F(Edges, EndsAreScaledAbsolutePositions) {
  VXLNetworkView view;
  install(view, network(2, {{0, 1}}), {{-20, 5, 0}, {20, 5, 0}});
  view.setShowNodes(false);
  view.setScale(2);
  prepare(view);
  const Image image = frame(view);
  EXPECT_FALSE(white(pixelAt(image, view, {0, 10, 0})));
  EXPECT_TRUE(white(pixelAt(image, view, {0, 5, 0})));
}

}  // namespace
