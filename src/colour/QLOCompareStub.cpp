#include "colour/QLOCompareStub.h"

#include <cmath>

#include "colour/textorder.h"

namespace colour {
namespace {

int compareNumbers(double a, double b) {
  const bool aNaN = std::isnan(a), bNaN = std::isnan(b);
  if (aNaN || bNaN) return static_cast<int>(aNaN) - static_cast<int>(bNaN);
  return (a > b) - (a < b);
}

double asNumber(const QLOCompareStub::SortObject& key) {
  if (const auto* count = std::get_if<std::int64_t>(&key)) return static_cast<double>(*count);
  return static_cast<double>(std::get<float>(key));
}

}  // namespace

int QLOCompareStub::compare(const QLOCompareStub& other) const {
  const auto* text = std::get_if<std::string>(&sortObject_);
  const auto* otherText = std::get_if<std::string>(&other.sortObject_);
  if (text && otherText) return compareNumerically(*text, *otherText);
  if (text || otherText) return text ? 1 : -1;
  if (std::holds_alternative<std::int64_t>(sortObject_) &&
      std::holds_alternative<std::int64_t>(other.sortObject_)) {
    const std::int64_t a = std::get<std::int64_t>(sortObject_);
    const std::int64_t b = std::get<std::int64_t>(other.sortObject_);
    return (a > b) - (a < b);
  }
  return compareNumbers(asNumber(sortObject_), asNumber(other.sortObject_));
}

}  // namespace colour
