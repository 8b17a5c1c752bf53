#pragma once
// The legend's picture without GL: its frame size and the image painted with
// QPainter. Lengths are in units of `height` (the legend's scale factor)
// unless said otherwise; the layout counts y upwards from the image's bottom.
#include <QImage>
#include <string>
#include <vector>

#include "colour/legendticks.h"
#include "colour/rgba.h"
#include "render/legendstyle.h"
#include "render/overlaytexture.h"

struct LegendLook {
  std::string title;
  std::vector<std::string> labels;
  std::vector<colour::Rgba> colors;  // one per box, or the bar's colour stops
  bool continuous = false;           // a bar instead of boxes
  double height = 1.0;
  colour::Rgba textColor, backgroundColor, borderColor;
  TextSize marginSize{6, 10};
  float boxRadius = 3.0f;
  float internalBoxRadius = 1.0f;
  // When not empty the bar is labelled at these places instead of by rows.
  std::vector<colour::BarTick> ticks;
};

namespace legend {

// The font of labels and title, by name; fontconfig substitutes.
inline constexpr const char* kFontFamily = "HelveticaNeue-Light";
inline constexpr double kFontSize = 9.0;      // points at height 1, one point per pixel
inline constexpr double kRowSpacing = 1.2;    // rows are 1.2 label heights apart
inline constexpr double kLabelOffset = 19.0;  // from the box's left edge to the labels
inline constexpr double kSwatchWidth = 15.0;  // boxes and bar

// Rows of labels (a title takes one, an empty title gives one back), each
// 1.2 times the tallest text, inside the margins; as wide as the widest
// label (or the title) plus the box column and the margins. (0, 0) without a
// QGuiApplication.
TextSize frameSize(const LegendLook& look);

// `look` with `title` and, on a bar, the ticks in place of the row labels;
// the rows stay as many, so the bar keeps its length.
LegendLook readableLook(LegendLook look, std::string title, std::vector<colour::BarTick> ticks);

// A text the painter left out: its left edge at x, vertically centred on y
// (y upwards from the image's bottom), in pixels of the image.
struct PlacedText {
  std::string text;
  double x, y;
  double pointSize;
  colour::Rgba colour;
};

// The legend painted into a premultiplied RGBA image of `frame` (rounded up
// to whole pixels). With `texts` given, the texts are not painted but listed
// there (so that a vector document can keep them as text). Null without a
// QGuiApplication.
QImage paint(const LegendLook& look, TextSize frame, std::vector<PlacedText>* texts = nullptr);

}  // namespace legend
