// The text overlays without GL: GLString's frame and image, the vertex
// details and when the camera text is kept.
#include <gtest/gtest.h>

#include <QImage>
#include <functional>

#include "../support/gui_application.h"
#include "../support/networks.h"
#include "render/GLString.h"
#include "render/VXLNetworkView.h"

namespace {

class GLStringImage : public ::testing::Test {
 protected:
  void SetUp() override { testing_support::ensureGuiApplication(); }
};

TEST_F(GLStringImage, FrameIsTheTextSizePlusTwiceTheMarginsOrTheStaticFrame) {
  GLString empty("");
  EXPECT_EQ(empty.makeImage().size(), QSize(8, 4));
  EXPECT_EQ(empty.frameSize(), (TextSize{8, 4}));

  GLString shortText("Hi"), twoLines("Hi\nHi");
  shortText.makeImage();
  twoLines.makeImage();
  const TextSize before = shortText.frameSize();
  EXPECT_GT(twoLines.frameSize().height, before.height + 5);
  // New margins let the frame follow again, grown by twice the difference.
  shortText.setMargins(10, 5);
  shortText.makeImage();
  EXPECT_EQ(shortText.frameSize(), (TextSize{before.width + 12, before.height + 6}));

  // A static frame stays until the frame is made dynamic again.
  shortText.useStaticFrame({50, 20});
  shortText.setString("A much longer text than fifty pixels");
  shortText.setMargins(1, 1);
  EXPECT_EQ(shortText.makeImage().size(), QSize(50, 20));
  EXPECT_EQ(shortText.frameSize(), (TextSize{50, 20}));
  shortText.useDynamicFrame();
  shortText.makeImage();
  EXPECT_GT(shortText.frameSize().width, 50);
}

void forEachPixel(const QImage& image, const std::function<void(int, int, QRgb)>& visit) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) visit(x, y, image.pixel(x, y));
  }
}

TEST_F(GLStringImage, BoxAndBorderAreDrawnPremultipliedOnlyWhenTheirAlphaIsNotZero) {
  const scene::Rgba grey{0.5f, 0.5f, 0.5f, 0.5f}, none{1, 1, 1, 0};
  struct Case {
    scene::Rgba box, border;
    bool boxDrawn;
    std::optional<bool> borderDrawn;  // a box alone may reach the edge
  };
  for (const Case& c : {Case{none, none, false, false}, Case{grey, none, true, std::nullopt},
                        Case{none, grey, false, true}}) {
    GLString text(" ", {}, GLString::kWhite, c.box, c.border);  // no glyph inside the box
    text.setMargins(20, 10);
    const QImage image = text.makeImage();
    int boxPixels = 0, borderPixels = 0;  // inner, and outermost ring, pixels with any alpha
    forEachPixel(image, [&](int x, int y, QRgb p) {
      EXPECT_LE(std::max({qRed(p), qGreen(p), qBlue(p)}), qAlpha(p));
      if (qAlpha(p) == 0) return;
      borderPixels += x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1;
      boxPixels += x > 4 && y > 4 && x < image.width() - 5 && y < image.height() - 5;
    });
    EXPECT_TRUE(c.boxDrawn ? boxPixels > 100 : boxPixels == 0) << boxPixels;
    if (c.borderDrawn) {
      EXPECT_TRUE(*c.borderDrawn ? borderPixels > 20 : borderPixels == 0) << borderPixels;
    }
  }
}

std::shared_ptr<QLONetwork> detailsNetwork() {
  auto texts = [](std::vector<std::string> values) {
    return std::make_shared<TextList>(std::move(values));
  };
  auto numbers = [](std::vector<double> values) { return QLONumberArray::initWithDoubles(values); };
  const auto vectors =
      testing_support::vectorArray({{0, 0, 0}, {1, 2, 3}, {0, 0, 0}}, Precision::Double);
  return testing_support::makeNetwork(
      3, {{0, 1}, {1, 2}}, {}, testing_support::Directed::No,
      {
          {"Name", texts({"alpha", "beta", "gamma"})},
          {"b_score", numbers({0, 0.123456, 0})},
          {"Zeta", numbers({0, 12345, 0})},
          {"a_label", texts({"", "one\ntwo", ""})},
          {"Position", vectors},
          {"Color", vectors},
          {"vec", vectors},
          {"k", texts({"", std::string(30, 'x'), std::string(31, 'y')})},
      });
}

TEST(VertexDetails, SelectingAVertexShowsItsDetails) {
  VXLNetworkView view;
  view.setNetwork(detailsNetwork());
  EXPECT_EQ(view.vertexInfoString(), "");
  view.selectVertexWithIndex(0);
  const std::string details = view.vertexInfoString();
  EXPECT_EQ(details.rfind("Name: alpha (0)\nDegree: 1.00", 0), 0u);
  view.selectVertexWithIndex(7);  // out of range: the details stay
  EXPECT_EQ(view.vertexInfoString(), details);
}

TEST(CameraText, KeptOnlyForAnUnchangedCameraAndAnAllZeroWorldRotation) {
  const VXLCamera camera;
  const Rotation zero{0, 0, 0, 0};
  EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(std::nullopt, camera, zero));
  EXPECT_TRUE(VXLNetworkView::cameraTextCurrent(camera, camera, zero));
  EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(camera, camera, Rotation{0, 0, 0, 1}));
  const std::vector<std::function<void(VXLCamera&)>> changes = {
      [](VXLCamera& c) { c.position[2] = 10; }, [](VXLCamera& c) { c.viewHeight = 5; }};
  for (std::size_t i = 0; i < changes.size(); ++i) {
    VXLCamera changed = camera;
    changes[i](changed);
    EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(camera, changed, zero)) << "change " << i;
  }
}

}  // namespace
