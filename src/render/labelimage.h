#pragma once
// Vertex labels typeset with QPainter: the font, the measure placeLabels
// needs, and a picture of the placed labels (or of part of them, for a tile
// of a larger picture). Readable on either background: dark text in a light
// halo on white, light text in a dark halo on black.
#include <QFont>
#include <QImage>
#include <QRectF>
#include <functional>
#include <span>
#include <string>

#include "render/labelplacement.h"
#include "render/scenecolours.h"

namespace labels {

// The label text size in pixels, in pictures up to kReferenceHeight pixels
// tall; a taller picture (a large export) has labels as much larger as it is
// taller, so they keep their share of it, as the legend does.
inline constexpr int kPixelSize = 12;
inline constexpr double kReferenceHeight = 1000;
double pixelSizeFor(double pictureHeight);

QFont font(double pixelSize = kPixelSize);
// The width and the height of a text's box in `font`, a halo's width
// (in proportion to the font's size) included.
std::function<double(const std::string&)> measurer(const QFont& font);
double boxHeight(const QFont& font);

struct Look {
  colour::Rgba text, halo;
};
Look lookOn(scene::Background background);

// The labels over `region` of the whole picture (pixels, origin top left) as
// a transparent premultiplied image of the region's size; texts[i] belongs to
// placed[i].
QImage paint(std::span<const PlacedLabel> placed, std::span<const std::string> texts,
             const QRectF& region, const QFont& font, scene::Background background);

}  // namespace labels
