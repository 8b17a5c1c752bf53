// The legend in a frame: drawn at the bottom left while shown, loaded again
// at a new height, in place for new colours, and freed once replaced.
#include <GL/gl.h>

#include "offscreen_gl.h"
#include "render/VXLLegends.h"

namespace {

using namespace gltest;

constexpr colour::Rgba kBlue{0, 0, 1, 1}, kRed{1, 0, 0, 1};

bool blue(const Pixel& p) {
  return p.b > 150 && p.r < 60 && p.g < 60;
}
bool red(const Pixel& p) {
  return p.r > 150 && p.g < 60 && p.b < 60;
}

// The size of the image defined for a rectangle texture.
TextSize definedSize(unsigned int name) {
  GLint width = 0, height = 0;
  glBindTexture(GL_TEXTURE_RECTANGLE, name);
  glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_WIDTH, &width);
  glGetTexLevelParameteriv(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_HEIGHT, &height);
  glBindTexture(GL_TEXTURE_RECTANGLE, 0);
  return {static_cast<double>(width), static_cast<double>(height)};
}

class LegendFrame : public OffscreenGL {
 protected:
  // A black view with one vertex at the centre and a legend of two blue
  // boxes at height 1 (legends height 2.3 on a view 200 pixels tall).
  void SetUp() override {
    OffscreenGL::SetUp();
    install(view_, network(1, {}), {{0, 0, 0}});
    view_.setBlackBackground(true);
    view_.setFInfo(true);
    aim(view_, 20);
    legend_ = VXLLegends::initWithTitle("", {"low", "high"}, {kBlue, kBlue},
                                        LegendKind::Categorical, scene::Background::Black);
    view_.setLegends(legend_);
    view_.setLegendsHeight(2.3f);
  }

  // The topmost row (from the top) holding a pixel that matches, or -1.
  static int topmost(const Image& image, bool (*test)(const Pixel&)) {
    for (int y = 0; y < image.height; ++y) {
      if (countFromTop(image, test, 0, y, image.width, y + 1) > 0) return y;
    }
    return -1;
  }

  VXLNetworkView view_;
  std::shared_ptr<VXLLegends> legend_;
};

TEST_F(LegendFrame, DrawnAtTheBottomLeftWhileLegendsAreShown) {
  const Image shown = frame(view_);
  EXPECT_GT(countFromTop(shown, blue, 10, 140, 60, 190), 40);
  const int all = countFromTop(shown, blue, 0, 0, kSize, kSize);
  EXPECT_EQ(countFromTop(shown, blue, 10, 140, 60, 190), all);  // 10 pixels in from both edges

  view_.setShowLegends(false);
  EXPECT_EQ(countFromTop(frame(view_), blue, 0, 0, kSize, kSize), 0);
}

TEST_F(LegendFrame, NewHeightLoadsANewImageAndNewColoursReplaceItsPixels) {
  const Image small = frame(view_);
  const unsigned int name = legend_->texName();
  ASSERT_NE(name, 0u);
  const TextSize before = legend_->texSize();
  EXPECT_EQ(definedSize(name), before);

  view_.setLegendsHeight(4.6f);  // twice the height
  const Image large = frame(view_);
  const TextSize after = legend_->texSize();
  EXPECT_GT(after.height, 1.8 * before.height);
  EXPECT_EQ(definedSize(legend_->texName()), after);
  EXPECT_LT(topmost(large, blue), topmost(small, blue) - 10);     // reaches higher up
  EXPECT_EQ(countFromTop(large, blue, 0, 191, kSize, kSize), 0);  // 10 above the bottom

  legend_->setColors({kRed, kRed});  // same size: the pixels are replaced in place
  const Image recoloured = frame(view_);
  EXPECT_EQ(legend_->texSize(), after);
  EXPECT_EQ(countFromTop(recoloured, blue, 0, 0, kSize, kSize), 0);
  EXPECT_EQ(countFromTop(recoloured, red, 0, 0, kSize, kSize),
            countFromTop(large, blue, 0, 0, kSize, kSize));
}

TEST_F(LegendFrame, AReplacedLegendLosesItsTextureAtTheNextFrame) {
  frame(view_);
  ASSERT_NE(legend_->texName(), 0u);
  auto next = VXLLegends::initWithTitle("", {"x"}, {kRed}, LegendKind::Categorical,
                                        scene::Background::Black);
  view_.setLegends(next);
  const Image image = frame(view_);
  EXPECT_EQ(legend_->texName(), 0u);
  EXPECT_TRUE(legend_->requiresUpdate());  // drawn again, it would be loaded again
  EXPECT_EQ(countFromTop(image, blue, 0, 0, kSize, kSize), 0);
  EXPECT_GT(countFromTop(image, red, 10, 140, 60, 190), 10);
}

}  // namespace
