#include "app/sizesettings.h"

#include <optional>
#include <string>

#include "app/VXLController.h"
#include "quillo/numbertext.h"

namespace app {
namespace {

std::string numberText(float value) {
  std::string text;
  quillo::appendNumber(text, value);
  return text;
}

const std::string* valueOf(const std::vector<plexora::DocumentSetting>& settings,
                           const char* name) {
  for (const plexora::DocumentSetting& setting : settings) {
    if (setting.name == name) return &setting.value;
  }
  return nullptr;
}

}  // namespace

std::vector<plexora::DocumentSetting> sizeSettings(const VXLController& controller) {
  const std::string property = controller.sizeProperty();
  if (property == vertex_sizes::kNoProperty) return {};
  const vertex_sizes::Range range = controller.sizeRange();
  return {
      {kSizePropertySetting, "string", property},
      {kSizeTransformSetting, "string",
       std::string(vertex_sizes::transformName(controller.sizeTransform()))},
      {kSizeMinimumSetting, "float", numberText(range.minimum)},
      {kSizeMaximumSetting, "float", numberText(range.maximum)},
  };
}

void applySizeSettings(VXLController& controller,
                       const std::vector<plexora::DocumentSetting>& settings) {
  if (const std::string* name = valueOf(settings, kSizeTransformSetting)) {
    if (const auto transform = vertex_sizes::transformNamed(*name)) {
      controller.setSizeTransform(*transform);
    }
  }
  const std::string* minimum = valueOf(settings, kSizeMinimumSetting);
  const std::string* maximum = valueOf(settings, kSizeMaximumSetting);
  if (minimum && maximum) {
    const std::optional<float> low = quillo::parseFloat(*minimum);
    const std::optional<float> high = quillo::parseFloat(*maximum);
    if (low && high && vertex_sizes::validRange({*low, *high})) {
      controller.setSizeRange({*low, *high});
    }
  }
  if (const std::string* property = valueOf(settings, kSizePropertySetting)) {
    controller.setSizeProperty(*property);
  }
}

}  // namespace app
