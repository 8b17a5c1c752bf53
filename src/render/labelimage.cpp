#include "render/labelimage.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "render/overlaypainting.h"

namespace labels {
namespace {

// The halo's pen width at the standard size; half of it shows outside the
// glyphs.
constexpr double kHalo = 3.0;

double haloOf(const QFont& f) {
  return kHalo * f.pixelSize() / kPixelSize;
}

}  // namespace

double pixelSizeFor(double pictureHeight) {
  return kPixelSize * std::max(1.0, pictureHeight / kReferenceHeight);
}

QFont font(double pixelSize) {
  QFont f(QStringLiteral("Helvetica"));
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
  return f;
}

std::function<double(const std::string&)> measurer(const QFont& f) {
  return [metrics = QFontMetricsF(f), halo = haloOf(f)](const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text)) + halo;
  };
}

double boxHeight(const QFont& f) {
  return QFontMetricsF(f).height() + haloOf(f);
}

Look lookOn(scene::Background background) {
  if (background == scene::Background::Black) return {{0.95f, 0.95f, 0.95f, 1}, {0, 0, 0, 0.85f}};
  return {{0.08f, 0.08f, 0.08f, 1}, {1, 1, 1, 0.85f}};
}

QImage paint(std::span<const PlacedLabel> placed, std::span<const std::string> texts,
             const QRectF& region, const QFont& f, scene::Background background) {
  QImage image = overlay::blankImage(region.width(), region.height());
  const Look look = lookOn(background);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setRenderHint(QPainter::TextAntialiasing, true);
  painter.translate(-region.topLeft());
  const QFontMetricsF metrics(f);
  const double width = haloOf(f);
  const QPen halo(overlay::qColour(look.halo), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  const QBrush fill(overlay::qColour(look.text));
  for (std::size_t i = 0; i < placed.size() && i < texts.size(); ++i) {
    const PlacedLabel& box = placed[i];
    if (!region.intersects(QRectF(box.x, box.y, box.width, box.height))) continue;
    QPainterPath path;
    path.addText(box.x + width / 2, box.y + width / 2 + metrics.ascent(), f,
                 QString::fromStdString(texts[i]));
    painter.strokePath(path, halo);
    painter.fillPath(path, fill);
  }
  return image;
}

}  // namespace labels
