#pragma once
// What the overlays drawn over the scene (texts and the legend) share: sizes
// and rectangles in pixels, and a premultiplied RGBA image kept in a GL
// rectangle texture and drawn as one quad.
class QImage;

struct TextSize {
  double width = 0;
  double height = 0;
  bool operator==(const TextSize&) const = default;
};

// A rectangle in the overlay's pixel coordinates (origin top left).
struct TextBounds {
  double x = 0, y = 0, width = 0, height = 0;
};

namespace overlay {

// Whether a GL context is current on this thread.
bool glContextCurrent();

// Loads a premultiplied RGBA image into the rectangle texture `name`
// (created when 0). A new size defines the image afresh with linear
// filtering and is recorded in `definedSize`; the same size replaces the
// pixels in place. The texture state is restored afterwards.
void uploadRectangleTexture(unsigned int& name, TextSize& definedSize, const QImage& image);

// Draws texture `name` of `texSize` pixels stretched over `bounds`: depth test
// off, blending (one, one minus source alpha), the current colour modulating.
// Texel (0, 0) lands at (x, y). The enable, texture and colour-buffer state
// are restored afterwards.
void drawRectangleTexture(unsigned int name, TextSize texSize, const TextBounds& bounds);

// Deletes the texture (in the current context) and sets `name` to 0.
void deleteRectangleTexture(unsigned int& name);

}  // namespace overlay
