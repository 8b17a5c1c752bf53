#pragma once
// GIF encoding through giflib (Qt reads GIF but does not write it).
#include <QImage>
#include <string>

class QIODevice;

// Quantises `image` to at most 256 colours (median cut) and writes it as one
// GIF89a frame to `device`. Fully transparent pixels, if any, share one
// colour index marked transparent. False with the reason in `error`.
bool encodeGif(const QImage& image, QIODevice& device, std::string& error);
