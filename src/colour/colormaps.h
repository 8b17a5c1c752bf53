#pragma once
// Colour maps: normalised scalars to one RGB colour each.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "colour/hexcolour.h"
#include "colour/rgba.h"

class QLOVector3dArray;

namespace colour {

// In the order the map pop-up lists them.
enum class ColorMap {
  Jet,
  Gray,
  Hot,
  Cubehelix,
  Custom2,
  Custom3,
  CustomCubehelix2,
  CustomCubehelix3
};

const std::vector<std::string>& colorMapNames();
// Exact, case-sensitive match; nullopt for any other name (coloured black).
std::optional<ColorMap> colorMapNamed(std::string_view name);
inline constexpr std::string_view kDefaultColorMap = "Jet";

enum class Inversion { Off, On };

struct ColorMapSettings {
  Rgba colorCustom0 = colorFromHexadecimalValue("#1F77B4");
  Rgba colorCustom1 = colorFromHexadecimalValue("#FF7F0E");
  Rgba colorCustom2 = colorFromHexadecimalValue("#2CA02C");
  Inversion invertColorMap = Inversion::Off;  // On: every map reads 1 - t
};

// One colour per value (alpha 1). "Cubehelix" and unknown maps give black.
std::vector<Rgba> colorsForNormalizedValues(const float* values, std::uint64_t count,
                                            std::optional<ColorMap> map,
                                            const ColorMapSettings& settings);

// The same colours as a single-precision vector array (x red, y green,
// z blue), the form the view takes.
std::shared_ptr<QLOVector3dArray> colorsFromNormalizedVector(const float* values,
                                                             std::uint64_t count,
                                                             std::optional<ColorMap> map,
                                                             const ColorMapSettings& settings);
std::shared_ptr<QLOVector3dArray> colorsFromNormalizedVector(const float* values,
                                                             std::uint64_t count,
                                                             std::string_view map,
                                                             const ColorMapSettings& settings);

}  // namespace colour
