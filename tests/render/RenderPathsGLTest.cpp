// The shader and fixed-function renderers draw the same scene alike, and
// picking answers what is drawn.
#include <functional>

#include "offscreen_gl.h"

namespace {

using namespace gltest;

class RenderPaths : public OffscreenGL {};

// Twelve vertices on a 4 x 3 grid, apart on screen, at several depths, with
// their own colours; edges join neighbours; vertices 2, 5 and 9 selected.
Vec3d gridPoint(std::uint64_t i) {
  return {-6 + 4 * static_cast<double>(i % 4), -4 + 4 * static_cast<double>(i / 4),
          static_cast<double>(i % 3) * 2 - 2};
}

void installGrid(VXLNetworkView& view) {
  std::vector<Vec3d> at, colours;
  std::vector<std::array<std::uint64_t, 2>> edges;
  for (std::uint64_t i = 0; i < 12; ++i) {
    at.push_back(gridPoint(i));
    colours.push_back({0.1 + 0.07 * static_cast<double>(i), 0.9 - 0.06 * static_cast<double>(i),
                       0.3 + 0.05 * static_cast<double>(i % 5)});
    if (i % 4 != 3) edges.push_back({i, i + 1});
    if (i + 4 < 12) edges.push_back({i, i + 4});
  }
  install(view, network(12, edges), at);
  view.setColors(vectors(colours));
  view.setSelectedVertices({2, 5, 9});
}

bool background(const Pixel& p, const Pixel& bg) {
  return near(p, bg, 0);
}

// Pixels drawn (not background) in one image with nothing drawn within a
// pixel of them in the other.
int silhouetteMismatches(const Image& a, const Image& b, const Pixel& bg) {
  int mismatches = 0;
  for (int y = 1; y + 1 < a.height; ++y) {
    for (int x = 1; x + 1 < a.width; ++x) {
      for (const auto& [one, other] : {std::pair{&a, &b}, std::pair{&b, &a}}) {
        if (background(one->at(x, y), bg)) continue;
        bool found = false;
        for (int dy = -1; dy <= 1 && !found; ++dy) {
          for (int dx = -1; dx <= 1 && !found; ++dx) {
            found = !background(other->at(x + dx, y + dy), bg);
          }
        }
        mismatches += !found;
      }
    }
  }
  return mismatches;
}

TEST_F(RenderPaths, BothPathsDrawTheSameScene) {
  struct Case {
    const char* name;
    std::function<void(VXLNetworkView&)> setUp;
    Pixel background;
  };
  const Pixel white{255, 255, 255, 255}, black{0, 0, 0, 255};
  const Case cases[] = {
      {"spheres on white", [](VXLNetworkView&) {}, white},
      {"cubes on black, blended lines",
       [](VXLNetworkView& v) {
         v.setSimpleShapes(true);
         v.setBlackBackground(true);
         v.setBlendLines(true);
       },
       black},
      {"no colours, wide lines, camera text",
       [](VXLNetworkView& v) {
         v.setColors(vectors({}));
         v.setLineWidth(3);
         v.setFInfo(true);
         v.setCameraInfo(true);
       },
       white},
      {"no edges, depth writes off",
       [](VXLNetworkView& v) {
         v.setShowEdges(false);
         v.setVerticesDepthTest(false);
       },
       white},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    VXLNetworkView view;
    installGrid(view);
    c.setUp(view);
    aim(view, 30);
    const Image legacy = drawWith(view, RenderPath::FixedFunction);
    const Image shader = drawWith(view, RenderPath::Shader);
    EXPECT_EQ(silhouetteMismatches(legacy, shader, c.background), 0);
    // The lit colour at each vertex's centre (edges pass behind the spheres'
    // fronts; the shells are translucent over it).
    for (std::uint64_t i = 0; i < 12; ++i) {
      const Vec3d p = gridPoint(i);
      const Pixel a = pixelAt(legacy, view, p), b = pixelAt(shader, view, p);
      EXPECT_TRUE(near(a, b, 6)) << "vertex " << i << ": " << a << " vs " << b;
      EXPECT_FALSE(background(b, c.background)) << "vertex " << i;
      const auto w = project(view, p);
      EXPECT_EQ(view.pickAt(w[0], w[1], 3, 3), i);
    }
    // Along each edge, a quarter of the way from one end (clear of the
    // spheres): the same colour, the ends' colours mixed alike.
    for (std::uint64_t i = 0; i < 12; ++i) {
      for (const std::uint64_t j : {i + 1, i + 4}) {
        if (j >= 12 || (j == i + 1 && i % 4 == 3)) continue;
        const Vec3d from = gridPoint(i), to = gridPoint(j);
        const Vec3d p = {0.75 * from[0] + 0.25 * to[0], 0.75 * from[1] + 0.25 * to[1],
                         0.75 * from[2] + 0.25 * to[2]};
        const Pixel a = pixelAt(legacy, view, p), b = pixelAt(shader, view, p);
        EXPECT_TRUE(near(a, b, 12)) << "edge " << i << "-" << j << ": " << a << " vs " << b;
        EXPECT_EQ(background(b, c.background), !view.showEdges()) << "edge " << i << "-" << j;
      }
    }
  }
}

TEST_F(RenderPaths, PicksAnswerWhatIsDrawn) {
  for (const bool cubes : {false, true}) {
    for (const RenderPath path : {RenderPath::FixedFunction, RenderPath::Shader}) {
      SCOPED_TRACE(std::string(cubes ? "cubes, " : "spheres, ") + renderPathName(path));
      VXLNetworkView view;
      installGrid(view);
      view.setShowEdges(false);
      view.setSimpleShapes(cubes);
      aim(view, 14);  // large shapes, several hidden in part behind others
      const Image image = drawWith(view, path);
      const Pixel white{255, 255, 255, 255};
      int checked = 0;
      for (int y = 1; y + 1 < kSize; y += 3) {
        for (int x = 1; x + 1 < kSize; x += 3) {
          // Only pixels away from a silhouette's border.
          int drawn = 0;
          for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) drawn += !background(image.at(x + dx, y + dy), white);
          }
          if (drawn != 0 && drawn != 9) continue;
          const std::uint64_t picked = view.pickAt(x + 0.5, y + 0.5, 1, 1);
          EXPECT_EQ(picked != VXLNetworkView::kNoVertex, drawn == 9) << x << ", " << y;
          ++checked;
        }
      }
      EXPECT_GT(checked, 3000);
    }
  }
}

}  // namespace
