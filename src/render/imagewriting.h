#pragma once
// The last steps of a raster export, free of GL: turning the rows GL reads
// back into the picture a file holds, and writing it in the chosen format
// without ever leaving a half-written file behind.
#include <QImage>
#include <filesystem>
#include <string>

#include "render/exportformat.h"

// Whether the picture keeps its transparency or is laid over black.
enum class Backdrop { Transparent, OverBlack };

// `bottomUp` holds GL's rows, bottom row first (RGBA, 8 bits, straight
// alpha). Answers the picture top row first; with OverBlack every pixel that
// is not fully opaque is composited over black (destination over), so the
// result is opaque.
QImage finishedImage(const QImage& bottomUp, Backdrop backdrop);

// Encodes `image` with the format's standard encoder (GIF through giflib)
// into a temporary file beside `path`, then renames it over `path`: on any
// failure an earlier file at `path` is left as it was. False, with a
// message naming the file and the reason in `error`, when nothing was
// written. `format` must be a raster format.
bool writeImageFile(const QImage& image, ExportFormat format, const std::filesystem::path& path,
                    std::string& error);
