#pragma once
// The GLSL 3.30 programs of the shader renderer, as source text. How a
// sphere is drawn: a square facing the eye, just covering the sphere's
// silhouette, is drawn per vertex; its fragments cast a ray from the eye
// against the sphere, discard the misses, and light and depth the hit point
// exactly as the fixed-function pipeline lights its tessellated spheres.
namespace scene_shaders {

// Attribute locations shared by the programs.
inline constexpr unsigned kCentre = 0;  // vertex position (x, y, z), unscaled
inline constexpr unsigned kColour = 1;  // vertex colour (r, g, b)
inline constexpr unsigned kFlags = 2;   // shown and selected bits
inline constexpr unsigned kCorner = 3;  // cube corner (x, y, z, shell?)
inline constexpr unsigned kNormal = 4;  // cube face normal
// The vertex's size as a multiple of the shapes' (a constant 1 when unsized).
inline constexpr unsigned kSizeFactor = 5;

// Vertices drawn as spheres: 12 vertices per instance, two triangles for the
// vertex and two for its selection shell.
extern const char* const kSphereVertex;
extern const char* const kSphereFragment;
// Vertices drawn as cubes: 72 vertices per instance, the cube then its shell.
extern const char* const kCubeVertex;
extern const char* const kCubeFragment;
// Edges: GL_LINES between the vertices, coloured by the edge colour rule.
extern const char* const kEdgeVertex;
extern const char* const kEdgeFragment;

}  // namespace scene_shaders
