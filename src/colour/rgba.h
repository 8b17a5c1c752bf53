#pragma once
// A colour as four floats in device RGB, each in [0, 1]. Colour maps,
// legends, palettes and the per-vertex colour arrays all speak in this type.
namespace colour {

struct Rgba {
  float r = 0.0f;
  float g = 0.0f;
  float b = 0.0f;
  float a = 1.0f;

  friend bool operator==(const Rgba&, const Rgba&) = default;
};

}  // namespace colour
