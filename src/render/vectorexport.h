#pragma once
// Recording the GL scene as a vector document through gl2ps: one page per
// call pair, and the pass-through markers the drawing code emits while a
// page is being recorded (gl2ps cannot see blending or line widths in GL's
// feedback).
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "render/exportformat.h"

namespace vector_export {

// gl2ps's feedback buffer starts at this many values and grows by as many
// each time a page does not fit.
inline constexpr std::int64_t kBufferStep = 1048576;

// gl2ps's format for PDF, SVG, EPS or PostScript.
int gl2psFormat(ExportFormat format);

// Begins a page titled `title` (also its file name) into `stream`: simple
// depth sorting, the background drawn, occluded primitives culled, the
// current viewport. GL's render mode becomes feedback until endPage.
// False when gl2ps refused (the page is then not recording).
bool beginPage(const std::string& title, ExportFormat format, std::int64_t bufferSize,
               std::FILE* stream);

enum class PageEnd { Written, Overflow, Failed };
// Ends the page: written, or the feedback buffer overflowed (nothing was
// written and the page must be recorded again with a larger buffer).
PageEnd endPage();

// Whether a page is being recorded.
bool recording();

// While recording: blending starts here (what follows keeps its alpha).
void beginBlendMarker();
// While recording: lines from here on are `width` pixels wide.
void lineWidthMarker(float width);

// While alive: drawing coordinates are the page's pixels, y upwards (the
// projection and model-view matrices are pushed, and popped at the end).
class PixelCoordinates {
 public:
  PixelCoordinates(double width, double height);
  ~PixelCoordinates();
  PixelCoordinates(const PixelCoordinates&) = delete;
  PixelCoordinates& operator=(const PixelCoordinates&) = delete;
};

// While recording: an RGB image of floats, bottom row first, with its lower
// left corner at (x, y, depth) in the current coordinates (pixels). SVG
// documents get it as rectangles of one colour, leaving out the pixels of
// the page's `background`.
struct ImagePlace {
  double x, y, depth;
  std::array<float, 3> background;
};
void image(const ImagePlace& place, int width, int height, const float* rgb);
// While recording: `text` (UTF-8) in Helvetica of `pointSize`, its left edge
// at the current raster position and vertically centred on it.
void text(const std::string& text, double pointSize, const float (&rgba)[4]);

// gl2ps writes texts into the document as they stand: `text` made safe for
// `format`. SVG escapes XML's markup characters; PDF and PostScript escape
// their string delimiters and, as their Helvetica has no Unicode, lose
// accents and put "?" for any other non-ASCII character.
std::string documentText(const std::string& text, ExportFormat format);

}  // namespace vector_export
