// Styled edges on pixels, on both renderers: colours and widths by weight,
// arrow heads on directed networks, and the heads in a vector document.
#include "export_support.h"

namespace {

using namespace gltest;

class EdgeStyle : public OffscreenGL {};

constexpr RenderPath kPaths[] = {RenderPath::Shader, RenderPath::FixedFunction};

std::shared_ptr<QLONetwork> directed(std::uint64_t vertices,
                                     const std::vector<std::array<std::uint64_t, 2>>& edges) {
  NetworkData data;
  data.verticesCount = vertices;
  for (const auto& [from, to] : edges) {
    data.from.push_back(from);
    data.to.push_back(to);
  }
  data.directed = true;
  return QLONetwork::make(std::move(data));
}

// Pixels that are not the white background in a square of `half` pixels
// around the point.
int inkAround(const Image& image, const VXLNetworkView& view, const Vec3d& p, int half) {
  const auto w = project(view, p);
  const int cx = static_cast<int>(w[0]), cy = static_cast<int>(w[1]);
  int n = 0;
  for (int y = cy - half; y <= cy + half; ++y) {
    for (int x = cx - half; x <= cx + half; ++x) n += !white(image.at(x, y));
  }
  return n;
}

TEST_F(EdgeStyle, ColoursAndWidthsFollowWeights) {
  // The light edge above, the heavy one below, both through the middle.
  const std::vector<Vec3d> at = {{-20, 10, 0}, {20, 10, 0}, {-20, -10, 0}, {20, -10, 0}};
  for (RenderPath path : kPaths) {
    SCOPED_TRACE(renderPathName(path));
    VXLNetworkView view;
    install(view, network(4, {{0, 1}, {2, 3}}, {1, 5}), at);
    view.setShowNodes(false);
    view.setEdgesIntensity(1);
    view.setLineWidth(2);
    view.setEdgeColorMode(edge_style::ColourMode::Weight);
    view.setEdgeColorMap(colour::ColorMap::Jet, {});
    view.setEdgeWidthByWeight(true);
    aim(view, 60);
    const Image image = drawWith(view, path);
    // Jet runs from blue (lightest) to red (heaviest).
    const Pixel light = pixelAt(image, view, {0, 10, 0});
    const Pixel heavy = pixelAt(image, view, {0, -10, 0});
    EXPECT_GT(light.b, light.r + 60) << light;
    EXPECT_GT(heavy.r, heavy.b + 60) << heavy;
    // The heavy line is four times as wide: 8 pixels against 2.
    const int lightRows = inkAround(image, view, {0, 10, 0}, 6);
    const int heavyRows = inkAround(image, view, {0, -10, 0}, 6);
    EXPECT_GE(heavyRows, 3 * lightRows) << lightRows << " vs " << heavyRows;
  }
}

TEST_F(EdgeStyle, ArrowHeadsOnDirectedNetworksOnly) {
  const std::vector<Vec3d> at = {{-10, 0, 0}, {10, 0, 0}};
  // Halfway along the head, which ends at the target's sphere (radius 0.7).
  const Vec3d nearTarget{10 - 0.7 - edge_style::kHeadLength / 2, 0, 0};
  for (RenderPath path : kPaths) {
    SCOPED_TRACE(renderPathName(path));
    VXLNetworkView view;
    install(view, directed(2, {{0, 1}}), at);
    EXPECT_TRUE(view.showArrows());
    aim(view, 30);
    const int withHead = inkAround(drawWith(view, path), view, nearTarget, 3);
    view.setShowArrows(false);
    const int lineOnly = inkAround(drawWith(view, path), view, nearTarget, 3);
    EXPECT_GT(withHead, lineOnly + 8) << withHead << " vs " << lineOnly;
    // Nothing at the source's end.
    view.setShowArrows(true);
    const int atSource = inkAround(drawWith(view, path), view, {-nearTarget[0], 0, 0}, 3);
    EXPECT_EQ(atSource, lineOnly);

    // A target drawn three times as large (radius 2.1) moves the head out
    // with its surface, which each renderer works out itself: around 5.9
    // there is a head only then.
    view.network()->setPropertiesOfVertices(
        QLONumberArray::initWithFloats(std::vector<float>{1, 10}), "w");
    const Vec3d nearLargeTarget{10 - 2.1 - edge_style::kHeadLength + 0.5, 0, 0};
    const int unsized = inkAround(drawWith(view, path), view, nearLargeTarget, 3);
    view.setSizeProperty("w");
    EXPECT_GT(inkAround(drawWith(view, path), view, nearLargeTarget, 3), unsized + 8);

    // An undirected network draws no heads, even when asked to.
    install(view, network(2, {{0, 1}}), at);
    EXPECT_FALSE(view.showArrows());
    view.setShowArrows(true);
    EXPECT_EQ(inkAround(drawWith(view, path), view, nearTarget, 3), lineOnly);
  }
}

TEST_F(EdgeStyle, BackToTheDefaultsTheFrameIsAsBefore) {
  // Selected and coloured vertices, weighted edges in four classes.
  const std::vector<Vec3d> at = {{-10, -6, 0}, {10, -6, 2}, {-10, 6, -2}, {10, 6, 0}};
  for (RenderPath path : kPaths) {
    SCOPED_TRACE(renderPathName(path));
    VXLNetworkView view;
    install(view, network(4, {{0, 1}, {1, 3}, {3, 2}, {2, 0}, {0, 3}}, {1, 2, 3, 4, 2.5f}), at);
    view.setColors(vectors({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 0}}));
    view.setSelectedVertices({1});
    aim(view, 30);
    const Image before = drawWith(view, path);
    view.setEdgeColorMode(edge_style::ColourMode::Weight);
    view.setEdgeWidthByWeight(true);
    view.setShowArrows(true);
    const Image styled = drawWith(view, path);
    EXPECT_FALSE(styled.rgba == before.rgba);
    view.setEdgeColorMode(edge_style::ColourMode::Endpoints);
    view.setEdgeWidthByWeight(false);
    EXPECT_TRUE(drawWith(view, path).rgba == before.rgba);
  }
}

class EdgeStyleExport : public ExportFixture {};

TEST_F(EdgeStyleExport, SvgHoldsTheArrowHeads) {
  // Three directed edges without vertices: the background and one triangle
  // per edge.
  install(view, directed(3, {{0, 1}, {1, 2}, {2, 0}}), {{-10, -5, 0}, {10, -5, 0}, {0, 8, 0}});
  view.setShowNodes(false);
  std::string svg = bytesOf(save("arrows.svg", 300, 200).path);
  EXPECT_EQ(count(svg, "<polyline"), 3);
  EXPECT_EQ(count(svg, "<polygon"), 1 + 3);
  view.setShowArrows(false);
  svg = bytesOf(save("lines.svg", 300, 200).path);
  EXPECT_EQ(count(svg, "<polygon"), 1);
}

}  // namespace
