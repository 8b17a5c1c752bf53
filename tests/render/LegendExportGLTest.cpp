// The legend in exported documents and pictures: its title and round ticks
// as text in PDF and SVG, and its pixels in a picture drawn without the
// window's texts.
#include "export_support.h"
#include "render/VXLLegends.h"

namespace {

using namespace gltest;

class LegendExport : public ExportFixture {
 protected:
  void SetUp() override {
    ExportFixture::SetUp();
    auto legend = VXLLegends::initWithTitle("", {"0", "", "9"}, {{0, 0, 1, 1}, {1, 1, 0, 1}},
                                            LegendKind::Continuous, scene::Background::White);
    legend->setReadable("Node Degree",
                        colour::legendBarTicks({0, 10}, colour::ColorFunction::Linear, 2));
    view.setLegends(legend);
  }
};

std::string pdfText(const std::filesystem::path& pdf) {
  return run("pdftotext", {q(pdf), "-"}).output;
}

TEST_F(LegendExport, DocumentsKeepTitleAndTicksAsText) {
  ASSERT_TRUE(save("legend.pdf", 300, 300).written);
  const std::string text = pdfText(folder.path() / "legend.pdf");
  for (const char* word : {"Node Degree", "2", "4", "10"}) {
    EXPECT_NE(text.find(word), std::string::npos) << word << " in: " << text;
  }
  ASSERT_TRUE(save("legend.svg", 300, 300).written);
  const std::string svg = bytesOf(folder.path() / "legend.svg");
  EXPECT_NE(svg.find("Node Degree"), std::string::npos);

  // Hidden legends stay out; the window's own style is back after export.
  EXPECT_EQ(view.legends()->style(), LegendStyle::Rows);
  view.setShowLegends(false);
  ASSERT_TRUE(save("bare.pdf", 300, 300).written);
  EXPECT_EQ(pdfText(folder.path() / "bare.pdf").find("Node Degree"), std::string::npos);
  // SVG carries no pictures here: the bar is drawn as shapes, a few dozen
  // rows of colour.
  ASSERT_TRUE(save("bare.svg", 300, 300).written);
  EXPECT_GT(count(svg, "<polygon"), count(bytesOf(folder.path() / "bare.svg"), "<polygon") + 20);
}

TEST_F(LegendExport, PicturesWithoutTextsStillShowTheLegend) {
  ASSERT_FALSE(view.fInfo());
  const QImage with = load(save("with.png", 320, 300).path);
  view.setShowLegends(false);
  const QImage without = load(save("without.png", 320, 300).path);
  ASSERT_EQ(with.size(), without.size());
  // The legend sits at the lower left, 10 pixels in; count changed pixels.
  int changed = 0;
  for (int y = without.height() - 60; y < without.height() - 12; ++y) {
    for (int x = 12; x < 30; ++x) changed += with.pixel(x, y) != without.pixel(x, y);
  }
  EXPECT_GT(changed, 100);  // the bar alone is some 10 x 48
}

}  // namespace
