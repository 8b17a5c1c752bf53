#include "plexora/PropertyValue.h"

#include "quillo/numbertext.h"

std::uint64_t propertyCount(const PropertyValue& value) {
  if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
    return *numbers ? (*numbers)->count() : 0;
  }
  if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
    return *vectors ? (*vectors)->count() : 0;
  }
  if (auto* texts = std::get_if<std::shared_ptr<TextList>>(&value)) {
    return *texts ? (*texts)->size() : 0;
  }
  return 0;
}

const char* propertyClassName(const PropertyValue& value) {
  switch (value.index()) {
    case 1:
      return "QLONumberArray";
    case 2:
      return "QLOVector3dArray";
    case 3:
      return "TextList";
    default:
      return "nil";
  }
}

PropertyEntry propertyEntry(const PropertyValue& value, std::uint64_t index) {
  if (index >= propertyCount(value)) return std::monostate{};
  if (auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&value)) {
    return (*numbers)->doubleValueAtIndex(index);
  }
  if (auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value)) {
    return (*vectors)->vectorAtIndex(index);
  }
  return (*std::get<std::shared_ptr<TextList>>(value))[index];
}

std::string propertyEntryText(const PropertyEntry& entry) {
  if (auto* number = std::get_if<double>(&entry)) return quillo::numberText(*number);
  if (auto* vector = std::get_if<std::array<double, 3>>(&entry)) {
    std::string text = "(";
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (axis > 0) text += ", ";
      quillo::appendNumber(text, (*vector)[axis]);
    }
    text += ')';
    return text;
  }
  if (auto* text = std::get_if<std::string>(&entry)) return *text;
  return "nil";
}
