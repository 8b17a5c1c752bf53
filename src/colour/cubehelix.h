#pragma once
// The cubehelix blend between two colours: the lightness follows a gamma of
// 1.2 and the saturation and a (very small) hue sweep run along a helix.
#include "colour/rgba.h"

namespace colour {

// What the blend needs of its two end colours, worked out once so that a
// whole array can be blended without redoing it per value.
struct CubehelixEnds {
  float angle;           // start hue angle in radians (after the 120 offset)
  float angleStep;       // hue change from start to end, radians
  float saturation;      // start saturation
  float saturationStep;  // saturation change from start to end
  float lightness;       // start lightness
  float lightnessStep2;  // twice the lightness change
};

CubehelixEnds cubehelixEnds(float r0, float g0, float b0, float r1, float g1, float b1);

// The blend at t; t is not clamped and the colour is not clamped either.
Rgba cubehelixAt(const CubehelixEnds& ends, float t);

// The blend at t from (r0, g0, b0) to (r1, g1, b1); alpha is 1.
Rgba VXLCubehelixGradient(float t, float r0, float g0, float b0, float r1, float g1, float b1);

}  // namespace colour
