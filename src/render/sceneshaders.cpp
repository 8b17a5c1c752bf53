#include "render/sceneshaders.h"

namespace scene_shaders {

// Fixed-function lighting of one directional light with an infinite viewer,
// the colour driving the material's ambient and diffuse terms:
//   colour * (global ambient + light ambient)
//   + max(n.l, 0) * colour * light diffuse
//   + (n.l > 0) * max(n.h, 0)^shininess * material specular * light specular
// clamped to [0, 1]; alpha is the colour's.
#define PLEXVIEW_LIGHTING                                                           \
  "uniform vec3 lightDirection;\n"                                                  \
  "uniform vec3 halfVector;\n"                                                      \
  "uniform vec3 ambient;\n"                                                         \
  "uniform vec3 diffuse;\n"                                                         \
  "uniform vec3 specular;\n"                                                        \
  "uniform float shininess;\n"                                                      \
  "vec4 lit(vec4 colour, vec3 n) {\n"                                               \
  "  float nl = dot(n, lightDirection);\n"                                          \
  "  vec3 c = colour.rgb * ambient + max(nl, 0.0) * colour.rgb * diffuse;\n"        \
  "  if (nl > 0.0) c += pow(max(dot(n, halfVector), 0.0), shininess) * specular;\n" \
  "  return vec4(clamp(c, 0.0, 1.0), colour.a);\n"                                  \
  "}\n"

#define PLEXVIEW_INSTANCE                                            \
  "layout(location = 0) in vec3 centre;\n"                           \
  "layout(location = 1) in vec3 colour;\n"                           \
  "layout(location = 2) in uint flags;\n"                            \
  "layout(location = 5) in float sizeFactor;\n"                      \
  "uniform mat4 modelView;\n"                                        \
  "uniform mat4 projection;\n"                                       \
  "uniform float scale;\n"                                           \
  "uniform float size;\n"                                            \
  "uniform float shellSize;\n"                                       \
  "uniform vec4 highlight;\n"                                        \
  "bool drawn(bool shell) {\n"                                       \
  "  return (flags & 1u) != 0u && (!shell || (flags & 2u) != 0u);\n" \
  "}\n"                                                              \
  "const vec4 kNowhere = vec4(2.0, 2.0, 2.0, 1.0);\n"

const char* const kSphereVertex = "#version 330 core\n" PLEXVIEW_INSTANCE R"(
out vec3 eyePoint;
flat out vec3 eyeCentre;
flat out float radius;
flat out vec4 baseColour;
const vec2 kCorners[6] =
    vec2[6](vec2(-1, -1), vec2(1, -1), vec2(1, 1), vec2(-1, -1), vec2(1, 1), vec2(-1, 1));
void main() {
  bool shell = gl_VertexID >= 6;
  radius = (shell ? shellSize : size) * sizeFactor;
  eyeCentre = (modelView * vec4(centre * scale, 1.0)).xyz;
  baseColour = shell ? highlight : vec4(colour, 1.0);
  float d2 = dot(eyeCentre, eyeCentre);
  eyePoint = vec3(0.0);
  // Not drawn, or the eye inside the sphere (which shows no front faces).
  if (!drawn(shell) || d2 <= radius * radius * 1.0001) {
    gl_Position = kNowhere;
    return;
  }
  // The silhouette is the circle where the cone of rays touching the sphere
  // meets the plane through its centre facing the eye.
  float d = sqrt(d2);
  vec3 w = -eyeCentre / d;
  vec3 up = abs(w.y) < 0.99 ? vec3(0.0, 1.0, 0.0) : vec3(1.0, 0.0, 0.0);
  vec3 u = normalize(cross(up, w));
  vec3 v = cross(w, u);
  float halfSide = radius * d / sqrt(d2 - radius * radius);
  vec2 k = kCorners[gl_VertexID % 6];
  eyePoint = eyeCentre + (k.x * u + k.y * v) * halfSide;
  gl_Position = projection * vec4(eyePoint, 1.0);
}
)";

const char* const kSphereFragment = "#version 330 core\n" PLEXVIEW_LIGHTING R"(
uniform mat4 projection;
in vec3 eyePoint;
flat in vec3 eyeCentre;
flat in float radius;
flat in vec4 baseColour;
out vec4 fragColour;
void main() {
  // The ray from the eye through this fragment against the sphere.
  vec3 ray = normalize(eyePoint);
  float b = dot(ray, eyeCentre);
  float disc = b * b - (dot(eyeCentre, eyeCentre) - radius * radius);
  if (disc < 0.0) discard;
  vec3 hit = ray * (b - sqrt(disc));
  vec4 clip = projection * vec4(hit, 1.0);
  float depth = clip.z / clip.w;
  if (depth < -1.0 || depth > 1.0) discard;
  gl_FragDepth = 0.5 * (gl_DepthRange.diff * depth + gl_DepthRange.near + gl_DepthRange.far);
  fragColour = lit(baseColour, (hit - eyeCentre) / radius);
}
)";

const char* const kCubeVertex = "#version 330 core\n" PLEXVIEW_INSTANCE PLEXVIEW_LIGHTING R"(
layout(location = 3) in vec4 corner;
layout(location = 4) in vec3 normal;
out vec4 shade;
void main() {
  bool shell = corner.w > 0.5;
  shade = vec4(0.0);
  if (!drawn(shell)) {
    gl_Position = kNowhere;
    return;
  }
  vec3 at = centre * scale + corner.xyz * ((shell ? shellSize : size) * sizeFactor);
  shade = lit(shell ? highlight : vec4(colour, 1.0), normalize(mat3(modelView) * normal));
  gl_Position = projection * (modelView * vec4(at, 1.0));
}
)";

const char* const kCubeFragment = R"(#version 330 core
in vec4 shade;
out vec4 fragColour;
void main() {
  fragColour = shade;
}
)";

const char* const kEdgeVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 colour;
layout(location = 2) in uint flags;
uniform mat4 modelView;
uniform mat4 projection;
uniform float scale;
// The edge colour rule: colour * mul + add, per endpoint selected or not.
uniform vec4 mul;
uniform vec4 add;
uniform vec4 selectedMul;
uniform vec4 selectedAdd;
out vec4 lineColour;
void main() {
  bool selected = (flags & 2u) != 0u;
  lineColour = vec4(colour, 1.0) * (selected ? selectedMul : mul) + (selected ? selectedAdd : add);
  gl_Position = projection * (modelView * vec4(position * scale, 1.0));
}
)";

const char* const kEdgeFragment = R"(#version 330 core
in vec4 lineColour;
out vec4 fragColour;
void main() {
  fragColour = lineColour;
}
)";

}  // namespace scene_shaders
