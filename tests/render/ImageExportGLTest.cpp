// Raster export: each writer, the picture's orientation, background and
// content, tiles, the frame on screen, and failures that keep an earlier file.
#include <GL/gl.h>

#include <QImageReader>

#include "export_support.h"
#include "render/VXLLegends.h"
#include "render/vectorexport.h"

namespace {

using namespace gltest;

class ImageExport : public ExportFixture {};

// How many pixels differ from `reference` (white when none) in any channel
// by more than `tolerance`.
int differing(const QImage& picture, const QImage* reference = nullptr, int tolerance = 24) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb p = picture.pixel(x, y),
                 r = reference ? reference->pixel(x, y) : qRgb(255, 255, 255);
      count += std::abs(qRed(p) - qRed(r)) > tolerance ||
               std::abs(qGreen(p) - qGreen(r)) > tolerance ||
               std::abs(qBlue(p) - qBlue(r)) > tolerance;
    }
  }
  return count;
}

TEST_F(ImageExport, EachWriterGivesItsFormatAtTheAskedSize) {
  for (const auto& [name, format] :
       {std::pair{"a.png", "png"}, {"c.tiff", "tiff"}, {"f.gif", "gif"}, {"g.jpg", "jpeg"}}) {
    SCOPED_TRACE(name);
    const ExportReport report = save(name, 150, 100);
    ASSERT_TRUE(report.written) << report.error;
    QImageReader reader(QString::fromStdString(report.path.string()));
    reader.setDecideFormatFromContent(true);
    EXPECT_EQ(reader.format().toStdString(), format);
    const QImage picture = reader.read();
    ASSERT_EQ(picture.size(), QSize(150, 100));
    // The first row is the top: red above, blue below (lossy formats keep the hue).
    EXPECT_TRUE(dominant(colourAt(picture, kUpperLeft), 0));
    EXPECT_TRUE(dominant(colourAt(picture, kLowerRight), 2));
  }
}

TEST_F(ImageExport, BackgroundIsTransparentOnlyWhenAsked) {
  for (const auto& [black, transparent, want] :
       {std::tuple{false, false, qRgba(255, 255, 255, 255)},
        {false, true, qRgba(255, 255, 255, 0)},
        {true, false, qRgba(0, 0, 0, 255)}}) {
    SCOPED_TRACE(std::string(black ? "black" : "white") + (transparent ? " transparent" : ""));
    view.setBlackBackground(black);
    view.setTransparentBackground(transparent);
    const ExportReport report = save("bg.png", 120, 90);
    ASSERT_TRUE(report.written) << report.error;
    const QImage file = load(report.path);
    EXPECT_EQ(file.hasAlphaChannel(), transparent);
    const QImage picture = file.convertToFormat(QImage::Format_ARGB32);
    const QRgb corner = picture.pixel(0, 0);
    EXPECT_EQ(qAlpha(corner) ? corner : 0u, qAlpha(want) ? want : 0u);
    EXPECT_EQ(colourAt(picture, kUpperLeft).alpha(), 255);
  }
}

TEST_F(ImageExport, TilesAndTheViewsOwnContextGiveThePictureDrawnWhole) {
  view.setFInfo(true);
  view.setGeneralInfo(true);  // a text centred in the whole picture
  view.setVertexInfo(false);
  const QImage a = load(save("whole.png", 300, 200).path);

  // Without an off-screen context the view's own context draws it, and
  // keeps its viewport for the frames on screen.
  export_gl::setOffscreenContexts(export_gl::OffscreenContexts::Refused);
  const ExportReport own = save("own.png", 300, 200);
  export_gl::setOffscreenContexts(export_gl::OffscreenContexts::Allowed);
  ASSERT_TRUE(own.written) << own.error;
  EXPECT_TRUE(own.ownContext);
  const QImage ownPicture = load(own.path);
  ASSERT_EQ(ownPicture.size(), a.size());
  EXPECT_LE(differing(a, &ownPicture, 8), 30);
  GLint viewport[4] = {0, 0, 0, 0};
  glGetIntegerv(GL_VIEWPORT, viewport);
  EXPECT_EQ(viewport[2], kSize);

  export_gl::setMaxTileSide(64);
  const ExportReport tiled = save("tiled.png", 300, 200);
  EXPECT_EQ(tiled.tiles, 5 * 4);
  const QImage b = load(tiled.path);
  ASSERT_EQ(a.size(), b.size());
  EXPECT_LE(differing(a, &b, 8), 30);
  // The comparison saw the text: without it the picture is another.
  view.setFInfo(false);
  const QImage bare = load(save("bare.png", 300, 200).path);
  EXPECT_GT(differing(a), differing(bare) + 50);
}

TEST_F(ImageExport, OverlaysReachAPictureWiderThanAViewportMayBe) {
  GLint limit[2] = {0, 0};
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, limit);
  if (limit[0] > 32768) GTEST_SKIP() << "a picture wider than " << limit[0] << " is too large";
  const int W = limit[0] + 100, H = 200;
  export_gl::setMaxTileSide(4096);
  view.setFInfo(true);
  view.setGeneralInfo(true);  // centred
  view.setCameraInfo(true);   // top right
  view.setVertexInfo(false);
  view.setLegends(VXLLegends::initWithTitle("", {"low", "high"}, {{0, 0, 1, 1}, {0, 0, 1, 1}},
                                            LegendKind::Categorical, scene::Background::White));
  view.setLegendsHeight(4.6f);  // bottom left
  const ExportReport report = save("wide.png", W, H);
  ASSERT_TRUE(report.written) << report.error;
  EXPECT_GT(report.tiles, 1);
  const QImage shown = load(report.path);
  view.setFInfo(false);
  view.setShowLegends(false);  // a picture without texts still shows its legend
  const QImage bare = load(save("wide-bare.png", W, H).path);
  ASSERT_EQ(shown.size(), bare.size());
  const auto changed = [&](const QRect& area) {
    return differing(shown.copy(area), nullptr) - differing(bare.copy(area), nullptr);
  };
  EXPECT_GT(changed(QRect(0, H / 2, 200, H / 2)), 50) << "no legend";
  EXPECT_GT(changed(QRect(W / 2 - 40, 0, 80, H)), 50) << "no information text";
  EXPECT_GT(changed(QRect(W - 200, 0, 200, 40)), 50) << "no camera text";
}

TEST_F(ImageExport, TheViewsOwnSizeGivesTheFrameOnScreen) {
  // Recoloured after the frame: only a new drawing shows green.
  view.setColors(vectors({{0, 1, 0}, {0, 1, 0}}));
  const QImage screen = load(save("screen.png", 0, 0).path);
  ASSERT_EQ(screen.size(), QSize(kSize, kSize));
  EXPECT_TRUE(dominant(colourAt(screen, kUpperLeft), 0));
  const ExportReport drawn = save("drawn.png", kSize + 1, kSize);
  EXPECT_TRUE(dominant(colourAt(load(drawn.path), kUpperLeft), 1));
}

TEST_F(ImageExport, OutsideAFrameTheHostLendsTheViewsContext) {
  // As a window does: nothing is current until the host makes it so.
  int lent = 0, returned = 0;
  view.setContextHost({[&] {
                         ++lent;
                         return context_->makeCurrent(surface_.get()) && fbo_->bind();
                       },
                       [&] {
                         ++returned;
                         context_->doneCurrent();
                       }});
  context_->doneCurrent();
  const ExportReport onScreen = save("host.png", 0, 0);
  EXPECT_TRUE(onScreen.written) << onScreen.error;
  EXPECT_EQ(onScreen.tiles, 0);  // the host's framebuffer holds the frame
  EXPECT_EQ(std::make_pair(lent, returned), std::make_pair(1, 1));
  EXPECT_EQ(QOpenGLContext::currentContext(), nullptr);
  view.setContextHost({});
  ASSERT_TRUE(context_->makeCurrent(surface_.get()));
}

TEST_F(ImageExport, EdgesTakeTheExportsLineWidth) {
  view.setShowNodes(false);
  const int thin = differing(load(save("thin.png", 200, 150, 1.0f).path));
  const int thick = differing(load(save("thick.png", 200, 150, 6.0f).path));
  EXPECT_GT(thin, 50);
  EXPECT_GT(thick, 3 * thin);
}

// Raster and vector exports alike.
TEST_F(ImageExport, TheViewIsLeftAsItWas) {
  const std::string info = view.infoString();
  const Image before = frame(view);
  for (const char* name : {"other.png", "other.eps"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(save(name, 333, 111, 4.0f).written);
    EXPECT_EQ(view.camera().viewHeight, kSize);
    EXPECT_EQ(view.infoString(), info);
    EXPECT_FALSE(vector_export::recording());
    EXPECT_TRUE(frame(view).rgba == before.rgba);
  }
}

TEST_F(ImageExport, AFailedWriteLeavesTheEarlierFileAlone) {
  const ExportReport good = save("keep.jpg", 120, 80);
  ASSERT_TRUE(good.written) << good.error;
  const std::string bytes = bytesOf(good.path);
  // JPEG allows at most 65500 pixels a side: the encoder refuses.
  const ExportReport refused = save("keep.jpg", 70000, 1);
  EXPECT_FALSE(refused.written);
  EXPECT_NE(refused.error.find("keep.jpg"), std::string::npos) << refused.error;
  EXPECT_EQ(bytesOf(good.path), bytes);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
  for (const std::string name : {"no/x.png", "no/x.pdf"}) {
    const ExportReport nowhere = view.exportImageToFile(folder.path() / name, 50, 50, 1);
    EXPECT_FALSE(nowhere.written);
    EXPECT_NE(nowhere.error.find(name), std::string::npos) << nowhere.error;
  }
  EXPECT_FALSE(view.exportImageToFile(folder.path() / "x.png", -5, 10, 1).written);
}

}  // namespace
