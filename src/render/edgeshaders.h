#pragma once
// The GLSL 3.30 programs that draw styled edges in the shader renderer. They
// read the same index list and vertex attributes as the plain edge program;
// a geometry shader sees each line whole, so it can take the edge's own
// colour (a buffer texture of r, g, b per pair, indexed by the primitive)
// and build the arrow head at the target end (the pair's first index).
namespace scene_shaders {

// Each end in eye space with its colour and flags.
extern const char* const kEdgeEndVertex;
// Lines coloured by their edge's colour through the edge colour rule.
extern const char* const kStyledLineGeometry;
// One triangle per edge facing the eye, its tip at the target's surface, in
// the colour of the line's target end (edgestyle.h's arrowHead).
extern const char* const kArrowGeometry;

}  // namespace scene_shaders
