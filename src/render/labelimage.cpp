#include "render/labelimage.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include "render/overlaypainting.h"

namespace labels {
namespace {

constexpr double kHalo = 3.0;  // the halo's pen width; half of it shows outside the glyphs

}  // namespace

QFont font() {
  QFont f(QStringLiteral("Helvetica"));
  f.setPixelSize(kPixelSize);
  return f;
}

std::function<double(const std::string&)> measurer(const QFont& f) {
  return [metrics = QFontMetricsF(f)](const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text)) + kHalo;
  };
}

double boxHeight(const QFont& f) {
  return QFontMetricsF(f).height() + kHalo;
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
  const QPen halo(overlay::qColour(look.halo), kHalo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  const QBrush fill(overlay::qColour(look.text));
  for (std::size_t i = 0; i < placed.size() && i < texts.size(); ++i) {
    const PlacedLabel& box = placed[i];
    if (!region.intersects(QRectF(box.x, box.y, box.width, box.height))) continue;
    QPainterPath path;
    path.addText(box.x + kHalo / 2, box.y + kHalo / 2 + metrics.ascent(), f,
                 QString::fromStdString(texts[i]));
    painter.strokePath(path, halo);
    painter.fillPath(path, fill);
  }
  return image;
}

}  // namespace labels
