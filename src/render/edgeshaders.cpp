#include "render/edgeshaders.h"

namespace scene_shaders {

const char* const kEdgeEndVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 colour;
layout(location = 2) in uint flags;
layout(location = 5) in float sizeFactor;
uniform mat4 modelView;
uniform float scale;
out vec3 eyePosition;
out vec3 vertexColour;
flat out uint endFlags;
out float endSize;
void main() {
  endSize = sizeFactor;
  eyePosition = (modelView * vec4(position * scale, 1.0)).xyz;
  vertexColour = colour;
  endFlags = flags;
  gl_Position = vec4(eyePosition, 1.0);
}
)";

// The edge colour rule at end i (after the input layout, which sizes the
// arrays): the edge's own colour when perEdge is set,
// else the end's vertex colour, then colour * mul + add.
#define PLEXVIEW_EDGE_ENDS                                                                     \
  "in vec3 eyePosition[];\n"                                                                   \
  "in vec3 vertexColour[];\n"                                                                  \
  "flat in uint endFlags[];\n"                                                                 \
  "uniform mat4 projection;\n"                                                                 \
  "uniform vec4 mul;\n"                                                                        \
  "uniform vec4 add;\n"                                                                        \
  "uniform vec4 selectedMul;\n"                                                                \
  "uniform vec4 selectedAdd;\n"                                                                \
  "uniform bool perEdge;\n"                                                                    \
  "uniform int firstPair;\n"                                                                   \
  "uniform samplerBuffer edgeColours;\n"                                                       \
  "out vec4 lineColour;\n"                                                                     \
  "vec4 endColour(int i) {\n"                                                                  \
  "  int p = 3 * (firstPair + gl_PrimitiveIDIn);\n"                                            \
  "  vec3 c = perEdge ? vec3(texelFetch(edgeColours, p).r, texelFetch(edgeColours, p + 1).r,"  \
  " texelFetch(edgeColours, p + 2).r) : vertexColour[i];\n"                                    \
  "  bool selected = (endFlags[i] & 2u) != 0u;\n"                                              \
  "  return vec4(c, 1.0) * (selected ? selectedMul : mul) + (selected ? selectedAdd : add);\n" \
  "}\n"

const char* const kStyledLineGeometry =
    "#version 330 core\nlayout(lines) in;\n" PLEXVIEW_EDGE_ENDS R"(
layout(line_strip, max_vertices = 2) out;
void main() {
  for (int i = 0; i < 2; ++i) {
    lineColour = endColour(i);
    gl_Position = projection * vec4(eyePosition[i], 1.0);
    EmitVertex();
  }
  EndPrimitive();
}
)";

const char* const kArrowGeometry = "#version 330 core\nlayout(lines) in;\n" PLEXVIEW_EDGE_ENDS R"(
layout(triangle_strip, max_vertices = 3) out;
uniform float targetRadius;
in float endSize[];
uniform float headLength;
uniform float headHalfWidth;
void emit(vec3 p, vec4 colour) {
  lineColour = colour;
  gl_Position = projection * vec4(p, 1.0);
  EmitVertex();
}
void main() {
  vec3 to = eyePosition[0];
  vec3 d = to - eyePosition[1];
  float len = length(d);
  float radius = targetRadius * endSize[0];
  float room = len - 2.0 * radius;
  if (!(room > 0.0)) return;
  d /= len;
  vec3 tip = to - d * radius;
  vec3 base = tip - d * min(headLength, room);
  vec3 side = cross(d, -base);
  float n = length(side);
  if (!(n > 1e-6 * length(base))) return;
  side *= headHalfWidth / n;
  vec4 colour = endColour(0);
  emit(tip, colour);
  emit(base + side, colour);
  emit(base - side, colour);
  EndPrimitive();
}
)";

}  // namespace scene_shaders
