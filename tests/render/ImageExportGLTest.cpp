// Raster export: the format each extension gives, the picture's size,
// orientation, background and content, tiles, the frame on screen at the
// view's own size, and failures that must not damage an earlier file.
#include <QFile>
#include <QImageReader>
#include <variant>

#include "export_support.h"

namespace {

using namespace gltest;

class ImageExport : public ExportFixture {};

QImage load(const std::filesystem::path& path) {
  return QImage(QString::fromStdString(path.string()));
}

std::string bytesOf(const std::filesystem::path& path) {
  QFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().toStdString();
}

// How many pixels differ from `reference` (a picture of the same size, or
// one colour) in any channel by more than `tolerance`.
int differing(const QImage& picture, const std::variant<QImage, QRgb>& reference,
              int tolerance = 24) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb p = picture.pixel(x, y);
      const QRgb q = std::holds_alternative<QRgb>(reference)
                         ? std::get<QRgb>(reference)
                         : std::get<QImage>(reference).pixel(x, y);
      count += std::abs(qRed(p) - qRed(q)) > tolerance ||
               std::abs(qGreen(p) - qGreen(q)) > tolerance ||
               std::abs(qBlue(p) - qBlue(q)) > tolerance;
    }
  }
  return count;
}

TEST_F(ImageExport, EachExtensionGivesItsFormatAtTheAskedSize) {
  struct Case {
    const char* name;
    const char* written;  // the file's name once written
    const char* format;   // what the file's content says it is
  };
  const Case cases[] = {
      {"a.png", "a.png", "png"},  {"b.PNG", "b.PNG", "png"},    {"c.tiff", "c.tiff", "tiff"},
      {"d.TIF", "d.TIF", "tiff"}, {"e.bmp", "e.bmp", "bmp"},    {"f.gif", "f.gif", "gif"},
      {"g.jpg", "g.jpg", "jpeg"}, {"h.JPEG", "h.JPEG", "jpeg"}, {"i.txt", "i.txt.png", "png"},
      {"j", "j.png", "png"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const ExportReport report = save(c.name, 150, 100);
    ASSERT_TRUE(report.written) << report.error;
    EXPECT_EQ(report.path, folder.path() / c.written);
    QImageReader reader(QString::fromStdString(report.path.string()));
    reader.setDecideFormatFromContent(true);
    EXPECT_EQ(reader.format().toStdString(), c.format);
    const QImage picture = reader.read();
    ASSERT_EQ(picture.size(), QSize(150, 100));
    // The file's first row is the picture's top: red above, blue below.
    // Lossy or palette formats keep the hue, not the exact bytes.
    EXPECT_TRUE(dominant(colourAt(picture, kUpperLeft), 0))
        << colourAt(picture, kUpperLeft).name().toStdString();
    EXPECT_TRUE(dominant(colourAt(picture, kLowerRight), 2))
        << colourAt(picture, kLowerRight).name().toStdString();
  }
}

TEST_F(ImageExport, BackgroundIsTransparentOnlyWhenAsked) {
  struct Case {
    bool black, transparent;
    QRgb corner;
  };
  const Case cases[] = {{false, false, qRgba(255, 255, 255, 255)},
                        {false, true, qRgba(255, 255, 255, 0)},
                        {true, false, qRgba(0, 0, 0, 255)},
                        {true, true, qRgba(0, 0, 0, 0)}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.black ? "black" : "white") + (c.transparent ? " transparent" : ""));
    view.setBlackBackground(c.black);
    view.setTransparentBackground(c.transparent);
    const ExportReport report = save("bg.png", 120, 90);
    ASSERT_TRUE(report.written) << report.error;
    const QImage file = load(report.path);
    EXPECT_EQ(file.hasAlphaChannel(), c.transparent);
    const QImage picture = file.convertToFormat(QImage::Format_ARGB32);
    const QRgb corner = picture.pixel(0, 0);
    EXPECT_EQ(qAlpha(corner), qAlpha(c.corner));
    if (qAlpha(c.corner) > 0) {
      EXPECT_EQ(corner, c.corner);
    }
    // Vertices are opaque either way.
    EXPECT_EQ(colourAt(picture, kUpperLeft).alpha(), 255);
  }
}

TEST_F(ImageExport, TilesStitchIntoThePictureDrawnWhole) {
  view.setFInfo(true);
  view.setGeneralInfo(true);  // a text centred in the whole picture
  view.setVertexInfo(false);
  const ExportReport whole = save("whole.png", 300, 200);
  ASSERT_TRUE(whole.written) << whole.error;
  EXPECT_EQ(whole.tiles, 1);
  export_gl::setMaxTileSide(64);
  const ExportReport tiled = save("tiled.png", 300, 200);
  ASSERT_TRUE(tiled.written) << tiled.error;
  EXPECT_EQ(tiled.tiles, 5 * 4);

  const QImage a = load(whole.path), b = load(tiled.path);
  ASSERT_EQ(a.size(), b.size());
  EXPECT_LE(differing(a, b, 8), 30) << "of " << a.width() * a.height();

  // The comparison saw the text: without it the picture is another.
  view.setFInfo(false);
  const QImage bare = load(save("bare.png", 300, 200).path);
  EXPECT_GT(differing(a, qRgb(255, 255, 255)), differing(bare, qRgb(255, 255, 255)) + 50);
}

TEST_F(ImageExport, TheViewsOwnSizeGivesTheFrameOnScreen) {
  // Recoloured after the frame: only a new drawing shows green.
  view.setColors(vectors({{0, 1, 0}, {0, 1, 0}}));
  const ExportReport onScreen = save("screen.png", 0, 0);
  ASSERT_TRUE(onScreen.written) << onScreen.error;
  EXPECT_EQ(onScreen.tiles, 0);
  EXPECT_EQ(std::make_pair(onScreen.width, onScreen.height), std::make_pair(kSize, kSize));
  const QImage screen = load(onScreen.path);
  EXPECT_TRUE(dominant(colourAt(screen, kUpperLeft), 0));

  const ExportReport drawn = save("drawn.png", kSize + 1, kSize);
  ASSERT_TRUE(drawn.written) << drawn.error;
  EXPECT_EQ(drawn.tiles, 1);
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
  const int thin = differing(load(save("thin.png", 200, 150, 1.0f).path), qRgb(255, 255, 255));
  const int thick = differing(load(save("thick.png", 200, 150, 6.0f).path), qRgb(255, 255, 255));
  EXPECT_GT(thin, 50);
  EXPECT_GT(thick, 3 * thin);
  EXPECT_EQ(view.lineWidth(), 1.5f);
}

TEST_F(ImageExport, TheViewIsLeftAsItWas) {
  const std::string info = view.infoString();
  const Image before = frame(view);
  const VXLCamera camera = view.camera();
  const Rotation world = view.worldRotation();
  ASSERT_TRUE(save("other.png", 333, 111, 4.0f).written);
  EXPECT_EQ(view.camera().position, camera.position);
  EXPECT_EQ(view.camera().viewWidth, kSize);
  EXPECT_EQ(view.camera().viewHeight, kSize);
  EXPECT_EQ(view.worldRotation(), world);
  EXPECT_EQ(view.infoString(), info);
  const Image after = frame(view);
  EXPECT_TRUE(before.rgba == after.rgba);
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
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()),
                          std::filesystem::directory_iterator()),
            1);

  const ExportReport nowhere = view.exportImageToFile(folder.path() / "no" / "x.png", 50, 50, 1);
  EXPECT_FALSE(nowhere.written);
  EXPECT_NE(nowhere.error.find("no/x.png"), std::string::npos) << nowhere.error;
  EXPECT_FALSE(view.exportImageToFile(folder.path() / "x.png", -5, 10, 1).written);
}

}  // namespace
