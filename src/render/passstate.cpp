#include "render/passstate.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include "render/vectorexport.h"

namespace pass_state {

void beginVertexPass(const SceneFrame& frame) {
  if (!frame.selecting) glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glDepthMask(frame.verticesDepthTest ? GL_TRUE : GL_FALSE);
}

void beginEdgePass(const SceneFrame& frame) {
  glDepthMask(frame.edgesDepthTest ? GL_TRUE : GL_FALSE);
  glEnable(GL_BLEND);
  const scene::LineBlending blending = frame.lineBlending();
  // GL's feedback carries neither blending nor line widths: a vector export
  // being recorded gets them as markers.
  if (blending == scene::LineBlending::On) vector_export::beginBlendMarker();
  switch (scene::edgeBlend(blending, frame.background)) {
    case scene::EdgeBlend::Additive:
      glBlendFunc(GL_SRC_ALPHA, GL_ONE);
      break;
    case scene::EdgeBlend::Over:
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      break;
    case scene::EdgeBlend::OverKeepAlpha:
      glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
      break;
  }
  glLineWidth(frame.lineWidth);
  vector_export::lineWidthMarker(frame.lineWidth);
}

}  // namespace pass_state
