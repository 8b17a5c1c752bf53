#include "render/scenecolours.h"

namespace scene {
namespace {

// a * c + b, worked in double and stored as float.
float affine(double a, float c, double b) {
  return static_cast<float>(a * static_cast<double>(c) + b);
}

float scaled(double a, float c) {
  return static_cast<float>(a * static_cast<double>(c));
}

Rgba selectedEndpoint(const std::optional<Rgb>& colour, Background background) {
  if (background == Background::Black) {
    if (!colour) return {1.0f, 0.25f, 0.1f, 1.0f};
    // Brightened towards white, blue held down.
    return {affine(0.6, colour->r, 0.4), affine(0.6, colour->g, 0.4), scaled(0.4, colour->b), 1.0f};
  }
  if (!colour) return {0.8f, 0.25f, 0.0f, 1.0f};
  // Darkened, red kept strongest. Blue takes 0.2 here but 0.4 on black.
  return {scaled(0.6, colour->r), scaled(0.2, colour->g), scaled(0.2, colour->b), 1.0f};
}

Rgba blendedEndpoint(const std::optional<Rgb>& colour, Background background, float intensity) {
  const float alpha = affine(0.4, intensity, 0.2);
  if (!colour) {
    return background == Background::Black ? Rgba{1.0f, 0.5f, 0.0f, alpha}
                                           : Rgba{0.5f, 0.25f, 0.0f, alpha};
  }
  if (background == Background::Black) {
    return {affine(0.8, colour->r, 0.2), affine(0.8, colour->g, 0.2), affine(0.8, colour->b, 0.2),
            alpha};
  }
  return {scaled(0.8, colour->r), scaled(0.8, colour->g), scaled(0.8, colour->b), alpha};
}

Rgba plainEndpoint(const std::optional<Rgb>& colour, Background background, float intensity) {
  if (!colour) {
    return background == Background::Black ? Rgba{1.0f, 0.5f, 0.0f, intensity}
                                           : Rgba{0.5f, 0.25f, 0.0f, intensity};
  }
  // Only on black does the intensity also dim the colour.
  if (background == Background::Black) {
    return {colour->r * intensity, colour->g * intensity, colour->b * intensity, intensity};
  }
  return {colour->r, colour->g, colour->b, intensity};
}

}  // namespace

Rgba clearColour(Background background) {
  return background == Background::Black ? Rgba{0, 0, 0, 1} : Rgba{1, 1, 1, 1};
}

Rgb selectionHighlight(Colouring colouring, Background background) {
  if (background == Background::White) return {0.4f, 0.1f, 0.0f};
  return colouring == Colouring::PerVertex ? Rgb{1.0f, 1.0f, 0.1f} : Rgb{1.0f, 0.3f, 0.1f};
}

Rgba edgeEndpointColour(const std::optional<Rgb>& colour, Selection selection,
                        LineBlending blending, Background background, float intensity) {
  if (selection == Selection::Selected) return selectedEndpoint(colour, background);
  if (blending == LineBlending::On) return blendedEndpoint(colour, background, intensity);
  return plainEndpoint(colour, background, intensity);
}

EdgeBlend edgeBlend(LineBlending blending, Background background) {
  if (background == Background::Black) return EdgeBlend::Additive;
  return blending == LineBlending::On ? EdgeBlend::Over : EdgeBlend::OverKeepAlpha;
}

FrameWeights frameWeights(BlendHistory history, float motionBlurFactor) {
  if (history == BlendHistory::FirstFrame) return {0.0f, 1.0f};
  return {1.0f - motionBlurFactor, motionBlurFactor};
}

}  // namespace scene
