#pragma once
// The GL state a pass sets up whichever renderer draws it: blending, depth
// writes and, for edges, the line width (with gl2ps's markers while a vector
// page is recorded).
#include "render/sceneframe.h"

namespace pass_state {

// Blending of translucent shells over what is drawn; depth writes as the
// frame's vertex depth test says.
void beginVertexPass(const SceneFrame& frame);
// The edge blend mode for the frame's background and line blending, depth
// writes as the edge depth test says, the line width.
void beginEdgePass(const SceneFrame& frame);

}  // namespace pass_state
