// The GL-free parts of the image export: the format by extension, tiles,
// the finished picture and GIF encoding.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>

#include "render/exportformat.h"
#include "render/gifwriter.h"
#include "render/imagetiles.h"
#include "render/imagewriting.h"

namespace {

TEST(ExportFormatChoice, ByExtensionWithoutRegardToCaseElsePng) {
  for (const auto& [path, format, written] : {std::tuple{"a.TIFF", ExportFormat::Tiff, "a.TIFF"},
                                              {"a.JPG", ExportFormat::Jpeg, "a.JPG"},
                                              {"a.Eps", ExportFormat::Eps, "a.Eps"},
                                              {"a.txt", ExportFormat::Png, "a.txt.png"},
                                              {"d.v2/a", ExportFormat::Png, "d.v2/a.png"},
                                              {"a.pdf.bak", ExportFormat::Png, "a.pdf.bak.png"}}) {
    const ExportTarget target = chooseExportFormat(path);
    EXPECT_EQ(target.format, format) << path;
    EXPECT_EQ(target.path, std::filesystem::path(written)) << path;
  }
}

TEST(ImageTiles, CoverThePictureOnceInTilesNoLargerThanAllowed) {
  struct Case {
    int width, height, side;
    std::size_t tiles;
  };
  for (const Case c :
       {Case{300, 200, 64, 20}, Case{64, 64, 64, 1}, Case{65, 1, 64, 2}, Case{5, 5, 0, 0}}) {
    const auto tiles = imageTiles(c.width, c.height, c.side);
    EXPECT_EQ(tiles.size(), c.tiles) << c.width << " x " << c.height << " by " << c.side;
    std::vector<int> covered(static_cast<std::size_t>(std::max(c.width * c.height, 0)));
    for (const ImageTile& t : tiles) {
      EXPECT_LE(t.width, c.side);
      EXPECT_LE(t.height, c.side);
      for (int y = t.y; y < t.y + t.height; ++y) {
        for (int x = t.x; x < t.x + t.width; ++x) {
          ASSERT_TRUE(x < c.width && y < c.height);
          ++covered[static_cast<std::size_t>(y * c.width + x)];
        }
      }
    }
    const int once = c.tiles > 0 ? 1 : 0;  // (nothing at all without a side)
    for (int n : covered) ASSERT_EQ(n, once);
  }
}

// A 2 x 2 picture as GL reads it: bottom row first, straight alpha.
QImage glRows() {
  QImage rows(2, 2, QImage::Format_RGBA8888);
  rows.setPixelColor(0, 0, QColor(255, 0, 0, 255));     // bottom left: opaque red
  rows.setPixelColor(1, 0, QColor(200, 100, 50, 128));  // bottom right: half covered
  rows.setPixelColor(0, 1, QColor(255, 255, 255, 0));   // top left: transparent white
  rows.setPixelColor(1, 1, QColor(0, 0, 255, 255));     // top right: opaque blue
  return rows;
}

TEST(FinishedImage, TopRowFirstAndTransparencyKeptOrLaidOverBlack) {
  const QImage kept = finishedImage(glRows(), Backdrop::Transparent);
  EXPECT_EQ(kept.pixelColor(1, 0), QColor(0, 0, 255, 255));
  EXPECT_EQ(kept.pixelColor(1, 1), QColor(200, 100, 50, 128));

  const QImage opaque = finishedImage(glRows(), Backdrop::OverBlack);
  EXPECT_FALSE(opaque.hasAlphaChannel());
  EXPECT_EQ(opaque.pixel(0, 0), qRgb(0, 0, 0));
  const QRgb half = opaque.pixel(1, 1);  // half of its colour over black
  EXPECT_NEAR(qRed(half), 100, 1);
  EXPECT_NEAR(qGreen(half), 50, 1);
  EXPECT_NEAR(qBlue(half), 25, 1);
}

TEST(GifEncoding, TransparencySurvivesADecoderOnlyWhereThereIsSome) {
  QImage picture(40, 30, QImage::Format_RGBA8888);
  picture.fill(QColor(255, 255, 255, 0));
  for (int x = 0; x < 20; ++x) picture.setPixelColor(x, 29, QColor(20, 60, 220));
  std::string error;
  for (const bool transparent : {true, false}) {
    if (!transparent) picture.fill(QColor(0, 0, 0));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(encodeGif(picture, buffer, error)) << error;
    const QImage back = QImage::fromData(buffer.data(), "GIF");
    EXPECT_EQ(back.hasAlphaChannel(), transparent);
    if (transparent) {
      EXPECT_EQ(qAlpha(back.pixel(30, 3)), 0);
      EXPECT_EQ(qAlpha(back.pixel(10, 29)), 255);
    }
  }
}

}  // namespace
