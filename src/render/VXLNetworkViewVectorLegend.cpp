// The legend in a vector document: its picture without the texts as one
// image over the page's background, and each text as text, so that a PDF or
// SVG keeps it searchable and sharp.
#include <GL/gl.h>

#include <vector>

#include "render/VXLLegends.h"
#include "render/VXLNetworkView.h"
#include "render/scenecolours.h"
#include "render/vectorexport.h"

namespace {

constexpr double kInset = 10.0;  // from the picture's edges, as on screen
// Nearer than any scene primitive, the texts nearer still, so that the
// depth sort puts them last.
constexpr double kImageDepth = 0.98, kTextDepth = 0.99;

// Premultiplied RGBA over an opaque background, bottom row first.
std::vector<float> overBackground(const QImage& image, const scene::Rgba& background) {
  const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  std::vector<float> rgb;
  rgb.reserve(static_cast<std::size_t>(rgba.width()) * static_cast<std::size_t>(rgba.height()) * 3);
  for (int y = rgba.height() - 1; y >= 0; --y) {
    const uchar* row = rgba.constScanLine(y);
    for (int x = 0; x < rgba.width(); ++x) {
      const uchar* p = row + 4 * x;
      const float keep = 1.0f - static_cast<float>(p[3]) / 255.0f;
      rgb.push_back(static_cast<float>(p[0]) / 255.0f + background.r * keep);
      rgb.push_back(static_cast<float>(p[1]) / 255.0f + background.g * keep);
      rgb.push_back(static_cast<float>(p[2]) / 255.0f + background.b * keep);
    }
  }
  return rgb;
}

}  // namespace

void VXLNetworkView::recordLegend(double width, double height) {
  const std::shared_ptr<VXLLegends> legend = legends();
  if (!legend || !showLegends() || !vector_export::recording()) return;
  std::vector<legend::PlacedText> texts;
  const QImage image = legend->makeImage(&texts);
  if (image.isNull()) return;
  const scene::Rgba background =
      scene::clearColour(blackBackground() ? scene::Background::Black : scene::Background::White);
  const std::vector<float> rgb = overBackground(image, background);

  // Pixels with y upwards; the legend's lower left corner sits kInset from
  // the picture's lower left one, where drawInfo puts it.
  const vector_export::PixelCoordinates pixels(width, height);
  vector_export::image({kInset, kInset, kImageDepth, {background.r, background.g, background.b}},
                       image.width(), image.height(), rgb.data());
  for (const legend::PlacedText& t : texts) {
    glRasterPos3d(kInset + t.x, kInset + t.y, kTextDepth);
    const float colour[4] = {t.colour.r, t.colour.g, t.colour.b, t.colour.a};
    vector_export::text(t.text, t.pointSize, colour);
  }
}
