// Vector export: documents real readers accept, the primitives recorded, the
// rounds as the feedback buffer grows, and the view left as it was.
#include <regex>

#include "export_support.h"
#include "render/vectorexport.h"

namespace {

using namespace gltest;

class VectorExport : public ExportFixture {};

// The first page rendered at 72 dpi, one pixel a point.
QImage pdfPage(const std::filesystem::path& pdf) {
  const std::filesystem::path stem = pdf.parent_path() / "page";
  const ToolRun r = run("pdftoppm", {"-r", "72", "-png", "-singlefile", q(pdf), q(stem)});
  EXPECT_EQ(r.exitCode, 0) << r.output;
  return QImage(q(stem) + ".png");
}

TEST_F(VectorExport, DocumentsOpenInTheirReaders) {
  for (const auto& [name, format] : {std::pair{"n.pdf", ExportFormat::Pdf},
                                     {"n.SVG", ExportFormat::Svg},
                                     {"n.eps", ExportFormat::Eps}}) {
    SCOPED_TRACE(name);
    const ExportReport report = save(name, 300, 200, 2.0f);
    ASSERT_TRUE(report.written) << report.error;
    EXPECT_EQ(report.format, format);
    EXPECT_EQ(report.rounds, 1);
    ToolRun check;
    switch (format) {
      case ExportFormat::Pdf:
        check = run("pdfinfo", {q(report.path)});
        EXPECT_NE(check.output.find("Pages:           1"), std::string::npos) << check.output;
        EXPECT_NE(check.output.find("300 x 200 pts"), std::string::npos) << check.output;
        break;
      case ExportFormat::Svg:
        check = run("rsvg-convert", {q(report.path), "-o", q(folder.path() / "svg.png")});
        break;
      default:
        check = run("gs",
                    {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=nullpage", q(report.path)});
        break;
    }
    EXPECT_EQ(check.exitCode, 0) << check.output;
  }
  // The vertices lie where the picture of that size has them.
  const QImage page = pdfPage(folder.path() / "n.pdf");
  ASSERT_EQ(page.size(), QSize(300, 200));
  EXPECT_TRUE(dominant(colourAt(page, kUpperLeft), 0));
  EXPECT_TRUE(dominant(colourAt(page, kLowerRight), 2));
}

TEST_F(VectorExport, SvgHoldsTheScenesPrimitives) {
  // A triangle of edges without vertices: one line each.
  install(view, network(3, {{0, 1}, {1, 2}, {2, 0}}), {{-10, -5, 0}, {10, -5, 0}, {0, 8, 0}});
  view.setColors(vectors({{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}));
  view.setShowNodes(false);
  std::string svg = bytesOf(save("edges.svg", 300, 200, 3.5f).path);
  EXPECT_EQ(count(svg, "<polyline"), 3);
  // Every line has the export's width, not the view's own 1.5.
  EXPECT_EQ(count(svg, "stroke-width=\"3.5\""), 3);

  // Vertices alone: filled polygons in their colour over the background's.
  view.setShowNodes(true);
  view.setShowEdges(false);
  svg = bytesOf(save("vertices.svg", 300, 200).path);
  EXPECT_EQ(count(svg, "<polyline"), 0);
  const int polygons = count(svg, "<polygon");
  EXPECT_GT(polygons, 3 * 20);
  EXPECT_EQ(count(svg, "<polygon fill=\"#ffffff\""), 1);
  const std::regex fill("<polygon fill=\"(#[0-9a-f]{6})\"");
  int red = 0;
  for (auto it = std::sregex_iterator(svg.begin(), svg.end(), fill); it != std::sregex_iterator();
       ++it) {
    red += dominant(QColor(QString::fromStdString((*it)[1].str())), 0);
  }
  EXPECT_EQ(red, polygons - 1);
}

TEST_F(VectorExport, APageTooLargeForTheBufferIsRecordedAgain) {
  // A line takes 15 feedback values, the width marker 4: 69,904 lines fit
  // 1,048,576 values, 69,905 do not, and 150,000 need a third round.
  view.setShowNodes(false);
  for (const auto& [lines, rounds] :
       {std::pair<std::uint64_t, int>{69904, 1}, {69905, 2}, {150000, 3}}) {
    SCOPED_TRACE(lines);
    install(view, network(2, std::vector<std::array<std::uint64_t, 2>>(lines, {0, 1})),
            {kUpperLeft, kLowerRight});
    const ExportReport report = save("many.pdf", 300, 200);
    ASSERT_TRUE(report.written) << report.error;
    EXPECT_EQ(report.rounds, rounds);
    EXPECT_EQ(report.bufferSize, rounds * vector_export::kBufferStep);
    const ToolRun info = run("pdfinfo", {q(report.path)});
    EXPECT_EQ(info.exitCode, 0) << info.output;
    EXPECT_NE(info.output.find("Pages:           1"), std::string::npos) << info.output;
  }
}

TEST_F(VectorExport, TheBackgroundIsAlwaysOpaque) {
  view.setBlackBackground(true);
  view.setTransparentBackground(true);
  const ExportReport report = save("dark.pdf", 300, 200);
  ASSERT_TRUE(report.written) << report.error;
  const QImage page = pdfPage(report.path);
  EXPECT_EQ(page.pixel(0, 0), qRgb(0, 0, 0));
  EXPECT_EQ(page.pixel(299, 199), qRgb(0, 0, 0));
  EXPECT_NE(bytesOf(save("dark.svg", 300, 200).path).find("<polygon fill=\"#000000\""),
            std::string::npos);
}

}  // namespace
