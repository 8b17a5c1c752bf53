#pragma once
// The vertex-size settings kept in a saved document: the view's size property,
// transform and range as Plexview's own graph-level settings, and back.
#include <vector>

#include "plexora/GraphmlExtras.h"

class VXLController;

namespace app {

// Setting names (graph keys marked plexview:setting in the document).
inline constexpr const char* kSizePropertySetting = "vertexSizeProperty";
inline constexpr const char* kSizeTransformSetting = "vertexSizeTransform";
inline constexpr const char* kSizeMinimumSetting = "vertexSizeMinimum";
inline constexpr const char* kSizeMaximumSetting = "vertexSizeMaximum";

// The four settings while a size property is chosen; none while every vertex
// has the standard size (the document then reads as before sizes existed).
std::vector<plexora::DocumentSetting> sizeSettings(const VXLController& controller);
// Applies the settings present and valid, through the controller's setters;
// absent ones, a transform of another name and a range the view refuses
// leave the controller's as they are.
void applySizeSettings(VXLController& controller,
                       const std::vector<plexora::DocumentSetting>& settings);

}  // namespace app
