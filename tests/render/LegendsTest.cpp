// The legend without GL: frame sizes and when they are measured again, the
// painted image, and the view's rules for the legend's height and colours.
#include <gtest/gtest.h>

#include <QImage>

#include "../support/gui_application.h"
#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"

namespace {

using scene::Background;

constexpr colour::Rgba kRed{1, 0, 0, 1}, kGreen{0, 1, 0, 1}, kBlue{0, 0, 1, 1};

std::shared_ptr<VXLLegends> legend(std::vector<std::string> labels,
                                   std::vector<colour::Rgba> colors = {kRed},
                                   LegendKind kind = LegendKind::Categorical,
                                   const std::string& title = "") {
  return VXLLegends::initWithTitle(title, std::move(labels), std::move(colors), kind,
                                   Background::White);
}

class Legend : public ::testing::Test {
 protected:
  void SetUp() override { testing_support::ensureGuiApplication(); }
};

TEST_F(Legend, FrameHasOneRowPerLabelBeyondTheFirstWithinTheMargins) {
  const double h = 2.5;
  auto sized = [h](std::shared_ptr<VXLLegends> l) {
    l->setHeight(h);
    return l->frameSize();
  };
  const TextSize one = sized(legend({"x1"}));
  EXPECT_DOUBLE_EQ(one.height, 20 * h);  // no rows: the two vertical margins
  const double row = sized(legend({"x1", "x2"})).height - one.height;
  EXPECT_GT(row, 1.2 * 5 * h);  // 1.2 label heights
  // Empty labels take their rows too.
  std::vector<std::string> sparse(22);
  sparse[0] = "x1", sparse[10] = "x2", sparse[21] = "x3";
  EXPECT_NEAR(sized(legend(sparse, {kRed, kBlue}, LegendKind::Continuous)).height,
              20 * h + 21 * row, 1e-9);
  // The widest label sets the width.
  EXPECT_DOUBLE_EQ(sized(legend({"x1", "a much wider label"})).width,
                   sized(legend({"a much wider label"})).width);
  // Set margins count in heights too; new margins or a new height measure again.
  auto m = legend({"x1"});
  m->frameSize();
  m->setMarginSize({6, 20});
  EXPECT_DOUBLE_EQ(m->frameSize().height, 40);
  m->setHeight(2);
  EXPECT_DOUBLE_EQ(m->frameSize().height, 80);
}

// The image of a legend at a readable scale, read with y upwards from the
// bottom as the legend is laid out.
class LegendImage : public Legend {
 protected:
  static constexpr double kHeight = 4;
  void paint(VXLLegends& l) {
    l.setHeight(kHeight);
    frame_ = l.frameSize();
    image_ = l.makeImage();
    ASSERT_EQ(image_.size(), QSize(static_cast<int>(std::ceil(frame_.width)),
                                   static_cast<int>(std::ceil(frame_.height))));
  }
  QColor at(double x, double yUp) const {
    return image_.pixelColor(static_cast<int>(x), image_.height() - 1 - static_cast<int>(yUp));
  }
  // The height of one row, from the frame: rows x 1.2 label heights + margins.
  double rowStep(std::size_t labels) const {
    return (frame_.height - 20 * kHeight) / static_cast<double>(labels - 1);
  }
  double rowY(std::size_t i, std::size_t labels) const {
    return 10 * kHeight + static_cast<double>(i) * rowStep(labels);
  }
  // With no title and labels of one width, the boxes start at the margin.
  static double swatchCentre() { return 6 * kHeight + 7.5 * kHeight; }
  // Pixels darker than mid grey in the band of row i, right of the boxes.
  int inkInRow(std::size_t i, std::size_t labels) const {
    int count = 0;
    const double y = rowY(i, labels), half = 0.4 * rowStep(labels);
    for (double yy = y - half; yy < y + half; ++yy) {
      for (double x = 25 * kHeight; x < frame_.width; ++x) {
        const QColor c = at(x, yy);
        count += c.alpha() > 128 && c.value() < 128;
      }
    }
    return count;
  }

  TextSize frame_;
  QImage image_;
};

TEST_F(LegendImage, BackgroundOnlyWhenItsColourIsVisible) {
  auto l = legend({"x"});
  l->setBackgroundColor({0.2f, 0.4f, 0.6f, 0.8f});
  paint(*l);
  // The left margin holds nothing but the background.
  auto marginAlpha = [this] {
    int most = 0;
    for (double y = 2 * kHeight; y < frame_.height - 2 * kHeight; ++y) {
      for (double x = 1 * kHeight; x < 5 * kHeight; ++x) most = std::max(most, at(x, y).alpha());
    }
    return most;
  };
  EXPECT_NEAR(at(3 * kHeight, frame_.height / 2).blueF(), 0.6, 0.05);
  l->setBackgroundColor({0.2f, 0.4f, 0.6f, 0.0f});
  paint(*l);
  EXPECT_EQ(marginAlpha(), 0);
}

TEST_F(LegendImage, BoxesAndLabelsRunUpwardsFromTheFirstEntry) {
  auto l = legend({"xa", "", "xc"}, {kRed, kGreen, kBlue});
  paint(*l);
  const std::vector<QColor> expected = {Qt::red, Qt::green, Qt::blue};
  for (std::size_t i = 0; i < 3; ++i) {
    const QColor c = at(swatchCentre(), rowY(i, 3));
    EXPECT_EQ(c.rgba(), expected[i].rgba()) << "row " << i;
  }
  // An empty label leaves its row blank; the others are written in black.
  EXPECT_GT(inkInRow(0, 3), 20);
  EXPECT_EQ(inkInRow(1, 3), 0);
  EXPECT_GT(inkInRow(2, 3), 20);
}

TEST_F(LegendImage, BarRunsThroughTheColoursFromTheBottom) {
  auto l = legend({"x0", "", "", "", "x1"}, {kRed, kGreen, kBlue}, LegendKind::Continuous);
  paint(*l);
  const double bottom = 10 * kHeight, top = frame_.height - 10 * kHeight;
  EXPECT_GT(at(swatchCentre(), bottom + 1.5 * kHeight).red(), 200);
  EXPECT_GT(at(swatchCentre(), (bottom + top) / 2 + 1).green(), 200);
  EXPECT_GT(at(swatchCentre(), top - 1.5 * kHeight).blue(), 200);
}

TEST_F(LegendImage, TicksOnlyAtLabelledRowsThatDifferFromTheEnds) {
  struct Case {
    std::vector<std::string> labels;
    std::vector<bool> ticked;  // interior rows, from row 1
  };
  const std::vector<Case> cases = {
      {{"xa", "xb", "", "xc", "xd"}, {true, false, true}},
      {{"", "xb", "", "xc", ""}, {true, false, true}},
      {{"xa", "xa", "xm", "xd", "xd"}, {false, true, false}},  // same text as an end
  };
  for (const Case& c : cases) {
    // One colour all along the bar, so a tick shows as a darker line.
    auto l = legend(c.labels, {kGreen, kGreen}, LegendKind::Continuous);
    paint(*l);
    const std::size_t n = c.labels.size();
    for (std::size_t i = 1; i + 1 < n; ++i) {
      const int onRow = at(swatchCentre(), rowY(i, n)).green();
      const int between = at(swatchCentre(), rowY(i, n) + 0.5 * rowStep(n)).green();
      EXPECT_EQ(between, 255) << "row " << i;
      EXPECT_EQ(onRow < 200, c.ticked[i - 1]) << c.labels[0] << " row " << i;
    }
  }
}

// The view keeps the legend's height at legendsHeight x view height / 460
// and switches its colours with the background.
TEST_F(Legend, ViewScalesItsLegendAndSwitchesItsColours) {
  VXLNetworkView view;
  VXLCamera camera = view.camera();
  camera.viewHeight = 920;
  view.setCamera(camera);
  auto first = legend({"a"});
  view.setLegends(first);
  EXPECT_DOUBLE_EQ(first->height(), 2.0);
  view.setLegendsHeight(1.5f);
  EXPECT_DOUBLE_EQ(first->height(), 3.0);
  auto second = legend({"b"});
  view.setLegends(second);
  EXPECT_DOUBLE_EQ(second->height(), 3.0);

  view.setBlackBackground(true);
  EXPECT_EQ(second->textColor(), (colour::Rgba{1, 1, 1, 1}));
  EXPECT_EQ(first->textColor(), (colour::Rgba{0, 0, 0, 1}));  // no longer the view's
  view.setLegends(nullptr);
  view.setLegendsHeight(2.0f);  // nothing to scale
}

}  // namespace
