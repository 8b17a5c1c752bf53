// Measuring and painting the legend with QPainter. Fonts are sized in points
// on a 72 dpi image, so a point is a pixel and fractional sizes are kept as
// the legend scales with the view.
#include "render/legendimage.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "render/overlaypainting.h"

namespace legend {
namespace {

using overlay::qColour;

constexpr int kDotsPerMeter = 2835;  // 72 dpi

void usePointsAsPixels(QImage& image) {
  image.setDotsPerMeterX(kDotsPerMeter);
  image.setDotsPerMeterY(kDotsPerMeter);
}

// Measures texts in the legend's font at a given scale; an empty text (or a
// scale of 0) measures 0 x 0.
class TextMeasure {
 public:
  explicit TextMeasure(double height) : font_(kFontFamily), usable_(height > 0) {
    if (usable_) font_.setPointSizeF(kFontSize * height);
  }
  const QFont& font() const { return font_; }
  TextSize operator()(const std::string& text) const {
    if (text.empty() || !usable_) return {0, 0};
    static const QImage device = [] {
      QImage image(1, 1, QImage::Format_RGBA8888_Premultiplied);
      usePointsAsPixels(image);
      return image;
    }();
    const QSizeF size = QFontMetricsF(font_, &device).size(0, QString::fromStdString(text));
    return {size.width(), size.height()};
  }

 private:
  QFont font_;
  bool usable_;
};

colour::Rgba withAlpha(colour::Rgba c, float alpha) {
  c.a = alpha;
  return c;
}

// Paints in the legend's own coordinates: y upwards from the image's bottom.
class UpwardsPainter {
 public:
  UpwardsPainter(QImage& image, const TextMeasure& measure, std::vector<PlacedText>* texts)
      : painter_(&image), measure_(measure), bottom_(image.height()), texts_(texts) {
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
    painter_.setFont(measure.font());
  }
  // The image rectangle of a rectangle whose lower left corner is (x, y).
  QRectF rect(double x, double y, double width, double height) const {
    return {x, bottom_ - y - height, width, height};
  }
  // A text with its left edge at x, vertically centred on y.
  void text(const std::string& text, double x, double y, colour::Rgba colour) {
    const TextSize size = measure_(text);
    if (size.width <= 0) return;  // empty, or a legend scaled to nothing
    if (texts_) {
      texts_->push_back({text, x, y, measure_.font().pointSizeF(), colour});
      return;
    }
    painter_.setPen(qColour(colour));
    painter_.drawText(rect(x, y - size.height * 0.5, size.width, size.height),
                      Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                      QString::fromStdString(text));
  }
  QPainter& qt() { return painter_; }

 private:
  QPainter painter_;
  const TextMeasure& measure_;
  double bottom_;
  std::vector<PlacedText>* texts_;
};

void paintBackground(UpwardsPainter& painter, const LegendLook& look, TextSize frame) {
  const double inset = 0.5 * look.height;
  const QRectF box =
      painter.rect(0, 0, frame.width, frame.height).adjusted(inset, inset, -inset, -inset);
  const double radius = look.boxRadius * look.height;
  QPainterPath outline;
  outline.addRoundedRect(box, radius, radius);
  QLinearGradient gradient = overlay::diagonalGradient(box);
  gradient.setColorAt(0.0, qColour(withAlpha(look.backgroundColor, 0.25f)));
  gradient.setColorAt(1.0, qColour(look.backgroundColor));
  painter.qt().fillPath(outline, gradient);
}

struct Columns {
  double x0 = 0;         // left edge of the boxes or the bar
  double labelsX = 0;    // left edge of the labels
  double rowHeight = 0;  // the tallest label
};

void paintBoxes(UpwardsPainter& painter, const LegendLook& look, const Columns& columns) {
  const double h = look.height, hm = columns.rowHeight;
  double y = look.marginSize.height * h;
  for (const std::string& label : look.labels) {
    painter.text(label, columns.labelsX, y, look.textColor);
    y += kRowSpacing * hm;
  }
  QPainter& qt = painter.qt();
  qt.setPen(QPen(qColour(look.borderColor), 0.25 * h));
  qt.setBrush(Qt::NoBrush);
  y = look.marginSize.height * h - 0.5 * hm;
  for (const colour::Rgba& colour : look.colors) {
    const QRectF box = painter.rect(columns.x0, y + 0.1 * hm, kSwatchWidth * h, 0.8 * hm);
    QLinearGradient gradient = overlay::diagonalGradient(box);
    gradient.setColorAt(0.0, qColour(withAlpha(colour, 1.0f)));
    gradient.setColorAt(1.0, qColour(colour));
    qt.fillRect(box, gradient);
    qt.drawRect(box);
    y += kRowSpacing * hm;
  }
}

// Ticks at their places along the bar: labelled ones across it, minor ones
// a third of the way in from its right side; a label closer to the one below
// it than a text's height is left out.
void paintTicks(UpwardsPainter& painter, const LegendLook& look, const Columns& columns,
                double barHeight) {
  const double h = look.height, margin = look.marginSize.height * h;
  const QColor tick = qColour(look.borderColor);
  QPainter& qt = painter.qt();
  qt.setPen(QPen(tick, 0.5 * h));
  double lastLabel = -1e300;
  for (const colour::BarTick& t : look.ticks) {
    const double y = margin + static_cast<double>(t.at) * barHeight;
    const double length = (t.label.empty() ? 5.0 : kSwatchWidth + 2.0) * h;
    const double right = columns.x0 + (kSwatchWidth + 2.0) * h;
    const QRectF line = painter.rect(right - length, y, length, 0);
    qt.drawLine(line.topLeft(), line.topRight());
    if (t.label.empty() || y - lastLabel < columns.rowHeight) continue;
    painter.text(t.label, columns.labelsX, y, look.textColor);
    lastLabel = y;
  }
}

void paintBar(UpwardsPainter& painter, const LegendLook& look, const Columns& columns,
              TextSize frame) {
  const double h = look.height, margin = look.marginSize.height * h;
  QPainter& qt = painter.qt();
  // A ticked bar leaves the top row to its title.
  const bool titleRow = !look.ticks.empty() && !look.title.empty();
  const double top = titleRow ? kRowSpacing * columns.rowHeight : 0.0;
  const QRectF bar =
      painter.rect(columns.x0, margin, kSwatchWidth * h, frame.height - 2 * margin - top);
  const double radius = look.internalBoxRadius * h;
  QPainterPath outline;
  outline.addRoundedRect(bar, radius, radius);
  // Upwards: the first colour at the bottom, the last at the top.
  QLinearGradient gradient(bar.bottomLeft(), bar.topLeft());
  const std::size_t stops = look.colors.size();
  for (std::size_t i = 0; i < stops; ++i) {
    const float at = stops == 1 ? 0.0f : static_cast<float>(i) / static_cast<float>(stops - 1);
    gradient.setColorAt(at, qColour(look.colors[i]));
  }
  if (stops == 1) gradient.setColorAt(1.0, qColour(look.colors[0]));
  if (stops > 0) qt.fillPath(outline, gradient);
  qt.strokePath(outline, QPen(qColour(look.borderColor), 0.5 * h));

  // A fainter line across the bar at every labelled row but the two ends.
  const QColor tick = qColour(withAlpha(look.borderColor, look.borderColor.a * 0.5f));
  qt.setPen(QPen(tick, 0.25 * h));
  qt.setBrush(tick);
  for (std::size_t i = 0; i < look.labels.size(); ++i) {
    const std::string& label = look.labels[i];
    if (label.empty() || label == look.labels.front() || label == look.labels.back()) continue;
    const double y = margin + static_cast<double>(i) * kRowSpacing * columns.rowHeight;
    qt.drawRect(painter.rect(columns.x0, y - 0.25 * h, kSwatchWidth * h, 0.5 * h));
  }

  if (!look.ticks.empty()) {
    paintTicks(painter, look, columns, bar.height());
    return;
  }
  double y = margin;
  for (const std::string& label : look.labels) {
    painter.text(label, columns.labelsX, y, look.textColor);
    y += kRowSpacing * columns.rowHeight;
  }
}

void paintAll(UpwardsPainter& painter, const LegendLook& look, TextSize frame,
              const TextMeasure& measure) {
  if (look.backgroundColor.a != 0) paintBackground(painter, look, frame);

  // The block of boxes and labels is centred on the frame's width.
  Columns columns;
  double widest = 0;
  for (const std::string& label : look.labels) {
    const TextSize size = measure(label);
    widest = std::max(widest, size.width);
    columns.rowHeight = std::max(columns.rowHeight, size.height);
  }
  columns.x0 = (frame.width - (widest + kLabelOffset * look.height)) * 0.5;
  columns.labelsX = columns.x0 + kLabelOffset * look.height;
  if (look.continuous) {
    paintBar(painter, look, columns, frame);
  } else {
    paintBoxes(painter, look, columns);
  }

  // The title goes in the row above the last label, centred on the frame.
  if (!look.title.empty()) {
    const double y = look.marginSize.height * look.height +
                     static_cast<double>(look.labels.size()) * kRowSpacing * columns.rowHeight;
    painter.text(look.title, (frame.width - measure(look.title).width) * 0.5, y, look.textColor);
  }
}

}  // namespace

TextSize frameSize(const LegendLook& look) {
  if (!overlay::haveGuiApplication()) return {0, 0};
  const double h = look.height;
  const TextMeasure measure(h);
  double width = 0, height = 0;
  if (!look.title.empty()) {
    const TextSize title = measure(look.title);
    width = title.width - kLabelOffset * h;
    height = title.height;
  }
  for (const std::string& label : look.labels) {
    const TextSize size = measure(label);
    width = std::max(width, size.width);
    height = std::max(height, size.height);
  }
  const double rows = static_cast<double>(look.labels.size()) - (look.title.empty() ? 1.0 : 0.0);
  return {kLabelOffset * h + width + 2 * h * look.marginSize.width,
          height * kRowSpacing * rows + 2 * h * look.marginSize.height};
}

LegendLook readableLook(LegendLook look, std::string title, std::vector<colour::BarTick> ticks) {
  look.title = std::move(title);
  if (look.continuous && !ticks.empty()) {
    const std::size_t rows = look.labels.size();
    look.labels.clear();
    for (const colour::BarTick& t : ticks) {
      if (!t.label.empty()) look.labels.push_back(t.label);
    }
    look.labels.resize(std::max(rows, look.labels.size()));
    look.ticks = std::move(ticks);
  }
  return look;
}

QImage paint(const LegendLook& look, TextSize frame, std::vector<PlacedText>* texts) {
  if (!overlay::haveGuiApplication()) return {};
  QImage image = overlay::blankImage(frame.width, frame.height);
  usePointsAsPixels(image);
  const TextMeasure measure(look.height);
  UpwardsPainter painter(image, measure, texts);
  paintAll(painter, look, frame, measure);
  painter.qt().end();  // before the image is handed out
  return image;
}

}  // namespace legend
