// Vertices sized by a property, drawn by both renderers and picked.
#include "offscreen_gl.h"

namespace {

using namespace gltest;

class VertexSizes : public OffscreenGL {
 protected:
  // Two vertices apart on the x axis, property "w" 1 on the left and 10 on the
  // right, the right one selected; seen from (0, 0, 20).
  void installPair(VXLNetworkView& view) {
    auto net = network(2, {});
    net->setPropertiesOfVertices(QLONumberArray::initWithFloats(std::vector<float>{1, 10}), "w");
    install(view, net, {{-5, 0, 0}, {5, 0, 0}});
    view.setSelectedVertices({1});
    aim(view, 20);
  }
  // Pixels off the white background in the left and in the right half.
  static std::array<int, 2> covered(const Image& image) {
    auto drawn = [](const Pixel& p) { return !white(p); };
    return {countFromTop(image, drawn, 0, 0, kSize / 2, kSize),
            countFromTop(image, drawn, kSize / 2, 0, kSize, kSize)};
  }
};

TEST_F(VertexSizes, LargerVertexCoversMorePixelsOnBothPaths) {
  for (const RenderPath path : {RenderPath::Shader, RenderPath::FixedFunction}) {
    for (const bool cubes : {false, true}) {
      const std::string name = renderPathName(path) + (cubes ? " cubes" : " spheres");
      VXLNetworkView view;
      installPair(view);
      view.setSimpleShapes(cubes);
      const auto standard = covered(drawWith(view, path));
      ASSERT_GT(standard[0], 20) << name;

      view.setSizeProperty("w");  // range 0.5 .. 3 by default
      const auto sized = covered(drawWith(view, path));
      EXPECT_LT(sized[0], standard[0] * 0.5) << name;
      EXPECT_GT(sized[1], standard[1] * 4) << name;
    }
  }
}

TEST_F(VertexSizes, PickHitsTheEnlargedVertexAndItsShell) {
  VXLNetworkView view;
  installPair(view);
  frame(view);
  // Above the right vertex: 1.5 is beyond its standard shell (0.8) but
  // within four times its size (2.8); 3 is between that and its enlarged
  // shell (3.2).
  const auto pickAt = [&](double dy) {
    const auto w = project(view, {5, dy, 0});
    return view.pickAt(w[0], w[1], 1, 1);
  };
  EXPECT_EQ(pickAt(1.5), VXLNetworkView::kNoVertex);
  view.setSizeRange({0.5f, 4});
  view.setSizeProperty("w");
  EXPECT_EQ(pickAt(1.5), 1u);
  EXPECT_EQ(pickAt(3), 1u) << "on the selected vertex's shell";
  view.resetSelection();
  EXPECT_EQ(pickAt(3), VXLNetworkView::kNoVertex);
}

}  // namespace
