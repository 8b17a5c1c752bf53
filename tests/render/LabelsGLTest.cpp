// Vertex labels in exported pictures and documents: where placeLabels puts
// them, once, on either background, whole or in tiles, and as text in SVG.
#include <algorithm>

#include "export_support.h"
#include "render/labelimage.h"

namespace {

using namespace gltest;

class Labels : public ExportFixture {
 protected:
  void SetUp() override {
    ExportFixture::SetUp();
    ASSERT_TRUE(view.network()->setPropertiesOfVertices(
        std::make_shared<TextList>(TextList{"Alpha", "Omega"}), "Name"));
  }
  QImage picture(const std::string& name) {
    const ExportReport report = save(name, 300, 200);
    EXPECT_TRUE(report.written) << report.error;
    return load(report.path).convertToFormat(QImage::Format_RGB32);
  }
};

int grey(QRgb p) {
  return qGray(p);
}

// Pixels differing by more than 8 in a channel, inside and outside `boxes`.
std::array<int, 2> changes(const QImage& a, const QImage& b, const std::vector<QRect>& boxes) {
  std::array<int, 2> n{0, 0};
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      const bool differs = std::abs(qRed(p) - qRed(q)) > 8 || std::abs(qGreen(p) - qGreen(q)) > 8 ||
                           std::abs(qBlue(p) - qBlue(q)) > 8;
      const bool inside =
          std::any_of(boxes.begin(), boxes.end(), [&](const QRect& r) { return r.contains(x, y); });
      n[inside ? 0 : 1] += differs;
    }
  }
  return n;
}

TEST_F(Labels, PicturesShowThemInTheirBoxesOnEitherBackground) {
  for (const bool black : {false, true}) {
    SCOPED_TRACE(black ? "black" : "white");
    view.setBlackBackground(black);
    view.setShowLabels(LabelMode::None);
    const QImage bare = picture("bare.png");
    view.setShowLabels(LabelMode::All);
    const VXLNetworkView::Labels labels = view.placedLabels(300, 200);
    ASSERT_EQ(labels.texts, (std::vector<std::string>{"Alpha", "Omega"}));
    std::vector<QRect> boxes;
    for (const PlacedLabel& p : labels.placed) {
      boxes.push_back(QRectF(p.x, p.y, p.width, p.height).toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    const QImage whole = picture("whole.png");
    const auto [inside, outside] = changes(whole, bare, boxes);
    EXPECT_GT(inside, 40);
    EXPECT_EQ(outside, 0);
    // The text contrasts with the background: dark on white, light on black.
    int darkest = 255, lightest = 0;
    for (int y = boxes[1].top(); y <= boxes[1].bottom(); ++y) {
      for (int x = boxes[1].left(); x <= boxes[1].right(); ++x) {
        darkest = std::min(darkest, grey(whole.pixel(x, y)));
        lightest = std::max(lightest, grey(whole.pixel(x, y)));
      }
    }
    EXPECT_TRUE(black ? lightest > 200 : darkest < 60) << darkest << " " << lightest;

    // Drawn in tiles, each label appears once, where it does in the whole.
    export_gl::setMaxTileSide(64);
    const QImage tiled = picture("tiled.png");
    export_gl::setMaxTileSide(0);
    EXPECT_LE(changes(tiled, whole, {})[1], 12);
  }
}

TEST_F(Labels, BoxesClearTheirVertexAtItsSize) {
  const double weights[] = {8, 1};
  ASSERT_TRUE(
      view.network()->setPropertiesOfVertices(QLONumberArray::initWithDoubles(weights), "Weight"));
  view.setSizeProperty("Weight");
  view.setSizeRange({1, 6});  // the red vertex six times the standard size
  const QImage bare = picture("bare.png");
  view.setShowLabels(LabelMode::All);
  const VXLNetworkView::Labels labels = view.placedLabels(300, 200);
  ASSERT_EQ(labels.texts.front(), "Alpha");
  const PlacedLabel& box = labels.placed.front();
  int red = 0;
  for (int y = static_cast<int>(box.y); y < static_cast<int>(box.y + box.height); ++y) {
    for (int x = static_cast<int>(box.x); x < static_cast<int>(box.x + box.width); ++x) {
      red += dominant(bare.pixelColor(x, y), 0);
    }
  }
  EXPECT_EQ(red, 0) << "the label lies over its vertex";
}

TEST_F(Labels, TextsComeFromTheChosenPropertyElseNameElseNumbers) {
  view.setShowLabels(LabelMode::All);
  const double weights[] = {1.5, -2};
  ASSERT_TRUE(
      view.network()->setPropertiesOfVertices(QLONumberArray::initWithDoubles(weights), "Weight"));
  for (const auto& [property, texts] : {std::pair{"Weight", std::vector<std::string>{"1.5", "-2"}},
                                        {"Missing", {"Alpha", "Omega"}},
                                        {"", {"Alpha", "Omega"}}}) {
    SCOPED_TRACE(property);
    view.setLabelProperty(property);
    EXPECT_EQ(view.placedLabels(300, 200).texts, texts);
  }
  install(view, network(2, {{0, 1}}), {kUpperLeft, kLowerRight});  // no Name
  EXPECT_EQ(view.placedLabels(300, 200).texts, (std::vector<std::string>{"0", "1"}));
}

TEST_F(Labels, GrowInPicturesTallerThanTheReference) {
  view.setShowLabels(LabelMode::All);
  const VXLNetworkView::Labels standard = view.placedLabels(300, 1000);
  const VXLNetworkView::Labels tall = view.placedLabels(300, 2000);
  ASSERT_EQ(standard.placed.size(), 2u);
  ASSERT_EQ(tall.placed.size(), 2u);
  EXPECT_EQ(standard.pixelSize, labels::kPixelSize);
  EXPECT_EQ(tall.pixelSize, 2 * labels::kPixelSize);
  EXPECT_NEAR(tall.placed[1].height / standard.placed[1].height, 2, 0.15);
  EXPECT_NEAR(tall.placed[1].width / standard.placed[1].width, 2, 0.15);
  // Vector documents carry the size too.
  const ExportReport report = save("tall.svg", 300, 2000);
  ASSERT_TRUE(report.written) << report.error;
  EXPECT_NE(bytesOf(report.path).find("font-size=\"24\""), std::string::npos);
}

TEST_F(Labels, SvgHoldsTheLabelsOfTheMode) {
  view.setSelectedVertices({1});
  for (const auto& [mode, alpha, omega] : {std::tuple{LabelMode::All, true, true},
                                           {LabelMode::Selected, false, true},
                                           {LabelMode::None, false, false}}) {
    SCOPED_TRACE(labelModeName(mode));
    view.setShowLabels(mode);
    const ExportReport report = save("labels.svg", 300, 200);
    ASSERT_TRUE(report.written) << report.error;
    const std::string svg = bytesOf(report.path);
    EXPECT_EQ(svg.find(">Alpha<") != std::string::npos, alpha);
    EXPECT_EQ(svg.find(">Omega<") != std::string::npos, omega);
  }
}

}  // namespace
