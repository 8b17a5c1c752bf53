#pragma once
// The colour rules of the scene, kept free of GL so they can be tested alone:
// the colour of an edge at each endpoint, the highlight of a selected vertex,
// the default vertex colour, the background, how edges blend, and how the
// frame-blending pass weighs the new frame against the previous one.
#include <optional>

#include "colour/rgba.h"

namespace scene {

struct Rgb {
  float r = 0;
  float g = 0;
  float b = 0;
  bool operator==(const Rgb&) const = default;
};

using colour::Rgba;

enum class Background { White, Black };
enum class Selection { NotSelected, Selected };
enum class LineBlending { Off, On };
// Whether the frame has per-vertex colours (a colour array covering every
// vertex) or draws in the fixed colours.
enum class Colouring { Fixed, PerVertex };

// Vertices without per-vertex colours.
inline constexpr Rgb kDefaultVertexColour{1.0f, 0.6f, 0.3f};
// The current colour the edge pass starts from.
inline constexpr Rgb kEdgePassColour{0.5f, 0.5f, 0.3f};
// The colour buffer right after the fixed state is set up.
inline constexpr Rgba kInitialClearColour{0, 0, 0, 0};
// Opacity of the larger shell drawn over a selected vertex.
inline constexpr float kHighlightAlpha = 0.6f;

// Opaque black or white.
Rgba clearColour(Background background);

// The shell colour of a selected vertex.
Rgb selectionHighlight(Colouring colouring, Background background);

// The colour of an edge at one endpoint. `colour` is the endpoint's colour,
// or empty when the frame has no per-vertex colours; `intensity` is the
// view's edge intensity. The line interpolates between its two ends.
Rgba edgeEndpointColour(const std::optional<Rgb>& colour, Selection selection,
                        LineBlending blending, Background background, float intensity);

// How the edge pass combines a line with what is drawn:
//  Additive      source * alpha + destination (a glow on black);
//  Over          source * alpha + destination * (1 - alpha), alpha likewise;
//  OverKeepAlpha the same for colour, but the destination alpha is kept.
enum class EdgeBlend { Additive, Over, OverKeepAlpha };
EdgeBlend edgeBlend(LineBlending blending, Background background);

// Frame blending: result = next * new frame + previous * blended history.
enum class BlendHistory { FirstFrame, Continuing };
struct FrameWeights {
  float previous = 0;
  float next = 0;
  bool operator==(const FrameWeights&) const = default;
};
FrameWeights frameWeights(BlendHistory history, float motionBlurFactor);

}  // namespace scene
